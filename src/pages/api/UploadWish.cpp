#include "pages/api/UploadWish.h"

#include "media/FileNames.h"
#include "media/MediaTypes.h"
#include "operations/register/NeedLabels.h"
#include "operations/register/PublicObject.h"
#include "platform/text/Text.h"
#include "records/SiteCodes.h"

namespace torvex::api {

namespace {

using operations::ArgumentError;
namespace need = operations::need;

constexpr std::size_t longestTitle = 50;

const std::string* find(const UploadMetadata& metadata, std::string_view name) {
    const auto found = metadata.find(name);
    return found == metadata.end() ? nullptr : &found->second;
}

/// A text without what no text may hold.
std::string textOf(const UploadMetadata& metadata, const std::string& name, const std::string& missing) {
    const std::string* given = find(metadata, name);
    if (!given) return missing;
    if (!text::isValidUtf8(*given) || given->find('\0') != std::string::npos)
        throw ArgumentError("a text in UTF-8 is needed", name, need::cleanText);
    return std::string(text::trim(*given));
}

MediaKind kindOf(const UploadMetadata& metadata) {
    const std::string given = textOf(metadata, "folderType", "");
    if (text::equals(given, "images")) return MediaKind::Images;
    if (text::equals(given, "documents")) return MediaKind::Documents;
    throw ArgumentError("\"images\" or \"documents\" is needed", "folderType", need::mediaKind);
}

std::string siteOf(const UploadMetadata& metadata) {
    std::string site = text::lower(textOf(metadata, "site", ""));
    if (!isCode(site)) throw ArgumentError("the code of a site is needed", "site", need::siteCode);
    return site;
}

std::string folderOf(const UploadMetadata& metadata) {
    std::string folder = textOf(metadata, "folder", "");
    if (!isFolderId(folder))
        throw ArgumentError("the number of a folder is needed", "folder", need::folderNumber);
    return folder;
}

std::string nameOf(const UploadMetadata& metadata) {
    const std::string* given = find(metadata, "filename");
    const auto kept = given ? keptFileName(*given) : std::nullopt;
    if (!kept) throw ArgumentError("a file's name without a path is needed", "filename", need::fileName);
    return *kept;
}

/// What stands before the last point.
std::string stemOf(const UploadMetadata& metadata) {
    const std::string given(text::trim(*find(metadata, "filename")));
    return given.substr(0, given.rfind('.'));
}

bool isPictureType(std::string_view type) {
    return text::startsWith(type, "image/");
}

}  // namespace

UploadPlan planOf(const UploadMetadata& metadata) {
    UploadPlan plan;
    plan.file.folder = {kindOf(metadata), siteOf(metadata), folderOf(metadata)};
    plan.file.name = nameOf(metadata);
    plan.title = textOf(metadata, "title", "");
    if (plan.title.empty()) plan.title = stemOf(metadata);
    plan.title = text::first(plan.title, longestTitle);
    plan.replaces = find(metadata, "replace") != nullptr;
    return plan;
}

bool isKeptKind(MediaKind kind, const std::string& name, std::string_view claimed, const MediaTypes& more) {
    const std::string_view type = mediaType(name, more);
    if (type.empty() || (kind == MediaKind::Images && !isPictureType(type))) return false;
    claimed = text::trim(claimed);
    return claimed.empty() || isPictureType(claimed) == isPictureType(type);
}

}  // namespace torvex::api
