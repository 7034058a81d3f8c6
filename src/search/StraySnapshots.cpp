#include "search/StraySnapshots.h"

#include <fmt/format.h>
#include <functional>
#include <string>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/files/FileSystem.h"
#include "search/LivePages.h"
#include "search/SnapshotFiles.h"

namespace torvex {

namespace {

/// The folder of each language and site that there is.
void visitFolders(const HostContext& host, const std::function<void(const std::string& folder)>& visit) {
    const std::string root = snapshotRoot(host);
    if (!host.files.folderExists(root)) return;
    for (const std::string& lang : host.files.subfolders(root)) {
        const std::string folder = root + lang + "/";
        for (const std::string& site : host.files.subfolders(folder)) visit(folder + site + "/");
    }
}

/// Whether the file is one that a live page has just there.
bool isInPlace(const HostContext& host, db::Connection& connection, const std::string& path,
               std::string_view nodeId) {
    return snapshotFile(host, nodeId) == path && hasLiveContent(connection, nodeId);
}

}  // namespace

std::size_t removeStraySnapshots(HostContext& host, db::Connection& connection) {
    std::size_t removed = 0;
    visitFolders(host, [&](const std::string& folder) {
        host.files.removeLeftovers(folder);
        for (const std::string& name : host.files.files(folder)) {
            const std::string_view nodeId = nodeOfSnapshot(name);
            if (nodeId.empty() || isInPlace(host, connection, folder + name, nodeId)) continue;
            host.files.deleteFile(folder + name);
            ++removed;
        }
    });
    return removed;
}

void tidySnapshotFolders(HostContext& host) try {
    visitFolders(host, [&](const std::string& folder) { host.files.removeLeftovers(folder); });
} catch (const std::exception& error) {
    host.log.warn(fmt::format("search folders: {}", error.what()));
}

}  // namespace torvex
