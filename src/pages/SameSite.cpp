#include "pages/SameSite.h"

#include <string>

#include "pages/PublicAddress.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// A page over http may post to https, where the port differs as well.
bool isOwnOrigin(const HostContext& host, std::string_view origin) {
    const std::string asked = host.request.serverVariable("http_host");
    for (const std::string& own : {"http://" + asked, "https://" + asked}) {
        if (text::equals(origin, own) || text::equals(origin, withPublicPorts(host, own))) return true;
    }
    return false;
}

/// "https://www.site.test" of an address below it.
std::string_view originOf(std::string_view address) {
    const std::size_t host = address.find("://");
    if (host == std::string_view::npos) return address;
    return address.substr(0, address.find_first_of("/?#", host + 3));
}

}  // namespace

bool comesFromOwnPages(const HostContext& host) {
    const std::string origin = host.request.serverVariable("http_origin");
    if (!origin.empty()) return isOwnOrigin(host, origin);
    const std::string site = host.request.serverVariable("http_sec_fetch_site");
    if (!site.empty() && !text::equals(site, "same-origin") && !text::equals(site, "none")) return false;
    const std::string referer = host.request.serverVariable("http_referer");
    return referer.empty() || isOwnOrigin(host, originOf(referer));
}

}  // namespace torvex
