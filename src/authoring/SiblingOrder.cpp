#include "authoring/SiblingOrder.h"

#include <optional>
#include <string>
#include <vector>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageId.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view selectSiblings =
    "select a.pageId as page1, a.nodeId as node1, a.orderId as order1, b.pageId as page2, "
    "b.orderId as order2 from TORVEX_PAGES_DESIGN a "
    "left outer join TORVEX_PAGES_LIVE b on a.nodeId = b.nodeId "
    "where a.parent = ? order by a.orderId, a.nodeId";
constexpr std::string_view updateDesign = "update TORVEX_PAGES_DESIGN set orderId = ? where pageId = ?";
constexpr std::string_view updateLive = "update TORVEX_PAGES_LIVE set orderId = ? where pageId = ?";

/// A row of one of the twin tables.
struct Placed {
    PageId pageId = 0;
    double orderId = 0;
};

struct Sibling {
    std::string nodeId;
    Placed design;
    std::optional<Placed> live;
};

/// All of them are read before one is written: they are found by what is written.
std::vector<Sibling> siblingsUnder(db::Connection& connection, std::string_view parent) {
    constexpr double unplaced = -1;
    std::vector<Sibling> siblings;
    auto rows = connection.query(selectSiblings, {parent});
    while (rows.next()) {
        Sibling sibling{rows.text("node1"), {rows.number("page1"), rows.number("order1", unplaced)}, {}};
        if (!rows.isNull("page2")) sibling.live = {rows.number("page2"), rows.number("order2", unplaced)};
        siblings.push_back(std::move(sibling));
    }
    return siblings;
}

bool isNamed(const Sibling& sibling, std::string_view ident) {
    return text::isNumeric(ident) ? text::toNumber(ident) == sibling.design.pageId
                                  : text::equals(ident, sibling.nodeId);
}

void place(db::Connection& connection, std::string_view statement, const Placed& row, int orderId) {
    if (row.orderId != orderId) connection.execute(statement, {orderId, row.pageId});
}

}  // namespace

int makeRoom(db::Connection& connection, std::string_view parent, std::string_view insertIdent) {
    const std::string_view ident = text::trim(insertIdent);
    int free = 0;
    int next = 1;
    for (const auto& sibling : siblingsUnder(connection, parent)) {
        if (systemBranch::isRoot(sibling.nodeId)) continue;
        if (isNamed(sibling, ident)) free = next++;
        place(connection, updateDesign, sibling.design, next);
        if (sibling.live) place(connection, updateLive, *sibling.live, next);
        ++next;
    }
    return free == 0 ? next : free;
}

}  // namespace torvex
