#include <functional>
#include <gmock/gmock.h>
#include <utility>

#include "accounts/LoginAttempt.h"
#include "pages/Pages.h"
#include "support/ExtranetTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

using std::chrono::seconds;

class LoginPageTest : public ExtranetTest {
  protected:
    /// Posts the form; the visitor comes from an own page at 192.0.2.1 unless something else is said.
    std::string post(const std::string& name, const std::string& password, NamedValues serverVariables = {}) {
        host.response = {};
        serverVariables.emplace_back("request_method", "POST");
        serverVariables.emplace_back("remote_addr", "192.0.2.1");
        serverVariables.emplace_back("HTTP_Referer", "http://www.site.test/tvx.asp?pageId=11");
        ask("", {{"torvex_pageId", "11"}, {"torvex_username", name}, {"torvex_password", password}},
            std::move(serverVariables));
        loginPage(host.context(), throttle);
        return location(host);
    }
    /// Wrong passwords, until the name has to wait there or the count is full.
    void failOften(const std::string& name, int times = 50, const std::string& address = "192.0.2.1") {
        for (int i = 0; i < times; ++i)
            LoginAttempt(throttle, LoginAttempt::Kind::Visitor, address, name).begin();
    }
    bool mayTry(const std::string& name, const std::string& address = "192.0.2.1") {
        return LoginAttempt(throttle, LoginAttempt::Kind::Visitor, address, name).waitAfterwards() ==
               seconds(0);
    }

    GuessThrottle throttle;
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginPageTest, bothEngines(), engineName);

TEST_P(LoginPageTest, ARightLoginLeadsBackAndAsksForANewToken) {
    EXPECT_EQ(post("ben", "benpw"), "http://www.site.test/tvx.asp?pageId=11");
    EXPECT_EQ(host.response.status, 302);
    EXPECT_EQ(kept("tvx_username"), "ben");
    EXPECT_TRUE(host.session.takeTokenRequest());
}

TEST_P(LoginPageTest, WhatItSaysItselfRunsNoScriptAndIsKeptByNobody) {
    ask("", {}, {{"request_method", "GET"}});
    loginPage(host.context(), throttle);
    EXPECT_THAT(header(host, "Content-Security-Policy"), testing::StartsWith("default-src 'none'"));
    EXPECT_EQ(host.response.cacheControl, "no-store");
}

TEST_P(LoginPageTest, APasswordInAnAddressLogsNobodyIn) {
    ask("torvex_pageId=11&torvex_username=ben&torvex_password=benpw", {}, {{"request_method", "GET"}});
    loginPage(host.context(), throttle);
    EXPECT_EQ(host.response.status, 405);
    EXPECT_EQ(kept("tvx_username"), "");
    EXPECT_EQ(kept("tvx_loginTrials"), "");
}

TEST_P(LoginPageTest, AFailureKeepsTheToken) {
    EXPECT_EQ(post("ben", "wrong"), "http://www.site.test/tvx.asp?pageId=11");
    EXPECT_FALSE(host.session.takeTokenRequest());
    EXPECT_EQ(kept("tvx_username"), "");
}

TEST_P(LoginPageTest, WhereThereIsNothingToDoItLeadsHome) {
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(post("ben", "benpw"), "/");
}

TEST_P(LoginPageTest, APostOfAnotherSiteIsRefused) {
    for (const NamedValues& from : {NamedValues{{"http_sec_fetch_site", "cross-site"}},
                                    NamedValues{{"http_origin", "http://evil.test"}}}) {
        EXPECT_EQ(post("ben", "benpw", from), "");
        EXPECT_EQ(host.response.status, 403);
        EXPECT_EQ(host.response.cacheControl, "no-store");
        EXPECT_EQ(kept("tvx_username"), "");
        EXPECT_EQ(kept("tvx_loginTrials"), "");
    }
}

TEST_P(LoginPageTest, GuessesOfOneAddressAreSlowedDown) {
    for (int i = 0; i < 21; ++i) {
        host.session.set("tvx_loginTrials", 0);
        post("guess" + std::to_string(i), "wrong");
    }
    EXPECT_EQ(post("ben", "benpw"), "");
    EXPECT_EQ(host.response.status, 429);
    EXPECT_EQ(kept("tvx_username"), "");
}

TEST_P(LoginPageTest, GuessesAtOneNameAreSlowedDown) {
    failOften("ben");
    EXPECT_EQ(post(" BEN ", "benpw"), "");
    EXPECT_EQ(host.response.status, 429);
    EXPECT_EQ(kept("tvx_username"), "");
}

