#pragma once

#include <algorithm>
#include <string>
#include <string_view>

/// Case in the protocol's own words, which are ASCII: for names of header fields and the like. Text that
/// people write is compared with `text::equals`.
namespace torvex::ascii {

constexpr char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

constexpr bool equals(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

constexpr bool startsWith(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && equals(text.substr(0, prefix.size()), prefix);
}

constexpr bool endsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() && equals(text.substr(text.size() - suffix.size()), suffix);
}

inline std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower);
    return result;
}

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The value of a hexadecimal digit, -1 for any other character.
constexpr int hexValue(char c) {
    if (isDigit(c)) return c - '0';
    const char l = lower(c);
    return l >= 'a' && l <= 'f' ? l - 'a' + 10 : -1;
}

/// Without blanks and tabs at both ends.
constexpr std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace torvex::ascii
