#include "delivery/PageBodies.h"

#include <map>

#include "delivery/BodyPlaces.h"
#include "delivery/Feeds.h"
#include "platform/ApplicationValues.h"
#include "platform/Deadline.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

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

/// By number; of two rows with one number the first counts.
std::map<int, PageBody> readBodies(db::Connection& connection, Twin twin, PageId pageId) {
    std::map<int, PageBody> bodies;
    auto rows = connection.query(twin == Twin::Design ? selectBodiesDesign : selectBodiesLive, {pageId});
    while (rows.next()) {
        PageBody body = bodyOf(rows);
        const int number = body.id;
        bodies.try_emplace(number, std::move(body));
    }
    return bodies;
}

}  // namespace

/// Takes the body's text, which can be long.
std::string PageBodies::content(PageId pageId, PageBody& body, bool feeds) {
    if (body.type == bodyType::storedText || !feeds) {
        const std::string_view kept = text::trim(body.text);
        return kept.size() == body.text.size() ? std::move(body.text) : std::string(kept);
    }
    return asLevel("getBody !", [&] { return this->body(pageId, body.id, body.type, body.feedId); });
}

std::string PageBodies::fill(PageId pageId, std::string html, BodyFrame* frame) {
    const bool feeds = host_.application.isTrue(applicationKey::usesFeeds);
    const Deadline deadline = host_.deadline();
    std::map<int, PageBody> bodies;
    BodyPlaces page(std::move(html));
    for (int n = 1; page.has(n); ++n) {
        deadline.check();
        if (n == 1) bodies = readBodies(connection_, twin_, pageId);
        const auto found = bodies.find(n);
        PageBody missing;
        missing.id = n;
        const bool isThere = found != bodies.end();
        PageBody& body = isThere ? found->second : missing;
        std::string filled = isThere ? content(pageId, body, feeds) : std::string();
        if (filled.empty()) filled = emptyBody;
        if (frame != nullptr) filled = frame->around(body, std::move(filled));
        page.fill(n, std::move(filled));
    }
    return page.text();
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
