#include <gtest/gtest.h>

#include "pages/Pages.h"
#include "support/PageAnswer.h"
#include "support/TestHost.h"

namespace torvex {
namespace {

TEST(HomePage, LeadsToTheDefaultPage) {
    test::TestHost host;
    host.application.set("tvx_default_pageId", 12);
    homePage(host.context());
    EXPECT_EQ(host.response.status, 302);
    EXPECT_EQ(test::location(host), "/tvx.asp?pageId=12");
}

TEST(HomePage, LeadsToTheFrameSetWithFrames) {
    test::TestHost host;
    host.application.set("tvx_default_pageId", 12);
    host.application.set("torvex_frames", true);
    homePage(host.context());
    EXPECT_EQ(test::location(host), "/frameset.asp?pageId=12");
}

TEST(HomePage, WithoutADefaultPageTellsTheOwners) {
    test::TestHost host;
    homePage(host.context());
    EXPECT_EQ(host.response.status, 404);
    EXPECT_NE(host.response.body().find("tvx_default_pageId"), std::string::npos);
    EXPECT_EQ(test::location(host), "");
}

}  // namespace
}  // namespace torvex
