// cManager: the folder tree beside the list of uploaded files.

#include "authoring/cManager.h"
#include "media/UploadTree.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Labels.h"

namespace torvex {

namespace {

constexpr std::string_view newFolderWord = "New folder";

}  // namespace

std::string cManager::getUploadFolders(const std::string& site, const std::string& tvMode,
                                       const std::string& activeFolder, const std::string& job) try {
    const std::string folder(text::trim(activeFolder));
    UploadTree tree{mediaKindOf(job),
                    std::string(text::trim(site)),
                    getSiteName(site),
                    std::string(text::trim(tvMode)),
                    isFolderId(folder) ? folder : std::string(),
                    getVocab(host_.session.text(sessionKey::interfaceLanguage), label::newFolder)};
    if (tree.newFolder.empty()) tree.newFolder = newFolderWord;
    return uploadTreeScript(host_, connection(), tree);
} catch (...) {
    raiseFrom("getUploadFolders !");
}

}  // namespace torvex
