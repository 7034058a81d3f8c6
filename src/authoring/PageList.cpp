// cManager: the list of pages to choose from.

#include <vector>

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

/// The columns of the statement, a flag, and one that stays empty.
constexpr std::size_t listColumns = 6;

/// Those that `systemBranch::hasDigits` tells.
constexpr std::string_view withoutSystemDigits = " and nodeId not like '%99%'";

/// A statement with the values of its places.
struct Selection {
    std::string statement;
    std::vector<std::string> texts;

    void add(std::string_view condition, std::initializer_list<std::string> values) {
        statement += condition;
        texts.insert(texts.end(), values);
    }
    std::vector<db::Parameter> values() const {
        return std::vector<db::Parameter>(texts.begin(), texts.end());
    }
};

Selection start(Twin twin) {
    return {twin == Twin::Design ? "select pageId, nodeId, title, type from TORVEX_PAGES_DESIGN where "
                                 : "select pageId, nodeId, title, type from TORVEX_PAGES_LIVE where ",
            {}};
}

Value gridOf(db::Rows rows) {
    ResultGrid grid(listColumns);
    while (rows.next()) {
        // The flag is always 0. It is kept since callers count the columns.
        grid.add({rows.value("pageId"), rows.value("nodeId"), rows.value("title"), rows.value("type"), 0});
    }
    return gridOrEmpty(std::move(grid));
}

}  // namespace

Value cManager::getPageList(const std::string& site, const std::string& lang, const std::string& mode,
                            const std::string& parentIdent, const std::string& docType, bool system) try {
    Selection pages = start(twinOf(mode));
    const std::string parent = nodeIdFrom(connection(), parentIdent);
    if (parent.size() < PageIdentity::rootLength) {
        pages.add("site = ? and lang = ?", {text::lowerTrim(site), text::lowerTrim(lang)});
    } else {
        pages.add("parent >= ? and parent < ?", {parent, endOfPrefix(parent)});
    }
    if (!docType.empty()) pages.add(" and type = ?", {text::upper(text::first(docType, 1))});
    if (!system) pages.add(withoutSystemDigits, {});
    pages.statement += " order by nodeId";
    return gridOf(connection().query(pages.statement, pages.values()));
} catch (...) {
    raiseFrom("getPageList !");
}

}  // namespace torvex
