#include "support/SiteTest.h"

namespace torvex::test {
namespace {

// The host's clock stands at 2026-06-15.
constexpr const char* today = "20260615";
constexpr const char* yesterday = "20260614";
constexpr const char* tomorrow = "20260616";

class ResolutionTest : public SiteTest {
  protected:
    /// The record is that of a new object, but for what is named here.
    void expectNothingFilled() {
        EXPECT_EQ(server().pgOrderId(), -1);
        EXPECT_EQ(server().pgType(), "");
        EXPECT_EQ(server().pgTitle(), "");
        EXPECT_EQ(server().pgNavigation(), "");
        EXPECT_EQ(server().pgPrevious(), -1);
        EXPECT_EQ(server().pgNext(), -1);
        EXPECT_EQ(server().pgUp(), -1);
        EXPECT_EQ(server().pgOnline(), -1);
        EXPECT_EQ(server().pgOnlineTo(), "");
        EXPECT_EQ(server().pgTemplateFile(), "");
        EXPECT_EQ(server().pgStylesheetFile(), "");
        EXPECT_EQ(server().pgBaseTemplateFile(), "");
        EXPECT_EQ(server().pgAppParamPublic(), "");
        EXPECT_EQ(server().pgAppURLpublic(), "");
        EXPECT_EQ(server().pgAppURL(), "");
        EXPECT_EQ(server().pgBreadcrumb(), "-1");
        EXPECT_EQ(server().pgDynMenu(), "-1");
    }

    int verdict(const std::string& ident, const std::string& username = "",
                const std::string& password = "") {
        server().getPage(ident, username, password);
        return server().pgAccess();
    }

    /// A root, and a page 12 of group 5 with its member "ann".
    void securedPage() {
        host.application.set("torvex_extranet", true);
        page("aa.en").id(10).insert();
        page("aa.en.01").id(12).insert();
        group(5, "members");
        pageGroup(10, 1);
        pageGroup(12, 5);
        user(1, "Ann", "secret", {5});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ResolutionTest, bothEngines(), engineName);

// What was asked for

TEST_P(ResolutionTest, ANewObjectHoldsTheRecordOfNoPage) {
    EXPECT_EQ(server().pgAccess(), -1);
    EXPECT_EQ(server().pgPageId(), -1);
    EXPECT_EQ(server().pgNodeId(), "");
    EXPECT_EQ(server().pgOnlineFrom(), "");
    expectNothingFilled();
}

TEST_P(ResolutionTest, APageIsFoundByItsNumber) {
    page("aa.en.01").id(12).title("Twelve").insert();
    EXPECT_EQ(verdict("12"), 0);
    EXPECT_EQ(server().pgPageId(), 12);
    EXPECT_EQ(server().pgNodeId(), "aa.en.01");
    EXPECT_EQ(server().pgTitle(), "Twelve");
}

TEST_P(ResolutionTest, APageIsFoundByItsNode) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(verdict("aa.en.01"), 0);
    EXPECT_EQ(server().pgPageId(), 12);
}

TEST_P(ResolutionTest, ANumberWithBlanksAroundItIsANumber) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(verdict("  12 "), 0);
    EXPECT_EQ(server().pgPageId(), 12);
}

TEST_P(ResolutionTest, ANodeInUpperCaseIsLowered) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(verdict(" AA.EN.01 "), 0);
    EXPECT_EQ(server().pgNodeId(), "aa.en.01");
}

TEST_P(ResolutionTest, AnUnknownPageLeavesTheRecordEmpty) {
    EXPECT_EQ(verdict("12"), -1);
    EXPECT_EQ(server().pgPageId(), -1);
    EXPECT_EQ(server().pgNodeId(), "");
    expectNothingFilled();
}

