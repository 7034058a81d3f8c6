#include "media/MediaTypes.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/text/Text.h"

namespace torvex {

namespace {

using Entry = std::pair<std::string_view, std::string_view>;

// In the order of the suffixes, for the search.
constexpr std::array table{
    Entry{"7z", "application/x-7z-compressed"},
    Entry{"aac", "audio/aac"},
    Entry{"ai", "application/postscript"},
    Entry{"apng", "image/apng"},
    Entry{"atom", "application/atom+xml; charset=utf-8"},
    Entry{"avi", "video/x-msvideo"},
    Entry{"avif", "image/avif"},
    Entry{"bmp", "image/bmp"},
    Entry{"bz2", "application/x-bzip2"},
    Entry{"css", "text/css; charset=utf-8"},
    Entry{"csv", "text/csv; charset=utf-8"},
    Entry{"doc", "application/msword"},
    Entry{"docm", "application/vnd.ms-word.document.macroEnabled.12"},
    Entry{"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    Entry{"dot", "application/msword"},
    Entry{"dotx", "application/vnd.openxmlformats-officedocument.wordprocessingml.template"},
    Entry{"dtd", "application/xml-dtd"},
    Entry{"dwg", "image/vnd.dwg"},
    Entry{"dxf", "image/vnd.dxf"},
    Entry{"eml", "message/rfc822"},
    Entry{"eot", "application/vnd.ms-fontobject"},
    Entry{"eps", "application/postscript"},
    Entry{"epub", "application/epub+zip"},
    Entry{"flac", "audio/flac"},
    Entry{"gif", "image/gif"},
    Entry{"gpx", "application/gpx+xml"},
    Entry{"gz", "application/gzip"},
    Entry{"heic", "image/heic"},
    Entry{"htm", "text/html; charset=utf-8"},
    Entry{"html", "text/html; charset=utf-8"},
    Entry{"ico", "image/x-icon"},
    Entry{"ics", "text/calendar; charset=utf-8"},
    Entry{"jpeg", "image/jpeg"},
    Entry{"jpg", "image/jpeg"},
    Entry{"js", "text/javascript; charset=utf-8"},
    Entry{"json", "application/json"},
    Entry{"jxl", "image/jxl"},
    Entry{"kml", "application/vnd.google-earth.kml+xml"},
    Entry{"kmz", "application/vnd.google-earth.kmz"},
    Entry{"m3u8", "application/vnd.apple.mpegurl"},
    Entry{"m4a", "audio/mp4"},
    Entry{"m4v", "video/mp4"},
    Entry{"map", "application/json"},
    Entry{"md", "text/markdown; charset=utf-8"},
    Entry{"mid", "audio/midi"},
    Entry{"midi", "audio/midi"},
    Entry{"mjs", "text/javascript; charset=utf-8"},
    Entry{"mkv", "video/x-matroska"},
    Entry{"mov", "video/quicktime"},
    Entry{"mp3", "audio/mpeg"},
    Entry{"mp4", "video/mp4"},
    Entry{"mpeg", "video/mpeg"},
    Entry{"mpg", "video/mpeg"},
    Entry{"mpp", "application/vnd.ms-project"},
    Entry{"odf", "application/vnd.oasis.opendocument.formula"},
    Entry{"odg", "application/vnd.oasis.opendocument.graphics"},
    Entry{"odp", "application/vnd.oasis.opendocument.presentation"},
    Entry{"ods", "application/vnd.oasis.opendocument.spreadsheet"},
    Entry{"odt", "application/vnd.oasis.opendocument.text"},
    Entry{"oga", "audio/ogg"},
    Entry{"ogg", "audio/ogg"},
    Entry{"ogv", "video/ogg"},
    Entry{"opus", "audio/ogg"},
    Entry{"otf", "font/otf"},
    Entry{"ott", "application/vnd.oasis.opendocument.text-template"},
    Entry{"pdf", "application/pdf"},
    Entry{"png", "image/png"},
    Entry{"potx", "application/vnd.openxmlformats-officedocument.presentationml.template"},
    Entry{"pps", "application/vnd.ms-powerpoint"},
    Entry{"ppsx", "application/vnd.openxmlformats-officedocument.presentationml.slideshow"},
    Entry{"ppt", "application/vnd.ms-powerpoint"},
    Entry{"pptx", "application/vnd.openxmlformats-officedocument.presentationml.presentation"},
    Entry{"ps", "application/postscript"},
    Entry{"psd", "image/vnd.adobe.photoshop"},
    Entry{"rar", "application/vnd.rar"},
    Entry{"rss", "application/rss+xml; charset=utf-8"},
    Entry{"rtf", "application/rtf"},
    Entry{"srt", "application/x-subrip"},
    Entry{"svg", "image/svg+xml"},
    Entry{"swf", "application/x-shockwave-flash"},
    Entry{"tar", "application/x-tar"},
    Entry{"tgz", "application/gzip"},
    Entry{"tif", "image/tiff"},
    Entry{"tiff", "image/tiff"},
    Entry{"tsv", "text/tab-separated-values; charset=utf-8"},
    Entry{"ttf", "font/ttf"},
    Entry{"txt", "text/plain; charset=utf-8"},
    Entry{"vcf", "text/vcard; charset=utf-8"},
    Entry{"vsd", "application/vnd.visio"},
    Entry{"vtt", "text/vtt; charset=utf-8"},
    Entry{"wasm", "application/wasm"},
    Entry{"wav", "audio/wav"},
    Entry{"weba", "audio/webm"},
    Entry{"webm", "video/webm"},
    Entry{"webmanifest", "application/manifest+json"},
    Entry{"webp", "image/webp"},
    Entry{"wma", "audio/x-ms-wma"},
    Entry{"wmv", "video/x-ms-wmv"},
    Entry{"woff", "font/woff"},
    Entry{"woff2", "font/woff2"},
    Entry{"xhtml", "application/xhtml+xml"},
    Entry{"xls", "application/vnd.ms-excel"},
    Entry{"xlsm", "application/vnd.ms-excel.sheet.macroEnabled.12"},
    Entry{"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    Entry{"xlt", "application/vnd.ms-excel"},
    Entry{"xltx", "application/vnd.openxmlformats-officedocument.spreadsheetml.template"},
    Entry{"xml", "text/xml; charset=utf-8"},
    Entry{"xsd", "text/xml; charset=utf-8"},
    Entry{"xsl", "application/xslt+xml"},
    Entry{"xslt", "application/xslt+xml"},
    Entry{"xz", "application/x-xz"},
    Entry{"zip", "application/zip"},
};
static_assert(std::is_sorted(table.begin(), table.end()));

}  // namespace

std::string_view mediaType(std::string_view fileName, const MediaTypes& more) {
    const std::size_t dot = fileName.rfind('.');
    if (dot == std::string_view::npos) return {};
    const std::string suffix = text::lower(fileName.substr(dot + 1));
    if (const auto own = more.find(suffix); own != more.end()) return own->second;
    const auto found =
        std::lower_bound(table.begin(), table.end(), suffix,
                         [](const Entry& entry, const std::string& key) { return entry.first < key; });
    return found != table.end() && found->first == suffix ? found->second : std::string_view();
}

}  // namespace torvex
