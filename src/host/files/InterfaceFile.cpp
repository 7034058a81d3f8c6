#include "host/files/InterfaceFile.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
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

/// Of the file and the forms that were made with it the one that the request takes.
std::pair<Coding, BuiltInterface::Bytes> bestForm(const BuiltInterface& interface, const std::string& name,
                                                  BuiltInterface::Bytes plain, const RequestHead& head) {
    std::vector<Coding> offered;
    std::map<Coding, BuiltInterface::Bytes> forms{{Coding::Identity, std::move(plain)}};
    for (const Packed& form : packedForms) {
        BuiltInterface::Bytes bytes = interface.file(name + std::string(form.suffix));
        if (!bytes) continue;
        offered.push_back(form.coding);
        forms.emplace(form.coding, std::move(bytes));
    }
    const Coding coding = preferredCoding(head, offered);
    return {coding, forms.at(coding)};
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
    auto [coding, form] = bestForm(interface, name, std::move(bytes), head);
    if (coding != Coding::Identity) answer.addField("Content-Encoding", codingName(coding));
    answer.body = std::move(form);
    return answer;
}

}  // namespace torvex
