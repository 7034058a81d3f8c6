#include "support/ExtranetTest.h"

namespace torvex::test {
namespace {

class SecurityTest : public ExtranetTest {};
INSTANTIATE_TEST_SUITE_P(Engines, SecurityTest, bothEngines(), engineName);

// securityCheck: from the verdict to the target.

TEST_P(SecurityTest, AnOpenPageIsServed) {
    EXPECT_EQ(check("11"), "");
}

TEST_P(SecurityTest, AMembersPageIsServedToAMember) {
    logIn("ben");
    EXPECT_EQ(check("12"), "");
}

TEST_P(SecurityTest, NoPageAtAllIsNotFound) {
    EXPECT_EQ(server().securityCheck(), "/error.asp?pageId=-1&error=page_not_found");
    EXPECT_EQ(check("4711"), "/error.asp?pageId=-1&error=page_not_found");
    EXPECT_EQ(check("<script>"), "/error.asp?pageId=-1&error=page_not_found");
}

TEST_P(SecurityTest, APageThatIsNotLiveIsNotFoundByItsNumber) {
    page("aa.bb.05").id(20).insertInDesignOnly();
    EXPECT_EQ(check("20"), "/error.asp?pageId=20&error=page_not_found");
}

TEST_P(SecurityTest, AnOfflinePageIsNamedSo) {
    page("aa.bb.05").id(20).offline().insert();
    pageGroup(20, 1);
    EXPECT_EQ(check("20"), "/error.asp?pageId=20&error=page_offline");
}

TEST_P(SecurityTest, APageOfTheFutureTellsItsDay) {
    page("aa.bb.05").id(20).dates("20260616", "").insert();
    pageGroup(20, 1);
    EXPECT_EQ(check("20"), "/error.asp?pageId=20&error=page_offline&onlineFrom=20260616");
}

TEST_P(SecurityTest, APageOfThePastTellsNoDay) {
    page("aa.bb.05").id(20).dates("", "20260614").insert();
    pageGroup(20, 1);
    EXPECT_EQ(check("20"), "/error.asp?pageId=20&error=page_offline");
}

TEST_P(SecurityTest, APageWithoutGroupsNeedsALogin) {
    EXPECT_EQ(check("15"), "/error.asp?pageId=15&error=no_login");
}

TEST_P(SecurityTest, APageWithoutItsApplicationIsNamedSo) {
    page("aa.bb.05").id(20).type("A").insert();
    pageGroup(20, 1);
    EXPECT_EQ(check("20"), "/error.asp?pageId=20&error=no_application");
}

TEST_P(SecurityTest, PagesOfTheSystemBranchAreNotServed) {
    page("aa.bb.99").id(20).insert();
    page("aa.bb.99.01").id(21).insert();
    pageGroup(20, 1);
    pageGroup(21, 1);
    EXPECT_EQ(check("21"), "/error.asp?pageId=21&error=page_not_found");
    EXPECT_EQ(server().pgAccess(), 0);
}

TEST_P(SecurityTest, TheSystemBranchIsSoughtAnywhereInTheNode) {
    page("aa.bb.01.99").id(21).insert();
    pageGroup(21, 1);
    page("99.bb").id(22).insert();
    pageGroup(22, 1);
    EXPECT_EQ(check("21"), "/error.asp?pageId=21&error=page_not_found");
    EXPECT_EQ(check("22"), "/error.asp?pageId=22&error=page_not_found");
}

TEST_P(SecurityTest, ASecuredPageOfTheSystemBranchDoesNotAskForALogin) {
    page("aa.bb.99").id(20).set("loginPage", 18).insert();
    pageGroup(20, 2);
    EXPECT_EQ(check("20"), "/error.asp?pageId=20&error=page_not_found");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "");
}

// Application pages.

TEST_P(SecurityTest, APageThatIsNotOfTheCallingApplicationIsRefused) {
    externalApplication(5, "/shop/index.asp");
    page("aa.bb.05").id(20).type("A").application(5).insert();
    pageGroup(20, 1);
    EXPECT_EQ(check("20", "/forum/"), "/error.asp?pageId=20&error=no_login");
    EXPECT_EQ(check("20", "/Shop/"), "");
    EXPECT_EQ(check("20"), "");
    EXPECT_EQ(check("11", "/shop/"), "/error.asp?pageId=11&error=no_login");
}

TEST_P(SecurityTest, TheCallingApplicationDoesNotChangeAnotherRefusal) {
    EXPECT_EQ(check("4711", "/shop/"), "/error.asp?pageId=-1&error=page_not_found");
    EXPECT_EQ(check("12", "/shop/"), "/tvx.asp?pageId=18");
}

// Login pages and the page applied for.

TEST_P(SecurityTest, ASecuredPageLeadsToItsLoginPage) {
    EXPECT_EQ(check("12"), "/tvx.asp?pageId=18");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "12");
    EXPECT_EQ(kept("tvx_counter"), "-1");
}

