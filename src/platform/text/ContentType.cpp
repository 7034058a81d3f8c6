#include "platform/text/ContentType.h"

#include <algorithm>

#include "platform/text/Charset.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// The part of `text` in front of the first `mark` outside quotes, which is taken away from it.
std::string_view takeUntil(std::string_view& text, char mark) {
    std::size_t end = 0;
    for (bool quoted = false; end < text.size() && (quoted || text[end] != mark); ++end) {
        if (text[end] == '"') quoted = !quoted;
    }
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

std::string_view unquoted(std::string_view value) {
    value = text::trim(value);
    const bool quoted = value.size() > 1 && value.front() == '"' && value.back() == '"';
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

std::string charsetOf(std::string_view contentType) {
    takeUntil(contentType, ';');
    while (!contentType.empty()) {
        std::string_view value = takeUntil(contentType, ';');
        const std::string_view name = takeUntil(value, '=');
        if (text::equals(text::trim(name), "charset")) return std::string(unquoted(value));
    }
    return {};
}

std::string decodeText(std::string_view bytes, std::string_view contentType) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return text::toValidUtf8(bytes.substr(3));
    if (bytes.starts_with("\xFF\xFE")) return charset::decode(bytes.substr(2), "utf-16le");
    if (bytes.starts_with("\xFE\xFF")) return charset::decode(bytes.substr(2), "utf-16be");
    const std::string label = charsetOf(contentType);
    if (charset::isKnown(label)) return charset::decode(bytes, label);
    return text::isValidUtf8(bytes) ? std::string(bytes) : charset::decode(bytes, "windows-1252");
}

}  // namespace torvex
