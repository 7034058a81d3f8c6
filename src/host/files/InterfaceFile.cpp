#include "host/files/InterfaceFile.h"

#include <algorithm>
#include <array>
#include <vector>

#include "host/files/StaticFiles.h"
#include "host/http/Ascii.h"
#include "host/http/ContentCoding.h"
#include "host/http/ErrorPages.h"
#include "installation/BuiltInterface.h"
#include "media/MediaTypes.h"

namespace torvex {

namespace {

constexpr std::size_t hashLength = 8;

struct Packed {
    Coding coding;
    std::string_view suffix;
};

// The better one first.
constexpr std::array packedForms{Packed{Coding::Brotli, ".br"}, Packed{Coding::Gzip, ".gz"}};

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

/// In the form that was made with it, if the request takes one.
void encode(Answer& answer, BuiltInterface::Bytes& bytes, const BuiltInterface& interface,
            const std::string& name, const RequestHead& head) {
    std::vector<Coding> offered;
    for (const Packed& form : packedForms)
        if (interface.file(name + std::string(form.suffix))) offered.push_back(form.coding);
    const Coding coding = preferredCoding(head, offered);
    if (coding == Coding::Identity) return;
    const auto* form = std::find_if(packedForms.begin(), packedForms.end(),
                                    [coding](const Packed& one) { return one.coding == coding; });
    bytes = interface.file(name + std::string(form->suffix));
    answer.addField("Content-Encoding", codingName(coding));
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
    encode(answer, bytes, interface, name, head);
    answer.body = std::move(bytes);
    return answer;
}

}  // namespace torvex
