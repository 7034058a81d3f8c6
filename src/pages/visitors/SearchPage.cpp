#include "delivery/PageAssembly.h"
#include "delivery/cServer.h"
#include "pages/NoStore.h"
#include "pages/Pages.h"
#include "pages/Posted.h"
#include "pages/visitors/SitePage.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/Search.h"
#include "search/SearchForm.h"
#include "search/SearchPages.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr const char* folder = "/torvex_search/";

/// The search page that is asked for, or the one nearest to the home page.
std::string askedPage(HostContext& host) {
    const std::string asked(text::trim(host.request.item("pageId")));
    if (!asked.empty()) return asked;
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const std::string home = host.application.text(applicationKey::defaultPageId);
    return text::fromNumber(searchPageNear(*connection, nodeIdFrom(*connection, home)));
}

std::string addressOf(const std::string& pageId) {
    return std::string(folder) + "search.asp?pageId=" + text::urlEncode(pageId);
}

/// A form that was posted leads to an address that can be loaded anew.
void redirectPosted(HostContext& host) {
    Search(host).saveSearchFormParameters();
    std::string address = addressOf(askedPage(host));
    const std::string pageTo(text::trim(host.request.item(searchField::pageTo)));
    if (!pageTo.empty()) address += "&search_pageTo=" + text::urlEncode(pageTo);
    host.response.redirect(address);
}

/// The same query, of the page that it leaves open.
void redirectToPage(HostContext& host) {
    std::string address = addressOf(askedPage(host));
    for (const auto& [name, value] : host.request.queryItems()) {
        if (text::equals(name, "pageId")) continue;
        address.append("&").append(text::urlEncode(name)).append("=").append(text::urlEncode(value));
    }
    host.response.redirect(address);
}

std::string filledPage(HostContext& host, cServer& server, db::Connection& connection,
                       const OpenCatalogue& open) {
    const std::string html = server.torvex_preparePage();
    if (text::startsWith(html, errorMark)) return html;
    // The same address shows other results to others, and at other times.
    if (holdsLogin(host.session)) forbidStoring(host.response);
    if (host.response.cacheControl.empty()) host.response.cacheControl = "private, no-cache";
    Search search(host, open);
    search.connect(connection);
    HTMLTemplate page(host);
    page.setStrVal(search.loadResults(text::fromNumber(server.pgPageId()), "", html));
    page.removeTags();
    return page.takeStrVal();
}

}  // namespace

void searchPage(HostContext& host, const PolicyReports& reports, const OpenCatalogue& open) {
    if (isPosted(host)) return redirectPosted(host);
    if (text::trim(host.request.queryString("pageId")).empty()) return redirectToPage(host);
    answerSitePage(host, reports, folder, [&](cServer& server, db::Connection& connection) {
        return filledPage(host, server, connection, open);
    });
}

void searchFolderPage(HostContext& host) {
    if (isPosted(host)) return redirectPosted(host);
    redirectToPage(host);
}

}  // namespace torvex
