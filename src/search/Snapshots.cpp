#include "search/Snapshots.h"

#include <utility>

#include "platform/HostContext.h"
#include "replication/Replication.h"
#include "search/SnapshotFiles.h"

namespace torvex {

namespace {

// So much is written together: enough that waiting for the disk doesn't count, little enough to hold.
constexpr std::size_t mostWaiting = 64;
constexpr std::size_t mostWaitingBytes = std::size_t{4} << 20;

std::string parentFolder(std::string folder) {
    folder.pop_back();
    folder.erase(folder.rfind('/') + 1);
    return folder;
}

/// "" when it didn't fail.
template <typename Work>
std::string reasonOfFailure(Work work) {
    try {
        work();
        return {};
    } catch (const std::exception& error) {
        return error.what();
    }
}

std::string nodeOfFile(std::string_view path) {
    return std::string(nodeOfSnapshot(path.substr(path.rfind('/') + 1)));
}

}  // namespace

Snapshots::Snapshots(HostContext& host, const db::ConnectionSource& connection, OnFailure onFailure)
    : host_(host), onFailure_(std::move(onFailure)), text_(host, connection), shared_(host) {}

void Snapshots::begin() {
    const std::string root = snapshotRoot(host_);
    host_.files.createFolder(parentFolder(root));
    host_.files.createFolder(root);
    replicateFolder(host_, root, FolderChange::Make);
}

void Snapshots::renew(const LivePage& page) {
    const std::string reason = reasonOfFailure([&] {
        if (page.isFolder()) return shared_.deleteFile(snapshotFile(host_, page.nodeId));
        makeFolder(page.nodeId);
        add(page);
    });
    if (!reason.empty()) onFailure_(page.nodeId, reason);
    if (waiting_.size() >= mostWaiting || waitingBytes_ >= mostWaitingBytes) write();
}

void Snapshots::finish() {
    write();
    shared_.replicate();
    replicateFolder(host_, snapshotRoot(host_), FolderChange::Make);
}

void Snapshots::makeFolder(std::string_view nodeId) {
    const std::string folder = snapshotFolder(host_, nodeId);
    if (folders_.contains(folder)) return;
    host_.files.createFolder(parentFolder(folder));
    host_.files.createFolder(folder);
    folders_.insert(folder);
}

void Snapshots::add(const LivePage& page) {
    std::string text = text_.of(page);
    waitingBytes_ += text.size();
    waiting_.push_back({snapshotFile(host_, page.nodeId), std::move(text)});
}

/// When the files can't be written together, each is tried alone, so that one doesn't keep the others.
void Snapshots::write() {
    const std::vector<TextFile> files = std::exchange(waiting_, {});
    waitingBytes_ = 0;
    if (files.empty()) return;
    constexpr auto format = TextFormat::Unicode;
    if (reasonOfFailure([&] { host_.files.writeTexts(files, format); }).empty()) return;
    for (const auto& [path, text] : files) {
        const std::string reason = reasonOfFailure(
            [&, &file = path, &content = text] { host_.files.writeText(file, content, format); });
        if (!reason.empty()) onFailure_(nodeOfFile(path), reason);
    }
}

}  // namespace torvex
