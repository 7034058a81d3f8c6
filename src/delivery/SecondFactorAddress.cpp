#include "delivery/SecondFactorAddress.h"

#include <fmt/format.h>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectPages =
    "select b.pageId, b.nodeId from TORVEX_APPLICATIONS a "
    "inner join TORVEX_PAGES_LIVE b on b.application = a.app_id "
    "where a.app_href_public like '/torvex_secondFactor/%' and b.type = 'A' and b.online = 1 "
    "order by b.nodeId";

}  // namespace

std::string secondFactorAddress(db::Connection& connection, const PageIdentity& from) {
    PageId page = from.pageId;
    auto rows = connection.query(selectPages);
    while (rows.next()) {
        if (!inSameTree(rows.view("nodeId"), from.nodeId)) continue;
        page = rows.number("pageId");
        break;
    }
    return fmt::format("{}?pageId={}&from={}", secondFactorFolder, text::fromNumber(page),
                       text::fromNumber(from.pageId));
}

}  // namespace torvex
