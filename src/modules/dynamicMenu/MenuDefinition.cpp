#include "modules/dynamicMenu/MenuDefinition.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectLive =
    "select p.pageId, p.nodeId, m.minLevels, m.maxLevels, m.display, m.extranet, t.tpl_filename "
    "from TORVEX_PAGES_DESIGN p inner join TORVEX_DYNMENU_LIVE m on m.pageId = p.pageId "
    "left outer join TORVEX_TEMPLATES t on t.tpl_id = m.templateId and t.tpl_system = 1 "
    "where p.nodeId = ?";
constexpr std::string_view selectDesign =
    "select p.pageId, p.nodeId, m.minLevels, m.maxLevels, m.display, m.extranet, t.tpl_filename "
    "from TORVEX_PAGES_DESIGN p inner join TORVEX_DYNMENU_DESIGN m on m.pageId = p.pageId "
    "left outer join TORVEX_TEMPLATES t on t.tpl_id = m.templateId and t.tpl_system = 1 "
    "where p.nodeId = ? and m.deleted = 0";

/// These are 16-bit numbers; what lies beyond them is cut to their range.
int shortNumber(const db::Rows& rows, std::string_view column) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<int>(
        std::clamp<double>(std::nearbyint(rows.number(column)), Limits::min(), Limits::max()));
}

MenuDefinition readDefinition(const db::Rows& rows) {
    return {.root = {rows.number("pageId"), std::string(text::trim(rows.view("nodeId")))},
            .minLevels = shortNumber(rows, "minLevels"),
            .maxLevels = shortNumber(rows, "maxLevels"),
            .display = shortNumber(rows, "display"),
            .extranet = shortNumber(rows, "extranet"),
            .templateFile = std::string(text::trim(rows.view("tpl_filename")))};
}

}  // namespace

std::optional<MenuDefinition> menuInForce(db::Connection& connection, std::string_view nodeId, Twin twin) {
    for (; nodeId.size() >= PageIdentity::rootLength; nodeId = parentOf(nodeId)) {
        auto rows = connection.query(twin == Twin::Design ? selectDesign : selectLive, {nodeId});
        if (rows.next()) return readDefinition(rows);
    }
    return std::nullopt;
}

}  // namespace torvex
