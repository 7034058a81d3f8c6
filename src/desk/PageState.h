#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Rows;
}

/// Where a page stands, as one word: "marked" for deletion, approved or not; "approved"; "new", whose setup was
/// never saved; "changed"; "live", with nothing to do. By the columns `editStatus`, `deleteStatus` and
/// `approveStatus` of its design row.
std::string_view stateOf(const db::Rows& row);

}  // namespace torvex
