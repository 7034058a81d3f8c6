#include "authoring/OwnedRows.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <set>

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "support/TestDatabase.h"

namespace torvex {
namespace {

using testing::ElementsAreArray;
using Names = std::set<std::string>;

class OwnedRowsTest : public test::DatabaseTest {
  protected:
    /// In small letters, as PostgreSQL keeps them.
    Names schemaTables() {
        if (connection().engine() == db::Engine::PostgreSql) {
            return names(
                "select table_name as name from information_schema.tables where table_schema = 'public'");
        }
        Names all;
        // An index that is kept in tables of its own is none of the schema's.
        for (const std::string& store : names("select name from pragma_database_list")) {
            all.merge(names("select name from \"" + store +
                            "\".sqlite_master where type = 'table' and name not like 'sqlite%' "
                            "and name not like 'TORVEX_PAGE_WORDS_INDEX%'"));
        }
        return all;
    }
    /// The columns of the table, in small letters.
    Names columnsOf(std::string_view table) {
        const auto rows = connection().query("select * from " + std::string(table) + " where 1 = 0");
        Names columns;
        for (std::size_t i = 0; i < rows.columns(); ++i) columns.insert(text::lower(rows.columnName(i)));
        return columns;
    }

  private:
    Names names(const std::string& statement) {
        Names found;
        auto rows = connection().query(statement);
        while (rows.next()) found.insert(text::lower(rows.text("name")));
        return found;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, OwnedRowsTest, test::bothEngines(), test::engineName);

TEST_P(OwnedRowsTest, EveryTableOfTheSchemaIsListedByOneRoom) {
    Names listed;
    for (const OwnedTable& table : allTables()) {
        EXPECT_TRUE(listed.insert(text::lower(table.name)).second) << table.name << " is listed twice";
    }
    EXPECT_EQ(listed, schemaTables());
}

TEST_P(OwnedRowsTest, EveryStatementIsOneThatTheSchemaUnderstands) {
    for (const std::string& statement : statementsForBranch()) {
        EXPECT_NO_THROW(connection().execute(statement, {"zz.zz", "zz.zz0"})) << statement;
    }
    for (const std::string& statement : statementsForLogin()) {
        EXPECT_NO_THROW(connection().execute(statement, {12345})) << statement;
    }
    EXPECT_NO_THROW(removeRowsOfSite(connection(), "zz"));
    EXPECT_NO_THROW(removeRowsOfLanguage(connection(), "zz"));
}

TEST_P(OwnedRowsTest, WhatBelongsToAPageOrALoginGoesWithItOrIsKnownToStay) {
    const Names pageStays{"torvex_audit_trail"};
    const Names loginStays{"torvex_audit_trail"};
    for (const OwnedTable& table : allTables()) {
        const std::string name = text::lower(table.name);
        const Names columns = columnsOf(table.name);
        const bool hasPage = columns.contains("pageid") || columns.contains("nodeid");
        EXPECT_EQ(hasPage && table.page.empty() && table.node.empty(), pageStays.contains(name)) << name;
        EXPECT_EQ(columns.contains("loginid") && table.login.empty(), loginStays.contains(name)) << name;
    }
}

TEST_P(OwnedRowsTest, WhatIsOfASiteOrALanguageGoesWithItOrIsKnownToStay) {
    const Names pages{"torvex_pages_design",   "torvex_pages_live",  "torvex_logging",
                      "torvex_logging_months", "torvex_search_days", "torvex_dynmenu_design",
                      "torvex_dynmenu_live"};
    const Names feeds{"torvex_feeds_html", "torvex_feeds_xml"};
    Names siteStays = pages;
    siteStays.insert(feeds.begin(), feeds.end());
    const auto hasColumn = [](const Names& columns, std::string_view ending) {
        return std::any_of(columns.begin(), columns.end(), [&](const std::string& column) {
            return column == ending || column == "feed" + std::string(ending) ||
                   column.ends_with("_" + std::string(ending));
        });
    };
    for (const OwnedTable& table : allTables()) {
        const std::string name = text::lower(table.name);
        const Names columns = columnsOf(table.name);
        EXPECT_EQ(hasColumn(columns, "site") && table.site.empty(), siteStays.contains(name)) << name;
        EXPECT_EQ(hasColumn(columns, "lang") && table.lang.empty(), siteStays.contains(name)) << name;
    }
}

std::vector<std::string> firstWords(const std::vector<std::string>& statements) {
    std::vector<std::string> tables;
    for (const std::string& statement : statements) {
        const auto begin = statement.find("TORVEX_");
        const auto verb = statement.starts_with("update") ? "update " : "";
        tables.push_back(verb + statement.substr(begin, statement.find(' ', begin) - begin));
    }
    return tables;
}

TEST(OwnedRows, ASiteGoesInTheOrderThatItAlwaysWent) {
    EXPECT_THAT(firstWords(statementsForSite()), ElementsAreArray({"TORVEX_ADVANCED_RIGHTS",
                                                                   "TORVEX_BASETEMPLATES",
                                                                   "TORVEX_DOCUMENTS",
                                                                   "TORVEX_DOCUMENTS_FOLDERS",
                                                                   "TORVEX_EDIT_RIGHTS",
                                                                   "TORVEX_FOLDERS_GROUPS",
                                                                   "TORVEX_FORUM_DESIGN",
                                                                   "TORVEX_FORUM_LIVE",
                                                                   "TORVEX_FORUM_REACTIONS",
                                                                   "TORVEX_FORUM_TOPICS",
                                                                   "TORVEX_IMAGES",
                                                                   "TORVEX_IMAGES_FOLDERS",
                                                                   "TORVEX_METADATA",
                                                                   "TORVEX_MSGB_CATEGORIES_DESIGN",
                                                                   "TORVEX_MSGB_CATEGORIES_LIVE",
                                                                   "TORVEX_MSGB_ITEMS_DESIGN",
                                                                   "TORVEX_MSGB_ITEMS_LIVE",
                                                                   "TORVEX_NEWSFLASH_DESIGN",
                                                                   "TORVEX_NEWSFLASH_LIVE",
                                                                   "TORVEX_NEWSFLASH_CATEGORIES_DESIGN",
                                                                   "TORVEX_NEWSFLASH_CATEGORIES_LIVE",
                                                                   "TORVEX_NEWSFLASH_CATEGORIES_DESIGN",
                                                                   "TORVEX_NEWSFLASH_CATEGORIES_LIVE",
                                                                   "TORVEX_SITES",
                                                                   "TORVEX_SITES_LANGUAGES",
                                                                   "TORVEX_STYLESHEETS",
                                                                   "TORVEX_TEMPLATES"}));
}

TEST(OwnedRows, ALanguageGoesInTheOrderThatItAlwaysWent) {
    EXPECT_THAT(firstWords(statementsForLanguage()), ElementsAreArray({"TORVEX_ADVANCED_RIGHTS",
                                                                       "TORVEX_BASETEMPLATES",
                                                                       "TORVEX_EDIT_RIGHTS",
                                                                       "TORVEX_FORUM_DESIGN",
                                                                       "TORVEX_FORUM_LIVE",
                                                                       "TORVEX_FORUM_REACTIONS",
                                                                       "TORVEX_FORUM_TOPICS",
                                                                       "TORVEX_LANGUAGES",
                                                                       "TORVEX_MSGB_CATEGORIES_DESIGN",
                                                                       "TORVEX_MSGB_CATEGORIES_LIVE",
                                                                       "TORVEX_MSGB_ITEMS_DESIGN",
                                                                       "TORVEX_MSGB_ITEMS_LIVE",
                                                                       "TORVEX_NEWSFLASH_DESIGN",
                                                                       "TORVEX_NEWSFLASH_LIVE",
                                                                       "TORVEX_NEWSFLASH_CATEGORIES_DESIGN",
                                                                       "TORVEX_NEWSFLASH_CATEGORIES_LIVE",
                                                                       "TORVEX_NEWSFLASH_CATEGORIES_DESIGN",
                                                                       "TORVEX_NEWSFLASH_CATEGORIES_LIVE",
                                                                       "TORVEX_SITES_LANGUAGES",
                                                                       "TORVEX_STYLESHEETS",
                                                                       "TORVEX_TEMPLATES"}));
}

TEST(OwnedRows, ALoginGoesBeforeItsRolesAndSettings) {
    EXPECT_THAT(statementsForLogin(), ElementsAreArray({"delete from TORVEX_API_TOKENS where loginId = ?",
                                                        "delete from TORVEX_DRAFTS where loginId = ?",
                                                        "delete from TORVEX_LOGINS where loginId = ?",
                                                        "delete from TORVEX_RECOVERY_CODES where loginId = ?",
                                                        "delete from TORVEX_ROLES_LOGINS where loginId = ?",
                                                        "delete from TORVEX_SECOND_FACTORS where loginId = ?",
                                                        "delete from TORVEX_SETUP where loginId = ?"}));
}

TEST(OwnedRows, ABranchGoesFromWhatHangsOnItToItsPages) {
    EXPECT_THAT(firstWords(statementsForBranch()), ElementsAreArray({"TORVEX_PAGES_GROUPS_DESIGN",
                                                                     "TORVEX_PAGES_GROUPS_LIVE",
                                                                     "TORVEX_BODIES_DESIGN",
                                                                     "TORVEX_BODIES_LIVE",
                                                                     "TORVEX_DRAFTS",
                                                                     "TORVEX_LINKS",
                                                                     "TORVEX_LOGGING",
                                                                     "TORVEX_LOGGING_MONTHS",
                                                                     "TORVEX_PAGES_METADATA_DESIGN",
                                                                     "TORVEX_PAGES_METADATA_LIVE",
                                                                     "TORVEX_MAILFORM",
                                                                     "TORVEX_MAILFORM_OPTIONS",
                                                                     "TORVEX_PAGE_WORDS",
                                                                     "TORVEX_SEARCH",
                                                                     "TORVEX_SEARCH_DAYS",
                                                                     "TORVEX_SEARCH_LOG",
                                                                     "TORVEX_DYNMENU_DESIGN",
                                                                     "TORVEX_DYNMENU_LIVE",
                                                                     "update TORVEX_PAGES_DESIGN",
                                                                     "update TORVEX_PAGES_DESIGN",
                                                                     "update TORVEX_PAGES_DESIGN",
                                                                     "update TORVEX_PAGES_DESIGN",
                                                                     "update TORVEX_PAGES_LIVE",
                                                                     "update TORVEX_PAGES_LIVE",
                                                                     "update TORVEX_PAGES_LIVE",
                                                                     "update TORVEX_PAGES_LIVE",
                                                                     "update TORVEX_USERGROUPS",
                                                                     "update TORVEX_USERGROUPS",
                                                                     "TORVEX_PAGES_DESIGN",
                                                                     "TORVEX_PAGES_LIVE"}));
}

}  // namespace
}  // namespace torvex
