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
    EXPECT_EQ(leave({{"http_sec_fetch_site", "cross-site"}}), "/");
    EXPECT_EQ(kept("tvx_username"), "ben");
    EXPECT_FALSE(host.session.takeTokenRequest());
}

TEST_P(LogoutPageTest, WhereThereIsNothingToDoItLeadsHome) {
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(leave(), "/");
}

}  // namespace
}  // namespace torvex::test
