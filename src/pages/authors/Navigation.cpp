#include "pages/authors/Navigation.h"

#include <algorithm>

#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view root = "/torvex/";

std::string said(const HostContext& host, const char* variable) {
    return host.request.serverVariable(variable);
}

bool isOrEmpty(std::string_view value, std::string_view wanted) {
    return value.empty() || text::equals(value, wanted);
}

}  // namespace

bool isNavigation(const HostContext& host) {
    return isOrEmpty(said(host, "http_sec_fetch_mode"), "navigate") &&
           isOrEmpty(said(host, "http_sec_fetch_dest"), "document");
}

bool isForFrame(const HostContext& host) {
    return text::equals(said(host, "http_sec_fetch_dest"), "iframe") ||
           text::equals(said(host, "http_sec_fetch_dest"), "frame");
}

std::string originOf(const HostContext& host) {
    const bool isTls = text::equals(said(host, "https"), "on");
    return (isTls ? "https://" : "http://") + said(host, "http_host");
}

void leadToDoor(HostContext& host) {
    const std::string query = host.request.queryString();
    const std::string path = said(host, "script_name");
    const std::string asked = query.empty() ? path : path + "?" + query;
    host.response.redirect("/torvex/login?to=" + text::urlEncode(asked));
}

std::string safeTarget(std::string_view target) {
    const bool isPlain = std::all_of(target.begin(), target.end(), [](char c) {
        return static_cast<unsigned char>(c) > 0x20 && c != 0x7f && c != '\\';
    });
    const bool isBelow = text::startsWith(target, root);
    // A door behind the door would lead in circles.
    const std::string_view path = target.substr(0, target.find_first_of("?#"));
    const bool leadsOut = text::equals(path, "/torvex/login") || text::equals(path, "/torvex/logout");
    return isPlain && isBelow && !leadsOut && path.find("..") == std::string_view::npos ? std::string(target)
                                                                                        : std::string(root);
}

}  // namespace torvex
