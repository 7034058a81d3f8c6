#include "modules/shared/ItemText.h"

#include "platform/text/Text.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

/// The tags that an item's text may hold, and what stands for them while the rest is encoded.
struct KeptTag {
    std::string_view tag;
    std::string_view standIn;
};
constexpr KeptTag lineBreak{"<br>", "|br|"};
constexpr KeptTag keptTags[] = {lineBreak,        {"<b>", "|b|"}, {"</b>", "|/b|"}, {"<u>", "|u|"},
                                {"</u>", "|/u|"}, {"<i>", "|i|"}, {"</i>", "|/i|"}};

template <typename Tags>
std::string encodedBut(const Tags& tags, std::string_view text) {
    std::string result(text);
    for (const KeptTag& kept : tags) result = text::replaceAll(result, kept.tag, kept.standIn);
    result = text::htmlEncode(result);
    for (const KeptTag& kept : tags) result = text::replaceAll(result, kept.standIn, kept.tag);
    return result;
}

/// A comment that looks like a marker stays a comment, and no marker.
std::string withoutMarkers(std::string_view html) {
    return text::replaceAll(html, markers::opening, "<!-- !");
}

}  // namespace

std::string itemText(std::string_view text, bool isHtmlAllowed) {
    if (text.empty()) return {};
    std::string html =
        isHtmlAllowed ? withoutMarkers(text) : text::replaceAll(encodedBut(keptTags, text), "  ", "&nbsp; ");
    return text::replaceAll(html, "\r\n", "<br>") + "&nbsp;";
}

std::string linkWords(std::string_view words, bool isHtmlAllowed) {
    constexpr KeptTag onlyBreaks[] = {lineBreak};
    return isHtmlAllowed ? withoutMarkers(words) : encodedBut(onlyBreaks, words);
}

std::string cutText(std::string_view text, int length) {
    if (length < 0) return std::string(text);
    if (length == 0) return {};
    const std::size_t blank = text.find(' ', text::first(text, static_cast<std::size_t>(length - 1)).size());
    if (blank == std::string_view::npos) return std::string(text);
    const std::string_view kept = text::trim(text.substr(0, blank));
    return kept == text ? std::string(text) : std::string(kept) + "...";
}

std::string linkNotationOf(std::string_view link) {
    std::string address(link);
    for (const auto& [character, code] : {std::pair{"\"", "%22"}, {"<", "%3C"}, {">", "%3E"}})
        address = text::replaceAll(address, character, code);
    if (text::isNumeric(address)) return "page(" + address + ")";
    return text::startsWith(address, "http") ? address : "file(" + address + ")";
}

}  // namespace torvex
