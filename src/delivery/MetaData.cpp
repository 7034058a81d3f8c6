// cServer: what a page says of itself in its head.

#include "delivery/MetaValues.h"
#include "delivery/PageMetaData.h"
#include "delivery/cServer.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"
#include "records/Websites.h"

namespace torvex {

namespace {

constexpr std::string_view selectInherited =
    "select metaData_value, metaData_inherited from TORVEX_PAGES_METADATA_LIVE "
    "where metaData_pageId = ? and metaData_id = ?";
constexpr std::string_view selectTags =
    "select metaData_id, metaData_name, metaData_description from TORVEX_METADATA "
    "where metaData_site = ? order by metaData_name";

/// The value of the nearest ancestor that has one of its own; "" when the line of inheritance breaks.
std::string inheritedValue(db::Connection& connection, std::string_view nodeId, double metaDataId) {
    while ((nodeId = parentOf(nodeId)).size() >= PageIdentity::rootLength) {
        auto rows = connection.query(selectInherited, {pageIdOf(connection, nodeId), metaDataId});
        if (!rows.next()) return {};
        if (rows.number("metaData_inherited") == 0) return rows.text("metaData_value");
    }
    return {};
}

}  // namespace

std::string metaDataHtml(db::Connection& connection, const PageIdentity& page) {
    if (!page.isValid() || systemBranch::hasNumber(page.nodeId)) return {};
    const std::string_view lang = langOf(page.nodeId);
    std::string html;
    const std::string label =
        asLevel("getCharsetLabel !", [&] { return charsetColumn(connection, lang, "charset_label"); });
    if (!label.empty()) {
        html = R"(<META HTTP-EQUIP="Content-Type" content="text/html; charset=)" + label + "\">\r\n";
    }
    for (const MetaValue& held : liveMetaValues(connection, page.pageId)) {
        const std::string value =
            held.isInherited ? inheritedValue(connection, page.nodeId, held.id) : held.value;
        if (!value.empty()) html += metaLine(held.name, lang, text::replaceAll(value, "\r", " "));
    }
    return html;
}

std::string cServer::getMetaDataHTML(const std::string& pageIdent) try {
    return metaDataHtml(connection(), identify(connection(), pageIdent));
} catch (...) {
    raiseFrom("getMetaDataHTML  !");
}

Value cServer::getMetaTags(const std::string& site) try {
    return db::gridOf(connection().query(selectTags, {site}));
} catch (...) {
    raiseFrom("getMetaTags  !");
}

}  // namespace torvex
