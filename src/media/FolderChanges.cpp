#include "media/FolderChanges.h"

#include <fmt/format.h>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/OwnTransaction.h"
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
        warnOf(host.log, "files of a former folder stayed", error);
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

/// What a line for operators begins with.
std::string about(const MediaFolder& folder, std::string_view what) {
    return fmt::format("{} folder \"{}/{}\" {}", namesOf(folder.kind).word, folder.site, folder.id, what);
}

}  // namespace

AddedFolder addMediaFolder(HostContext& host, const MediaFolder& parent, std::string_view name) {
    SharedFiles files(host);
    const auto added =
        db::tryInOwnTransaction(host, about(parent, "got no new folder"), AddedFolder{},
                                [&](db::Connection& own) -> db::Outcome<AddedFolder> {
                                    AddedFolder folder = findOrEnter(own, parent, name);
                                    if (folder.id.empty()) return db::refuse(folder);
                                    const MediaFolder made{parent.kind, parent.site, folder.id};
                                    if (folder.isNew) clear(files, host, made);
                                    makeMediaDirectories(host, files, made);
                                    return db::commit(folder);
                                });
    if (added.isCommitted) {
        files.replicate();
    } else {
        files.takeBack();
    }
    return added.value;
}

bool removeMediaFolder(HostContext& host, const MediaFolder& folder) {
    const auto removed =
        db::tryInOwnTransaction(host, about(folder, "was not removed"), false, [&](db::Connection& own) {
            removeFolderRows(own, folder);
            return db::commit(true);
        });
    if (!removed.value) return false;
    try {
        SharedFiles files(host);
        files.deleteFolder(directoryOf(host, folder));
        files.replicate();
    } catch (const std::exception& error) {
        warnOf(host.log, about(folder, "left its directory behind"), error);
    }
    return true;
}

void setMediaFolderGroup(HostContext& host, const MediaFolder& folder, int groupId, bool access) {
    db::tryInOwnTransaction(host, about(folder, "kept its groups"), false, [&](db::Connection& own) {
        if (!holdRow(own, folder)) {
            removeFolderGroups(own, folder);
        } else if (access) {
            admitGroup(own, folder, groupId);
        } else {
            dismissGroup(own, folder, groupId);
        }
        return db::commit(true);
    });
}

void makeMediaDirectories(HostContext& host, SharedFiles& files, const MediaFolder& folder) {
    for (std::size_t length = 0; length <= folder.id.size(); length += folderLevelLength) {
        files.createFolder(directoryOf(host, {folder.kind, folder.site, folder.id.substr(0, length)}));
    }
}

}  // namespace torvex
