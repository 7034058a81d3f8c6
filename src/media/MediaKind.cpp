#include "media/MediaKind.h"

#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr MediaNames images{"img", "Image", "TORVEX_IMAGES", "TORVEX_IMAGES_FOLDERS",
                            applicationKey::imagesPath};
constexpr MediaNames documents{"doc", "Document", "TORVEX_DOCUMENTS", "TORVEX_DOCUMENTS_FOLDERS",
                               applicationKey::documentsPath};

}  // namespace

MediaKind mediaKindOf(std::string_view word) {
    word = text::trim(word);
    const bool isImages = text::equals(word, "images") || text::equals(word, "pictures");
    return isImages ? MediaKind::Images : MediaKind::Documents;
}

const MediaNames& namesOf(MediaKind kind) {
    return kind == MediaKind::Images ? images : documents;
}

std::string statementFor(MediaKind kind, std::string_view pattern) {
    const MediaNames& names = namesOf(kind);
    std::string statement = text::replaceAll(pattern, "{prefix}", names.prefix);
    statement = text::replaceAll(statement, "{files}", names.files);
    return text::replaceAll(statement, "{folders}", names.folders);
}

std::string mediaDirectory(const ApplicationValues& application, MediaKind kind, std::string_view site) {
    return application.text(namesOf(kind).directoryKey) + std::string(site);
}

}  // namespace torvex
