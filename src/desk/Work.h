#pragma once

#include <string_view>

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

/// How many pages of a site and language are in one of the actor's lists ("approve" or "publish", as
/// `desk::getWork` has them); 500 at most.
int numberWaiting(db::Connection& connection, const Actor& actor, std::string_view kind,
                  std::string_view site, std::string_view lang);

}  // namespace torvex
