#include "delivery/ViewCount.h"
#include "delivery/cServer.h"
#include "modules/SiteModules.h"
#include "pages/ContentPolicy.h"
#include "pages/NoStore.h"
#include "pages/Pages.h"
#include "pages/PublicAddress.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/Search.h"
#include "search/SearchForm.h"
#include "search/SearchPages.h"
#include "templates/FramesScript.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view searchFolder = "/torvex_search/";
constexpr std::string_view errorMark = "error:";

/// The search page that is asked for, or the one nearest to the home page.
std::string askedPage(const HostContext& host, db::Connection& connection) {
    const std::string asked = host.request.item("pageId");
    if (!text::trim(asked).empty()) return asked;
    const std::string home = host.application.text(applicationKey::defaultPageId);
    return text::fromNumber(searchPageNear(connection, nodeIdFrom(connection, home)));
}

/// A form that was posted leads to an address that can be loaded anew.
void redirectPosted(HostContext& host, const std::string& pageId) {
    Search search(host);
    search.saveSearchFormParameters();
    std::string address =
        std::string(searchFolder) + "search.asp?pageId=" + text::urlEncode(text::trim(pageId));
    const std::string pageTo(text::trim(host.request.item(searchField::pageTo)));
    if (!pageTo.empty()) address += "&search_pageTo=" + text::urlEncode(pageTo);
    host.response.redirect(address);
}

/// The charset of the page's language; all text of one installation mostly shares one.
std::string charsetOf(const HostContext& host, cServer& server) {
    const std::string common = host.application.text(applicationKey::charset);
    return common.empty() ? server.getCharsetLabel(std::string(langOf(server.pgNodeId()))) : common;
}

/// The results lie in the page before its links are built: what is written into both is one page's.
std::string filledPage(HostContext& host, cServer& server, db::Connection& connection,
                       const std::string& html, const OpenCatalogue& open) {
    Search search(host, open);
    search.connect(connection);
    HTMLTemplate page(host);
    page.setStrVal(search.loadResults(text::fromNumber(server.pgPageId()), "",
                                      server.buildLinks(html, std::string(siteOf(server.pgNodeId())))));
    page.removeTags();
    return page.takeStrVal();
}

/// The scripts that have been written into the page, for its content policy.
std::string ownScripts(const HostContext& host, const PageIdentity& page, std::string_view html) {
    const bool frames = host.application.isTrue(applicationKey::usesFrames);
    return frames ? scriptSource(framesScript(page)) : linkSources(html);
}

void answerSearch(HostContext& host, cServer& server, db::Connection& connection,
                  const PolicyReports& reports, const OpenCatalogue& open) {
    const std::string html = server.torvex_preparePage();
    if (text::startsWith(html, errorMark)) return host.response.redirect(html.substr(errorMark.size()));
    HTMLTemplate page(host);
    page.setStrVal(filledPage(host, server, connection, html, open));
    const PageIdentity identity{server.pgPageId(), server.pgNodeId()};
    if (host.application.isTrue(applicationKey::usesFrames)) page.tellFrames(identity);
    asLevel("logPage!", [&] { countView(host, identity.nodeId); });
    addContentPolicy(host, siteOf(identity.nodeId), ownScripts(host, identity, page.strVal()), reports);
    host.response.charset = charsetOf(host, server);
    // The same address shows other results to others, and at other times.
    host.response.cacheControl = "private, no-cache";
    if (holdsLogin(host.session) || server.hasLoginForm()) forbidStoring(host.response);
    host.response.write(withPublicPorts(host, page.takeStrVal()));
}

}  // namespace

void searchPage(HostContext& host, const PolicyReports& reports, const OpenCatalogue& open) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::ReadScope oneState(*connection);
    const std::string pageId = askedPage(host, *connection);
    if (text::equals(host.request.serverVariable("request_method"), "POST"))
        return redirectPosted(host, pageId);
    SiteModules modules;
    cServer server(host, &modules);
    server.connect(*connection);
    server.setCodePage();
    server.getPage(pageId, host.session.text(sessionKey::visitorName),
                   host.session.text(sessionKey::visitorPassword));
    const std::string elsewhere = server.securityCheck(std::string(searchFolder));
    if (!elsewhere.empty()) return host.response.redirect(withPublicPorts(host, elsewhere));
    answerSearch(host, server, *connection, reports, open);
}

void searchFolderPage(HostContext& host, const PolicyReports& reports) {
    const std::string& query = host.request.queryString();
    if (text::equals(host.request.serverVariable("request_method"), "POST")) return searchPage(host, reports);
    host.response.redirect(std::string(searchFolder) + "search.asp" + (query.empty() ? "" : "?" + query));
}

}  // namespace torvex