TEST_P(SecurityTest, AWrongLoginLeadsToTheLoginPageAsWell) {
    logIn("cleo");
    EXPECT_EQ(check("12"), "/tvx.asp?pageId=18");
}

TEST_P(SecurityTest, AnInheritedGroupLeadsToTheLoginPageOfThePageThatHasIt) {
    EXPECT_EQ(check("13"), "/tvx.asp?pageId=18");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "13");
}

TEST_P(SecurityTest, ASecuredPageWithoutALoginPageIsRefused) {
    host.session.set("tvx_pageAppliedFor", 12);
    EXPECT_EQ(check("14"), "/error.asp?pageId=14&error=no_login");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "");
}

TEST_P(SecurityTest, ThePageAppliedForLivesThroughTheLoginPage) {
    check("12");
    EXPECT_EQ(check("18"), "");
    EXPECT_EQ(kept("tvx_counter"), "0");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "12");
}

TEST_P(SecurityTest, ThePageAppliedForIsForgottenAfterOneFurtherPage) {
    check("12");
    check("18");
    check("11");
    EXPECT_EQ(kept("tvx_counter"), "1");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "");
}

TEST_P(SecurityTest, APageThatIsNotThereDoesNotCount) {
    check("12");
    check("4711");
    EXPECT_EQ(kept("tvx_counter"), "-1");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "12");
}

TEST_P(SecurityTest, AskingForASecuredPageTwiceAppliesForItStill) {
    check("12");
    check("18");
    check("13");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "13");
}

TEST_P(SecurityTest, BetweenTwoRefusalsInARowTheFirstPageIsAppliedFor) {
    check("12");
    check("13");
    EXPECT_EQ(kept("tvx_pageAppliedFor"), "12");
}

// Secure transport.

TEST_P(SecurityTest, ASecureSiteMovesToItsSecureAddress) {
    host.application.set("tvx_website_ssl", true);
    ask("pageId=11&n=1", {}, {{"https", "off"}, {"script_name", "/tvx.asp"}});
    EXPECT_EQ(check("11"), "https://www.site.test/tvx.asp?pageId=11&n=1");
    ask("pageId=11", {}, {{"HTTPS", "On"}, {"script_name", "/tvx.asp"}});
    EXPECT_EQ(check("11"), "");
}

TEST_P(SecurityTest, AnOpenSiteMovesToItsPlainAddress) {
    ask("pageId=11", {}, {{"https", "on"}, {"script_name", "/tvx.asp"}});
    EXPECT_EQ(check("11"), "http://www.site.test/tvx.asp?pageId=11");
}

TEST_P(SecurityTest, OnlyMembersPagesAreSecureInASecureExtranet) {
    host.application.set("tvx_extranet_ssl", true);
    ask("pageId=12", {}, {{"https", "off"}, {"script_name", "/tvx.asp"}});
    EXPECT_EQ(check("11"), "");
    logIn("ben");
    EXPECT_EQ(check("12"), "https://www.site.test/tvx.asp?pageId=12");
}

TEST_P(SecurityTest, AServerThatSaysNothingOfItsTransportIsRight) {
    host.application.set("tvx_website_ssl", true);
    EXPECT_EQ(check("11"), "");
}

