#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// The group of a name; the lowest where several have it, -1 where none has. A failure has the line
/// "getGroupIdByName !" in front.
int getGroupIdByName(db::Connection& connection, std::string_view name);

}  // namespace torvex
