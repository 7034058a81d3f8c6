#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "support/PageAnswer.h"
#include "support/TestHost.h"

namespace torvex {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class PolicyReportPageTest : public testing::Test {
  protected:
    void post(const std::string& body) {
        host.response = {};
        host.request = Request("", {}, {{"request_method", "POST"}}, body);
        policyReportPage(host.context(), reports);
        EXPECT_EQ(host.response.status, 204);
        EXPECT_EQ(host.response.body(), "");
    }
    static std::string report(const std::string& page, const std::string& blocked,
                              const std::string& disposition) {
        return R"({"csp-report": {"document-uri": ")" + page +
               R"(", "effective-directive": "script-src-elem", "blocked-uri": ")" + blocked +
               R"(", "disposition": ")" + disposition + "\"}}";
    }

    test::TestHost host;
    PolicyReports reports;
};

TEST_F(PolicyReportPageTest, AReportIsALineOfTheLog) {
    post(report("https://site.test/tvx.asp?pageId=12", "inline", "report"));
    post(report("https://site.test/tvx.asp?pageId=12", "https://evil.test/x.js", "enforce"));
    EXPECT_THAT(
        host.log.lines,
        ElementsAre(
            "content policy of https://site.test/tvx.asp?pageId=12: script-src-elem would forbid inline",
            "content policy of https://site.test/tvx.asp?pageId=12: script-src-elem forbids "
            "https://evil.test/x.js"));
}

TEST_F(PolicyReportPageTest, OlderBrowsersNameTheDirectiveOtherwise) {
    post(
        R"({"csp-report": {"document-uri": "https://site.test/", "violated-directive": "img-src", "blocked-uri": "data"}})");
    EXPECT_THAT(host.log.lines,
                ElementsAre("content policy of https://site.test/: img-src would forbid data"));
}

TEST_F(PolicyReportPageTest, TheQueryOfThePageIsNotLogged) {
    post(report("https://site.test/tvx.asp?password=geheim&pageId=12&token=x", "inline", "report"));
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_THAT(host.log.lines[0], HasSubstr("https://site.test/tvx.asp?pageId=12: "));
    EXPECT_THAT(host.log.lines[0], Not(HasSubstr("geheim")));
}

TEST_F(PolicyReportPageTest, WhatIsNoReportIsPassedOver) {
    for (const auto* body :
         {"", "x", "[]", "null", "{}", R"({"csp-report": 1})", R"({"csp-report": {}})",
          R"({"csp-report": {"effective-directive": 3}})", "{\"csp-report\": {\"effective-directive\": \"a"})
        post(body);
    post(std::string(10'000, '['));
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_F(PolicyReportPageTest, TextsAreCutAndEscaped) {
    post(report("https://site.test/" + std::string(5000, 'a'), "x\\u001b[31m\\n\\u202e", "report"));
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_LT(host.log.lines[0].size(), 400U);
    EXPECT_THAT(host.log.lines[0], Not(HasSubstr("\x1b")));
    EXPECT_THAT(host.log.lines[0], Not(HasSubstr("\n")));
}

TEST_F(PolicyReportPageTest, AFewInAMinuteAreEnough) {
    for (int i = 0; i < 100; ++i) post(report("https://site.test/" + std::to_string(i), "inline", "report"));
    EXPECT_GE(host.log.lines.size(), 20U);
    EXPECT_LE(host.log.lines.size(), 40U);  // a minute may have ended meanwhile
}

TEST_F(PolicyReportPageTest, OnlyAPostBringsOne) {
    host.request = Request("csp-report=x", {}, {{"request_method", "GET"}});
    policyReportPage(host.context(), reports);
    EXPECT_EQ(host.response.status, 405);
    EXPECT_EQ(test::header(host, "Allow"), "POST");
}

}  // namespace
}  // namespace torvex