TEST_P(ResolutionTest, APageThatIsNotPublishedKeepsItsNamesAlone) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_EQ(verdict("12"), -1);
    EXPECT_EQ(server().pgPageId(), 12);
    EXPECT_EQ(server().pgNodeId(), "aa.en.01");
    expectNothingFilled();
}

TEST_P(ResolutionTest, APageThatIsOnlyLiveIsNotFound) {
    page("aa.en.01").id(12).insertInLiveOnly();
    EXPECT_EQ(verdict("12"), -1);
    EXPECT_EQ(verdict("aa.en.01"), -1);
    EXPECT_EQ(server().pgPageId(), -1);
}

TEST_P(ResolutionTest, TheNodeComesFromTheLiveRow) {
    page("aa.en.01").id(12).insertInDesignOnly();
    page("aa.en.07").id(12).insertInLiveOnly();
    server().getPage("aa.en.01");
    EXPECT_EQ(server().pgNodeId(), "aa.en.07");
}

TEST_P(ResolutionTest, ANodeShorterThanARootIsNoPage) {
    page("aa").id(12).insert();
    EXPECT_EQ(verdict("12"), -1);
    EXPECT_EQ(server().pgPageId(), -1);
    EXPECT_EQ(verdict("aa"), -1);
}

TEST_P(ResolutionTest, BadIdentifiersFindNothing) {
    page("aa.en.01").id(12).insert();
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(verdict(bad), -1) << bad.substr(0, 40);
        EXPECT_EQ(server().pgPageId(), -1) << bad.substr(0, 40);
        EXPECT_FALSE(server().isPage(bad)) << bad.substr(0, 40);
    }
}

TEST_P(ResolutionTest, TheRecordOfAnEarlierPageIsReset) {
    page("aa.en.01").id(12).title("Twelve").insert();
    server().getPage("12");
    EXPECT_EQ(verdict("13"), -1);
    EXPECT_EQ(server().pgPageId(), -1);
    EXPECT_EQ(server().pgNodeId(), "");
    EXPECT_EQ(server().pgOnlineFrom(), "");
    expectNothingFilled();
}

// What the record is filled from

TEST_P(ResolutionTest, EveryFieldComesFromItsColumn) {
    contentTemplate(3, "aa", "en", "content.html", "");
    baseTemplate(4, "aa", "en", "base.html", "");
    stylesheet(5, "aa", "en", "site.css");
    page("aa.en.07")
        .id(12)
        .title("Twelve")
        .order(7)
        .contentTemplate(3)
        .baseTemplate(4)
        .stylesheet(5)
        .dates("20260101", "20261231")
        .set("navigation", "C")
        .set("breadcrumb", "1")
        .set("dynMenu", "0")
        .insert();
    EXPECT_EQ(verdict("12"), 0);
    EXPECT_EQ(server().pgOrderId(), 7);
    EXPECT_EQ(server().pgType(), "P");
    EXPECT_EQ(server().pgTitle(), "Twelve");
    EXPECT_EQ(server().pgNavigation(), "C");
    EXPECT_EQ(server().pgOnline(), 1);
    EXPECT_EQ(server().pgOnlineFrom(), "20260101");
    EXPECT_EQ(server().pgOnlineTo(), "20261231");
    EXPECT_EQ(server().pgTemplateFile(), "content.html");
    EXPECT_EQ(server().pgBaseTemplateFile(), "base.html");
    EXPECT_EQ(server().pgStylesheetFile(), "site.css");
    EXPECT_EQ(server().pgBreadcrumb(), "1");
    EXPECT_EQ(server().pgDynMenu(), "0");
}

