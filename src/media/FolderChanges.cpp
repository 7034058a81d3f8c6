#include "media/FolderChanges.h"

#include <fmt/format.h>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/Link.h"
#include "platform/text/Text.h"
#include "replication/SharedFiles.h"

namespace torvex {

namespace {

/// Changes nothing and finds out whether the row is there, which then stays as long as the transaction runs.
constexpr std::string_view holdFolder =
    "update {folders} set fld_level = fld_level where fld_site = ? and fld_id = ?";

/// The site's own directory, whose id is empty, has no row and is always there.
bool holdRow(db::Connection& transaction, const MediaFolder& folder) {
    if (folder.id.empty()) return true;
    return transaction.execute(statementFor(folder.kind, holdFolder), {folder.site, folder.id}) > 0;
}

/// Nobody else has the number that is given, so what lies there is left over.
void clear(SharedFiles& files, HostContext& host, const MediaFolder& folder) {
    try {
        files.deleteFile(directoryOf(host, folder) + "/*.*");
    } catch (const std::exception& error) {
        host.log.warn(fmt::format("files of a former folder stayed: {}", error.what()));
    }
}

void createDirectories(SharedFiles& files, HostContext& host, const MediaFolder& folder) {
    for (std::size_t length = 0; length <= folder.id.size(); length += folderLevelLength) {
        files.createFolder(directoryOf(host, {folder.kind, folder.site, folder.id.substr(0, length)}));
    }
}

/// The next number when somebody else takes the free one first.
AddedFolder enterNewFolder(db::Connection& transaction, const MediaFolder& parent) {
    for (;;) {
        std::string id = freeFolderId(transaction, parent);
        if (id.empty()) return {};
        if (enterFolder(transaction, {parent.kind, parent.site, id})) return {std::move(id), true};
    }
}

AddedFolder findOrEnter(db::Connection& transaction, const MediaFolder& parent, std::string_view name) {
    if (freeFolderId(transaction, parent).empty()) return {};
    if (!holdRow(transaction, parent)) return {};
    std::string present = namesake(transaction, parent, name);
    if (!present.empty()) return {std::move(present), false};
    return enterNewFolder(transaction, parent);
}

void warn(HostContext& host, std::string_view what, const MediaFolder& folder, const std::exception& error) {
    host.log.warn(fmt::format("{} folder \"{}/{}\" {}: {}", namesOf(folder.kind).word, folder.site, folder.id,
                              what, error.what()));
}

}  // namespace

AddedFolder addMediaFolder(HostContext& host, const MediaFolder& parent, std::string_view name) {
    SharedFiles files(host);
    try {
        const auto own = db::openOwn(host);
        db::Transaction transaction(*own);
        AddedFolder added = findOrEnter(*own, parent, name);
        if (added.id.empty()) return added;
        const MediaFolder folder{parent.kind, parent.site, added.id};
        if (added.isNew) clear(files, host, folder);
        createDirectories(files, host, folder);
        transaction.commit();
        files.replicate();
        return added;
    } catch (const std::exception& error) {
        warn(host, "got no new folder", parent, error);
    }
    files.takeBack();
    return {};
}

bool removeMediaFolder(HostContext& host, const MediaFolder& folder) {
    try {
        const auto own = db::openOwn(host);
        db::Transaction transaction(*own);
        removeFolderRows(*own, folder);
        transaction.commit();
    } catch (const std::exception& error) {
        warn(host, "was not removed", folder, error);
        return false;
    }
    try {
        SharedFiles files(host);
        files.deleteFolder(directoryOf(host, folder));
        files.replicate();
    } catch (const std::exception& error) {
        warn(host, "left its directory behind", folder, error);
    }
    return true;
}

void setMediaFolderGroup(HostContext& host, const MediaFolder& folder, int groupId, bool access) {
    try {
        const auto own = db::openOwn(host);
        db::Transaction transaction(*own);
        if (!holdRow(*own, folder)) {
            removeFolderGroups(*own, folder);
        } else if (access) {
            admitGroup(*own, folder, groupId);
        } else {
            dismissGroup(*own, folder, groupId);
        }
        transaction.commit();
    } catch (const std::exception& error) {
        warn(host, "kept its groups", folder, error);
    }
}

}  // namespace torvex
