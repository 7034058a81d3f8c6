#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/Groups.h"
#include "records/PageId.h"

namespace torvex {
namespace db {
class Connection;
}

/// Who asks for a page.
struct Visitor {
    std::string username;
    std::string password;
};

/// The page whose own groups decide on a page, and the lowest of them. A page that inherits its groups is
/// decided by the nearest ancestor that has some of its own.
struct DecidingGroup {
    PageId pageId;
    double group;

    bool isReal() const { return group > everybodyGroup; }
};

/// Nothing when a page on the way has no groups at all.
std::optional<DecidingGroup> decidingGroup(db::Connection& connection, PageId pageId,
                                           std::string_view nodeId);

/// The verdict (one of `pageAccess`) of a page's groups on a visitor. `today` is yyyymmdd.
int groupVerdict(db::Connection& connection, PageId pageId, std::string_view nodeId, const Visitor& visitor,
                 std::string_view today);

}  // namespace torvex
