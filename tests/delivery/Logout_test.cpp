#include "support/ExtranetTest.h"

namespace torvex::test {
namespace {

class LogoutTest : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (!HasFatalFailure()) logIn("ben");
    }
    std::string leave(const std::string& pageId, const std::string& target = "",
                      const std::string& referer = "http://www.site.test/tvx.asp?pageId=12") {
        ask("torvex_pageId=" + pageId + "&torvex_logoutTarget=" + target, {}, {{"HTTP_Referer", referer}});
        return server().getLogoutURL();
    }
    void exitPage(int pageId) {
        connection().execute("update TORVEX_USERGROUPS set exitPage = ? where groupId = 2", {pageId});
    }
    void expectNobody() {
        for (const auto* key : {"tvx_username", "tvx_password", "tvx_target"}) EXPECT_EQ(kept(key), "");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LogoutTest, bothEngines(), engineName);

TEST_P(LogoutTest, ThevisitorIsNobodyAfterwards) {
    host.session.set("tvx_target", "group");
    leave("11");
    expectNobody();
}

TEST_P(LogoutTest, ThePreviewLogsNobodyOut) {
    host.session.set("tvx_target", "group");
    leave("11", "", "http://www.site.test/torvex/view.asp?pageId=11");
    EXPECT_EQ(kept("tvx_username"), "ben");
    EXPECT_EQ(kept("tvx_password"), "benpw");
    EXPECT_EQ(kept("tvx_target"), "group");
}

TEST_P(LogoutTest, AnOpenPageIsStayedOn) {
    EXPECT_EQ(leave("11"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, WithFramesThePageGoesByTheFrameSet) {
    host.application.set("torvex_frames", true);
    EXPECT_EQ(leave("11"), "/redirect.asp?pageId=11");
}

TEST_P(LogoutTest, ANamedPageIsWhereTheVisitorGoes) {
    EXPECT_EQ(leave("12", "18"), "/tvx.asp?pageId=18");
    EXPECT_EQ(leave("12", "AA.BB.01"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, ANamedPageThatIsNotOpenIsPassedOver) {
    EXPECT_EQ(leave("11", "12"), "/tvx.asp?pageId=11");
    EXPECT_EQ(leave("11", "4711"), "/tvx.asp?pageId=11");
    EXPECT_EQ(leave("11", "//evil.test"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, TheGroupsPageIsItsExitPage) {
    exitPage(18);
    EXPECT_EQ(leave("11", "group"), "/tvx.asp?pageId=18");
}

TEST_P(LogoutTest, AnExitPageThatIsNotOpenIsPassedOver) {
    exitPage(13);
    EXPECT_EQ(leave("11", "group"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, TheSitemapLeadsToTheNearestOpenPageAbove) {
    EXPECT_EQ(leave("13", "sitemap"), "/tvx.asp?pageId=10");
}

TEST_P(LogoutTest, TheWayOfTheLastLoginIsTakenWhenNoneIsNamed) {
    exitPage(18);
    host.session.set("tvx_target", "group");
    EXPECT_EQ(leave("11"), "/tvx.asp?pageId=18");
}

TEST_P(LogoutTest, ANamedWayComesAheadOfTheLoginsOne) {
    exitPage(18);
    host.session.set("tvx_target", "group");
    EXPECT_EQ(leave("11", "Current"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, TheFallbackAsksTheGroupBehindThePage) {
    exitPage(18);
    EXPECT_EQ(leave("12", "current"), "/tvx.asp?pageId=18");
}

TEST_P(LogoutTest, TheFallbackAsksThePageAheadOfTheGroup) {
    exitPage(18);
    EXPECT_EQ(leave("11", "12"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, TheFallbackAsksTheSitemapLast) {
    EXPECT_EQ(leave("13", "current"), "/tvx.asp?pageId=10");
    EXPECT_EQ(leave("13", "group"), "/tvx.asp?pageId=10");
}

TEST_P(LogoutTest, WithoutAnyOpenPageTheDefaultOneIsLeft) {
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 2 where pageId = 10");
    host.application.set("tvx_default_pageId", 18);
    EXPECT_EQ(leave("13"), "/tvx.asp?pageId=18");
}

TEST_P(LogoutTest, TheDefaultPageMayBeANode) {
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 2 where pageId = 10");
    host.application.set("tvx_default_pageId", "aa.bb.08");
    EXPECT_EQ(leave("13"), "/tvx.asp?pageId=aa.bb.08");
}

TEST_P(LogoutTest, AVisitorWhoIsNobodyMayLeaveAsWell) {
    host.session.set("tvx_username", "");
    host.session.set("tvx_password", "");
    EXPECT_EQ(leave("11", "group"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, NeverLeadsToAnotherHost) {
    EXPECT_EQ(leave("11", "", "http://evil.test/"), "/tvx.asp?pageId=11");
}

TEST_P(LogoutTest, WithoutTheExtranetNothingHappens) {
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(leave("11"), "");
}

TEST_P(LogoutTest, AFailureBearsItsLine) {
    drop("TORVEX_PAGES_GROUPS_LIVE");
    EXPECT_TRUE(errorOf([&] { leave("11"); }).starts_with(chain({"getLogoutURL !", "hasAccess !"})));
}

}  // namespace
}  // namespace torvex::test
