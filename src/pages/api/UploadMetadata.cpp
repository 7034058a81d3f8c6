#include "pages/api/UploadMetadata.h"

#include <algorithm>
#include <sodium.h>

#include "platform/text/Text.h"

namespace torvex::api {

namespace {

std::optional<std::string> decoded(std::string_view encoded) {
    std::string bytes(encoded.size(), '\0');
    std::size_t length = 0;
    const int failed =
        ::sodium_base642bin(reinterpret_cast<unsigned char*>(bytes.data()), bytes.size(), encoded.data(),
                            encoded.size(), nullptr, &length, nullptr, sodium_base64_VARIANT_ORIGINAL);
    if (failed != 0) return std::nullopt;
    bytes.resize(length);
    return bytes;
}

bool isName(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < '\x7F' && c != ','; });
}

bool add(UploadMetadata& metadata, std::string_view pair) {
    const std::size_t blank = std::min(pair.find(' '), pair.size());
    const std::string_view name = pair.substr(0, blank);
    auto value = decoded(text::trim(pair.substr(blank)));
    return value && isName(name) && metadata.emplace(name, std::move(*value)).second;
}

}  // namespace

std::optional<UploadMetadata> readUploadMetadata(std::string_view field) {
    UploadMetadata metadata;
    if (text::trim(field).empty()) return metadata;
    for (;;) {
        const std::size_t comma = field.find(',');
        if (!add(metadata, text::trim(field.substr(0, comma)))) return std::nullopt;
        if (comma == std::string_view::npos) return metadata;
        field.remove_prefix(comma + 1);
    }
}

}  // namespace torvex::api
