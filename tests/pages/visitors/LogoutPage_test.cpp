#include "pages/Pages.h"
#include "support/ExtranetTest.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

class LogoutPageTest : public ExtranetTest {
  protected:
    std::string leave(NamedValues serverVariables = {}) {
        logIn("ben");
        host.response = {};
        ask("torvex_pageId=11", {}, std::move(serverVariables));
        logoutPage(host.context());
        EXPECT_EQ(host.response.status, 302);
        return location(host);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LogoutPageTest, bothEngines(), engineName);

TEST_P(LogoutPageTest, LogsOutAndAsksForANewToken) {
    EXPECT_EQ(leave(), "/tvx.asp?pageId=11");
    EXPECT_EQ(kept("tvx_username"), "");
    EXPECT_TRUE(host.session.takeTokenRequest());
}

TEST_P(LogoutPageTest, AnotherSiteCanNotLogAVisitorOut) {
    for (const NamedValues& from : {NamedValues{{"http_sec_fetch_site", "cross-site"}},
                                    NamedValues{{"http_origin", "http://evil.test"}},
                                    NamedValues{{"http_referer", "http://evil.test/tvx.asp?pageId=11"}}}) {
        EXPECT_EQ(leave(from), "/");
        EXPECT_EQ(kept("tvx_username"), "ben");
        EXPECT_FALSE(host.session.takeTokenRequest());
    }
}

TEST_P(LogoutPageTest, ALogoutLeavesALine) {
    leave({{"remote_addr", "192.0.2.1"}});
    EXPECT_EQ(host.log.lines, (std::vector<std::string>{"logout from 192.0.2.1: visitor \"ben\""}));
}

TEST_P(LogoutPageTest, WhoeverIsNotLoggedInLeavesNone) {
    ask("torvex_pageId=11");
    logoutPage(host.context());
    EXPECT_TRUE(host.log.lines.empty());
}

TEST_P(LogoutPageTest, WhereThereIsNothingToDoItLeadsHome) {
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(leave(), "/");
}

}  // namespace
}  // namespace torvex::test
