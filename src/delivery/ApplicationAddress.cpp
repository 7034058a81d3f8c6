#include "delivery/ApplicationAddress.h"

#include "platform/text/Text.h"

namespace torvex {

std::string applicationAddress(const ApplicationCall& call, std::string_view numbered) {
    std::string address(call.address);
    address += text::contains(address, "?") ? "&" : "?";
    if (!text::contains(numbered, "pageId")) address += "pageId=" + text::fromNumber(call.pageId) + "&";
    address += call.query;
    if (!call.parameters.empty()) {
        address += "&" + encodedQuery(text::replaceAll(call.parameters, ",", "&"));
    }
    return address;
}

std::string encodedQuery(std::string_view query) {
    return text::replaceAll(text::replaceAll(text::urlEncode(query), "%3D", "="), "%26", "&");
}

}  // namespace torvex
