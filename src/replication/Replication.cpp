#include "replication/Replication.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <unistd.h>

#include "installation/ScriptTimeouts.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/OperatorLog.h"
#include "platform/db/ConnectionSource.h"
#include "platform/files/FileSystem.h"
#include "platform/files/WildCards.h"
#include "platform/text/Text.h"
#include "replication/MissedChanges.h"
#include "replication/ServerShares.h"

namespace torvex {

namespace {

constexpr double usualWait = 60;

constexpr std::string_view selectServers = "select * from TORVEX_SERVERS order by serverName";

std::string withSlashes(std::string_view path) {
    return text::replaceAll(path, "\\", "/");
}

std::string asFolder(std::string path) {
    if (!path.empty() && path.back() != '/') path += '/';
    return path;
}

std::string installFolder(const HostContext& host) {
    return asFolder(withSlashes(host.application.text(applicationKey::installPath)));
}

std::string shareName(const HostContext& host) {
    return std::string(text::trim(host.application.text(applicationKey::loadBalancingShareName)));
}

/// The parts of a path; empty ones are left out.
std::vector<std::string_view> partsOf(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        if (end > 0) parts.push_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

bool goesUp(std::string_view path) {
    for (const std::string_view part : partsOf(path)) {
        if (part == "..") return true;
    }
    return false;
}

/// Whether a name is one of a folder and stays where it is put.
bool isFolderName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\\\0", 3)) == std::string_view::npos;
}

void requireFolderName(std::string_view name, std::string_view what) {
    if (isFolderName(name)) return;
    throw Error(fmt::format("the name of the {} can't be that of a folder: \"{}\"", what, name));
}

std::string folderOfShare(const HostContext& host, std::string_view server) {
    const std::string root = withSlashes(host.application.text(applicationKey::replicationRoot));
    if (text::trim(root).empty()) {
        throw Error("the setting torvex_replication_root names no folder that the shares are mounted in");
    }
    const std::string share = shareName(host);
    requireFolderName(server, "server");
    requireFolderName(share, "share");
    return asFolder(root) + std::string(server) + "/" + share;
}

ServerShares::Patience patience(const HostContext& host) {
    const double wait = secondsOf({host.application.get(applicationKey::replicationWait)}, usualWait);
    return {std::chrono::duration<double>(longTimeout(host)), std::chrono::duration<double>(wait)};
}

void makeFolders(FileSystem& files, const std::string& share, std::string_view path) {
    std::string folder = share;
    for (const std::string_view part : partsOf(path)) {
        folder.append("/").append(part);
        if (!files.folderExists(folder)) files.createFolder(folder);
    }
}

void removeFile(FileSystem& files, const std::string& folder, const std::string& name) {
    if (hasWildCard(name)) {
        if (files.folderExists(folder)) deleteMatchingFiles(files, folder, name);
    } else if (files.fileExists(folder + name)) {
        files.deleteFile(folder + name);
    }
}

void removeFolder(FileSystem& files, const std::string& share, const std::string& path) {
    if (partsOf(path).empty()) throw Error("that is the whole installation");
    std::string folder = share + "/" + path;
    while (folder.back() == '/') folder.pop_back();
    if (files.folderExists(folder)) files.deleteFolder(folder);
}

}  // namespace

bool Replication::addFile(std::string_view file, FileChange change) {
    const std::string path = withSlashes(text::trim(file));
    const std::size_t divider = path.rfind('/');
    if (divider == std::string::npos || divider + 1 == path.size()) return false;
    return add(
        std::string_view(path).substr(0, divider + 1),
        {false, change == FileChange::Remove, change == FileChange::Replace, {}, path.substr(divider + 1)});
}

bool Replication::addFolder(std::string_view folder, FolderChange change) {
    const std::string path = asFolder(withSlashes(text::trim(folder)));
    return !path.empty() && add(path, {true, change == FolderChange::Remove, false, {}, {}});
}

bool Replication::add(std::string_view folder, Change change) {
    if (shareName(host_).empty()) return false;
    const std::string install = installFolder(host_);
    if (install.empty() || !folder.starts_with(install)) return false;
    change.path = folder.substr(install.size());
    if (goesUp(change.path) || change.name == "..") return false;
    readServers();
    changes_.push_back(std::move(change));
    return true;
}

void Replication::readServers() {
    if (knowsServers_) return;
    const std::string own = ownServerName();
    const auto connection = db::openOwn(host_);
    auto rows = connection->query(selectServers);
    while (rows.next()) {
        std::string server(text::trim(rows.text("serverName")));
        if (!text::equals(server, own)) servers_.push_back(std::move(server));
    }
    knowsServers_ = true;
}

void Replication::run() {
    if (changes_.empty()) return;
    const LongScript longer(host_);
    for (const std::string& server : servers_) runOn(server);
    changes_.clear();
}

ShareStep Replication::stepFor(const Change& change, const std::string& install) {
    return [change, install](FileSystem& files, const std::string& share) {
        if (change.isFolder && change.isRemoval) return removeFolder(files, share, change.path);
        const std::string folder = share + "/" + change.path;
        if (change.isRemoval) return removeFile(files, folder, change.name);
        makeFolders(files, share, change.path);
        if (change.isFolder || (!change.replaces && files.fileExists(folder + change.name))) return;
        files.copyFile(install + change.path + change.name, folder + change.name);
    };
}

void Replication::runOn(const std::string& server) {
    std::vector<ShareStep> steps;
    const std::string install = installFolder(host_);
    for (const Change& change : changes_) steps.push_back(stepFor(change, install));
    const std::vector<std::string> reasons = onShare(host_, server, std::move(steps));
    MissedChanges missed(host_, server);
    for (std::size_t i = 0; i < reasons.size(); ++i) {
        const Change& change = changes_[i];
        missed.note(change.path + change.name, change.isRemoval ? "remove" : "write", reasons[i]);
        if (reasons[i].empty()) continue;
        const char* added = change.isFolder ? "made" : "copied";
        host_.log.warn(fmt::format("server \"{}\": {}{}{} was not {}: {}. Do it there by hand.", server,
                                   change.isFolder ? "folder " : "", change.path, change.name,
                                   change.isRemoval ? "removed" : added, reasons[i]));
    }
}

bool replicateFile(HostContext& host, const std::string& file, FileChange change) try {
    Replication replication(host);
    if (!replication.addFile(file, change)) return false;
    replication.run();
    return true;
} catch (...) {
    raiseFrom("replicateFile !");
}

bool replicateFolder(HostContext& host, const std::string& folder, FolderChange change) try {
    Replication replication(host);
    if (!replication.addFolder(folder, change)) return false;
    replication.run();
    return true;
} catch (...) {
    raiseFrom("replicateFolder !");
}

std::vector<std::string> onShare(HostContext& host, const std::string& server, std::vector<ShareStep> steps) {
    std::string share;
    try {
        share = folderOfShare(host, server);
    } catch (const Error& error) {
        return std::vector<std::string>(steps.size(), error.what());
    }
    std::vector<ServerShares::Step> bound;
    for (ShareStep& step : steps) {
        bound.emplace_back([share, step = std::move(step)](FileSystem& files) { step(files, share); });
    }
    return host.shares.run(share, installFolder(host), std::move(bound), patience(host));
}

bool isServerName(std::string_view name) {
    return isFolderName(text::trim(name));
}

std::string ownServerName() {
    std::array<char, 256> name{};
    // A name that doesn't fit may come without its end.
    if (::gethostname(name.data(), name.size() - 1) != 0) return {};
    return name.data();
}

}  // namespace torvex
