// desk: the bodies of a page, and whether its visitors see them.

#include <map>

#include "delivery/PageBodies.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectDesign =
    "select b.bodyId, b.bodyType, b.feedId, b.bodyText, coalesce(h.feedName, x.feedName) as feedTitle "
    "from TORVEX_BODIES_DESIGN b "
    "left outer join TORVEX_FEEDS_HTML h on b.bodyType = 2 and h.feedId = b.feedId "
    "left outer join TORVEX_FEEDS_XML x on b.bodyType = 3 and x.feedId = b.feedId "
    "where b.pageId = ? order by b.bodyId";
constexpr std::string_view selectLive =
    "select bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_LIVE where pageId = ? order by bodyId";

/// As made, a body without a row: it shows what an empty text shows.
struct TwinBodies {
    PageBody design;
    PageBody live;
    std::string feedTitle;
};
using BodiesById = std::map<int, TwinBodies>;

PageBody bodyOf(const db::Rows& rows) {
    return {static_cast<int>(rows.number("bodyId")),
            static_cast<int>(rows.number("bodyType", bodyType::storedText)),
            static_cast<int>(rows.number("feedId")), rows.text("bodyText")};
}

BodiesById bodiesOf(db::Connection& connection, PageId pageId) {
    BodiesById bodies;
    auto designs = connection.query(selectDesign, {pageId});
    while (designs.next()) {
        const PageBody body = bodyOf(designs);
        bodies[body.id] = {body, {}, designs.text("feedTitle")};
    }
    auto lives = connection.query(selectLive, {pageId});
    while (lives.next()) {
        const PageBody body = bodyOf(lives);
        bodies[body.id].live = body;
    }
    return bodies;
}

bool isFeed(const PageBody& body) {
    return body.type == bodyType::htmlFeed || body.type == bodyType::xmlFeed;
}

/// To those who look at them: the text of a feed's body isn't shown, nor the feed of a text.
bool differ(const PageBody& one, const PageBody& other) {
    if (isFeed(one) || isFeed(other)) return one.type != other.type || one.feedId != other.feedId;
    return one.text != other.text;
}

std::string_view kindOf(const PageBody& body) {
    if (body.type == bodyType::htmlFeed) return "html";
    return body.type == bodyType::xmlFeed ? "xml" : "text";
}

std::vector<Value> lineOf(int bodyId, const TwinBodies& bodies) {
    const PageBody& body = bodies.design;
    return {bodyId,
            kindOf(body),
            isFeed(body) ? body.feedId : 0,
            bodies.feedTitle,
            isFeed(body) ? 0.0 : static_cast<double>(text::length(body.text)),
            differ(body, bodies.live)};
}

constexpr std::size_t bodyColumns = 6;

}  // namespace

Value desk::getBodies(const std::string& pageIdent) try {
    ResultGrid grid(bodyColumns);
    for (const auto& [bodyId, bodies] : bodiesOf(connection(), pageIdFrom(connection(), pageIdent))) {
        grid.add(lineOf(bodyId, bodies));
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getBodies !");
}

}  // namespace torvex
