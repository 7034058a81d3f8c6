#pragma once

#include <string>
#include <string_view>

namespace torvex {

struct HostContext;

/// Where the copies of pages lie that the full text catalogue reads: "search/html/" in the installation
/// folder, below that by language first and by site second. Folders end in "/".
std::string snapshotRoot(const HostContext& host);
std::string snapshotFolder(const HostContext& host, std::string_view nodeId);
std::string snapshotFile(const HostContext& host, std::string_view nodeId);
/// The files of a node and of all below it, as a name with a wild card.
std::string snapshotFilesFrom(const HostContext& host, std::string_view nodeId);

/// What the file of a node is named.
std::string snapshotName(std::string_view nodeId);
/// The node of a file's name; "" for a name that is none of a snapshot's.
std::string_view nodeOfSnapshot(std::string_view fileName);

}  // namespace torvex
