#pragma once

#include <optional>
#include <string>

namespace torvex {
namespace db {
class Connection;
}

/// Whose a forum is.
struct ForumPlace {
    std::string site;
    std::string lang;
};

/// By its definition in the design; nothing when there is no such forum.
std::optional<ForumPlace> placeOfForum(db::Connection& connection, int forumId);

}  // namespace torvex
