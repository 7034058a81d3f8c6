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

TEST_P(ResolutionTest, AConnectionTextThatOpensNothingFailsAtTheFirstQueryWhereItIsMade) {
    for (const auto* text : {"nonsense:", "sqlite:/no/such/folder", "postgresql:///x?host=/no/such/folder"}) {
        cServer other(host.context());
        other.connect(std::string(text));
        EXPECT_TRUE(errorOf([&] { other.getPage("12"); }).starts_with(chain({"getPage!", "getNodeId !"})))
            << text;
        EXPECT_TRUE(
            errorOf([&] { other.getPage("aa.en.01"); }).starts_with(chain({"getPage!", "getPageId !"})))
            << text;
    }
}

TEST_P(ResolutionTest, WithoutAConnectionTheFirstQueryFailsWhereItIsMade) {
    cServer unconnected(host.context());
    EXPECT_EQ(errorOf([&] { unconnected.getPage("12"); }),
              chain({"getPage!", "getNodeId !"}) + "no connection: connect was not called");
}

}  // namespace
}  // namespace torvex::test
