#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

std::vector<Row<cManager>> folders() {
    return {
        writes(
            "addFolder", &cManager::addFolder,
            {argument("site"), argument("parentFolder"), argument("newFolderName"), argument("folderType"),
             argument("advId", 0)},
            "Adds a media folder called \"New folder\", unless the parent has one of the name given: its id.",
            mediaAccess("edit", "folderType", "site"))
            .codes({refusal("", "Nobody is logged in, the parent isn't there or full, or it failed.")}),
        writes("deleteFolder", &cManager::deleteFolder,
               {argument("site"), argument("folder"), argument("folderType"), argument("advId", 0)},
               "Removes a media folder with all that is in it and below it.",
               mediaAccess("edit", "folderType", "site"))
            .codes({refusal(false, "Nobody is logged in, no folder was named, or it failed.")}),
        reads("getFolderName", &cManager::getFolderName,
              {argument("folderType"), argument("site"), argument("folder")}, "The name of a media folder.",
              anyLogin()),
        reads("getFolderGroups", &cManager::getFolderGroups,
              {argument("folderType"), argument("site"), argument("folder")},
              "All visitor groups, marked where the media folder has them.", anyLogin())
            .lists({{"groupId", Number}, {"name", Text}, {"flag", Number}}),
        writes("setFolderGroup", &cManager::setFolderGroup,
               {argument("folderType"), argument("site"), argument("folder"), argument("groupId"),
                argument("accessFlag")},
               "Lets a visitor group reach a media folder, or no longer.",
               mediaAccess("edit", "folderType", "site")),
        reads("getSystemFolders", &cManager::getSystemFolders, {argument("site"), argument("lang")},
              "The folders below the system branch of a site and language.", designIn("site", "lang"))
            .lists({{"pageId", Number}, {"nodeId", Text}, {"title", Text}}),
        reads("getUploadFolders", &cManager::getUploadFolders,
              {argument("site"), argument("tvMode"), argument("activeFolder"), argument("job")},
              "The script of the folder tree beside a list of files.", anyLogin()),
    };
}

std::vector<Row<cManager>> files() {
    return {
        writes("saveFile", &cManager::saveFile,
               {argument("site"), argument("folder"), argument("folderType"), argument("filename"),
                argument("title")},
               "Registers a file that lies in a media folder's directory: its name.",
               mediaAccess("edit", "folderType", "site"))
            .codes({refusal(-99, "Nobody is logged in, the name or the folder is none, or it failed.")}),
        reads("getImageList", &cManager::getImageList,
              {argument("site"), argument("folderId", ""), argument("width", -1), argument("height", -1)},
              "The images of a folder and those below it, of a size unless that is -1.", anyLogin())
            .lists({{"img_fldId", Text},
                    {"img_title", Text},
                    {"img_filename", Text},
                    {"img_size", Number},
                    {"img_width", Number},
                    {"img_height", Number}}),
        reads("getDocumentList", &cManager::getDocumentList,
              {argument("site"), argument("folderId", ""), argument("docType", "")},
              "The documents of a folder and those below it, of a type unless that is empty.", anyLogin())
            .lists({{"doc_fldId", Text}, {"doc_title", Text}, {"doc_filename", Text}, {"doc_type", Text}}),
        reads("getImageTitle", &cManager::getImageTitle, {argument("site"), argument("filename")},
              "The title of an image.", anyLogin()),
        reads("getDocTitle", &cManager::getDocTitle, {argument("site"), argument("filename")},
              "The title of a document.", anyLogin()),
        reads("getDocType", &cManager::getDocType, {argument("site"), argument("filename")},
              "The type of a document: the end of its file's name.", anyLogin()),
        reads("encryptFilename", &cManager::encryptFilename, {argument("filename"), argument("flag", 0)},
              "A file name that is safe in the web space; with 1 a random one.", anyLogin()),
    };
}

}  // namespace

std::vector<Row<cManager>> managerMediaRows() {
    return joined({folders(), files()});
}

}  // namespace torvex::operations