TEST_P(SecurityTest, WithFramesTheFrameSetsTransportCounts) {
    host.application.set("torvex_frames", true);
    host.application.set("tvx_website_ssl", true);
    ask("pageId=11", {}, {{"https", "on"}, {"script_name", "/tvx.asp"}});
    EXPECT_EQ(check("11"), "https://www.site.test/redirect.asp?pageId=11");
    host.session.set("ssl", true);
    EXPECT_EQ(check("11"), "");
    host.application.set("tvx_website_ssl", false);
    EXPECT_EQ(check("11"), "http://www.site.test/redirect.asp?pageId=11");
}

TEST_P(SecurityTest, ARefusalComesAheadOfTheTransport) {
    host.application.set("tvx_website_ssl", true);
    ask("", {}, {{"https", "off"}, {"script_name", "/tvx.asp"}});
    EXPECT_EQ(check("15"), "/error.asp?pageId=15&error=no_login");
}

TEST_P(SecurityTest, WithoutTheExtranetNoGroupMatters) {
    host.application.set("torvex_extranet", false);
    for (const auto* pageId : {"12", "14", "15"}) EXPECT_EQ(check(pageId), "");
}

TEST_P(SecurityTest, AFailureBearsItsLine) {
    get("12");
    drop("TORVEX_PAGES_GROUPS_LIVE");
    const std::string error = errorOf([&] { server().securityCheck(); });
    EXPECT_TRUE(error.starts_with(chain({"securityCheck !", "getLoginPage !"}))) << error;
}

// hasAccess.

TEST_P(SecurityTest, EverybodyHasAccessToAnOpenPage) {
    EXPECT_TRUE(server().hasAccess("11"));
    EXPECT_TRUE(server().hasAccess(" AA.BB.01 "));
    EXPECT_TRUE(server().hasAccess("11", "nobody"));
}

TEST_P(SecurityTest, NobodyHasAccessToWhatIsNoPage) {
    for (const auto& identifier : badIdentifiers()) EXPECT_FALSE(server().hasAccess(identifier));
    EXPECT_FALSE(server().hasAccess("4711"));
}

TEST_P(SecurityTest, APageThatIsNotLiveGivesNoAccess) {
    page("aa.bb.05").id(20).insertInDesignOnly();
    pageGroup(20, 1);
    EXPECT_FALSE(server().hasAccess("20"));
}

TEST_P(SecurityTest, AccessIsTheSessionsVisitorsWhenNobodyIsNamed) {
    EXPECT_FALSE(server().hasAccess("12"));
    logIn("ben");
    EXPECT_TRUE(server().hasAccess("12"));
    EXPECT_FALSE(server().hasAccess("14"));
}

TEST_P(SecurityTest, AccessOfANamedUserNeedsNoPassword) {
    EXPECT_TRUE(server().hasAccess("14", "ann"));
    EXPECT_FALSE(server().hasAccess("14", "ben"));
    EXPECT_FALSE(server().hasAccess("14", "nobody"));
}

TEST_P(SecurityTest, ASessionWithAWrongPasswordHasNoAccess) {
    logIn("ben");
    host.session.set("tvx_password", "wrong");
    EXPECT_FALSE(server().hasAccess("12"));
}

TEST_P(SecurityTest, APageWithoutGroupsGivesNoAccess) {
    logIn("ann");
    EXPECT_FALSE(server().hasAccess("15"));
}

TEST_P(SecurityTest, AccessIsInheritedFromThePageThatDecides) {
    EXPECT_TRUE(server().hasAccess("13", "ben"));
    EXPECT_FALSE(server().hasAccess("13", "cleo"));
}

TEST_P(SecurityTest, AccessNeedsValidDates) {
    user(110, "past", "pw", {2}, "", "20260614");
    user(111, "future", "pw", {2}, "20260616", "");
    user(112, "today", "pw", {2}, "20260615", "20260615");
    user(113, "open", "pw", {2}, Value(), Value());
    EXPECT_FALSE(server().hasAccess("12", "past"));
    EXPECT_FALSE(server().hasAccess("12", "future"));
    EXPECT_TRUE(server().hasAccess("12", "today"));
    EXPECT_TRUE(server().hasAccess("12", "open"));
}

