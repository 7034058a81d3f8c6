#pragma once

#include <cstddef>

namespace torvex {

struct HostContext;
namespace db {
class Connection;
}

/// Removes the snapshots that no live page has, and what writers that were killed have left beside them. The
/// number of snapshots removed.
std::size_t removeStraySnapshots(HostContext& host, db::Connection& connection);

/// Removes only what killed writers have left: nobody reads it, but it takes room. Never fails; the log
/// says what couldn't be done.
void tidySnapshotFolders(HostContext& host);

}  // namespace torvex
