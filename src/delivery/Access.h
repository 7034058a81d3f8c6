#pragma once

#include <string>
#include <string_view>

#include "platform/PageId.h"

namespace torvex {
namespace db {
class Connection;
}

/// The groups above this one are real and need a login; it is "everybody".
inline constexpr int everybodyGroup = 1;
/// Stands for the list of the parent.
inline constexpr int inheritedGroup = 0;

/// Who asks for a page.
struct Visitor {
    std::string username;
    std::string password;
};

/// The verdict (one of `pageAccess`) of a page's groups on a visitor. A page that inherits its groups is
/// judged by the nearest ancestor that has some of its own. `today` is yyyymmdd.
int groupVerdict(db::Connection& connection, PageId pageId, std::string_view nodeId, const Visitor& visitor,
                 std::string_view today);

}  // namespace torvex
