#pragma once

#include <string_view>

namespace torvex {

struct HostContext;
namespace db {
class Connection;
}

/// Renames the files that the full text catalogue reads of a branch that lay at the node `from` and lies at
/// `to` now, here and on the other servers. A page without a file has none to rename. What fails is told to
/// operators and does no harm to the others.
void moveSnapshots(HostContext& host, db::Connection& connection, std::string_view from, std::string_view to);

}  // namespace torvex
