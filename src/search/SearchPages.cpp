#include "search/SearchPages.h"

#include "platform/db/Connection.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectSearchPages =
    "select b.pageId, b.nodeId from TORVEX_SEARCH a inner join TORVEX_PAGES_LIVE b on b.pageId = "
    "a.search_pageId where b.online = 1 order by b.nodeId";

}  // namespace

PageId searchPageNear(db::Connection& connection, std::string_view nearNode) {
    PageId first = -1;
    auto rows = connection.query(selectSearchPages);
    while (rows.next()) {
        const PageId pageId = rows.number("pageId");
        if (inSameTree(rows.view("nodeId"), nearNode)) return pageId;
        if (first < 0) first = pageId;
    }
    return first;
}

}  // namespace torvex
