// What a page leads to: its neighbours, its application, and whether a page shows at all.

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class NavigationTest : public SiteTest {
  protected:
    /// A root 10 with the pages 11, 12 and 13 under it.
    void threePages() {
        page("aa.en").id(10).insert();
        for (int i = 1; i <= 3; ++i) page("aa.en.0" + std::to_string(i)).id(10 + i).insert();
    }

    std::string addressOf(const std::string& ident) {
        server().getPage(ident);
        return server().pgAppURLpublic();
    }

    void applicationPage(const std::string& address, const std::string& parameters = "") {
        externalApplication(6, address);
        page("aa.en.01").id(12).type("A").application(6).set("app_param_public", parameters).insert();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, NavigationTest, bothEngines(), engineName);

// Neighbours

TEST_P(NavigationTest, NeighboursAreThoseBeforeAndBehindByOrder) {
    threePages();
    server().getPage("12");
    EXPECT_EQ(server().pgPrevious(), 11);
    EXPECT_EQ(server().pgNext(), 13);
    EXPECT_EQ(server().pgUp(), 10);
}

TEST_P(NavigationTest, TheFirstAndTheLastPageHaveOneNeighbour) {
    threePages();
    server().getPage("11");
    EXPECT_EQ(server().pgPrevious(), -1);
    EXPECT_EQ(server().pgNext(), 12);
    server().getPage("13");
    EXPECT_EQ(server().pgPrevious(), 12);
    EXPECT_EQ(server().pgNext(), -1);
}

TEST_P(NavigationTest, TheOrderAndNotTheNodeDecides) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).order(3).insert();
    page("aa.en.02").id(12).order(1).insert();
    page("aa.en.03").id(13).order(2).insert();
    server().getPage("13");
    EXPECT_EQ(server().pgPrevious(), 12);
    EXPECT_EQ(server().pgNext(), 11);
}

TEST_P(NavigationTest, ARootHasNoNeighbours) {
    threePages();
    server().getPage("10");
    EXPECT_EQ(server().pgPrevious(), -1);
    EXPECT_EQ(server().pgNext(), -1);
    EXPECT_EQ(server().pgUp(), -1);
}

TEST_P(NavigationTest, NeighboursThatAreSwitchedOffArePassedOver) {
    page("aa.en").id(10).insert();
    for (int i = 1; i <= 5; ++i) {
        page("aa.en.0" + std::to_string(i)).id(10 + i).online(i % 2).insert();
    }
    server().getPage("13");
    EXPECT_EQ(server().pgPrevious(), 11);
    EXPECT_EQ(server().pgNext(), 15);
}

TEST_P(NavigationTest, TheDatesOfANeighbourAreNotLookedAt) {
    threePages();
    connection().execute("update TORVEX_PAGES_LIVE set onlineTo = '20200101' where pageId in (11, 13)");
    server().getPage("12");
    EXPECT_EQ(server().pgPrevious(), 11);
    EXPECT_EQ(server().pgNext(), 13);
}

TEST_P(NavigationTest, ANeighbourMayBeAFolder) {
    threePages();
    connection().execute("update TORVEX_PAGES_LIVE set type = 'F' where pageId in (11, 13)");
    server().getPage("12");
    EXPECT_EQ(server().pgPrevious(), 11);
    EXPECT_EQ(server().pgNext(), 13);
}

TEST_P(NavigationTest, NextKeepsOutOfTheSystemBranch) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).insert();
    page("aa.en.99").id(12).order(99).insert();
    server().getPage("11");
    EXPECT_EQ(server().pgNext(), -1);
}

TEST_P(NavigationTest, PreviousHasNoSuchBound) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).order(5).insert();
    page("aa.en.99").id(12).order(2).insert();
    server().getPage("11");
    EXPECT_EQ(server().pgPrevious(), 12);
}

TEST_P(NavigationTest, APageOfTheSystemBranchHasAPreviousOne) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).insert();
    page("aa.en.99").id(12).order(99).insert();
    server().getPage("12");
    EXPECT_EQ(server().pgPrevious(), 11);
    EXPECT_EQ(server().pgNext(), -1);
}

TEST_P(NavigationTest, UpSkipsFolders) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).type("f").insert();
    page("aa.en.01.01").id(12).insert();
    server().getPage("12");
    EXPECT_EQ(server().pgUp(), 10);
}

TEST_P(NavigationTest, UpOfAPageUnderFoldersAloneIsNone) {
    page("aa.en").id(10).type("F").insert();
    page("aa.en.01").id(11).type("F").insert();
    page("aa.en.01.01").id(12).insert();
    server().getPage("12");
    EXPECT_EQ(server().pgUp(), -1);
}

