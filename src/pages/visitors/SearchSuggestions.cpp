#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "delivery/Access.h"
#include "delivery/cServer.h"
#include "pages/Pages.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "records/PageIdentity.h"
#include "search/Completion.h"

namespace torvex {

namespace {

namespace json = boost::json;

/// Of the site and language of the page, if the visitor may see it at all.
std::vector<Completion> completionsAt(HostContext& host, db::Connection& connection) {
    cServer server(host);
    server.connect(connection);
    const Visitor visitor = visitorOf(host);
    server.getPage(host.request.queryString("pageId"), visitor.username, visitor.password);
    if (server.pgAccess() < 0) return {};
    return completions(host, connection, siteOf(server.pgNodeId()), langOf(server.pgNodeId()),
                       host.request.queryString("q"));
}

}  // namespace

void searchSuggestions(HostContext& host) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const db::ReadScope oneState(*connection);
    json::array found;
    for (const auto& [pageId, title] : completionsAt(host, *connection))
        found.push_back(json::object{{"title", title}, {"pageId", static_cast<std::int64_t>(pageId)}});
    host.response.contentType = "application/json";
    host.response.charset = "utf-8";
    host.response.cacheControl = "no-store";
    host.response.write(json::serialize(json::object{{"suggestions", std::move(found)}}));
}

}  // namespace torvex
