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

}  // namespace

bool comesFromOwnPages(const HostContext& host) {
    const std::string origin = host.request.serverVariable("http_origin");
    if (!origin.empty()) return isOwnOrigin(host, origin);
    const std::string site = host.request.serverVariable("http_sec_fetch_site");
    return site.empty() || text::equals(site, "same-origin") || text::equals(site, "none");
}

}  // namespace torvex