TEST_P(ResolutionTest, TextsOfTheRecordAreTrimmed) {
    row("TORVEX_TEMPLATES", {{"tpl_id", 3}, {"tpl_filename", " content.html "}});
    row("TORVEX_BASETEMPLATES", {{"btpl_id", 4}, {"btpl_filename", " base.html "}});
    row("TORVEX_STYLESHEETS", {{"ss_id", 5}, {"ss_filename", " site.css "}});
    page("aa.en.01")
        .id(12)
        .type(" p ")
        .title("  Twelve ")
        .contentTemplate(3)
        .baseTemplate(4)
        .stylesheet(5)
        .set("navigation", " m ")
        .insert();
    server().getPage("12");
    EXPECT_EQ(server().pgType(), "P");
    EXPECT_EQ(server().pgTitle(), "Twelve");
    EXPECT_EQ(server().pgNavigation(), "m");
    EXPECT_EQ(server().pgTemplateFile(), "content.html");
    EXPECT_EQ(server().pgBaseTemplateFile(), "base.html");
    EXPECT_EQ(server().pgStylesheetFile(), "site.css");
}

TEST_P(ResolutionTest, ColumnsThatAreNullReadAsEmptyTexts) {
    page("aa.en.01").id(12).title("x").set("title", {}).set("navigation", {}).set("type", {}).insert();
    EXPECT_EQ(verdict("12"), 0);
    EXPECT_EQ(server().pgTitle(), "");
    EXPECT_EQ(server().pgNavigation(), "");
    EXPECT_EQ(server().pgType(), "");
    EXPECT_EQ(server().pgTemplateFile(), "");
    EXPECT_EQ(server().pgStylesheetFile(), "");
    EXPECT_EQ(server().pgBaseTemplateFile(), "");
}

TEST_P(ResolutionTest, AContentPageHasNoApplicationFields) {
    externalApplication(6, "http://app.test/");
    page("aa.en.01").id(12).application(6).set("app_param_public", "a=1").insert();
    EXPECT_EQ(verdict("12"), 0);
    EXPECT_EQ(server().pgAppURL(), "");
    EXPECT_EQ(server().pgAppURLpublic(), "");
    EXPECT_EQ(server().pgAppParamPublic(), "");
}

// Online

TEST_P(ResolutionTest, APageThatIsSwitchedOffIsOffline) {
    page("aa.en.01").id(12).title("Twelve").offline().insert();
    EXPECT_EQ(verdict("12"), -2);
    EXPECT_EQ(server().pgPageId(), 12);
    EXPECT_EQ(server().pgNodeId(), "aa.en.01");
    EXPECT_EQ(server().pgOnlineFrom(), "");
    expectNothingFilled();
}

TEST_P(ResolutionTest, APageBeforeItsFirstDayIsOfflineAndTellsThatDay) {
    page("aa.en.01").id(12).title("Twelve").dates(tomorrow, "99999999").insert();
    EXPECT_EQ(verdict("12"), -2);
    EXPECT_EQ(server().pgOnlineFrom(), tomorrow);
    expectNothingFilled();
}

TEST_P(ResolutionTest, APageThatIsSwitchedOffTellsAFirstDayThatLiesAhead) {
    page("aa.en.01").id(12).offline().dates(tomorrow, "99999999").insert();
    EXPECT_EQ(verdict("12"), -2);
    EXPECT_EQ(server().pgOnlineFrom(), tomorrow);
}

TEST_P(ResolutionTest, APageAfterItsLastDayIsOfflineAndTellsNoDay) {
    page("aa.en.01").id(12).dates("20260101", yesterday).insert();
    EXPECT_EQ(verdict("12"), -2);
    EXPECT_EQ(server().pgOnlineFrom(), "");
    expectNothingFilled();
}

