#include "platform/text/LogText.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

#include "platform/text/Utf8.h"

namespace torvex {

namespace {

constexpr std::size_t mostLines = 20;  ///< of one chain: the deepest calls nest less

/// Whether a character shows as itself and leaves its neighbours where they are.
bool isSeen(std::uint32_t value) {
    switch (u_charType(static_cast<UChar32>(value))) {
        case U_CONTROL_CHAR:
        case U_FORMAT_CHAR:  // marks of direction, joiners, tags
        case U_LINE_SEPARATOR:
        case U_PARAGRAPH_SEPARATOR:
        case U_SURROGATE:
        case U_PRIVATE_USE_CHAR:
        case U_UNASSIGNED:
            return false;
        default:
            return true;
    }
}

void addEscape(std::string& result, std::uint32_t value) {
    auto out = std::back_inserter(result);
    if (value >= utf8::brokenByte) {
        fmt::format_to(out, "\\x{:02x}", value - utf8::brokenByte);
    } else if (value < 0x80) {
        fmt::format_to(out, "\\x{:02x}", value);
    } else if (value < 0x10000) {
        fmt::format_to(out, "\\u{:04x}", value);
    } else {
        fmt::format_to(out, "\\U{:08x}", value);
    }
}

}  // namespace

std::string forLog(std::string_view text, std::size_t most) {
    std::string result;
    std::size_t at = 0;
    for (std::size_t count = 0; at < text.size() && count < most; ++count) {
        const utf8::Unit unit = utf8::unitAt(text, at);
        if (unit.value < utf8::brokenByte && isSeen(unit.value)) {
            result.append(text.substr(at, unit.length));
        } else {
            addEscape(result, unit.value);
        }
        at += unit.length;
    }
    if (at < text.size()) fmt::format_to(std::back_inserter(result), "... ({} bytes more)", text.size() - at);
    return result;
}

std::string chainForLog(std::string_view chain, std::size_t most) {
    std::string result;
    for (std::size_t count = 0; !chain.empty(); ++count) {
        if (count == mostLines) return result.append(" | ").append(forLog(chain, 0));
        std::string_view line = chain.substr(0, chain.find('\n'));
        chain.remove_prefix(std::min(line.size() + 1, chain.size()));
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (count > 0) result += " | ";
        result += forLog(line, most);
    }
    return result;
}

}  // namespace torvex
