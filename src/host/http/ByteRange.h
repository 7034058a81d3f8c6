#pragma once

#include <cstdint>
#include <ctime>
#include <string_view>
#include <variant>

namespace torvex {

/// What of a file a request wants, and when.
struct FileConditions {
    std::string_view range = {};
    std::string_view ifRange = {};
    std::string_view ifNoneMatch = {};
    std::string_view ifModifiedSince = {};
};

struct FileVersion {
    std::uint64_t size = 0;
    std::string_view etag;  ///< strong, with its quotes
    std::time_t modified = 0;
};

struct WholeFile {};
struct NotModified {};
struct UnsatisfiableRange {};
struct FilePart {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};
using FileSelection = std::variant<WholeFile, FilePart, NotModified, UnsatisfiableRange>;

/// Weighs the conditions in the protocol's order. A range that isn't valid, and one of several parts, selects
/// the whole file, as the protocol allows.
FileSelection select(const FileConditions& conditions, const FileVersion& version);

/// The range alone: "bytes=0-99", "bytes=100-", "bytes=-50".
FileSelection selectRange(std::string_view range, std::uint64_t size);

}  // namespace torvex