TEST_P(LoginPageTest, StrangersLockNobodyOutFromElsewhere) {
    failOften("ben", 50, "198.51.100.7");
    post("ben", "benpw");
    EXPECT_EQ(kept("tvx_username"), "ben");
}

TEST_P(LoginPageTest, TooManyAttemptsSayHowLongToWait) {
    failOften("ben");
    post("ben", "benpw");
    const double wait = text::toNumber(header(host, "Retry-After"));
    EXPECT_GT(wait, 0);
    EXPECT_LE(wait, 2);
    EXPECT_EQ(host.response.cacheControl, "no-store");
    EXPECT_EQ(kept("tvx_loginTrials"), "");
}

TEST_P(LoginPageTest, AFailureCounts) {
    failOften("ben", 5);
    post("ben", "wrong");
    EXPECT_FALSE(mayTry("ben"));
}

/// Looks around before it opens another database.
class WatchedDatabase final : public db::Database {
  public:
    WatchedDatabase(db::Database& other, std::function<void()> look)
        : other_(other), look_(std::move(look)) {}

    db::Lease open(std::string_view text, std::string_view user, std::string_view password,
                   db::Purpose purpose) override {
        look_();
        return other_.open(text, user, password, purpose);
    }

  private:
    db::Database& other_;
    std::function<void()> look_;
};

TEST_P(LoginPageTest, ATryCountsBeforeItsPasswordIsTested) {
    failOften("ben", 5);
    bool wasCounted = false;
    WatchedDatabase watched(*host.database.target, [&] { wasCounted = !mayTry("ben"); });
    db::Database* const before = std::exchange(host.database.target, &watched);
    post("ben", "benpw");
    host.database.target = before;
    EXPECT_TRUE(wasCounted);
    EXPECT_EQ(kept("tvx_username"), "ben");
    EXPECT_TRUE(mayTry("ben"));
}

TEST_P(LoginPageTest, ARightLoginForgivesTheName) {
    failOften("ben", 5);
    post("ben", "benpw");
    failOften("ben", 5);
    EXPECT_TRUE(mayTry("ben"));
}

TEST_P(LoginPageTest, APostThatTestsNoPasswordForgivesNothingAndCountsNothing) {
    post("ben", "benpw");
    host.session.takeTokenRequest();
    failOften("ann", 5);
    for (const NamedValues& form :
         {NamedValues{{"torvex_pageId", "11"}, {"torvex_username", "ann"}, {"torvex_password", "guess"}},
          NamedValues{{"torvex_pageId", "x"}, {"torvex_username", "ann"}}}) {
        ask("", form,
            {{"request_method", "POST"},
             {"remote_addr", "192.0.2.1"},
             {"HTTP_Referer", "http://www.site.test/view.asp"}});
        loginPage(host.context(), throttle);
        EXPECT_TRUE(mayTry("ann"));
        EXPECT_FALSE(host.session.takeTokenRequest());
    }
    failOften("ann", 1);
    EXPECT_FALSE(mayTry("ann"));
}

// ---- The log ----

TEST_P(LoginPageTest, AFailureLeavesALineWithoutThePassword) {
    post("ben", "open sesame");
    EXPECT_EQ(
        host.log.lines,
        (std::vector<std::string>{"failed login from 192.0.2.1 (wrong name or password): visitor \"ben\""}));
}

TEST_P(LoginPageTest, ALockOutLeavesALine) {
    failOften("ben", 5);
    post("ben", "wrong");
    EXPECT_EQ(host.log.lines.back(),
              "locked out for 2 s after failed logins from 192.0.2.1: visitor \"ben\"");
}

TEST_P(LoginPageTest, TriesThatHaveToWaitAllLeaveTheSameLine) {
    failOften("ben", 6);
    post("ben", "wrong");
    post("BEN", "wrong");
    EXPECT_EQ(host.log.lines,
              std::vector<std::string>(2, "a login from 192.0.2.1 has to wait: too many attempts"));
}

TEST_P(LoginPageTest, WhatWasTypedAsANameCanNotPassForSomethingElse) {
    post("ben\n2026-06-15 logout from 10.0.0.1" + std::string(500, 'x'), "wrong");
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_EQ(host.log.lines[0].find('\n'), std::string::npos);
    EXPECT_LT(host.log.lines[0].size(), 320U);
}

TEST_P(LoginPageTest, ARightLoginLeavesNoLine) {
    post("ben", "benpw");
    EXPECT_TRUE(host.log.lines.empty());
}

TEST_P(LoginPageTest, NothingOfTheFormIsReflected) {
    failOften("<script>x</script>");
    post("<script>x</script>", "<script>y</script>");
    EXPECT_EQ(host.response.body().find("<script"), std::string::npos);
}

}  // namespace
}  // namespace torvex::test
