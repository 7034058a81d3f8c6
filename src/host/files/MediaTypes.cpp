#include "host/files/MediaTypes.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/http/Ascii.h"

namespace torvex {

namespace {

using Entry = std::pair<std::string_view, std::string_view>;

// In the order of the suffixes, for the search.
constexpr std::array table{
    Entry{"avif", "image/avif"},
    Entry{"bmp", "image/bmp"},
    Entry{"css", "text/css; charset=utf-8"},
    Entry{"csv", "text/csv; charset=utf-8"},
    Entry{"doc", "application/msword"},
    Entry{"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    Entry{"eot", "application/vnd.ms-fontobject"},
    Entry{"gif", "image/gif"},
    Entry{"gz", "application/gzip"},
    Entry{"htm", "text/html; charset=utf-8"},
    Entry{"html", "text/html; charset=utf-8"},
    Entry{"ico", "image/x-icon"},
    Entry{"ics", "text/calendar; charset=utf-8"},
    Entry{"jpeg", "image/jpeg"},
    Entry{"jpg", "image/jpeg"},
    Entry{"js", "text/javascript; charset=utf-8"},
    Entry{"json", "application/json"},
    Entry{"m4a", "audio/mp4"},
    Entry{"m4v", "video/mp4"},
    Entry{"map", "application/json"},
    Entry{"mjs", "text/javascript; charset=utf-8"},
    Entry{"mov", "video/quicktime"},
    Entry{"mp3", "audio/mpeg"},
    Entry{"mp4", "video/mp4"},
    Entry{"odp", "application/vnd.oasis.opendocument.presentation"},
    Entry{"ods", "application/vnd.oasis.opendocument.spreadsheet"},
    Entry{"odt", "application/vnd.oasis.opendocument.text"},
    Entry{"ogg", "audio/ogg"},
    Entry{"otf", "font/otf"},
    Entry{"pdf", "application/pdf"},
    Entry{"png", "image/png"},
    Entry{"ppt", "application/vnd.ms-powerpoint"},
    Entry{"pptx", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
    Entry{"rss", "application/rss+xml; charset=utf-8"},
    Entry{"rtf", "application/rtf"},
    Entry{"svg", "image/svg+xml"},
    Entry{"tif", "image/tiff"},
    Entry{"tiff", "image/tiff"},
    Entry{"ttf", "font/ttf"},
    Entry{"txt", "text/plain; charset=utf-8"},
    Entry{"vtt", "text/vtt; charset=utf-8"},
    Entry{"wasm", "application/wasm"},
    Entry{"wav", "audio/wav"},
    Entry{"webm", "video/webm"},
    Entry{"webmanifest", "application/manifest+json"},
    Entry{"webp", "image/webp"},
    Entry{"woff", "font/woff"},
    Entry{"woff2", "font/woff2"},
    Entry{"xls", "application/vnd.ms-excel"},
    Entry{"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    Entry{"xml", "text/xml; charset=utf-8"},
    Entry{"zip", "application/zip"},
};
static_assert(std::is_sorted(table.begin(), table.end()));

}  // namespace

std::string_view mediaType(std::string_view fileName) {
    const std::size_t dot = fileName.rfind('.');
    if (dot == std::string_view::npos) return "application/octet-stream";
    const std::string suffix = ascii::lowered(fileName.substr(dot + 1));
    const auto found =
        std::lower_bound(table.begin(), table.end(), suffix,
                         [](const Entry& entry, const std::string& key) { return entry.first < key; });
    return found != table.end() && found->first == suffix ? found->second : "application/octet-stream";
}

}  // namespace torvex
