#include "support/RegisterTest.h"

namespace torvex::test {

namespace {

struct OwnedTable {
    std::string table;
    std::string siteColumn;
    std::string langColumn;  ///< "" when it knows no languages
};

const std::vector<OwnedTable>& ownedTables() {
    static const std::vector<OwnedTable> tables = {
        {"TORVEX_ADVANCED_RIGHTS", "site", "lang"},
        {"TORVEX_BASETEMPLATES", "btpl_site", "btpl_lang"},
        {"TORVEX_DOCUMENTS", "doc_site", ""},
        {"TORVEX_DOCUMENTS_FOLDERS", "fld_site", ""},
        {"TORVEX_EDIT_RIGHTS", "site", "lang"},
        {"TORVEX_FOLDERS_GROUPS", "fld_site", ""},
        {"TORVEX_FORUM_DESIGN", "forum_site", "forum_lang"},
        {"TORVEX_FORUM_LIVE", "forum_site", "forum_lang"},
        {"TORVEX_IMAGES", "img_site", ""},
        {"TORVEX_IMAGES_FOLDERS", "fld_site", ""},
        {"TORVEX_METADATA", "metaData_site", ""},
        {"TORVEX_MSGB_CATEGORIES_DESIGN", "msgB_site", "msgB_lang"},
        {"TORVEX_MSGB_CATEGORIES_LIVE", "msgB_site", "msgB_lang"},
        {"TORVEX_MSGB_ITEMS_DESIGN", "msgB_site", "msgB_lang"},
        {"TORVEX_MSGB_ITEMS_LIVE", "msgB_site", "msgB_lang"},
        {"TORVEX_NEWSFLASH_DESIGN", "site", "lang"},
        {"TORVEX_NEWSFLASH_LIVE", "site", "lang"},
        {"TORVEX_SITES_LANGUAGES", "site", "lang"},
        {"TORVEX_STYLESHEETS", "ss_site", "ss_lang"},
        {"TORVEX_TEMPLATES", "tpl_site", "tpl_lang"},
    };
    return tables;
}

/// The key columns that a row can't be made without, or that others refer to.
Columns keysOf(const std::string& table, int first) {
    if (table == "TORVEX_ADVANCED_RIGHTS") return {{"roleId", first}, {"advId", first}};
    if (table == "TORVEX_EDIT_RIGHTS") return {{"roleId", first}};
    if (table.starts_with("TORVEX_FORUM_")) return {{"forum_id", first}};
    if (table.starts_with("TORVEX_MSGB_CATEGORIES_")) return {{"msgB_Id", first}};
    if (table.starts_with("TORVEX_MSGB_ITEMS_")) return {{"msgB_itemId", first}};
    if (table.starts_with("TORVEX_NEWSFLASH_")) return {{"nf_Id", first}};
    return {};
}

}  // namespace

void RegisterTest::SetUp() {
    ManagerTest::SetUp();
    if (HasFatalFailure()) return;
    for (const auto* path : {"baseTemplates", "contentTemplates", "wwwroot/documents", "wwwroot/images",
                             "wwwroot/stylesheets", "search/html"}) {
        folder(path);
    }
}

void RegisterTest::fill(const std::string& site, const std::string& lang, int first) {
    for (const OwnedTable& owned : ownedTables()) {
        Columns columns = keysOf(owned.table, first);
        columns.emplace_back(owned.siteColumn, site);
        if (!owned.langColumn.empty()) columns.emplace_back(owned.langColumn, lang);
        row(owned.table, columns);
    }
    row("TORVEX_FORUM_TOPICS", {{"topic_id", 1}, {"topic_forumId", first}});
    row("TORVEX_FORUM_REACTIONS", {{"reaction_id", 1}, {"reaction_forumId", first}, {"reaction_topicId", 1}});
    for (const auto* twin : {"DESIGN", "LIVE"}) {
        row("TORVEX_NEWSFLASH_CATEGORIES_" + std::string(twin), {{"nf_Id", first}, {"msgB_Id", first}});
    }
}

std::vector<std::string> RegisterTest::tablesWithSite(const std::string& site) {
    std::vector<std::string> found;
    for (const OwnedTable& owned : ownedTables()) {
        const std::string count =
            cell("select count(*) from " + owned.table + " where " + owned.siteColumn + " = '" + site + "'");
        if (count != "0") found.push_back(owned.table + " " + count);
    }
    return found;
}

std::vector<std::string> RegisterTest::tablesWithLanguage(const std::string& lang) {
    std::vector<std::string> found;
    for (const OwnedTable& owned : ownedTables()) {
        if (owned.langColumn.empty()) continue;
        const std::string count =
            cell("select count(*) from " + owned.table + " where " + owned.langColumn + " = '" + lang + "'");
        if (count != "0") found.push_back(owned.table + " " + count);
    }
    return found;
}

std::vector<std::string> RegisterTest::hangingRows() {
    std::vector<std::string> counts;
    for (const auto* table : {"TORVEX_FORUM_TOPICS", "TORVEX_FORUM_REACTIONS",
                              "TORVEX_NEWSFLASH_CATEGORIES_DESIGN", "TORVEX_NEWSFLASH_CATEGORIES_LIVE"}) {
        counts.push_back(table + std::string(" ") + cell("select count(*) from " + std::string(table)));
    }
    return counts;
}

std::vector<std::string> RegisterTest::folders() {
    const std::string install = "/install/";
    std::vector<std::string> names;
    for (const auto& path : host.files.madeFolders) {
        if (path.starts_with(install)) names.push_back(path.substr(install.size()));
    }
    return names;
}

void RegisterTest::otherLoginIn(const std::string& place, const std::string& sessionId) {
    row("TORVEX_LOGINS", {{"username", "bob"}, {"sessionId", sessionId}, {"currentSite", place}});
}

}  // namespace torvex::test
