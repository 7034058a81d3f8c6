// What a page's record leads to: the pages around it and its application.

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class PageNeighboursTest : public ManagerTest {
  protected:
    PageBuilder automatic(const std::string& nodeId) { return page(nodeId).set("navigation", "A"); }

    /// A root 10 with the pages 11, 12 and 13 under it.
    void threePages() {
        page("aa.en").id(10).insert();
        for (int i = 1; i <= 3; ++i) automatic("aa.en.0" + std::to_string(i)).id(10 + i).insert();
    }
    /// Previous, next and up of a page, divided by blanks.
    std::string around(const std::string& ident, const std::string& mode = "L") {
        manager().getPage(ident, mode);
        std::string result;
        for (const PageId neighbour : {manager().pgPrevious(), manager().pgNext(), manager().pgUp()}) {
            result += (result.empty() ? "" : " ") + Value(neighbour).toText();
        }
        return result;
    }

    void application(const Value& publicAddress, const Value& adminAddress = {}) {
        row("TORVEX_APPLICATIONS", {{"app_id", 6},
                                    {"app_name", "Shop"},
                                    {"app_description", "Sells seeds"},
                                    {"app_href_public", publicAddress},
                                    {"app_href_admin", adminAddress},
                                    {"app_param_public", "not=these"},
                                    {"app_param_admin", "not=these"}});
    }
    void applicationPage(const Value& publicParameters = {}, const Value& adminParameters = {}) {
        page("aa.en.01")
            .id(12)
            .type("A")
            .application(6)
            .set("app_param_public", publicParameters)
            .set("app_param_admin", adminParameters)
            .insert();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PageNeighboursTest, bothEngines(), engineName);

// Set by hand

TEST_P(PageNeighboursTest, NeighboursSetByHandAreThoseOfTheRow) {
    threePages();
    page("aa.en.04").id(14).neighbours(5, 6, 7).insertInDesignOnly();
    page("aa.en.04").id(14).neighbours(8, -1, 9).set("navigation", " m ").insertInLiveOnly();
    EXPECT_EQ(around("14"), "8 -1 9");
    EXPECT_EQ(manager().pgNavigation(), "m");
    EXPECT_EQ(around("14", "D"), "5 6 7");
}

TEST_P(PageNeighboursTest, NeighboursThatAreNullAreNone) {
    page("aa.en.04").id(14).neighbours(1, 2, 3).set("previous", {}).set("next", {}).set("up", {}).insert();
    EXPECT_EQ(around("14"), "-1 -1 -1");
}

TEST_P(PageNeighboursTest, WithoutNavigationThereAreNone) {
    threePages();
    page("aa.en.04").id(14).neighbours(5, 6, 7).set("navigation", "").insert();
    EXPECT_EQ(around("14"), "-1 -1 -1");
    EXPECT_EQ(around("14", "D"), "-1 -1 -1");
    page("aa.en.05").id(15).neighbours(5, 6, 7).set("navigation", "X").insert();
    EXPECT_EQ(around("15"), "-1 -1 -1");
}

// Computed

TEST_P(PageNeighboursTest, NeighboursAreThoseBeforeAndBehindByOrder) {
    threePages();
    for (const auto* mode : {"L", "D"}) {
        EXPECT_EQ(around("12", mode), "11 13 10") << mode;
        EXPECT_EQ(around("11", mode), "-1 12 10") << mode;
        EXPECT_EQ(around("13", mode), "12 -1 10") << mode;
    }
}

TEST_P(PageNeighboursTest, TheOrderAndNotTheNodeDecides) {
    page("aa.en").id(10).insert();
    automatic("aa.en.01").id(11).order(3).insert();
    automatic("aa.en.02").id(12).order(1).insert();
    automatic("aa.en.03").id(13).order(2).insert();
    EXPECT_EQ(around("13"), "12 11 10");
    EXPECT_EQ(around("13", "D"), "12 11 10");
}

TEST_P(PageNeighboursTest, NavigationIsComputedInEitherCase) {
    threePages();
    connection().execute("update TORVEX_PAGES_LIVE set navigation = ' a ' where pageId = 12");
    EXPECT_EQ(around("12"), "11 13 10");
}

TEST_P(PageNeighboursTest, LivePagesThatAreSwitchedOffArePassedOverInLiveModeAlone) {
    threePages();
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId in (11, 13)");
    EXPECT_EQ(around("12"), "-1 -1 10");
    EXPECT_EQ(around("12", "D"), "11 13 10");
}

TEST_P(PageNeighboursTest, EachModeLooksAtItsOwnTable) {
    threePages();
    automatic("aa.en.04").id(14).insertInDesignOnly();
    EXPECT_EQ(around("13"), "12 -1 10");
    EXPECT_EQ(around("13", "D"), "12 14 10");
    EXPECT_EQ(around("14"), "-1 -1 -1");
    EXPECT_EQ(around("14", "D"), "13 -1 10");
}

TEST_P(PageNeighboursTest, NextKeepsOutOfTheSystemBranch) {
    threePages();
    automatic("aa.en.99").id(19).order(99).insert();
    EXPECT_EQ(around("13"), "12 -1 10");
    EXPECT_EQ(around("13", "D"), "12 -1 10");
}

TEST_P(PageNeighboursTest, PreviousDoesNot) {
    page("aa.en").id(10).insert();
    automatic("aa.en.01").id(11).order(5).insert();
    automatic("aa.en.99").id(19).order(2).insert();
    EXPECT_EQ(around("11"), "19 -1 10");
    EXPECT_EQ(around("11", "D"), "19 -1 10");
}

TEST_P(PageNeighboursTest, APageOfTheSystemBranchHasNoNeighbours) {
    page("aa.en").id(10).insert();
    automatic("aa.en.01").id(11).insert();
    automatic("aa.en.99").id(19).order(99).insert();
    automatic("aa.en.99.01").id(20).insert();
    automatic("aa.en.99.02").id(21).insert();
    for (const auto* mode : {"L", "D"}) {
        EXPECT_EQ(around("19", mode), "-1 -1 -1") << mode;
        EXPECT_EQ(around("21", mode), "-1 -1 -1") << mode;
    }
}

TEST_P(PageNeighboursTest, ASiteNamedByTheReservedNumberHasNeighbours) {
    page("99.en").id(10).insert();
    automatic("99.en.01").id(11).insert();
    automatic("99.en.02").id(12).insert();
    EXPECT_EQ(around("12"), "11 -1 10");
}

TEST_P(PageNeighboursTest, ARootHasNone) {
    automatic("aa.en").id(10).insert();
    automatic("aa.nl").id(11).insert();
    EXPECT_EQ(around("10"), "-1 -1 -1");
    EXPECT_EQ(around("10", "D"), "-1 -1 -1");
}

TEST_P(PageNeighboursTest, UpSkipsFoldersOfTheMode) {
    page("aa.en").id(10).insert();
    page("aa.en.01").id(11).type("F").insertInDesignOnly();
    page("aa.en.01").id(11).type("P").insertInLiveOnly();
    automatic("aa.en.01.01").id(12).insert();
    EXPECT_EQ(around("12"), "-1 -1 11");
    EXPECT_EQ(around("12", "D"), "-1 -1 10");
}

TEST_P(PageNeighboursTest, UpOfAPageUnderFoldersAloneIsNone) {
    page("aa.en").id(10).type("F").insert();
    page("aa.en.01").id(11).type("f").insert();
    automatic("aa.en.01.01").id(12).insert();
    EXPECT_EQ(around("12"), "-1 -1 -1");
    EXPECT_EQ(around("12", "D"), "-1 -1 -1");
}

TEST_P(PageNeighboursTest, UpMayBeAPageThatIsNotPublished) {
    page("aa.en").id(10).type("F").insertInDesignOnly();
    automatic("aa.en.01").id(11).insert();
    EXPECT_EQ(around("11"), "-1 -1 10");
    EXPECT_EQ(around("11", "D"), "-1 -1 -1");
}

// Applications

TEST_P(PageNeighboursTest, AnApplicationIsNamedAndAddressed) {
    application(" http://shop.test/ ", "/admin/");
    applicationPage("a=1,b=c d", "x=1");
    for (const auto* mode : {"L", "D"}) {
        SCOPED_TRACE(mode);
        manager().getPage("12", mode);
        EXPECT_EQ(manager().pgAppId(), 6);
        EXPECT_EQ(manager().pgAppName(), "Shop");
        EXPECT_EQ(manager().pgAppDesc(), "Sells seeds");
        EXPECT_EQ(manager().pgAppParamPublic(), "a=1,b=c d");
        EXPECT_EQ(manager().pgAppParamAdmin(), "x=1");
        EXPECT_EQ(manager().pgAppURLpublic(), "http://shop.test/?pageId=12&&a=1&b=c+d");
        EXPECT_EQ(manager().pgAppURLadmin(), "/admin/?pageId=12&&x=1");
    }
}

TEST_P(PageNeighboursTest, TheQueryOfTheRequestIsHandedOnAsItStands) {
    application("/shop/", "/admin/");
    applicationPage();
    ask("pageId=77&b=%20x");
    manager().getPage("12");
    EXPECT_EQ(manager().pgAppURLpublic(), "/shop/?pageId=12&pageId=77&b=%20x");
    EXPECT_EQ(manager().pgAppURLadmin(), "/admin/?pageId=12&pageId=77&b=%20x");
}

TEST_P(PageNeighboursTest, AnAddressWithAQueryGetsAnAmpersand) {
    application("/shop/?x=1", "/admin/?y=2");
    applicationPage();
    ask("a=1");
    manager().getPage("12");
    EXPECT_EQ(manager().pgAppURLpublic(), "/shop/?x=1&pageId=12&a=1");
    EXPECT_EQ(manager().pgAppURLadmin(), "/admin/?y=2&pageId=12&a=1");
}

TEST_P(PageNeighboursTest, AnAddressThatNamesThePageDoesNotGetItsNumber) {
    application("/shop/?PAGEID=5", "/pageid/admin");
    applicationPage();
    ask("a=1");
    manager().getPage("12");
    EXPECT_EQ(manager().pgAppURLpublic(), "/shop/?PAGEID=5&a=1");
    EXPECT_EQ(manager().pgAppURLadmin(), "/pageid/admin?a=1");
}

TEST_P(PageNeighboursTest, WithoutAnAddressThereIsNone) {
    application({}, "   ");
    applicationPage("a=1", "b=1");
    manager().getPage("12");
    EXPECT_EQ(manager().pgAppURLpublic(), "");
    EXPECT_EQ(manager().pgAppURLadmin(), "");
    EXPECT_EQ(manager().pgAppParamPublic(), "a=1");
}

TEST_P(PageNeighboursTest, AnApplicationThatIsGoneKeepsItsNumberAndParameters) {
    applicationPage("a=1", "b=1");
    manager().getPage("12");
    EXPECT_EQ(manager().pgAppId(), 6);
    EXPECT_EQ(manager().pgAppName(), "");
    EXPECT_EQ(manager().pgAppParamPublic(), "a=1");
    EXPECT_EQ(manager().pgAppURLpublic(), "");
}

TEST_P(PageNeighboursTest, APageWithoutAnApplicationHasNoneOfIt) {
    for (const Value& none : {Value(0), Value(-1), Value()}) {
        connection().execute("delete from TORVEX_PAGES_LIVE");
        connection().execute("delete from TORVEX_PAGES_DESIGN");
        page("aa.en.01").id(12).set("application", none).set("app_param_public", "a=1").insert();
        manager().getPage("12");
        EXPECT_EQ(manager().pgAppId(), -1);
        EXPECT_EQ(manager().pgAppParamPublic(), "");
        EXPECT_EQ(manager().pgAppURLpublic(), "");
    }
}

}  // namespace
}  // namespace torvex::test
