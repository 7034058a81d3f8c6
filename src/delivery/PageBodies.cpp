#include "delivery/PageBodies.h"

#include <algorithm>
#include <vector>

#include "delivery/Feeds.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view selectBodiesLive =
    "select bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_LIVE where pageId = ?";
constexpr std::string_view selectBodiesDesign =
    "select bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId = ?";
constexpr std::string_view selectBodyLive =
    "select bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_LIVE where pageId = ? and bodyId = ?";
constexpr std::string_view selectBodyDesign =
    "select bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId = ? and bodyId = ?";

/// Keeps table cells open.
constexpr std::string_view emptyBody = "&nbsp;";

PageBody bodyOf(const db::Rows& rows) {
    return {static_cast<int>(rows.number("bodyId")), static_cast<int>(rows.number("bodyType")),
            static_cast<int>(rows.number("feedId")), rows.text("bodyText")};
}

std::vector<PageBody> readBodies(db::Connection& connection, Twin twin, PageId pageId) {
    std::vector<PageBody> bodies;
    auto rows = connection.query(twin == Twin::Design ? selectBodiesDesign : selectBodiesLive, {pageId});
    while (rows.next()) bodies.push_back(bodyOf(rows));
    return bodies;
}

/// The page, ready to grow by its bodies without being copied.
std::string withRoomFor(const std::vector<PageBody>& bodies, std::string page) {
    std::size_t size = page.size();
    for (const PageBody& body : bodies) size += body.text.size();
    page.reserve(size);
    return page;
}

}  // namespace

std::string PageBodies::content(PageId pageId, const PageBody& body, bool feeds) {
    if (body.type == bodyType::storedText || !feeds) return std::string(text::trim(body.text));
    return asLevel("getBody !", [&] { return this->body(pageId, body.id, body.type, body.feedId); });
}

std::string PageBodies::fill(PageId pageId, std::string html, BodyFrame* frame) {
    const bool feeds = host_.application.isTrue(applicationKey::usesFeeds);
    std::vector<PageBody> bodies;
    HTMLTemplate page(host_);
    page.setStrVal(std::move(html));
    for (int n = 1;; ++n) {
        const std::string place = "torvex_body_" + std::to_string(n);
        const bool isTag = page.tagExists(place);
        if (!isTag && !page.blockExists(place)) break;
        if (n == 1) {
            bodies = readBodies(connection_, twin_, pageId);
            page.setStrVal(withRoomFor(bodies, page.takeStrVal()));
        }
        const auto body =
            std::find_if(bodies.begin(), bodies.end(), [n](const PageBody& b) { return b.id == n; });
        std::string filled = body == bodies.end() ? std::string() : content(pageId, *body, feeds);
        if (filled.empty()) filled = emptyBody;
        if (frame != nullptr) {
            PageBody missing;
            missing.id = n;
            filled = frame->around(body == bodies.end() ? missing : *body, std::move(filled));
        }
        if (isTag) {
            page.replaceTag(place, filled);
        } else {
            page.replaceBlock(place, filled);
        }
    }
    return page.takeStrVal();
}

std::string PageBodies::body(PageId pageId, int bodyId, int type, int feedId) {
    if (!(pageId > 0)) return {};
    if (type <= bodyType::storedText) {
        auto rows =
            connection_.query(twin_ == Twin::Design ? selectBodyDesign : selectBodyLive, {pageId, bodyId});
        if (!rows.next()) return {};
        const PageBody found = bodyOf(rows);
        if (type == bodyType::storedText || found.type == bodyType::storedText) return found.text;
        type = found.type;
        feedId = found.feedId;
    }
    if (type == bodyType::htmlFeed) return htmlFeed(host_, connection_, feedId);
    if (type == bodyType::xmlFeed) return xmlFeed_(host_, connection_, feedId);
    return {};
}

}  // namespace torvex