TEST_P(NavigationTest, UpTakesAnAncestorThatIsOffline) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).offline().insert();
    page("aa.en.01.01").id(12).insert();
    server().getPage("12");
    EXPECT_EQ(server().pgUp(), 11);
}

TEST_P(NavigationTest, NeighboursSetByHandAreTakenAsTheyAre) {
    threePages();
    page("aa.en.04").id(14).neighbours(13, 77, 11).insert();
    server().getPage("14");
    EXPECT_EQ(server().pgPrevious(), 13);
    EXPECT_EQ(server().pgNext(), 77);
    EXPECT_EQ(server().pgUp(), 11);
}

TEST_P(NavigationTest, NeighboursSetByHandMayBeMissing) {
    threePages();
    page("aa.en.04").id(14).neighbours(-1, -1, 10).set("navigation", "m").set("next", {}).insert();
    server().getPage("14");
    EXPECT_EQ(server().pgPrevious(), -1);
    EXPECT_EQ(server().pgNext(), -1);
    EXPECT_EQ(server().pgUp(), 10);
}

TEST_P(NavigationTest, AnyOtherNavigationIsComputed) {
    threePages();
    connection().execute("update TORVEX_PAGES_LIVE set navigation = 'C', next = 77 where pageId = 12");
    server().getPage("12");
    EXPECT_EQ(server().pgNext(), 13);
}

TEST_P(NavigationTest, APageThatIsItsOwnNeighbourIsAnError) {
    // Only two rows of one number can do this; a copy of the table has no key that keeps them out.
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).insert();
    connection().execute(GetParam() == db::Engine::Sqlite
                             ? "create table COPY_OF_PAGES as select * from TORVEX_PAGES_LIVE"
                             : "create table COPY_OF_PAGES (like TORVEX_PAGES_LIVE including defaults)");
    if (GetParam() == db::Engine::PostgreSql) {
        connection().execute("insert into COPY_OF_PAGES select * from TORVEX_PAGES_LIVE");
    }
    drop("TORVEX_PAGES_LIVE");
    // Triggers elsewhere name the table that is gone.
    if (GetParam() == db::Engine::Sqlite) connection().execute("pragma legacy_alter_table = on");
    connection().execute("alter table COPY_OF_PAGES rename to TORVEX_PAGES_LIVE");
    page("aa.en.02").id(11).insertInLiveOnly();
    EXPECT_TRUE(errorOf([&] { server().getPage("11"); }).starts_with(chain({"getPage!"})));
}

// Applications

TEST_P(NavigationTest, AnApplicationIsReachedByItsAddressWithTheNumberOfThePage) {
    applicationPage(" http://app.test/run ");
    server().getPage("12");
    EXPECT_EQ(server().pgAccess(), 0);
    EXPECT_EQ(server().pgAppURL(), "http://app.test/run");
    EXPECT_EQ(server().pgAppURLpublic(), "http://app.test/run?pageId=12&");
}

TEST_P(NavigationTest, TheQueryOfTheRequestIsHandedOn) {
    applicationPage("/app/");
    ask("a=1&b=%20x");
    EXPECT_EQ(addressOf("12"), "/app/?pageId=12&a=1&b=%20x");
}

TEST_P(NavigationTest, AnAddressWithAQueryGetsAnAmpersand) {
    applicationPage("/app/?x=1");
    ask("a=1");
    EXPECT_EQ(addressOf("12"), "/app/?x=1&pageId=12&a=1");
}

TEST_P(NavigationTest, ARequestWithANumberOfItsOwnDoesNotGetItTwice) {
    applicationPage("/app/");
    ask("PAGEID=12&a=1");
    EXPECT_EQ(addressOf("12"), "/app/?PAGEID=12&a=1");
}

TEST_P(NavigationTest, TheParametersOfThePageComeLast) {
    applicationPage("/app/", " x=1,y=a b/c ");
    ask("pageId=12");
    EXPECT_EQ(addressOf("12"), "/app/?pageId=12&x=1&y=a+b%2Fc");
    EXPECT_EQ(server().pgAppParamPublic(), "x=1,y=a b/c");
}

TEST_P(NavigationTest, TheTypeOfAnApplicationIgnoresCase) {
    externalApplication(6, "/app/");
    page("aa.en.01").id(12).type("a").application(6).insert();
    EXPECT_EQ(addressOf("12"), "/app/?pageId=12&");
    EXPECT_EQ(server().pgType(), "A");
}

