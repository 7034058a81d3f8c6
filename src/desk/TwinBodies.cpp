#include "desk/TwinBodies.h"

#include "platform/db/Connection.h"
#include "records/TwinTables.h"

namespace torvex {

namespace {

constexpr std::string_view selectBodies =
    "select b.bodyId, b.bodyType, b.feedId, b.bodyText, coalesce(h.feedName, x.feedName) as feedTitle "
    "from TORVEX_BODIES_TWIN b "
    "left outer join TORVEX_FEEDS_HTML h on b.bodyType = 2 and h.feedId = b.feedId "
    "left outer join TORVEX_FEEDS_XML x on b.bodyType = 3 and x.feedId = b.feedId "
    "where b.pageId = ? order by b.bodyId";

PageBody bodyOf(const db::Rows& rows) {
    return {static_cast<int>(rows.number("bodyId")),
            static_cast<int>(rows.number("bodyType", bodyType::storedText)),
            static_cast<int>(rows.number("feedId")), rows.text("bodyText")};
}

}  // namespace

bool TwinBodies::differ() const {
    if (isFeed(design) || isFeed(live)) return design.type != live.type || design.feedId != live.feedId;
    return design.text != live.text;
}

BodiesById twinBodiesOf(db::Connection& connection, PageId pageId) {
    static const std::string selectDesign = onTwin(selectBodies, Twin::Design);
    static const std::string selectLive = onTwin(selectBodies, Twin::Live);
    BodiesById bodies;
    auto designs = connection.query(selectDesign, {pageId});
    while (designs.next()) {
        TwinBodies& twins = bodies[static_cast<int>(designs.number("bodyId"))];
        twins.design = bodyOf(designs);
        twins.feedTitle = designs.text("feedTitle");
    }
    auto lives = connection.query(selectLive, {pageId});
    while (lives.next()) {
        TwinBodies& twins = bodies[static_cast<int>(lives.number("bodyId"))];
        twins.live = bodyOf(lives);
        twins.liveFeedTitle = lives.text("feedTitle");
    }
    return bodies;
}

bool isFeed(const PageBody& body) {
    return body.type == bodyType::htmlFeed || body.type == bodyType::xmlFeed;
}

std::string_view kindOfBody(const PageBody& body) {
    if (body.type == bodyType::htmlFeed) return "html";
    return body.type == bodyType::xmlFeed ? "xml" : "text";
}

}  // namespace torvex
