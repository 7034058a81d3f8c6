#include "platform/text/Text.h"

#include "platform/text/Utf8.h"

namespace torvex::text {

namespace {

using utf8::Unit;

void appendCodePoint(std::string& to, UChar32 value) {
    std::array<std::uint8_t, 4> bytes{};
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, static_cast<std::uint32_t>(value));
    to.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

/// The text with each character mapped; `mapAscii` and `map` agree on ASCII.
template <typename MapAscii, typename Map>
std::string mapped(std::string_view text, MapAscii mapAscii, Map map) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view ascii = text.substr(at, utf8::asciiRun(text, at));
        const std::size_t begin = result.size();
        result.append(ascii);
        std::transform(ascii.begin(), ascii.end(), result.begin() + static_cast<std::ptrdiff_t>(begin),
                       mapAscii);
        at += ascii.size();
        if (at == text.size()) break;
        const Unit unit = utf8::unitAt(text, at);
        if (unit.value >= utf8::brokenByte) {
            result += text[at];
        } else {
            appendCodePoint(result, map(static_cast<UChar32>(unit.value)));
        }
        at += unit.length;
    }
    return result;
}

/// Whether two bytes are of different characters for sure.
bool differ(char a, char b) {
    return utf8::isAscii(a) && utf8::isAscii(b) && utf8::foldedAscii(a) != utf8::foldedAscii(b);
}

}  // namespace

int compare(std::string_view a, std::string_view b) {
    for (;;) {
        const std::size_t same = utf8::sameAsciiRun(a, b);
        a.remove_prefix(same);
        b.remove_prefix(same);
        if (a.empty() || b.empty()) break;
        const Unit left = utf8::unitAt(a, 0);
        const Unit right = utf8::unitAt(b, 0);
        const std::uint32_t l = utf8::folded(left.value);
        const std::uint32_t r = utf8::folded(right.value);
        if (l != r) return l < r ? -1 : 1;
        a.remove_prefix(left.length);
        b.remove_prefix(right.length);
    }
    return (a.empty() ? 0 : 1) - (b.empty() ? 0 : 1);
}

bool equals(std::string_view a, std::string_view b) {
    // Most names are written in one way, and most that differ do so at one of their ends.
    if (a.empty() || b.empty()) return a.size() == b.size();
    if (differ(a.front(), b.front()) || differ(a.back(), b.back())) return false;
    return a == b || matchLength(a, 0, b) == a.size();
}

bool startsWith(std::string_view text, std::string_view prefix) {
    return prefix.empty() || matchLength(text, 0, prefix) > 0;
}

bool endsWith(std::string_view text, std::string_view suffix) {
    while (!suffix.empty()) {
        if (text.empty()) return false;
        const Unit t = utf8::unitBefore(text, text.size());
        const Unit s = utf8::unitBefore(suffix, suffix.size());
        if (utf8::folded(t.value) != utf8::folded(s.value)) return false;
        text.remove_suffix(t.length);
        suffix.remove_suffix(s.length);
    }
    return true;
}

std::string lower(std::string_view text) {
    return mapped(
        text, [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }, u_tolower);
}

std::string upper(std::string_view text) {
    return mapped(
        text, [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }, u_toupper);
}

std::string_view trim(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

std::string lowerTrim(std::string_view text) {
    return lower(trim(text));
}

std::size_t length(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t run = utf8::asciiRun(text, at);
        count += run;
        at += run;
        if (at == text.size()) break;
        at += utf8::unitAt(text, at).length;
        ++count;
    }
    return count;
}

std::string_view first(std::string_view text, std::size_t count) {
    if (count >= text.size()) return text;
    std::size_t end = 0;
    for (; count > 0 && end < text.size(); --count) end += utf8::unitAt(text, end).length;
    return text.substr(0, end);
}

std::string_view last(std::string_view text, std::size_t count) {
    if (count >= text.size()) return text;
    std::size_t begin = text.size();
    for (; count > 0 && begin > 0; --count) begin -= utf8::unitBefore(text, begin).length;
    return text.substr(begin);
}

bool isValidUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        at += utf8::asciiRun(text, at);
        if (at == text.size()) break;
        const Unit unit = utf8::unitAt(text, at);
        if (unit.value >= utf8::brokenByte) return false;
        at += unit.length;
    }
    return true;
}

std::string toValidUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t run = utf8::asciiRun(text, at);
        result.append(text, at, run);
        at += run;
        if (at == text.size()) break;
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data()) + at;
        const auto available = static_cast<std::int32_t>(std::min<std::size_t>(text.size() - at, 4));
        std::int32_t taken = 0;
        UChar32 value = 0;
        // A sequence that breaks off is passed over whole, and becomes one replacement character.
        U8_NEXT_OR_FFFD(bytes, taken, available, value);
        appendCodePoint(result, value);
        at += static_cast<std::size_t>(taken);
    }
    return result;
}

}  // namespace torvex::text
