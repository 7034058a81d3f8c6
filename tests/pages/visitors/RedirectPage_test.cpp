#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pages/ContentPolicy.h"
#include "pages/Pages.h"
#include "support/PageAnswer.h"
#include "support/TestHost.h"

namespace torvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(RedirectPage, LeadsToThePageWithoutFrames) {
    test::TestHost host;
    host.request = Request("pageId=12", {}, {});
    redirectPage(host.context());
    EXPECT_EQ(test::location(host), "/tvx.asp?pageId=12");
}

TEST(RedirectPage, TakesTheWholeWindowAlongWithFrames) {
    test::TestHost host;
    host.application.set("torvex_frames", true);
    host.request = Request("pageId=12", {}, {});
    redirectPage(host.context());
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(host.response.body(), HasSubstr("window.top.location.replace('/frameset.asp?pageId=12')"));
    EXPECT_THAT(host.response.body(), HasSubstr("href=\"/frameset.asp?pageId=12\" target=\"_top\""));
}

TEST(RedirectPage, RunsItsOwnScriptAlone) {
    test::TestHost host;
    host.application.set("torvex_frames", true);
    host.request = Request("pageId=12", {}, {});
    redirectPage(host.context());
    EXPECT_THAT(test::header(host, "Content-Security-Policy"),
                HasSubstr(scriptSource("window.top.location.replace('/frameset.asp?pageId=12');") + ";"));
}

TEST(RedirectPage, NeverLeadsToAnotherHost) {
    for (const auto* query :
         {"pageId=//evil.test", "pageId=http://evil.test", "pageId=%0d%0aLocation:evil.test",
          "pageId=\\\\evil.test", "http://evil.test"}) {
        test::TestHost host;
        host.request = Request(query, {}, {});
        redirectPage(host.context());
        EXPECT_THAT(test::location(host), ::testing::StartsWith("/tvx.asp?pageId=")) << query;
        EXPECT_THAT(test::location(host), Not(HasSubstr("//"))) << query;
        EXPECT_THAT(test::location(host), Not(HasSubstr("\r"))) << query;
    }
}

TEST(RedirectPage, AHostileIdentifierStaysInItsPlaceInTheScript) {
    test::TestHost host;
    host.application.set("torvex_frames", true);
    host.request = Request("pageId=%27);alert(1);//%3C/script%3E%22", {}, {});
    redirectPage(host.context());
    EXPECT_THAT(host.response.body(), Not(HasSubstr("');alert")));
    EXPECT_THAT(host.response.body(), Not(HasSubstr("alert(1)")));
}

}  // namespace
}  // namespace torvex
