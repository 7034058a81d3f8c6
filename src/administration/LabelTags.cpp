#include "administration/LabelTags.h"

#include <optional>

#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view prefix = "<label-";
constexpr std::size_t digits = 4;

// In characters, of the two kinds.
constexpr std::size_t plainLength = 17;
constexpr std::size_t beforePlainNumber = 12;
constexpr std::size_t scriptLength = 15;
constexpr std::size_t beforeScriptNumber = 10;

std::string_view characters(std::string_view text, std::size_t from, std::size_t count) {
    return text::first(text.substr(text::first(text, from).size()), count);
}

struct Tag {
    bool isScript = false;
    double label = 0;
    std::size_t size = 0;  ///< in bytes
};

/// The tag at the beginning of a text; nothing when it names no number.
std::optional<Tag> tagAt(std::string_view text) {
    const std::string_view window = text::first(text, plainLength);
    Tag tag;
    tag.isScript = text::contains(window, "-js-");
    const std::string_view number =
        characters(window, tag.isScript ? beforeScriptNumber : beforePlainNumber, digits);
    if (!text::isNumeric(number)) return std::nullopt;
    tag.label = text::toNumber(number);
    tag.size = text::first(window, tag.isScript ? scriptLength : plainLength).size();
    return tag;
}

/// What a tag's place holds.
std::string filled(const Tag& tag, const std::map<double, std::string>& words) {
    const auto found = words.find(tag.label);
    const std::string word = found == words.end() ? std::string() : std::string(text::trim(found->second));
    return tag.isScript ? scriptText(word) : text::replaceAll(text::htmlEncode(word), " ", "&nbsp;");
}

/// Calls with the text before each tag and the tag. False when one of them names no number.
template <typename Visit>
bool visitTags(std::string_view& rest, Visit visit) {
    for (std::size_t at = text::find(rest, prefix); at != text::npos; at = text::find(rest, prefix)) {
        const auto tag = tagAt(rest.substr(at));
        if (!tag) return false;
        visit(rest.substr(0, at), *tag);
        rest.remove_prefix(at + tag->size);
    }
    return true;
}

}  // namespace

std::vector<double> labelsIn(std::string_view text) {
    std::vector<double> labels;
    const bool isWhole =
        visitTags(text, [&](std::string_view, const Tag& tag) { labels.push_back(tag.label); });
    return isWhole ? labels : std::vector<double>();
}

std::string translateLabels(std::string_view text, const std::map<double, std::string>& words) {
    std::string result;
    std::string_view rest = text;
    const bool isWhole = visitTags(rest, [&](std::string_view before, const Tag& tag) {
        result.append(before).append(filled(tag, words));
    });
    return isWhole ? result.append(rest) : std::string(text);
}

}  // namespace torvex