TEST_P(SecurityTest, AccessDoesNotLookAtThePagesOwnDates) {
    page("aa.bb.05").id(20).offline().insert();
    pageGroup(20, 1);
    EXPECT_TRUE(server().hasAccess("20"));
}

TEST_P(SecurityTest, AccessToAFolderIsThatOfItselfAndItsFirstChild) {
    page("aa.bb.05").id(20).type("F").insert();
    page("aa.bb.05.01").id(21).insert();
    pageGroup(20, 1);
    pageGroup(21, 2);
    EXPECT_FALSE(server().hasAccess("20"));
    EXPECT_TRUE(server().hasAccess("20", "ben"));
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 3 where pageId = 20");
    EXPECT_FALSE(server().hasAccess("20", "ben"));
}

TEST_P(SecurityTest, AnEmptyFolderOrACircleGivesNoAccess) {
    page("aa.bb.05").id(20).type("F").insert();
    page("aa.bb.06").id(21).type("F").set("parent", "aa.bb.06").insert();
    pageGroup(20, 1);
    pageGroup(21, 1);
    EXPECT_FALSE(server().hasAccess("20"));
    EXPECT_FALSE(server().hasAccess("21"));
}

TEST_P(SecurityTest, WithoutTheExtranetEverybodyHasAccess) {
    host.application.set("torvex_extranet", false);
    EXPECT_TRUE(server().hasAccess("14"));
    EXPECT_TRUE(server().hasAccess("15"));
    EXPECT_FALSE(server().hasAccess("4711"));
}

// isSecuredPage and getLoginPage.

TEST_P(SecurityTest, APageIsSecuredByARealGroup) {
    EXPECT_TRUE(server().isSecuredPage("12"));
    EXPECT_TRUE(server().isSecuredPage("aa.bb.02.01"));
    EXPECT_FALSE(server().isSecuredPage("10"));
    EXPECT_FALSE(server().isSecuredPage("11"));
    EXPECT_FALSE(server().isSecuredPage("15"));
    EXPECT_FALSE(server().isSecuredPage("4711"));
}

TEST_P(SecurityTest, TheLowestGroupDecides) {
    pageGroup(12, 1);
    EXPECT_FALSE(server().isSecuredPage("12"));
}

TEST_P(SecurityTest, WithoutTheExtranetNoPageIsSecured) {
    host.application.set("torvex_extranet", false);
    EXPECT_FALSE(server().isSecuredPage("12"));
}

TEST_P(SecurityTest, InheritanceUpToTheRootIsOpen) {
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 0");
    EXPECT_FALSE(server().isSecuredPage("13"));
    EXPECT_TRUE(server().hasAccess("13"));
}

TEST_P(SecurityTest, TheLoginPageIsThatOfThePageThatHasTheGroup) {
    EXPECT_EQ(server().getLoginPage("12"), 18);
    EXPECT_EQ(server().getLoginPage("aa.bb.02.01"), 18);
    EXPECT_EQ(server().getLoginPage("14"), -1);
}

TEST_P(SecurityTest, APageWithoutGroupsHasItsOwnLoginPage) {
    connection().execute("update TORVEX_PAGES_LIVE set loginPage = 18 where pageId = 15");
    EXPECT_EQ(server().getLoginPage("15"), 18);
}

TEST_P(SecurityTest, WithoutTheExtranetThereIsNoLoginPage) {
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(server().getLoginPage("12"), 0);
}

TEST_P(SecurityTest, WhatIsNoPageHasNoLoginPage) {
    EXPECT_LE(server().getLoginPage("4711"), 0);
    EXPECT_LE(server().getLoginPage(""), 0);
}

TEST_P(SecurityTest, FailuresBearTheirLines) {
    drop("TORVEX_PAGES_GROUPS_LIVE");
    EXPECT_TRUE(errorOf([&] { server().hasAccess("12"); }).starts_with(chain({"hasAccess !"})));
    EXPECT_TRUE(errorOf([&] { server().isSecuredPage("12"); }).starts_with(chain({"isSecuredPage !"})));
    EXPECT_TRUE(errorOf([&] { server().getLoginPage("12"); }).starts_with(chain({"getLoginPage !"})));
}

}  // namespace
}  // namespace torvex::test