TEST_P(NavigationTest, AnApplicationPageHasNeighbours) {
    page("aa.en").id(10).insert();
    applicationPage("/app/");
    server().getPage("12");
    EXPECT_EQ(server().pgUp(), 10);
}

TEST_P(NavigationTest, APageWithoutAnApplicationIsRefused) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(12).type("A").title("Twelve").set("app_param_public", "x=1").insert();
    server().getPage("12");
    EXPECT_EQ(server().pgAccess(), -7);
    EXPECT_EQ(server().pgAppURLpublic(), "");
    EXPECT_EQ(server().pgTitle(), "Twelve");
    EXPECT_EQ(server().pgAppParamPublic(), "x=1");
    EXPECT_EQ(server().pgUp(), -1);
}

TEST_P(NavigationTest, AnApplicationThatIsGoneIsRefused) {
    page("aa.en.01").id(12).type("A").application(6).insert();
    server().getPage("12");
    EXPECT_EQ(server().pgAccess(), -7);
}

TEST_P(NavigationTest, AnApplicationWithoutAnAddressIsRefused) {
    applicationPage("   ");
    server().getPage("12");
    EXPECT_EQ(server().pgAccess(), -7);
    EXPECT_EQ(server().pgAppURL(), "");
}

TEST_P(NavigationTest, UrlencodeLeavesTheShapeOfAQuery) {
    EXPECT_EQ(server().urlencode("a=1&b=c d"), "a=1&b=c+d");
    EXPECT_EQ(server().urlencode("x=\xC3\xA9/?"), "x=%C3%A9%2F%3F");
    EXPECT_EQ(server().urlencode("a=50%25"), "a=50%2525");
    EXPECT_EQ(server().urlencode(""), "");
}

// Whether a page shows

TEST_P(NavigationTest, APageThatIsOnlineIsAPage) {
    page("aa.en.01").id(12).insert();
    EXPECT_TRUE(server().isPage("12"));
    EXPECT_TRUE(server().isPage(" 12 "));
    EXPECT_TRUE(server().isPage(" AA.EN.01 "));
}

TEST_P(NavigationTest, APageThatIsNotPublishedIsNoPage) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_FALSE(server().isPage("12"));
    EXPECT_FALSE(server().isPage("aa.en.01"));
}

TEST_P(NavigationTest, ANodeThatIsOnlyLiveIsAPage) {
    page("aa.en.01").id(12).insertInLiveOnly();
    EXPECT_TRUE(server().isPage("aa.en.01"));
    EXPECT_FALSE(server().isPage("12"));
}

TEST_P(NavigationTest, APageThatIsOfflineIsNoPage) {
    page("aa.en.01").id(12).offline().insert();
    EXPECT_FALSE(server().isPage("12"));
}

TEST_P(NavigationTest, APageOutsideItsDatesIsNoPage) {
    page("aa.en.01").id(12).dates("20260616", "99999999").insert();
    page("aa.en.02").id(13).dates("00000000", "20260614").insert();
    EXPECT_FALSE(server().isPage("12"));
    EXPECT_FALSE(server().isPage("13"));
}

TEST_P(NavigationTest, APageOnTheEndsOfItsDatesOrWithoutAnyIsAPage) {
    page("aa.en.01").id(12).dates("20260615", "20260615").insert();
    page("aa.en.02").id(13).set("onlineFrom", {}).set("onlineTo", {}).insert();
    page("aa.en.03").id(14).dates("", "").insert();
    EXPECT_TRUE(server().isPage("12"));
    EXPECT_TRUE(server().isPage("13"));
    EXPECT_TRUE(server().isPage("14"));
}

TEST_P(NavigationTest, AFolderIsWhatItsFirstChildIs) {
    page("aa.en.01").id(10).type("f").insert();
    page("aa.en.01.01").id(11).type("F").order(1).insert();
    page("aa.en.01.02").id(12).order(2).insert();
    page("aa.en.01.01.01").id(13).insert();
    EXPECT_TRUE(server().isPage("10"));
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId = 13");
    EXPECT_FALSE(server().isPage("10"));
}

TEST_P(NavigationTest, AFolderWithoutAChildIsNoPage) {
    page("aa.en.01").id(10).type("F").insert();
    EXPECT_FALSE(server().isPage("10"));
}

TEST_P(NavigationTest, IsPageDoesNotLookAtGroups) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).insert();
    pageGroup(12, 5);
    EXPECT_TRUE(server().isPage("12"));
}

}  // namespace
}  // namespace torvex::test
