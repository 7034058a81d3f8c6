#include "host/files/InterfaceFile.h"

#include <algorithm>
#include <array>

#include "host/files/StaticFiles.h"
#include "host/http/Ascii.h"
#include "host/http/ErrorPages.h"
#include "installation/BuiltInterface.h"
#include "media/MediaTypes.h"

namespace torvex {

namespace {

constexpr std::size_t hashLength = 8;

struct Coding {
    std::string_view name;
    std::string_view suffix;
};

// The better one first.
constexpr std::array codings{Coding{"br", ".br"}, Coding{"gzip", ".gz"}};

/// "br" in "gzip, br;q=1.0". One that is offered with q=0 is refused.
bool accepts(std::string_view field, std::string_view coding) {
    while (!field.empty()) {
        const std::string_view item = field.substr(0, field.find(','));
        field.remove_prefix(std::min(field.size(), item.size() + 1));
        const std::size_t parameters = item.find(';');
        if (!ascii::equals(ascii::trimmed(item.substr(0, parameters)), coding)) continue;
        if (parameters == std::string_view::npos) return true;
        const std::string_view quality = item.substr(parameters);
        return quality.find_first_of("123456789") != std::string_view::npos;
    }
    return false;
}

/// "main-BJm3x1yZ.js": another text has another name.
bool holdsHash(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot < hashLength + 1 || name[dot - hashLength - 1] != '-')
        return false;
    const std::string_view hash = name.substr(dot - hashLength, hashLength);
    return std::all_of(hash.begin(), hash.end(), [](char c) {
        const char small = ascii::lower(c);
        return (small >= 'a' && small <= 'z') || ascii::isDigit(c) || c == '_' || c == '-';
    });
}

std::string_view cacheControl(const BuiltInterface& interface, std::string_view name) {
    return interface.isFixed() && holdsHash(name) ? "public, max-age=31536000, immutable" : "no-cache";
}

}  // namespace

Answer interfaceAnswer(const BuiltInterface& interface, std::string_view path, const RequestHead& head) {
    if (!isPublicPath(path)) return errorPages::page(404);
    const std::string name(path.substr(interfaceFolder.size()));
    BuiltInterface::Bytes bytes = interface.file(name);
    if (!bytes) return errorPages::page(404);
    Answer answer;
    answer.addField("Content-Type", mediaType(name));
    answer.addField("Cache-Control", cacheControl(interface, name));
    answer.addField("Vary", "Accept-Encoding");
    const std::string_view accepted = head.field("Accept-Encoding");
    for (const Coding& coding : codings) {
        if (!accepts(accepted, coding.name)) continue;
        BuiltInterface::Bytes packed = interface.file(name + std::string(coding.suffix));
        if (!packed) continue;
        answer.addField("Content-Encoding", coding.name);
        bytes = std::move(packed);
        break;
    }
    answer.body = std::move(bytes);
    return answer;
}

}  // namespace torvex
