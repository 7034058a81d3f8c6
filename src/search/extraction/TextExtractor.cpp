#include "search/extraction/TextExtractor.h"

#include <algorithm>

#include "platform/text/Text.h"
#include "search/extraction/HtmlText.h"
#include "search/extraction/OfficeText.h"
#include "search/extraction/PdfText.h"
#include "search/extraction/RtfText.h"
#include "search/extraction/TextBuilder.h"

namespace torvex::catalogue {

namespace {

Reading readPlain(std::string_view bytes) {
    // No more than what can become the text that is kept.
    constexpr std::size_t enough = 2 * longestText + 4;
    TextBuilder text;
    text.add(decodedText(bytes.substr(0, enough)));
    return {text.take(), {}, {}};
}

struct Kind {
    std::string_view ending;
    Reading (*read)(std::string_view bytes);
};

constexpr Kind kinds[] = {
    {"html", readHtml},        {"htm", readHtml},         {"xhtml", readHtml},
    {"txt", readPlain},        {"csv", readPlain},        {"md", readPlain},
    {"rtf", readRtf},          {"pdf", readPdf},          {"docx", readOpenXml},
    {"docm", readOpenXml},     {"dotx", readOpenXml},     {"xlsx", readOpenXml},
    {"xlsm", readOpenXml},     {"xltx", readOpenXml},     {"pptx", readOpenXml},
    {"pptm", readOpenXml},     {"ppsx", readOpenXml},     {"potx", readOpenXml},
    {"odt", readOpenDocument}, {"ods", readOpenDocument}, {"odp", readOpenDocument},
    {"odg", readOpenDocument}, {"ott", readOpenDocument}, {"ots", readOpenDocument},
    {"otp", readOpenDocument},
};

const Kind* kindOf(std::string_view fileName) {
    const std::size_t point = fileName.rfind('.');
    if (point == std::string_view::npos) return nullptr;
    const std::string ending = text::lower(fileName.substr(point + 1));
    const auto* found = std::find_if(std::begin(kinds), std::end(kinds),
                                     [&](const Kind& kind) { return kind.ending == ending; });
    return found == std::end(kinds) ? nullptr : found;
}

}  // namespace

bool hasReadableText(std::string_view fileName) {
    return kindOf(fileName) != nullptr;
}

Reading DirectExtractor::read(const std::string& fileName, std::string_view bytes) {
    const Kind* kind = kindOf(fileName);
    return kind == nullptr ? Reading{} : kind->read(bytes);
}

}  // namespace torvex::catalogue
