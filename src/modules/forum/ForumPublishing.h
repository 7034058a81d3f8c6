#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

// Inside a transaction of the caller's. A forum that is marked for its removal goes with its topics and
// reactions.

/// False when there is no such forum.
bool publishForum(db::Connection& transaction, int forumId);
/// All of a site and language.
void publishForums(db::Connection& transaction, std::string_view site, std::string_view lang);

}  // namespace torvex
