#include "pages/api/Kept.h"

#include <algorithm>
#include <array>
#include <sodium.h>

#include "pages/api/Problem.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Hexadecimal.h"
#include "platform/text/Text.h"

namespace torvex::api {

namespace {

/// Of what is sent: another content has another.
std::string entityTag(const std::string& content) {
    std::array<unsigned char, 16> hash{};
    crypto_generichash(hash.data(), hash.size(), reinterpret_cast<const unsigned char*>(content.data()),
                       content.size(), nullptr, 0);
    return '"' + hexadecimal(hash) + '"';
}

bool hasIt(const Request& request, const std::string& tag) {
    std::string known = request.serverVariable("http_if_none_match");
    std::string_view rest = known;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        std::string_view one = text::trim(rest.substr(0, end));
        if (one.starts_with("W/")) one.remove_prefix(2);
        if (one == tag || one == "*") return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

}  // namespace

void answerKept(HostContext& host, const std::string& content) {
    const std::string tag = entityTag(content);
    addFields(host.response);
    host.response.addHeader("ETag", tag);
    host.response.cacheControl = "private, no-cache";
    host.response.contentType = "application/json";
    if (hasIt(host.request, tag)) {
        host.response.status = 304;
    } else {
        host.response.binaryWrite(content);
    }
}

}  // namespace torvex::api