TEST_P(ResolutionTest, BothEndsOfTheDatesAreOnline) {
    page("aa.en.01").id(12).dates(today, today).insert();
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(ResolutionTest, EmptyDatesSetNoLimit) {
    page("aa.en.01").id(12).dates("", "").insert();
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(ResolutionTest, NullDatesSetNoLimit) {
    page("aa.en.01").id(12).set("onlineFrom", {}).set("onlineTo", {}).insert();
    EXPECT_EQ(verdict("12"), 0);
    EXPECT_EQ(server().pgOnlineFrom(), "");
    EXPECT_EQ(server().pgOnlineTo(), "");
}

// Folders

TEST_P(ResolutionTest, AFolderResolvesToItsFirstChildByOrder) {
    page("aa.en.01").id(10).type("F").insert();
    page("aa.en.01.01").id(11).order(2).insert();
    page("aa.en.01.02").id(12).order(1).title("First").insert();
    EXPECT_EQ(verdict("10"), 0);
    EXPECT_EQ(server().pgPageId(), 12);
    EXPECT_EQ(server().pgNodeId(), "aa.en.01.02");
    EXPECT_EQ(server().pgTitle(), "First");
}

TEST_P(ResolutionTest, AFolderInAFolderResolvesThroughBoth) {
    page("aa.en.01").id(10).type("f").insert();
    page("aa.en.01.01").id(11).type(" F ").insert();
    page("aa.en.01.01.01").id(12).insert();
    EXPECT_EQ(verdict("aa.en.01"), 0);
    EXPECT_EQ(server().pgPageId(), 12);
}

TEST_P(ResolutionTest, AFolderWithoutAChildIsNoPageButKeepsItsNames) {
    page("aa.en.01").id(10).type("F").insert();
    EXPECT_EQ(verdict("10"), -1);
    EXPECT_EQ(server().pgPageId(), 10);
    EXPECT_EQ(server().pgNodeId(), "aa.en.01");
    expectNothingFilled();
}

TEST_P(ResolutionTest, AFirstChildThatIsOfflineIsNotPassedOver) {
    page("aa.en.01").id(10).type("F").insert();
    page("aa.en.01.01").id(11).offline().insert();
    page("aa.en.01.02").id(12).insert();
    EXPECT_EQ(verdict("10"), -2);
    EXPECT_EQ(server().pgPageId(), 11);
}

TEST_P(ResolutionTest, AFolderThatIsOfflineStillLeadsToItsChild) {
    page("aa.en.01").id(10).type("F").offline().insert();
    page("aa.en.01.01").id(11).insert();
    EXPECT_EQ(verdict("10"), 0);
    EXPECT_EQ(server().pgPageId(), 11);
}

TEST_P(ResolutionTest, FiftyFoldersAreFollowed) {
    std::string node = "aa.en";
    page(node).id(1).type("F").insert();
    for (int i = 2; i <= 51; ++i) page(node += ".01").id(i).type("F").insert();
    page(node + ".01").id(52).insert();
    EXPECT_EQ(verdict("1"), 0);
    EXPECT_EQ(server().pgPageId(), 52);
    EXPECT_TRUE(server().isPage("1"));
}

TEST_P(ResolutionTest, FoldersThatLeadInACircleAreNoPage) {
    page("aa.en.01").id(10).type("F").set("parent", "aa.en.02").insert();
    page("aa.en.02").id(11).type("F").set("parent", "aa.en.01").insert();
    EXPECT_EQ(verdict("10"), -1);
    EXPECT_FALSE(server().isPage("10"));
}

TEST_P(ResolutionTest, AFolderThatIsItsOwnChildIsNoPage) {
    page("aa.en.01").id(10).type("F").set("parent", "aa.en.01").insert();
    EXPECT_EQ(verdict("10"), -1);
    EXPECT_EQ(server().pgPageId(), 10);
    EXPECT_FALSE(server().isPage("10"));
}

// Groups

TEST_P(ResolutionTest, WithTheExtranetOffNoGroupIsLookedAt) {
    page("aa.en.01").id(12).insert();
    drop("TORVEX_PAGES_GROUPS_LIVE");
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(ResolutionTest, APageWithoutAnyGroupIsRefused) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).title("Twelve").insert();
    EXPECT_EQ(verdict("12", "Ann", "secret"), -3);
    EXPECT_EQ(server().pgPageId(), 12);
    expectNothingFilled();
}

TEST_P(ResolutionTest, APageForEverybodyIsOpen) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).insert();
    pageGroup(12, 1);
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(ResolutionTest, TheLowestGroupDecides) {
    securedPage();
    pageGroup(12, 1);
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(ResolutionTest, ASecuredPageNeedsAName) {
    securedPage();
    EXPECT_EQ(verdict("12"), -4);
    EXPECT_EQ(verdict("12", "", "secret"), -4);
    expectNothingFilled();
}

TEST_P(ResolutionTest, ASecuredPageNeedsAPassword) {
    securedPage();
    EXPECT_EQ(verdict("12", "Ann"), -4);
}

TEST_P(ResolutionTest, AMemberOfAGroupOfThePageMaySeeIt) {
    securedPage();
    EXPECT_EQ(verdict("12", "Ann", "secret"), 1);
    EXPECT_EQ(server().pgType(), "P");
}

TEST_P(ResolutionTest, AMemberOfAnyGroupOfThePageMaySeeIt) {
    securedPage();
    group(6, "guests");
    pageGroup(12, 6);
    user(2, "Bob", "guest", {6});
    EXPECT_EQ(verdict("12", "Bob", "guest"), 1);
}

TEST_P(ResolutionTest, AnUnknownNameIsRefused) {
    securedPage();
    EXPECT_EQ(verdict("12", "Eve", "secret"), -5);
    expectNothingFilled();
}

TEST_P(ResolutionTest, AWrongPasswordIsRefused) {
    securedPage();
    EXPECT_EQ(verdict("12", "Ann", "guess"), -5);
    EXPECT_EQ(verdict("12", "Ann", "' or '1'='1"), -5);
}

TEST_P(ResolutionTest, AUserOfAnotherGroupIsRefused) {
    securedPage();
    group(6, "guests");
    user(2, "Bob", "guest", {6});
    EXPECT_EQ(verdict("12", "Bob", "guest"), -5);
}

TEST_P(ResolutionTest, ANameWithAQuoteIsAName) {
    securedPage();
    user(2, "O'Hara", "it's", {5});
    EXPECT_EQ(verdict("12", "O'Hara", "it's"), 1);
}

TEST_P(ResolutionTest, AUserIsValidOnBothEndsOfTheDates) {
    securedPage();
    user(2, "Bob", "guest", {5}, today, today);
    EXPECT_EQ(verdict("12", "Bob", "guest"), 1);
}

TEST_P(ResolutionTest, AUserWithEmptyDatesIsValid) {
    securedPage();
    user(2, "Bob", "guest", {5}, "", "");
    EXPECT_EQ(verdict("12", "Bob", "guest"), 1);
}

TEST_P(ResolutionTest, AUserBeforeTheFirstDayIsRefused) {
    securedPage();
    user(2, "Bob", "guest", {5}, tomorrow, "");
    EXPECT_EQ(verdict("12", "Bob", "guest"), -5);
}

TEST_P(ResolutionTest, AUserAfterTheLastDayIsRefused) {
    securedPage();
    user(2, "Bob", "guest", {5}, "", yesterday);
    EXPECT_EQ(verdict("12", "Bob", "guest"), -5);
}

TEST_P(ResolutionTest, APageThatInheritsTakesTheGroupsOfItsParent) {
    securedPage();
    page("aa.en.01.01").id(13).insert();
    pageGroup(13, 0);
    EXPECT_EQ(verdict("13"), -4);
    EXPECT_EQ(verdict("13", "Ann", "secret"), 1);
    EXPECT_EQ(verdict("13", "Ann", "guess"), -5);
}

TEST_P(ResolutionTest, APageWhoseParentHasNoGroupsIsRefused) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).insert();
    page("aa.en.01.01").id(13).insert();
    pageGroup(13, 0);
    EXPECT_EQ(verdict("13"), -3);
}

