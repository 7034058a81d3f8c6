#include "pages/ContentPolicy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pages/PolicyReports.h"
#include "support/PageAnswer.h"
#include "support/TestHost.h"

namespace torvex {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* forced = "Content-Security-Policy";
constexpr const char* reported = "Content-Security-Policy-Report-Only";

class ContentPolicyTest : public testing::Test {
  protected:
    void answer(std::string_view site = "aa", std::string_view scripts = "") {
        host.response = {};
        addContentPolicy(host.context(), site, scripts, reports);
    }
    std::string inForce(std::string_view site = "aa") {
        answer(site);
        return test::header(host, forced);
    }
    std::string onlyReported(std::string_view site = "aa") {
        answer(site);
        return test::header(host, reported);
    }
    void set(std::string_view key, std::string_view value) { host.application.set(key, Value(value)); }

    test::TestHost host;
    PolicyReports reports;
};

TEST_F(ContentPolicyTest, IsOnlyReportedUnlessASettingSaysMore) {
    for (const auto* value : {"", "report-only", "Report-Only", "yes"}) {
        set("tvx_contentPolicy", value);
        EXPECT_THAT(onlyReported(), StartsWith("default-src 'self'; ")) << value;
        EXPECT_EQ(inForce(), "") << value;
    }
}

TEST_F(ContentPolicyTest, IsInForceOrNotThereAsTheSettingSays) {
    set("tvx_contentPolicy", "ON");
    EXPECT_THAT(inForce(), StartsWith("default-src 'self'; "));
    EXPECT_EQ(onlyReported(), "");
    set("tvx_contentPolicy", "off");
    EXPECT_EQ(inForce() + onlyReported(), "");
}

TEST_F(ContentPolicyTest, ASiteHasItsOwn) {
    set("tvx_contentPolicy", "on");
    set("tvx_contentPolicy_bb", "off");
    set("tvx_contentPolicy_cc", "report-only");
    set("tvx_contentPolicy_sources_cc", "https://maps.test");
    EXPECT_THAT(inForce("aa"), Not(HasSubstr("maps.test")));
    EXPECT_NE(inForce("aa"), "");
    EXPECT_EQ(inForce("bb") + onlyReported("bb"), "");
    EXPECT_EQ(inForce("cc"), "");
    EXPECT_THAT(onlyReported("cc"), StartsWith("default-src 'self' https://maps.test; "));
}

TEST_F(ContentPolicyTest, AllowsTheStatusTextsOfLinksAndNoOtherScriptInAPage) {
    set("tvx_contentPolicy", "on");
    const std::string policy = inForce();
    // openssl dgst -sha256 -binary | base64 of: window.status=top.torvex_empty;return true;
    EXPECT_THAT(policy, HasSubstr("; script-src 'self' 'unsafe-hashes' "
                                  "'sha256-HcV6Ngxu8sU6cwmwl3R196vrKzzLgsWzuFB6OS+3ZGw='; "));
    EXPECT_THAT(
        policy.substr(policy.find("script-src"), policy.find("; style-src") - policy.find("script-src")),
        Not(HasSubstr("'unsafe-inline'")));
    for (const auto* part :
         {"; object-src 'none'", "; base-uri 'self'", "; form-action 'self'", "; frame-ancestors 'self'"})
        EXPECT_THAT(policy, HasSubstr(part));
}

TEST_F(ContentPolicyTest, AllowsThePagesOwnScripts) {
    set("tvx_contentPolicy", "on");
    answer("aa", scriptSource("a()") + scriptSource("b()"));
    EXPECT_THAT(test::header(host, forced),
                HasSubstr(scriptSource("a()") + scriptSource("b()") + "; style-src"));
}

TEST_F(ContentPolicyTest, FurtherSourcesGoWhereverThingsAreLoadedFrom) {
    set("tvx_contentPolicy", "on");
    set("tvx_contentPolicy_sources", "https://a.test https://b.test");
    const std::string policy = inForce();
    for (const auto* directive : {"default-src ", "script-src ", "style-src ", "img-src "}) {
        const std::size_t at = policy.find(directive);
        EXPECT_THAT(policy.substr(at, policy.find(';', at) - at), EndsWith(" https://a.test https://b.test"))
            << directive;
    }
}

TEST_F(ContentPolicyTest, SourcesThatWouldBeginADirectiveAreNotTaken) {
    set("tvx_contentPolicy", "on");
    for (const auto* sources : {"https://a.test; script-src *", "a, b", "a\r\nX: y", "\xc3\xa4.test"}) {
        set("tvx_contentPolicy_sources", sources);
        EXPECT_THAT(inForce(), StartsWith("default-src 'self'; script-src 'self'")) << sources;
    }
}

TEST_F(ContentPolicyTest, FormsLeadToBothSchemesWhereTheSiteIsOnBoth) {
    set("tvx_contentPolicy", "on");
    host.request.setServerVariable("server_name", "[::1]");
    EXPECT_THAT(inForce(), HasSubstr("form-action 'self'; "));
    host.application.set("tvx_extranet_ssl", true);
    EXPECT_THAT(inForce(), HasSubstr("form-action 'self' http://[::1]:* https://[::1]:*; "));
    host.application.set("tvx_website_ssl", true);
    EXPECT_THAT(inForce(), HasSubstr("form-action 'self'; "));
}

TEST_F(ContentPolicyTest, WhileEnoughWasReportedBrowsersAreNotAskedForMore) {
    EXPECT_THAT(onlyReported(), EndsWith("; report-uri /tvxreport.asp"));
    while (reports.take()) {
    }
    EXPECT_EQ(onlyReported(), "");
    set("tvx_contentPolicy", "on");
    EXPECT_THAT(inForce(), EndsWith("; frame-ancestors 'self'"));
}

TEST(ScriptSource, IsTheScriptsHash) {
    // echo -n "alert('Hello, world.');" | openssl dgst -sha256 -binary | openssl base64
    EXPECT_EQ(scriptSource("alert('Hello, world.');"),
              " 'sha256-qznLcsROx4GACP2dm0UCKCzCG+HiZ1guq6ZZDob/Tng='");
}

TEST(LinkSources, AreTheAddressesThatAreScripts) {
    EXPECT_EQ(linkSources("<a href=\"/tvx.asp\">javascript:</a>"), "");
    const std::string html =
        "<a href=\"javascript:top.popup('a','b.pdf')\" >x</a> <a href='javascript:top.popup(\"a\",\"c\")'>";
    EXPECT_EQ(linkSources(html), scriptSource("javascript:top.popup('a','b.pdf')") +
                                     scriptSource("javascript:top.popup(\"a\",\"c\")"));
}

TEST(LinkSources, AreWhatTheBrowserMakesOfThem) {
    EXPECT_EQ(linkSources("<a href=\"javascript:top.popup('a','b&amp;\xc3\xa4.pdf')\">"),
              scriptSource("javascript:top.popup('a','b&%C3%A4.pdf')"));
}

TEST(LinkSources, AreAFewAndEachOnce) {
    std::string html;
    for (int i = 0; i < 100; ++i) html += "<a href=\"javascript:a(" + std::to_string(i / 2) + ")\">";
    const std::string sources = linkSources(html);
    EXPECT_THAT(sources, StartsWith(scriptSource("javascript:a(0)") + scriptSource("javascript:a(1)")));
    EXPECT_EQ(sources.size(), 16 * scriptSource("").size());
    EXPECT_EQ(linkSources("<a href=\"javascript:a("), "");
}

}  // namespace
}  // namespace torvex
