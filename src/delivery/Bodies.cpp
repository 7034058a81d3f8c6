// cServer: the bodies of a page.

#include <algorithm>
#include <vector>

#include "delivery/Feeds.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Text.h"
#include "records/PageIdentity.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

namespace kind {
constexpr int storedText = 1;
constexpr int htmlFeed = 2;
constexpr int xmlFeed = 3;
}  // namespace kind

constexpr std::string_view selectBodies =
    "select bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_LIVE where pageId = ?";
constexpr std::string_view selectKind =
    "select bodyType, feedId from TORVEX_BODIES_LIVE where pageId = ? and bodyId = ?";
constexpr std::string_view selectText =
    "select bodyText from TORVEX_BODIES_LIVE where pageId = ? and bodyId = ?";

/// Keeps table cells open.
constexpr std::string_view emptyBody = "&nbsp;";

struct Body {
    int id;
    int type;
    int feedId;
    std::string text;
};

std::vector<Body> readBodies(db::Connection& connection, PageId pageId) {
    std::vector<Body> bodies;
    auto rows = connection.query(selectBodies, {pageId});
    while (rows.next()) {
        bodies.push_back({static_cast<int>(rows.number("bodyId")), static_cast<int>(rows.number("bodyType")),
                          static_cast<int>(rows.number("feedId")), rows.text("bodyText")});
    }
    return bodies;
}

/// The page, ready to grow by its bodies without being copied.
std::string withRoomFor(const std::vector<Body>& bodies, std::string page) {
    std::size_t size = page.size();
    for (const Body& body : bodies) size += body.text.size();
    page.reserve(size);
    return page;
}

}  // namespace

std::string cServer::fillBodies(const std::string& pageIdent, const std::string& html) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    const bool feeds = host_.application.isTrue("torvex_feeds");
    std::vector<Body> bodies;
    HTMLTemplate page(host_);
    page.setStrVal(html);
    for (int n = 1;; ++n) {
        const std::string place = "torvex_body_" + std::to_string(n);
        const bool isTag = page.tagExists(place);
        if (!isTag && !page.blockExists(place)) break;
        if (n == 1) {
            bodies = readBodies(connection(), pageId);
            page.setStrVal(withRoomFor(bodies, page.takeStrVal()));
        }
        const auto body =
            std::find_if(bodies.begin(), bodies.end(), [n](const Body& b) { return b.id == n; });
        std::string feed;
        std::string_view filled;
        if (body != bodies.end() && feeds && body->type != kind::storedText) {
            filled = feed = getBody(text::fromNumber(pageId), n, body->type, body->feedId);
        } else if (body != bodies.end()) {
            filled = text::trim(body->text);
        }
        if (filled.empty()) filled = emptyBody;
        if (isTag) {
            page.replaceTag(place, filled);
        } else {
            page.replaceBlock(place, filled);
        }
    }
    return page.takeStrVal();
} catch (...) {
    raiseFrom("fillBodies !");
}

std::string cServer::getBody(const std::string& pageIdent, int bodyId, int bodyType, int feedId) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    if (!(pageId > 0)) return {};
    if (bodyType < 1) {
        auto rows = connection().query(selectKind, {pageId, bodyId});
        if (!rows.next()) return {};
        bodyType = static_cast<int>(rows.number("bodyType"));
        feedId = static_cast<int>(rows.number("feedId"));
    }
    if (bodyType == kind::storedText) {
        auto rows = connection().query(selectText, {pageId, bodyId});
        return rows.next() ? rows.text("bodyText") : std::string();
    }
    if (bodyType == kind::htmlFeed) return htmlFeed(host_, connection(), feedId);
    if (bodyType == kind::xmlFeed) return xmlFeed(host_, connection(), feedId);
    return {};
} catch (...) {
    raiseFrom("getBody !");
}

}  // namespace torvex
