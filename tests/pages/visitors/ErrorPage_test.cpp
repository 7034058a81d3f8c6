#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pages/Pages.h"
#include "platform/text/Text.h"
#include "support/TestHost.h"

namespace torvex {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class ErrorPageTest : public ::testing::Test {
  protected:
    int statusOf(const std::string& query) {
        show(query);
        return host.response.status;
    }
    const std::string& show(const std::string& query) {
        host.response = {};
        host.request = Request(query, {}, {});
        errorPage(host.context());
        return host.response.body();
    }

    test::TestHost host;
};

TEST_F(ErrorPageTest, AMissingPageIsNotFound) {
    EXPECT_EQ(statusOf("pageId=-1&error=page_not_found"), 404);
    EXPECT_THAT(host.response.body(), HasSubstr("Page not found"));
}

TEST_F(ErrorPageTest, APageThatIsNotOnlineIsNotFound) {
    EXPECT_EQ(statusOf("pageId=5&error=page_offline"), 404);
    EXPECT_THAT(host.response.body(), HasSubstr("This page is not online"));
}

TEST_F(ErrorPageTest, SaysWhenThePageWillAppear) {
    EXPECT_THAT(show("pageId=5&error=page_offline&onlineFrom=20270131"), HasSubstr("2027-01-31"));
}

TEST_F(ErrorPageTest, APageForMembersIsForbidden) {
    EXPECT_EQ(statusOf("pageId=5&error=no_login"), 403);
}

TEST_F(ErrorPageTest, AMissingAssetIsTheServersFault) {
    EXPECT_EQ(statusOf("pageId=5&error=no_template"), 500);
    EXPECT_EQ(statusOf("pageId=5&error=no_base_template"), 500);
    EXPECT_EQ(statusOf("pageId=5&error=no_application"), 500);
}

TEST_F(ErrorPageTest, TheValueIgnoresCaseAndBlanks) {
    EXPECT_EQ(statusOf("error=+PAGE_Not_Found+"), 404);
}

TEST_F(ErrorPageTest, AnUnknownValueIsAFaultWithoutDetails) {
    EXPECT_EQ(statusOf("error=whatever"), 500);
    EXPECT_THAT(host.response.body(), Not(HasSubstr("whatever")));
}

TEST_F(ErrorPageTest, NoValueIsAFaultWithoutDetails) {
    EXPECT_EQ(statusOf(""), 500);
}

TEST_F(ErrorPageTest, NothingOfTheAddressIsReflected) {
    for (const auto* query :
         {"error=%3Cscript%3Ealert(1)%3C/script%3E", "pageId=%3Cscript%3E&error=page_not_found",
          "error=page_offline&onlineFrom=%3Cscript%3E", "error=page_offline&onlineFrom=2027%3Cb%3E",
          "error=page_not_found&error=%3Cscript%3E", "error=%22onload=%22alert(1)"}) {
        const std::string& html = show(query);
        EXPECT_THAT(html, Not(HasSubstr("<script"))) << query;
        EXPECT_THAT(html, Not(HasSubstr("alert"))) << query;
        EXPECT_THAT(html, Not(HasSubstr("<b>"))) << query;
    }
}

TEST_F(ErrorPageTest, ADayThatIsNoneIsNotShown) {
    EXPECT_THAT(show("error=page_offline&onlineFrom=tomorrow"), Not(HasSubstr("tomorrow")));
    EXPECT_THAT(show("error=page_offline&onlineFrom=202701311"), Not(HasSubstr("2027")));
}

TEST_F(ErrorPageTest, IsNeverStored) {
    show("error=page_not_found");
    EXPECT_EQ(host.response.cacheControl, "no-store");
}

}  // namespace
}  // namespace torvex
