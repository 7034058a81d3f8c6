#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// The audit line of a removal.
namespace removal {
inline constexpr std::string_view action = "publish (delete)";
inline constexpr std::string_view description = "The page has been removed";
}  // namespace removal

/// Removes a page and all below it, whatever state they are in, from the design and the live tables, with
/// their hits and all that points at them. Works within a transaction of the caller. On the embedded store
/// the hits lie in a file of their own, which commits behind the content: a crash while the content is on its
/// way to the disk may leave hits of pages that are gone, but never loses those of a page that stays.
void removeBranch(db::Connection& connection, std::string_view nodeId);

}  // namespace torvex
