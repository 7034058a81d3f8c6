#include <gmock/gmock.h>

#include "accounts/GuessThrottle.h"
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
    void failOften(const std::string& key, int times = 50) {
        for (int i = 0; i < times; ++i) throttle.failed(key);
    }
    bool mayTry(const std::string& key) { return throttle.wait(key) == seconds(0); }

    GuessThrottle throttle;
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginPageTest, bothEngines(), engineName);

TEST_P(LoginPageTest, ARightLoginLeadsBackAndAsksForANewToken) {
    EXPECT_EQ(post("ben", "benpw"), "http://www.site.test/tvx.asp?pageId=11");
    EXPECT_EQ(host.response.status, 302);
    EXPECT_EQ(kept("tvx_username"), "ben");
    EXPECT_TRUE(host.session.takeTokenRequest());
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
    for (int i = 0; i < 6; ++i) {
        host.session.set("tvx_loginTrials", 0);
        post("guess" + std::to_string(i), "wrong");
    }
    EXPECT_EQ(post("ben", "benpw"), "");
    EXPECT_EQ(host.response.status, 429);
    EXPECT_EQ(kept("tvx_username"), "");
}

TEST_P(LoginPageTest, GuessesOfOneNameAreSlowedDownFromAnyAddress) {
    failOften("name ben");
    EXPECT_EQ(post(" BEN ", "benpw"), "");
    EXPECT_EQ(host.response.status, 429);
    EXPECT_EQ(kept("tvx_username"), "");
}

TEST_P(LoginPageTest, TooManyAttemptsSayHowLongToWait) {
    failOften("address 192.0.2.1");
    post("ben", "benpw");
    const double wait = text::toNumber(header(host, "Retry-After"));
    EXPECT_GT(wait, 290);
    EXPECT_LE(wait, 300);
    EXPECT_EQ(host.response.cacheControl, "no-store");
    EXPECT_EQ(kept("tvx_loginTrials"), "");
}

TEST_P(LoginPageTest, EachFailureCountsForAddressAndName) {
    failOften("address 192.0.2.1", 5);
    failOften("name ben", 5);
    post("ben", "wrong");
    EXPECT_FALSE(mayTry("address 192.0.2.1"));
    EXPECT_FALSE(mayTry("name ben"));
}

TEST_P(LoginPageTest, ARightLoginForgivesTheName) {
    failOften("name ben", 5);
    post("ben", "benpw");
    throttle.failed("name ben");
    EXPECT_TRUE(mayTry("name ben"));
}

TEST_P(LoginPageTest, ARightLoginDoesNotForgiveTheAddress) {
    failOften("address 192.0.2.1", 5);
    post("ben", "benpw");
    throttle.failed("address 192.0.2.1");
    EXPECT_FALSE(mayTry("address 192.0.2.1"));
}

TEST_P(LoginPageTest, APostThatLogsNobodyInForgivesNoName) {
    post("ben", "benpw");
    host.session.takeTokenRequest();
    failOften("name ann", 5);
    ask("", {{"torvex_pageId", "11"}, {"torvex_username", "ann"}, {"torvex_password", "guess"}},
        {{"request_method", "POST"},
         {"remote_addr", "192.0.2.1"},
         {"HTTP_Referer", "http://www.site.test/view.asp"}});
    loginPage(host.context(), throttle);
    throttle.failed("name ann");
    EXPECT_FALSE(mayTry("name ann"));
    EXPECT_FALSE(host.session.takeTokenRequest());
}

TEST_P(LoginPageTest, APostWithoutAPageForgivesNoName) {
    post("ben", "benpw");
    failOften("name ann", 5);
    ask("", {{"torvex_pageId", "x"}, {"torvex_username", "ann"}},
        {{"request_method", "POST"}, {"remote_addr", "192.0.2.1"}});
    loginPage(host.context(), throttle);
    throttle.failed("name ann");
    EXPECT_FALSE(mayTry("name ann"));
}

TEST_P(LoginPageTest, NothingOfTheFormIsReflected) {
    failOften("address 192.0.2.1");
    post("<script>x</script>", "<script>y</script>");
    EXPECT_EQ(host.response.body().find("<script"), std::string::npos);
}

}  // namespace
}  // namespace torvex::test
