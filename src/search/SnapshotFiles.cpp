#include "search/SnapshotFiles.h"

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view ending = ".html";

}  // namespace

std::string snapshotRoot(const HostContext& host) {
    std::string path = host.application.text(applicationKey::installPath);
    if (!path.ends_with('/')) path += '/';
    return path + "search/html/";
}

std::string snapshotFolder(const HostContext& host, std::string_view nodeId) {
    std::string path = snapshotRoot(host);
    path.append(langOf(nodeId)).append("/").append(siteOf(nodeId));
    return path.append("/");
}

std::string snapshotFile(const HostContext& host, std::string_view nodeId) {
    return snapshotFolder(host, nodeId) + snapshotName(nodeId);
}

std::string snapshotFilesFrom(const HostContext& host, std::string_view nodeId) {
    return snapshotFolder(host, nodeId).append(nodeId).append("*").append(ending);
}

std::string snapshotName(std::string_view nodeId) {
    return std::string(nodeId).append(ending);
}

std::string_view nodeOfSnapshot(std::string_view fileName) {
    if (!fileName.ends_with(ending)) return {};
    fileName.remove_suffix(ending.size());
    return fileName;
}

}  // namespace torvex