TEST_P(ResolutionTest, APageThatInheritsUpToTheRootIsOpen) {
    host.application.set("torvex_extranet", true);
    page("aa.en").id(10).insert();
    page("aa.en.01").id(12).insert();
    pageGroup(10, 0);
    pageGroup(12, 0);
    EXPECT_EQ(verdict("12"), 0);
}

TEST_P(ResolutionTest, TheGroupsOfAFolderStandBeforeItsChild) {
    host.application.set("torvex_extranet", true);
    page("aa.en.01").id(12).type("F").insert();
    page("aa.en.01.01").id(13).insert();
    group(5, "members");
    pageGroup(12, 5);
    pageGroup(13, 1);
    EXPECT_EQ(verdict("12"), -4);
    EXPECT_EQ(server().pgPageId(), 12);
}

TEST_P(ResolutionTest, TheGroupsOfTheChildDecideOnAFolder) {
    securedPage();
    connection().execute("update TORVEX_PAGES_LIVE set type = 'F' where pageId = 10");
    EXPECT_EQ(verdict("10"), -4);
    EXPECT_EQ(server().pgPageId(), 12);
    EXPECT_EQ(verdict("10", "Ann", "secret"), 1);
}

TEST_P(ResolutionTest, ASecuredPageThatIsOfflineAsksForALoginFirst) {
    securedPage();
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId = 12");
    EXPECT_EQ(verdict("12"), -4);
    EXPECT_EQ(verdict("12", "Eve", "secret"), -5);
    EXPECT_EQ(verdict("12", "Ann", "secret"), -2);
}

