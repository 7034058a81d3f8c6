// cManager: the registers of images and documents.

#include "media/MediaFiles.h"

#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "media/FileNames.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/text/Text.h"
#include "records/SiteCodes.h"

namespace torvex {

namespace {

constexpr std::size_t longestTitle = 50;
/// What `encryptFilename` is asked for.
constexpr int randomName = 1;

constexpr std::string_view selectImageTitle =
    "select img_title as value from TORVEX_IMAGES where img_site = ? and img_filename = ?";
constexpr std::string_view selectDocumentTitle =
    "select doc_title as value from TORVEX_DOCUMENTS where doc_site = ? and doc_filename = ?";
constexpr std::string_view selectDocumentType =
    "select doc_type as value from TORVEX_DOCUMENTS where doc_site = ? and doc_filename = ?";

/// "" when no file has this name.
std::string ofFile(db::Connection& connection, std::string_view statement, const std::string& site,
                   const std::string& filename) {
    auto rows = connection.query(statement, {text::trim(site), text::trim(filename)});
    return rows.next() ? rows.text("value") : std::string();
}

}  // namespace

std::string cManager::saveFile(const std::string& site, const std::string& folder,
                               const std::string& folderType, const std::string& filename,
                               const std::string& title) {
    if (!author_.isLoggedIn()) return std::string(status::failed);
    const MediaFolder into{mediaKindOf(folderType), std::string(text::trim(site)),
                           std::string(text::trim(folder))};
    const std::string name = text::lowerTrim(filename);
    if (into.site.empty() || !isSafeCode(into.site) || !isFolderId(into.id) || !isMediaFileName(name)) {
        return std::string(status::failed);
    }
    try {
        registerMediaFile(host_, connection(), into, name, text::first(text::trim(title), longestTitle));
        return name;
    } catch (const std::exception& error) {
        host_.log.warn("the file \"" + name + "\" was not registered: " + error.what());
        return std::string(status::failed);
    }
}

Value cManager::getImageList(const std::string& site, const std::string& folderId, int width,
                             int height) try {
    return listImages(connection(),
                      {std::string(text::trim(site)), std::string(text::trim(folderId)), width, height});
} catch (...) {
    raiseFrom("getImageList !");
}

Value cManager::getDocumentList(const std::string& site, const std::string& folderId,
                                const std::string& docType) try {
    return listDocuments(connection(), {std::string(text::trim(site)), std::string(text::trim(folderId)),
                                        std::string(text::trim(docType))});
} catch (...) {
    raiseFrom("getDocumentList !");
}

std::string cManager::getImageTitle(const std::string& site, const std::string& filename) try {
    return ofFile(connection(), selectImageTitle, site, filename);
} catch (...) {
    raiseFrom("getImageTitle !");
}

std::string cManager::getDocTitle(const std::string& site, const std::string& filename) try {
    return ofFile(connection(), selectDocumentTitle, site, filename);
} catch (...) {
    raiseFrom("getDocTitle !");
}

std::string cManager::getDocType(const std::string& site, const std::string& filename) try {
    return ofFile(connection(), selectDocumentType, site, filename);
} catch (...) {
    raiseFrom("getDocType !");
}

std::string cManager::encryptFilename(const std::string& filename, int flag) try {
    return flag == randomName ? randomFileName(filename) : safeFileName(filename);
} catch (...) {
    raiseFrom("encryptFilename !");
}

}  // namespace torvex
