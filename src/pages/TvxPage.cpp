#include "delivery/cServer.h"
#include "pages/Pages.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/Text.h"
#include "records/PageIdentity.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view errorMark = "error:";

std::string askedPage(const HostContext& host) {
    const std::string asked = host.request.queryString("pageId");
    return text::trim(asked).empty() ? host.application.text("tvx_default_pageId") : asked;
}

/// Where a visitor is sent who can't have the page.
std::string refusal(const cServer& server) {
    const std::string prefix = "/error.asp?pageId=" + text::fromNumber(server.pgPageId()) + "&error=";
    switch (server.pgAccess()) {
        case pageAccess::offline:
            return prefix + "page_offline" +
                   (server.pgOnlineFrom().empty() ? "" : "&onlineFrom=" + server.pgOnlineFrom());
        case pageAccess::noApplication:
            return prefix + "no_application";
        case pageAccess::notFound:
            return prefix + "page_not_found";
        default:
            return prefix + "no_login";
    }
}

/// The charset of the page's language; all text of one installation mostly shares one.
std::string charsetOf(const HostContext& host, cServer& server) {
    const std::string common = host.application.text("torvex_charset");
    return common.empty() ? server.getCharsetLabel(std::string(langOf(server.pgNodeId()))) : common;
}

void answerPage(HostContext& host, cServer& server, db::Connection& connection) {
    const std::string pageId = text::fromNumber(server.pgPageId());
    std::string html = server.torvex_preparePage();
    if (text::startsWith(html, errorMark)) return host.response.redirect(html.substr(errorMark.size()));
    HTMLTemplate page(host);
    page.connect(connection);
    page.setStrVal(std::move(html));
    page.syncFrames(pageId);
    server.logPage(pageId);
    host.response.charset = charsetOf(host, server);
    host.response.write(page.strVal());
}

}  // namespace

void tvxPage(HostContext& host) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::ReadScope oneState(*connection);
    cServer server(host);
    server.connect(*connection);
    server.setCodePage();
    server.getPage(askedPage(host), host.session.text("tvx_username"), host.session.text("tvx_password"));
    if (server.pgAccess() < 0) return host.response.redirect(refusal(server));
    if (server.pgType() == "A") return host.response.redirect(server.pgAppURLpublic());
    answerPage(host, server, *connection);
}

}  // namespace torvex