TEST_P(ResolutionTest, ASecuredApplicationWithoutAnAddressIsRefusedLast) {
    securedPage();
    connection().execute("update TORVEX_PAGES_LIVE set type = 'A', online = 0 where pageId = 12");
    EXPECT_EQ(verdict("12", "Ann", "secret"), -2);
    connection().execute("update TORVEX_PAGES_LIVE set online = 1 where pageId = 12");
    EXPECT_EQ(verdict("12", "Ann", "secret"), -7);
    EXPECT_EQ(verdict("12"), -4);
}

// Failures

TEST_P(ResolutionTest, AnObjectThatWasNeverConnectedFails) {
    cServer unconnected(host.context());
    EXPECT_TRUE(errorOf([&] { unconnected.getPage("12"); }).starts_with(chain({"getPage!"})));
    EXPECT_TRUE(errorOf([&] { unconnected.isPage("12"); }).starts_with(chain({"isPage !"})));
}

TEST_P(ResolutionTest, ADatabaseThatFailsIsAnErrorWithTheOperationInFront) {
    page("aa.en.01").id(12).insert();
    drop("TORVEX_PAGES_LIVE");
    const std::string error = errorOf([&] { server().getPage("12"); });
    EXPECT_TRUE(error.starts_with(chain({"getPage!"}))) << error;
    EXPECT_GT(error.size(), chain({"getPage!"}).size());
    EXPECT_TRUE(errorOf([&] { server().isPage("12"); }).starts_with(chain({"isPage !"})));
}

TEST_P(ResolutionTest, AConnectionTextServesAsWellAsAConnection) {
    page("aa.en.01").id(12).title("Twelve").insert();
    cServer other(host.context());
    other.connect(connectionText());
    other.getPage("12");
    EXPECT_EQ(other.pgAccess(), 0);
    EXPECT_EQ(other.pgTitle(), "Twelve");
    EXPECT_TRUE(other.isPage("12"));
}

TEST_P(ResolutionTest, AConnectionTextThatNamesNothingFailsAtTheFirstQuery) {
    cServer other(host.context());
    other.connect(std::string("nonsense:"));
    EXPECT_TRUE(errorOf([&] { other.getPage("12"); }).starts_with(chain({"getPage!"})));
}

}  // namespace
}  // namespace torvex::test
