// cServer: what a page says of itself in its head.

#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectValues =
    "select a.metaData_id, b.metaData_name, a.metaData_value, a.metaData_inherited "
    "from TORVEX_PAGES_METADATA_LIVE a left outer join TORVEX_METADATA b on a.metaData_id = b.metaData_id "
    "where a.metaData_pageId = ? order by a.metaData_id";
constexpr std::string_view selectInherited =
    "select metaData_value, metaData_inherited from TORVEX_PAGES_METADATA_LIVE "
    "where metaData_pageId = ? and metaData_id = ?";
constexpr std::string_view selectTags =
    "select metaData_id, metaData_name, metaData_description from TORVEX_METADATA "
    "where metaData_site = ? order by metaData_name";

constexpr std::string_view systemBranch = ".99";

/// The value of the nearest ancestor that has one of its own; "" when the line of inheritance breaks.
std::string inheritedValue(db::Connection& connection, std::string_view nodeId, double metaDataId) {
    while ((nodeId = parentOf(nodeId)).size() >= PageIdentity::rootLength) {
        auto rows = connection.query(selectInherited, {pageIdOf(connection, nodeId), metaDataId});
        if (!rows.next()) return {};
        if (rows.number("metaData_inherited") == 0) return rows.text("metaData_value");
    }
    return {};
}

std::string metaTag(std::string_view name, std::string_view lang, std::string_view value) {
    std::string tag = R"(<META NAME=")";
    tag.append(name).append(R"(" LANG=")").append(lang).append(R"(" CONTENT=")");
    return tag.append(text::replaceAll(value, "\r", " ")).append("\">\r\n");
}

}  // namespace

std::string cServer::getMetaDataHTML(const std::string& pageIdent) try {
    const PageIdentity page = identify(connection(), pageIdent);
    if (!page.isValid() || text::contains(page.nodeId, systemBranch)) return {};
    const std::string_view lang = langOf(page.nodeId);
    std::string html;
    if (const std::string label = getCharsetLabel(std::string(lang)); !label.empty()) {
        html = R"(<META HTTP-EQUIP="Content-Type" content="text/html; charset=)" + label + "\">\r\n";
    }
    auto rows = connection().query(selectValues, {page.pageId});
    while (rows.next()) {
        const std::string value = rows.number("metaData_inherited") == 0
                                      ? rows.text("metaData_value")
                                      : inheritedValue(connection(), page.nodeId, rows.number("metaData_id"));
        if (!value.empty()) html += metaTag(rows.text("metaData_name"), lang, value);
    }
    return html;
} catch (...) {
    raiseFrom("getMetaDataHTML  !");
}

Value cServer::getMetaTags(const std::string& site) try {
    return db::gridOf(connection().query(selectTags, {site}));
} catch (...) {
    raiseFrom("getMetaTags  !");
}

}  // namespace torvex
