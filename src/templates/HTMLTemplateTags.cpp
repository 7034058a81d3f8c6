#include <charconv>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <optional>
#include <set>

#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

/// The number that a text stands for, rounded to an even one in the middle; nothing when it is no number or
/// needs more than 16 bits.
std::optional<int> tagNumber(std::string_view text) {
    if (!text::isNumeric(text)) return std::nullopt;
    const double rounded = std::nearbyint(text::toNumber(text));
    using Limits = std::numeric_limits<std::int16_t>;
    if (rounded < Limits::min() || rounded > Limits::max()) return std::nullopt;
    return static_cast<int>(rounded);
}

/// The numbers of a tag that stand in a text in plain form. Asked for each by itself, the whole text would be
/// searched for each.
std::set<int> plainNumbers(std::string_view text, std::string_view prefix) {
    std::set<int> numbers;
    for (std::size_t at = markers::find(text, prefix); at != text::npos;
         at = markers::find(text, prefix, at + 1)) {
        const std::size_t begin = at + text::matchLength(text, at, prefix);
        int number = 0;
        const auto read = std::from_chars(text.data() + begin, text.data() + text.size(), number);
        if (read.ec != std::errc()) continue;
        const auto marker = fmt::format("{}{}", number, markers::closing);
        if (text.substr(begin).starts_with(marker)) numbers.insert(number);
    }
    return numbers;
}

int firstTagNumber(std::string_view text, std::string_view prefix) {
    std::optional<std::set<int>> present;
    for (std::size_t at = markers::find(text, prefix); at != text::npos;
         at = markers::find(text, prefix, at)) {
        const std::size_t begin = at + text::matchLength(text, at, prefix);
        at = text::find(text, markers::closing, at);
        if (at == text::npos) break;
        const auto number = at < begin ? std::nullopt : tagNumber(text.substr(begin, at - begin));
        if (!number) continue;
        if (!present) present = plainNumbers(text, prefix);
        if (present->contains(*number)) return *number;
    }
    return 0;
}

/// Fills the places of a marker. A tag mostly has one place or none, so those don't build a new text.
void fill(std::string& buffer, std::string_view marker, std::string_view text, int count) {
    const std::size_t first = markers::find(buffer, marker);
    if (first == text::npos || count == 0) return;
    const std::size_t length = text::matchLength(buffer, first, marker);
    const std::size_t second = count == 1 ? text::npos : markers::find(buffer, marker, first + length);
    if (second == text::npos) {
        markers::checkSize(buffer.size(), text.size());
        buffer.replace(first, length, text);
        return;
    }
    std::string filled;
    std::size_t kept = 0;
    for (std::size_t at = first; at != text::npos && count != 0; count -= count > 0 ? 1 : 0) {
        markers::checkSize(filled.size() + at - kept, text.size());
        filled.append(buffer, kept, at - kept).append(text);
        kept = at + text::matchLength(buffer, at, marker);
        at = markers::find(buffer, marker, kept);
    }
    filled.append(buffer, kept);
    buffer = std::move(filled);
}

}  // namespace

bool HTMLTemplate::tagExists(std::string_view tag) const try {
    return markers::find(buffer_, markers::tag(tag)) != text::npos;
} catch (...) {
    raiseFrom("tagExists (HTMLTemplate) !");
}

int HTMLTemplate::iTagExists(std::string_view tag) const try {
    return firstTagNumber(buffer_, fmt::format("{}{}_", markers::opening, tag));
} catch (...) {
    raiseFrom("iTagExists !");
}

void HTMLTemplate::replaceTag(std::string_view tag, std::string_view text, std::string_view letterCase,
                              int count) try {
    const std::string marker = markers::tag(tag);
    if (text::equals(letterCase, "U")) {
        fill(buffer_, marker, text::upper(text), count);
    } else if (text::equals(letterCase, "L")) {
        fill(buffer_, marker, text::lower(text), count);
    } else {
        fill(buffer_, marker, text, count);
    }
} catch (...) {
    raiseFrom("replaceTag (HTMLTemplate) !");
}

void HTMLTemplate::removeTags() try { buffer_ = markers::withoutMarkers(buffer_); } catch (...) {
    raiseFrom("removeTags (HTMLTemplate) !");
}

}  // namespace torvex
