#include "pages/ContentPolicy.h"
#include "pages/Pages.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"

namespace torvex {

void redirectPage(HostContext& host) {
    const bool frames = host.application.isTrue(applicationKey::usesFrames);
    const std::string address = (frames ? "/frameset.asp?pageId=" : "/tvx.asp?pageId=") +
                                text::urlEncode(text::trim(host.request.queryString("pageId")));
    if (!frames) return host.response.redirect(address);
    // In a frame only a script can take the whole window along; the encoded address needs no further quoting.
    const std::string script = "window.top.location.replace('" + address + "');";
    host.response.addHeader("Content-Security-Policy", ownPagePolicy(scriptSource(script)));
    host.response.write(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>One moment</title>\n"
        "<script>" +
        script + "</script>\n</head>\n<body>\n<p><a href=\"" + address +
        "\" target=\"_top\">Continue to the page</a></p>\n</body>\n</html>\n");
}

}  // namespace torvex
