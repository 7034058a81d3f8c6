#include "search/SearchTexts.h"

#include <unicode/uchar.h>

#include "platform/text/Utf8.h"

namespace torvex {

namespace {

constexpr std::string_view queryRules = "\"()*@$#<>'";
constexpr std::string_view listRules = "\"()*@$#<>'?";

/// Whether a character only divides words.
bool isDivider(const utf8::Unit& unit) {
    if (unit.value >= utf8::brokenByte) return true;
    const auto character = static_cast<UChar32>(unit.value);
    return u_isUWhiteSpace(character) != 0 || u_iscntrl(character) != 0;
}

bool isOneOf(std::string_view signs, std::string_view unit) {
    return unit.size() == 1 && signs.find(unit) != std::string_view::npos;
}

}  // namespace

std::vector<std::string> listItems(std::string_view list) {
    std::vector<std::string> items;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(','), list.size());
        const std::string_view item = text::trim(list.substr(0, end));
        if (!item.empty()) items.emplace_back(item);
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return items;
}

std::string joinedList(const std::vector<std::string>& items) {
    std::string list;
    for (const std::string& item : items) list.append(list.empty() ? "" : ",").append(item);
    return list;
}

std::string plainWords(std::string_view words, std::string_view signs) {
    std::string plain;
    bool isBehindBlank = true;
    for (std::size_t at = 0; at < words.size();) {
        const utf8::Unit unit = utf8::unitAt(words, at);
        const std::string_view character = words.substr(at, unit.length);
        at += unit.length;
        const bool isBlank = isDivider(unit) || isOneOf(signs, character);
        if (!isBlank) plain.append(character);
        if (isBlank && !isBehindBlank) plain += ' ';
        isBehindBlank = isBlank;
    }
    if (plain.ends_with(' ')) plain.pop_back();
    return plain;
}

std::vector<std::string> splitWords(std::string_view words) {
    std::vector<std::string> split;
    while (!words.empty()) {
        const std::size_t end = std::min(words.find(' '), words.size());
        if (end > 0) split.emplace_back(words.substr(0, end));
        words.remove_prefix(std::min(end + 1, words.size()));
    }
    return split;
}

std::string neutralWords(std::string_view words) {
    return plainWords(words, queryRules);
}

std::string neutralList(std::string_view list) {
    std::string neutral = plainWords(text::lower(list), listRules);
    std::erase(neutral, ' ');
    return neutral;
}

}  // namespace torvex
