#include "pages/SameSite.h"

#include <string>

#include "platform/Request.h"
#include "platform/Text.h"

namespace torvex {

bool comesFromOwnPages(const Request& request) {
    const std::string site = request.serverVariable("http_sec_fetch_site");
    if (!site.empty()) return text::equals(site, "same-origin") || text::equals(site, "none");
    const std::string origin = request.serverVariable("http_origin");
    if (origin.empty()) return true;
    const std::string host = request.serverVariable("http_host");
    return text::equals(origin, "http://" + host) || text::equals(origin, "https://" + host);
}

}  // namespace torvex
