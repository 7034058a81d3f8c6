#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class WebsitesTest : public ManagerTest {
  protected:
    /// Rows as "site|lang|siteName|langName|title".
    static std::vector<std::string> lines(const Value& list) {
        std::vector<std::string> result;
        const ResultGrid& grid = list.grid();
        EXPECT_EQ(grid.columns(), 6U);
        for (std::size_t row = 0; row < grid.rows(); ++row) {
            std::string line;
            for (std::size_t column = 0; column < 5; ++column) {
                EXPECT_TRUE(grid.at(column, row).isText());
                line += (column == 0 ? "" : "|") + grid.at(column, row).toText();
            }
            EXPECT_TRUE(grid.at(5, row).isEmpty());
            result.push_back(line);
        }
        return result;
    }
    std::string titles() { return cell("select count(*) from TORVEX_SITES_LANGUAGES"); }
};
INSTANTIATE_TEST_SUITE_P(Engines, WebsitesTest, bothEngines(), engineName);

TEST_P(WebsitesTest, EveryPairIsListedWithItsTitle) {
    connection().execute("update TORVEX_SITES set name = ' Zoo '");
    row("TORVEX_SITES", {{"site", "BB"}, {"name", "Alpha"}});
    row("TORVEX_LANGUAGES", {{"lang", "DE"}, {"name", " German "}});
    siteLanguage("aa", "de", " Der Zoo ");
    siteLanguage("bb", "en", "The alpha");
    EXPECT_THAT(lines(manager().getWebsites()),
                ElementsAre("aa|de|Zoo|German|Der Zoo", "aa|en|Zoo|Language en|", "bb|de|Alpha|German|",
                            "bb|en|Alpha|Language en|The alpha"));
}

TEST_P(WebsitesTest, TheyAreSortedBySiteOrByItsName) {
    connection().execute("update TORVEX_SITES set name = 'Zoo'");
    row("TORVEX_SITES", {{"site", "bb"}, {"name", "alpha"}});
    EXPECT_THAT(lines(manager().getWebsites("", 1)),
                ElementsAre("aa|en|Zoo|Language en|", "bb|en|alpha|Language en|"));
    for (const int byName : {2, 0, -1}) {
        EXPECT_THAT(lines(manager().getWebsites("", byName)),
                    ElementsAre("bb|en|alpha|Language en|", "aa|en|Zoo|Language en|"));
    }
}

TEST_P(WebsitesTest, OneSiteCanBeAskedForInAnyCase) {
    site("bb");
    EXPECT_THAT(lines(manager().getWebsites(" BB ")), ElementsAre("bb|en|Site bb|Language en|"));
    EXPECT_THAT(lines(manager().getWebsites("bb", 2)), ElementsAre("bb|en|Site bb|Language en|"));
    EXPECT_TRUE(manager().getWebsites("zz").isEmpty());
    EXPECT_TRUE(manager().getWebsites("' or 1=1 --").isEmpty());
}

TEST_P(WebsitesTest, WithoutASiteOrALanguageThereIsNone) {
    connection().execute("delete from TORVEX_LANGUAGES");
    EXPECT_TRUE(manager().getWebsites().isEmpty());
}

TEST_P(WebsitesTest, ATitleIsAddedAndThenReplaced) {
    EXPECT_TRUE(manager().saveWebsiteTitle(" AA ", "EN", "  <b>O'Title \xC3\xA9</b> "));
    EXPECT_EQ(manager().getWebsiteTitle(" Aa ", "eN"), "<b>O'Title \xC3\xA9</b>");
    EXPECT_EQ(cell("select site from TORVEX_SITES_LANGUAGES"), "aa");
    EXPECT_EQ(cell("select lang from TORVEX_SITES_LANGUAGES"), "en");
    connection().execute("update TORVEX_SITES_LANGUAGES set lock = 'somebody'");
    EXPECT_TRUE(manager().saveWebsiteTitle("aa", "en", ""));
    EXPECT_EQ(manager().getWebsiteTitle("aa", "en"), "");
    EXPECT_EQ(cell("select lock from TORVEX_SITES_LANGUAGES"), "");
    EXPECT_EQ(titles(), "1");
}

TEST_P(WebsitesTest, ATitleNeedsASiteAndALanguageWithNames) {
    row("TORVEX_SITES", {{"site", "bb"}, {"name", ""}});
    for (const auto* bad : {"", "zz", "bb", "a", "' or 1=1 --"}) {
        EXPECT_FALSE(manager().saveWebsiteTitle(bad, "en", "Title", 211)) << bad;
        EXPECT_FALSE(manager().saveWebsiteTitle("aa", bad, "Title", 211)) << bad;
    }
    EXPECT_EQ(titles(), "0");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(WebsitesTest, SavingATitleLeavesALineForItsEntryOnly) {
    manager().saveWebsiteTitle("AA", "EN", "One", 0);
    manager().saveWebsiteTitle("AA", "EN", "One", -1);
    EXPECT_THAT(auditTrail(), IsEmpty());
    manager().saveWebsiteTitle("AA", "EN", "Two", 211);
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||211|save|Website title (aa.en) has been updated"));
}

TEST_P(WebsitesTest, APairWithoutATitleHasAnEmptyOne) {
    EXPECT_EQ(manager().getWebsiteTitle("aa", "en"), "");
    EXPECT_EQ(manager().getWebsiteTitle("", ""), "");
    row("TORVEX_SITES_LANGUAGES", {{"site", "aa"}, {"lang", "en"}});
    EXPECT_EQ(manager().getWebsiteTitle("aa", "en"), "");
}

TEST_P(WebsitesTest, ABrokenDatabaseIsAnErrorOfEach) {
    drop("TORVEX_SITES_LANGUAGES");
    EXPECT_THAT(errorOf([&] { manager().getWebsites(); }), StartsWith(chain({"getWebsites !"})));
    EXPECT_THAT(errorOf([&] { manager().getWebsiteTitle("aa", "en"); }),
                StartsWith(chain({"getWebsiteTitle !"})));
    EXPECT_THAT(errorOf([&] { manager().saveWebsiteTitle("aa", "en", "x"); }),
                StartsWith(chain({"saveWebsiteTitle !"})));
    drop("TORVEX_SITES");
    EXPECT_THAT(errorOf([&] { manager().saveWebsiteTitle("aa", "en", "x"); }),
                StartsWith(chain({"saveWebsiteTitle !", "getSiteName !"})));
}

}  // namespace
}  // namespace torvex::test
