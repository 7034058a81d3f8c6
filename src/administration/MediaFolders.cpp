// cManager: folders of images and documents, and the visitor groups that may reach them.

#include "media/MediaFolders.h"

#include "authoring/cManager.h"
#include "media/FolderChanges.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/text/Text.h"
#include "records/SiteCodes.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::size_t longestName = 50;

constexpr std::string_view selectSystemFolders =
    "select pageId, nodeId, title from TORVEX_PAGES_DESIGN where parent = ? and type = 'F' "
    "order by title, orderId";

MediaFolder folderOf(const std::string& folderType, const std::string& site, const std::string& folder) {
    return {mediaKindOf(folderType), text::lowerTrim(site), text::lowerTrim(folder)};
}

/// Texts that name no folder would lead to other directories and branches.
bool isFolder(const MediaFolder& folder) {
    return isSafeCode(folder.site) && !folder.site.empty() && isFolderId(folder.id);
}

}  // namespace

std::string cManager::addFolder(const std::string& site, const std::string& parentFolder,
                                const std::string& newFolderName, const std::string& folderType,
                                int advId) try {
    const MediaFolder parent = folderOf(folderType, site, parentFolder);
    if (!author_.isLoggedIn() || !isFolder(parent)) return {};
    const AddedFolder added =
        addMediaFolder(host_, parent, text::first(text::trim(newFolderName), longestName));
    if (added.isNew && advId > 0) {
        recordChange("addFolder", advId, "new",
                     parent.kind == MediaKind::Images ? "New image folder" : "New document folder");
    }
    return added.id;
} catch (...) {
    raiseFrom("addFolder !");
}

bool cManager::deleteFolder(const std::string& site, const std::string& folder, const std::string& folderType,
                            int advId) try {
    const MediaFolder removed = folderOf(folderType, site, folder);
    if (!author_.isLoggedIn() || removed.id.empty() || !isFolder(removed)) return false;
    const std::string name = folderName(connection(), removed);
    if (!removeMediaFolder(host_, removed)) return false;
    if (advId > 0)
        recordChange("deleteFolder", advId, "delete",
                     std::string(namesOf(removed.kind).word) + " folder \"" + name + "\" has been removed");
    return true;
} catch (...) {
    raiseFrom("deleteFolder !");
}

std::string cManager::getFolderName(const std::string& folderType, const std::string& site,
                                    const std::string& folder) try {
    return folderName(connection(), folderOf(folderType, site, folder));
} catch (...) {
    raiseFrom("getFolderName !");
}

Value cManager::getFolderGroups(const std::string& folderType, const std::string& site,
                                const std::string& folder) try {
    const MediaFolder asked = folderOf(folderType, site, folder);
    if (asked.site.empty() || asked.id.empty()) return Value("");
    return folderGroups(connection(), asked);
} catch (...) {
    raiseFrom("getFolderGroups !");
}

void cManager::setFolderGroup(const std::string& folderType, const std::string& site,
                              const std::string& folder, int groupId, bool accessFlag) try {
    const MediaFolder guarded = folderOf(folderType, site, folder);
    if (isFolder(guarded)) setMediaFolderGroup(host_, guarded, groupId, accessFlag);
} catch (...) {
    raiseFrom("setFolderGroup !");
}

Value cManager::getSystemFolders(const std::string& site, const std::string& lang) try {
    const std::string parent = systemBranch::below(text::lowerTrim(site) + "." + text::lowerTrim(lang));
    return db::gridOf(connection().query(selectSystemFolders, {parent}), 1);
} catch (...) {
    raiseFrom("getSystemFolders !");
}

}  // namespace torvex
