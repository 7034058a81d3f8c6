// cManager: what pages have for the meta tags of their site.

#include <map>

#include "administration/MetaTags.h"
#include "authoring/cManager.h"
#include "delivery/MetaValues.h"
#include "platform/Errors.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SystemBranch.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

constexpr std::size_t longestValue = 1000;

constexpr std::string_view upsertValue =
    "insert into TORVEX_PAGES_METADATA_DESIGN (metaData_pageId, metaData_id, metaData_value, "
    "metaData_inherited) values (?, ?, ?, ?) on conflict (metaData_pageId, metaData_id) do update "
    "set metaData_value = excluded.metaData_value, metaData_inherited = excluded.metaData_inherited";
constexpr std::string_view deleteValue =
    "delete from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ? and metaData_id = ?";

constexpr std::string_view selectLive =
    "select a.metaData_id, a.metaData_name, b.metaData_value, b.metaData_inherited from TORVEX_METADATA a "
    "left outer join TORVEX_PAGES_METADATA_LIVE b on b.metaData_id = a.metaData_id and b.metaData_pageId = ? "
    "where a.metaData_site = ? order by a.metaData_name, a.metaData_id";
constexpr std::string_view selectDesign =
    "select a.metaData_id, a.metaData_name, b.metaData_value, b.metaData_inherited from TORVEX_METADATA a "
    "left outer join TORVEX_PAGES_METADATA_DESIGN b on b.metaData_id = a.metaData_id "
    "and b.metaData_pageId = ? where a.metaData_site = ? order by a.metaData_name, a.metaData_id";

// With one column that stays empty.
constexpr std::size_t listColumns = 5;
/// In place of a page that has no meta data: no page has this number.
constexpr PageId noPage = 0;

/// What the ancestors of a page have of their own, the nearest last.
class AncestorValues {
  public:
    AncestorValues(db::Connection& connection, std::string_view nodeId) {
        std::string places;
        std::vector<db::Parameter> nodes;
        while ((nodeId = parentOf(nodeId)).size() >= PageIdentity::rootLength) {
            nodes.emplace_back(nodeId);
            places += places.empty() ? "?" : ", ?";
        }
        if (!nodes.empty()) read(connection.query(statementFor(places), nodes));
    }

    /// "" when none of them has one.
    std::string of(double id) const {
        const auto found = values_.find(id);
        return found == values_.end() ? std::string() : found->second;
    }

  private:
    static std::string statementFor(const std::string& places) {
        return "select b.metaData_id, b.metaData_value from TORVEX_PAGES_DESIGN a "
               "inner join TORVEX_PAGES_METADATA_LIVE b on b.metaData_pageId = a.pageId "
               "where a.nodeId in (" +
               places + ") and coalesce(b.metaData_inherited, 0) = 0 order by length(a.nodeId)";
    }
    void read(db::Rows rows) {
        while (rows.next()) values_[rows.number("metaData_id")] = rows.text("metaData_value");
    }

    std::map<double, std::string> values_;
};

std::string storedValue(std::string_view given) {
    return text::replaceAll(text::first(given, longestValue), "###", "\r");
}

/// A value of its own that says nothing is none.
void store(db::Connection& connection, PageId pageId, int id, std::string_view given, bool inherited) {
    if (given.empty() && !inherited) {
        connection.execute(deleteValue, {pageId, id});
        return;
    }
    const std::string value = inherited ? std::string() : storedValue(given);
    connection.execute(upsertValue, {pageId, id, value, inherited ? 1 : 0});
}

}  // namespace

void cManager::saveMetaData(const std::string& pageIdent, const std::string& metaIdent,
                            const std::string& metaDataValue, bool inherited) try {
    const PageIdentity page = identify(connection(), pageIdent);
    if (!page.isValid() || systemBranch::hasNumber(page.nodeId)) return;
    const int id = metaTagOfSite(connection(), siteOf(page.nodeId), metaIdent);
    if (id <= 0) return;
    db::inTransaction(connection(), [&](db::Connection& transaction) {
        store(transaction, page.pageId, id, metaDataValue, inherited);
        renewDesignIndex(host_, transaction, page.pageId);
        return db::commit(id);
    });
} catch (...) {
    raiseFrom("saveMetaData !");
}

Value cManager::getMetaData(const std::string& pageIdent, const std::string& mode) try {
    const PageIdentity page = identify(connection(), pageIdent);
    if (page.nodeId.size() < PageIdentity::rootLength) return {};
    const PageId pageId = systemBranch::hasNumber(page.nodeId) ? noPage : page.pageId;
    ResultGrid grid(listColumns);
    auto rows = connection().query(twinOf(mode) == Twin::Design ? selectDesign : selectLive,
                                   {pageId, siteOf(page.nodeId)});
    while (rows.next()) {
        const bool inherited = rows.number("metaData_inherited") != 0;
        grid.add({rows.value("metaData_id"), rows.value("metaData_name"),
                  inherited ? std::string() : rows.text("metaData_value"), inherited ? 1 : 0});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getMetaData  !");
}

std::string cManager::getMetaDataHTML(const std::string& pageIdent) try {
    const PageIdentity page = identify(connection(), pageIdent);
    if (!page.isValid() || systemBranch::hasNumber(page.nodeId)) return {};
    const std::string_view lang = langOf(page.nodeId);
    std::string html;
    if (const std::string label = getCharsetLabel(std::string(lang)); !label.empty()) {
        html = R"(<META HTTP-EQUIP="Content-Type" CONTENT="text/html; CHARSET=)" + label + "\">\r\n";
    }
    const AncestorValues ancestors(connection(), page.nodeId);
    for (const MetaValue& held : liveMetaValues(connection(), page.pageId)) {
        const std::string value = held.isInherited ? ancestors.of(held.id) : held.value;
        if (!value.empty()) html += metaLine(held.name, lang, text::replaceAll(value, "\r\n", " "));
    }
    return html;
} catch (...) {
    raiseFrom("getMetaDataHTML  !");
}

}  // namespace torvex
