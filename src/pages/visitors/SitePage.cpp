#include "pages/visitors/SitePage.h"

#include "delivery/Access.h"
#include "delivery/PageAssembly.h"
#include "delivery/PageRecord.h"
#include "delivery/ViewCount.h"
#include "delivery/cServer.h"
#include "modules/SiteModules.h"
#include "pages/ContentPolicy.h"
#include "pages/NoStore.h"
#include "pages/PublicAddress.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "templates/FramesScript.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

std::string askedPage(const HostContext& host) {
    const std::string asked = host.request.queryString("pageId");
    return text::trim(asked).empty() ? host.application.text(applicationKey::defaultPageId) : asked;
}

void answerPage(HostContext& host, cServer& server, db::Connection& connection, const PolicyReports& reports,
                const std::string& html) {
    if (text::startsWith(html, errorMark)) return host.response.redirect(html.substr(errorMark.size()));
    if (server.hasLoginForm()) forbidStoring(host.response);
    HTMLTemplate page(host);
    page.setStrVal(server.buildLinks(html, std::string(siteOf(server.pgNodeId()))));
    PageIdentity identity;
    if (host.application.isTrue(applicationKey::usesFrames)) {
        asLevel("syncFrames !", [&] {
            identity = identify(connection, server.pgPageId());
            page.tellFrames(identity);
        });
    }
    asLevel("logPage!", [&] { countView(host, nodeIdFrom(connection, server.pgPageId())); });
    addContentPolicy(host, siteOf(server.pgNodeId()), ownScripts(host, identity, page.strVal()), reports);
    host.response.charset = charsetOf(host, server);
    host.response.write(withPublicPorts(host, page.takeStrVal()));
}

}  // namespace

std::string charsetOf(const HostContext& host, cServer& server) {
    const std::string common = host.application.text(applicationKey::charset);
    return common.empty() ? server.getCharsetLabel(std::string(langOf(server.pgNodeId()))) : common;
}

std::string ownScripts(const HostContext& host, const PageIdentity& page, std::string_view html) {
    // Within a frame set, links are followed by a script of the frame set's.
    const bool frames = host.application.isTrue(applicationKey::usesFrames);
    return frames ? scriptSource(framesScript(page)) : linkSources(html);
}

void answerSitePage(HostContext& host, const PolicyReports& reports, const std::string& folder,
                    const MakePage& make) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::ReadScope oneState(*connection);
    SiteModules modules;
    cServer server(host, &modules);
    server.connect(*connection);
    server.setCodePage();
    const Visitor visitor = visitorOf(host);
    server.getPage(askedPage(host), visitor.username, visitor.password);
    if (server.pgAccess() != pageAccess::open) forbidStoring(host.response);
    const std::string elsewhere = server.securityCheck(folder);
    if (!elsewhere.empty()) return host.response.redirect(withPublicPorts(host, elsewhere));
    if (folder.empty() && hasApplication(kindOf(server.pgType())))
        return host.response.redirect(server.pgAppURLpublic());
    answerPage(host, server, *connection, reports, make(server, *connection));
}

void answerFilled(HostContext& host, cServer& server, const PolicyReports& reports, const std::string& html,
                  const std::function<void(HTMLTemplate&)>& fill) {
    const PageIdentity identity{server.pgPageId(), server.pgNodeId()};
    const std::string site(siteOf(identity.nodeId));
    HTMLTemplate page(host);
    page.setStrVal(withPublicPorts(host, server.buildLinks(html, site)));
    addContentPolicy(host, site, ownScripts(host, identity, page.strVal()), reports);
    fill(page);
    if (host.application.isTrue(applicationKey::usesFrames))
        asLevel("syncFrames !", [&] { page.tellFrames(identity); });
    host.response.charset = charsetOf(host, server);
    if (server.hasLoginForm()) forbidStoring(host.response);
    if (host.response.cacheControl.empty()) host.response.cacheControl = "private, no-cache";
    host.response.write(page.takeStrVal());
}

}  // namespace torvex
