#include "search/catalogue/ShownTexts.h"

#include "platform/Errors.h"
#include "search/extraction/HtmlText.h"

namespace torvex::catalogue {

namespace {

/// A page that is longer has been found by all its words, but shows what stands in front.
constexpr std::size_t mostRead = 1u << 20;

}  // namespace

ShownTexts::ShownTexts(std::string_view installPath)
    : root_(installPath.ends_with('/') ? installPath : std::string(installPath) + "/"), files_({root_}) {}

std::string ShownTexts::of(const Entry& entry) const {
    if (!isSnapshot(entry.path)) return entry.reading.text;
    try {
        const auto bytes = files_.readRange(root_ + entry.path, 0, mostRead);
        return bytes ? readHtml(*bytes).text : "";
    } catch (const Error&) {
        return "";
    }
}

}  // namespace torvex::catalogue
