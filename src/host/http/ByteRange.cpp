#include "host/http/ByteRange.h"

#include <charconv>
#include <optional>

#include "host/http/Ascii.h"
#include "platform/net/HttpDate.h"

namespace torvex {

namespace {

std::optional<std::uint64_t> number(std::string_view text) {
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, value);
    if (failure != std::errc() || stop != end) return std::nullopt;
    return value;
}

/// Whether a list of tags holds this one. Tags are compared weakly, as the protocol asks for If-None-Match.
bool listsTag(std::string_view list, std::string_view etag) {
    if (ascii::trimmed(list) == "*") return true;
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        std::string_view tag = ascii::trimmed(list.substr(0, comma));
        list.remove_prefix(std::min(comma + 1, list.size()));
        if (tag.starts_with("W/")) tag.remove_prefix(2);
        if (tag == etag) return true;
    }
    return false;
}

bool isUnmodified(const FileConditions& conditions, const FileVersion& version) {
    if (!conditions.ifNoneMatch.empty()) return listsTag(conditions.ifNoneMatch, version.etag);
    if (conditions.ifModifiedSince.empty()) return false;
    const std::optional<std::time_t> since = parseHttpDate(conditions.ifModifiedSince);
    return since && version.modified <= *since;
}

/// A range is only good for the version that the visitor has the rest of.
bool isRangeFor(std::string_view ifRange, const FileVersion& version) {
    if (ifRange.empty()) return true;
    if (ifRange.starts_with('"')) return ifRange == version.etag;
    return parseHttpDate(ifRange) == version.modified;
}

FileSelection suffix(std::uint64_t length, std::uint64_t size) {
    if (length == 0 || size == 0) return UnsatisfiableRange{};
    const std::uint64_t taken = std::min(length, size);
    return FilePart{size - taken, taken};
}

}  // namespace

FileSelection selectRange(std::string_view range, std::uint64_t size) {
    if (!ascii::startsWith(range, "bytes=")) return WholeFile{};
    const std::string_view parts = ascii::trimmed(range.substr(6));
    const std::size_t dash = parts.find('-');
    if (dash == std::string_view::npos || parts.find(',') != std::string_view::npos) return WholeFile{};
    const std::optional<std::uint64_t> last = number(parts.substr(dash + 1));
    if (dash == 0) return last ? suffix(*last, size) : WholeFile{};
    const std::optional<std::uint64_t> first = number(parts.substr(0, dash));
    if (!first || (!last && dash + 1 < parts.size()) || (last && *last < *first)) return WholeFile{};
    if (*first >= size) return UnsatisfiableRange{};
    const std::uint64_t end = last ? std::min(*last, size - 1) : size - 1;
    return FilePart{*first, end - *first + 1};
}

FileSelection select(const FileConditions& conditions, const FileVersion& version) {
    if (isUnmodified(conditions, version)) return NotModified{};
    if (conditions.range.empty() || !isRangeFor(conditions.ifRange, version)) return WholeFile{};
    return selectRange(conditions.range, version.size);
}

}  // namespace torvex
