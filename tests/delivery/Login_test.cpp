#include "support/ExtranetTest.h"

namespace torvex::test {
namespace {

constexpr auto ownPage = "http://www.site.test/tvx.asp?pageId=11";

class LoginTest : public ExtranetTest {
  protected:
    /// Posts the form from an own page, which shows page 11 when nothing else is said.
    std::string post(NamedValues fields, const std::string& referer = ownPage) {
        bool namesPage = false;
        for (const auto& field : fields) namesPage = namesPage || field.first == "torvex_pageId";
        if (!namesPage) fields.emplace_back("torvex_pageId", "11");
        ask("", std::move(fields), {{"HTTP_Referer", referer}});
        return server().getLoginURL();
    }
    std::string post(const std::string& name, const std::string& target = "") {
        return post(
            {{"torvex_username", name}, {"torvex_password", name + "pw"}, {"torvex_loginTarget", target}});
    }
    std::string postWrong(const std::string& target = "") {
        return post(
            {{"torvex_username", "ann"}, {"torvex_password", "wrong"}, {"torvex_loginTarget", target}});
    }
    void frames() { host.application.set("torvex_frames", true); }
    void expectNobody() {
        EXPECT_EQ(kept("tvx_username"), "");
        EXPECT_EQ(kept("tvx_password"), "");
        EXPECT_EQ(kept("tvx_target"), "");
    }
    void expectFailure(const std::string& result) {
        expectNobody();
        EXPECT_EQ(result, ownPage);
        EXPECT_EQ(kept("tvx_loginTrials"), "1");
        EXPECT_TRUE(host.session.isTrue("tvx_loginError"));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginTest, bothEngines(), engineName);

TEST_P(LoginTest, WithoutTheExtranetNothingHappens) {
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(post("ann"), "");
    expectNobody();
}

TEST_P(LoginTest, WithoutAValidPageNothingHappens) {
    for (const auto& identifier : badIdentifiers()) {
        EXPECT_EQ(
            post({{"torvex_pageId", identifier}, {"torvex_username", "ann"}, {"torvex_password", "annpw"}}),
            "");
    }
    expectNobody();
}

// To the page itself.

TEST_P(LoginTest, WithoutATargetTheVisitorComesBackToThePage) {
    EXPECT_EQ(post("ann"), ownPage);
    EXPECT_EQ(kept("tvx_username"), "ann");
    EXPECT_EQ(kept("tvx_password"), "annpw");
    EXPECT_EQ(kept("tvx_target"), "current");
}

TEST_P(LoginTest, ALoginAsksForANewTokenAndAFailureDoesNot) {
    postWrong();
    EXPECT_FALSE(host.session.takeTokenRequest());
    post("ann");
    EXPECT_TRUE(host.session.takeTokenRequest());
}

TEST_P(LoginTest, NameAndPasswordAreTrimmedAndInLowerCase) {
    post({{"torvex_username", " ANN "}, {"torvex_password", " AnnPw "}, {"torvex_loginTarget", " Current "}});
    EXPECT_EQ(kept("tvx_username"), "ann");
    EXPECT_EQ(kept("tvx_password"), "annpw");
}

TEST_P(LoginTest, ALoginForgetsTheTrials) {
    postWrong();
    post("ann");
    EXPECT_EQ(kept("tvx_loginTrials"), "0");
}

TEST_P(LoginTest, ThePageMayBeGivenByItsNode) {
    EXPECT_EQ(
        post({{"torvex_pageId", " AA.bb.01 "}, {"torvex_username", "ann"}, {"torvex_password", "annpw"}}),
        ownPage);
    EXPECT_EQ(kept("tvx_username"), "ann");
}

TEST_P(LoginTest, WithFramesTheFrameSetIsLoadedAgain) {
    frames();
    EXPECT_EQ(post("ann"), "/redirect.asp?pageId=11");
}

TEST_P(LoginTest, AUserWithoutARealGroupCanNotLogIn) {
    expectFailure(post("cleo"));
}

TEST_P(LoginTest, AWrongPasswordIsAFailure) {
    expectFailure(postWrong());
}

TEST_P(LoginTest, AnUnknownNameIsAFailure) {
    expectFailure(post("nobody"));
}

TEST_P(LoginTest, AFormWithoutANameIsAFailureForAVisitorWhoIsIn) {
    logIn("ann");
    post({{"torvex_username", ""}, {"torvex_password", ""}});
    EXPECT_EQ(kept("tvx_loginTrials"), "1");
    EXPECT_EQ(kept("tvx_username"), "ann");
}

TEST_P(LoginTest, AFailureDoesNotLogOut) {
    logIn("ben");
    postWrong();
    EXPECT_EQ(kept("tvx_username"), "ben");
}

TEST_P(LoginTest, QuotesLogNobodyIn) {
    expectFailure(post({{"torvex_username", "ann' --"}, {"torvex_password", "' or '1'='1"}}));
}

// Referrers.

TEST_P(LoginTest, AReferrerOfAnotherHostIsNeverFollowed) {
    for (const auto* referer :
         {"http://evil.test/", "http://www.site.test.evil.test/", "http://www.site.test@evil.test/",
          "http://www.site.test:80@evil.test/", "//evil.test/", "http:///evil.test", "javascript:alert(1)",
          "http://evil.test/?http://www.site.test/", "http://evil.test#www.site.test", "www.site.test", "",
          "http://evil.test\\@www.site.test/", "http://www.site.test\\.evil.test/", "ftp://www.site.test/",
          "http://www.site.test:8080/"}) {
        EXPECT_EQ(post({{"torvex_username", "ann"}, {"torvex_password", "annpw"}}, referer),
                  "/tvx.asp?pageId=11")
            << referer;
    }
}

TEST_P(LoginTest, AForeignReferrerIsNotFollowedByAFailureEither) {
    EXPECT_EQ(post({{"torvex_username", "ann"}, {"torvex_password", "no"}}, "http://evil.test/"),
              "/tvx.asp?pageId=11");
}

TEST_P(LoginTest, AReferrerOfTheOwnHostIsFollowedWithEitherScheme) {
    for (const auto* referer : {"http://www.site.test/", "https://www.site.test/x.asp?a=1#b",
                                "http://WWW.SITE.TEST?x", "http://www.site.test"}) {
        EXPECT_EQ(post({{"torvex_username", "ann"}, {"torvex_password", "annpw"}}, referer), referer);
    }
}

TEST_P(LoginTest, WithoutAHostNoReferrerIsFollowed) {
    ask("", {{"torvex_pageId", "11"}, {"torvex_username", "ann"}, {"torvex_password", "annpw"}},
        {{"HTTP_Referer", "http:///x"}});
    host.request.setServerVariable("http_host", "");
    EXPECT_EQ(server().getLoginURL(), "/tvx.asp?pageId=11");
}

// The authoring preview.

TEST_P(LoginTest, APostFromThePreviewLogsNobodyIn) {
    constexpr auto preview = "http://www.site.test/torvex/view.asp?pageId=11";
    EXPECT_EQ(post({{"torvex_username", "ann"}, {"torvex_password", "annpw"}}, preview), preview);
    expectNobody();
    EXPECT_EQ(kept("tvx_loginTrials"), "");
}

TEST_P(LoginTest, AFailureInThePreviewDoesNotCount) {
    post({{"torvex_username", "ann"}, {"torvex_password", "wrong"}}, "http://www.site.test/torvex/VIEW.asp");
    EXPECT_EQ(kept("tvx_loginTrials"), "");
    EXPECT_FALSE(host.session.isTrue("tvx_loginError"));
}

TEST_P(LoginTest, WithFramesThePreviewLeadsToThePage) {
    frames();
    EXPECT_EQ(
        post({{"torvex_username", "ann"}, {"torvex_password", "annpw"}}, "http://www.site.test/view.asp"),
        "/redirect.asp?pageId=11");
    expectNobody();
}

// To a page.

TEST_P(LoginTest, ANamedPageIsWhereTheVisitorGoes) {
    EXPECT_EQ(post("ann", "12"), "/tvx.asp?pageId=12");
    EXPECT_EQ(kept("tvx_username"), "ann");
    EXPECT_EQ(kept("tvx_target"), "");
}

TEST_P(LoginTest, ANamedPageMayBeANode) {
    EXPECT_EQ(post("ann", "AA.BB.02"), "/tvx.asp?pageId=12");
}

TEST_P(LoginTest, WithFramesANamedPageGoesByTheFrameSet) {
    frames();
    EXPECT_EQ(post("ann", "12"), "/redirect.asp?pageId=12");
}

TEST_P(LoginTest, ANamedPageNeedsNoRealGroup) {
    EXPECT_EQ(post("cleo", "10"), "/tvx.asp?pageId=10");
    EXPECT_EQ(kept("tvx_username"), "cleo");
}

TEST_P(LoginTest, ANamedPageThatTheUserMayNotSeeIsAFailure) {
    expectFailure(post("ben", "14"));
}

TEST_P(LoginTest, ANamedPageThatIsOfflineIsAFailure) {
    page("aa.bb.05").id(20).offline().insert();
    pageGroup(20, 2);
    expectFailure(post("ben", "20"));
}

TEST_P(LoginTest, ANamedPageThatIsNotThereIsAFailure) {
    expectFailure(post("ann", "4711"));
}

TEST_P(LoginTest, ANamedPageWithAnUnknownUserIsAFailure) {
    expectFailure(post("nobody", "10"));
}

TEST_P(LoginTest, ANamedPageWithAWrongPasswordIsAFailure) {
    expectFailure(postWrong("12"));
}

TEST_P(LoginTest, AnUnknownTargetIsAnError) {
    EXPECT_TRUE(errorOf([&] { post("ann", "elsewhere"); }).starts_with(chain({"getLoginURL !"})));
    EXPECT_TRUE(errorOf([&] { post("ann", "0"); }).starts_with(chain({"getLoginURL !"})));
    EXPECT_TRUE(errorOf([&] { post("ann", "//evil.test"); }).starts_with(chain({"getLoginURL !"})));
    expectNobody();
}

// The page applied for.

TEST_P(LoginTest, ThePageAppliedForComesFirst) {
    host.session.set("tvx_pageAppliedFor", 13);
    EXPECT_EQ(post("ben", "12"), "/tvx.asp?pageId=13");
    EXPECT_EQ(post("ben"), "/tvx.asp?pageId=13");
}

TEST_P(LoginTest, AnEnforcedTargetComesAheadOfIt) {
    host.session.set("tvx_pageAppliedFor", 13);
    EXPECT_EQ(post({{"torvex_username", "ben"},
                    {"torvex_password", "benpw"},
                    {"torvex_loginTarget", "12"},
                    {"torvex_loginTargetEnforced", " TRUE "}}),
              "/tvx.asp?pageId=12");
    EXPECT_EQ(post({{"torvex_username", "ben"},
                    {"torvex_password", "benpw"},
                    {"torvex_loginTarget", "current"},
                    {"torvex_loginTargetEnforced", "true"}}),
              ownPage);
}

TEST_P(LoginTest, OnlyTheWordTrueEnforces) {
    host.session.set("tvx_pageAppliedFor", 13);
    EXPECT_EQ(post({{"torvex_username", "ben"},
                    {"torvex_password", "benpw"},
                    {"torvex_loginTarget", "12"},
                    {"torvex_loginTargetEnforced", "1"}}),
              "/tvx.asp?pageId=13");
}

TEST_P(LoginTest, AVisitorWhoWasSentToTheLoginPageComesToThePageAppliedFor) {
    check("13");
    check("18");
    EXPECT_EQ(post({{"torvex_pageId", "18"}, {"torvex_username", "ben"}, {"torvex_password", "benpw"}}),
              "/tvx.asp?pageId=13");
    EXPECT_EQ(check("13"), "");
}

TEST_P(LoginTest, APageAppliedForThatTheUserMayNotSeeIsAFailure) {
    host.session.set("tvx_pageAppliedFor", 14);
    expectFailure(post("ben"));
}

// To the group's page.

TEST_P(LoginTest, TheGroupsPageIsItsEntryPage) {
    connection().execute("update TORVEX_USERGROUPS set entryPage = 12 where groupId = 2");
    EXPECT_EQ(post("ben", "group"), "/tvx.asp?pageId=12");
    EXPECT_EQ(kept("tvx_target"), "group");
}

TEST_P(LoginTest, WithoutAnEntryPageTheVisitorComesBack) {
    EXPECT_EQ(post("ben", "group"), ownPage);
    EXPECT_EQ(kept("tvx_username"), "ben");
}

TEST_P(LoginTest, AUserWithoutARealGroupHasNoGroupsPage) {
    expectFailure(post("cleo", "group"));
    row("TORVEX_GROUPS_USERS", {{"groupId", 1}, {"userId", 103}});
    post("cleo", "group");
    expectNobody();
}

// To the first page of the site.

TEST_P(LoginTest, TheSitemapLeadsToTheFirstPageTheUserMaySee) {
    connection().execute("update TORVEX_PAGES_LIVE set orderId = -1 where pageId = 14");
    connection().execute("update TORVEX_PAGES_LIVE set orderId = 0 where pageId = 12");
    EXPECT_EQ(post("ben", "sitemap"), "/tvx.asp?pageId=12");
    EXPECT_EQ(kept("tvx_target"), "sitemap");
    EXPECT_EQ(post("ann", "sitemap"), "/tvx.asp?pageId=14");
    EXPECT_EQ(post("cleo", "sitemap"), "/tvx.asp?pageId=11");
}

TEST_P(LoginTest, TheSitemapPassesOverOfflinePagesAndTheSystemBranch) {
    page("aa.bb.99").id(20).order(-2).insert();
    page("aa.bb.05").id(21).order(-1).offline().insert();
    pageGroup(20, 1);
    pageGroup(21, 1);
    EXPECT_EQ(post("ben", "sitemap"), "/tvx.asp?pageId=11");
}

TEST_P(LoginTest, TheSitemapIsTheOneOfThePagesSite) {
    page("zz.bb").id(30).insert();
    page("zz.bb.01").id(31).insert();
    pageGroup(30, 1);
    pageGroup(31, 1);
    EXPECT_EQ(post({{"torvex_pageId", "31"},
                    {"torvex_username", "ben"},
                    {"torvex_password", "benpw"},
                    {"torvex_loginTarget", "sitemap"}}),
              "/tvx.asp?pageId=31");
}

TEST_P(LoginTest, ASitemapWithoutAPageForTheUserIsAFailure) {
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where parent = 'aa.bb'");
    expectFailure(post("ben", "sitemap"));
}

TEST_P(LoginTest, TheSitemapNeedsAValidLogin) {
    expectFailure(postWrong("sitemap"));
    host.session.set("tvx_loginTrials", 0);
    expectFailure(post("nobody", "sitemap"));
}

// Failures in a row.

TEST_P(LoginTest, TheFifthFailureLeadsToTheErrorPage) {
    for (int i = 0; i < 4; ++i) EXPECT_EQ(postWrong(), ownPage);
    EXPECT_TRUE(host.session.isTrue("tvx_loginError"));
    EXPECT_EQ(postWrong(), "/error.asp?pageId=11&error=no_login");
    EXPECT_EQ(kept("tvx_loginTrials"), "5");
    EXPECT_FALSE(host.session.isTrue("tvx_loginError"));
}

TEST_P(LoginTest, TheSixthPostDoesNotEvenLookUpTheUser) {
    host.session.set("tvx_loginTrials", 5);
    drop("TORVEX_GROUPS_USERS");
    EXPECT_EQ(post("ann"), "/error.asp?pageId=11&error=no_login");
    expectNobody();
    EXPECT_EQ(kept("tvx_loginTrials"), "6");
}

TEST_P(LoginTest, ARightLoginBeforeTheFifthFailureCounts) {
    for (int i = 0; i < 4; ++i) postWrong();
    EXPECT_EQ(post("ann"), ownPage);
    EXPECT_EQ(kept("tvx_username"), "ann");
}

TEST_P(LoginTest, AFormInTheFrameSetStaysThereAfterTheFifthFailure) {
    frames();
    host.session.set("tvx_loginTrials", 4);
    EXPECT_EQ(
        post({{"torvex_username", "ann"}, {"torvex_password", "no"}, {"torvex_loginLocation", "Frameset"}}),
        "/redirect.asp?pageId=11");
    EXPECT_EQ(kept("tvx_loginTrials"), "5");
}

TEST_P(LoginTest, WithoutFramesThereIsNoFrameSetToStayIn) {
    host.session.set("tvx_loginTrials", 4);
    EXPECT_EQ(
        post({{"torvex_username", "ann"}, {"torvex_password", "no"}, {"torvex_loginLocation", "frameset"}}),
        "/error.asp?pageId=11&error=no_login");
}

TEST_P(LoginTest, AFailureWithFramesLeadsToThePage) {
    frames();
    EXPECT_EQ(postWrong(), "/redirect.asp?pageId=11");
}

TEST_P(LoginTest, ADatabaseFailureBearsItsLinesAndLogsNobodyIn) {
    drop("TORVEX_USERS");
    EXPECT_TRUE(errorOf([&] { post("ann"); }).starts_with(chain({"getLoginURL !", "getUserId !"})));
    expectNobody();
}

}  // namespace
}  // namespace torvex::test
