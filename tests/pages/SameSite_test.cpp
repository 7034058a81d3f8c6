#include "pages/SameSite.h"

#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace torvex {
namespace {

bool isOwn(NamedValues serverVariables, const std::string& asked = "www.site.test") {
    test::TestHost host;
    host.application.set("torvex_port_http", "8080");
    host.application.set("torvex_port_https", "8443");
    serverVariables.emplace_back("http_host", asked);
    host.request = Request("", {}, std::move(serverVariables));
    return comesFromOwnPages(host.context());
}

TEST(SameSite, ARequestThatSaysNothingIsLetThrough) {
    EXPECT_TRUE(isOwn({}));
}

TEST(SameSite, OwnPagesAreLetThrough) {
    EXPECT_TRUE(isOwn({{"http_sec_fetch_site", "same-origin"}}));
}

TEST(SameSite, AnAddressThatTheVisitorTypedIsLetThrough) {
    EXPECT_TRUE(isOwn({{"http_sec_fetch_site", "none"}}));
}

TEST(SameSite, OtherSitesAreRefused) {
    EXPECT_FALSE(isOwn({{"http_sec_fetch_site", "cross-site"}}));
}

TEST(SameSite, NeighbourSitesAreRefused) {
    EXPECT_FALSE(isOwn({{"http_sec_fetch_site", "same-site"}}));
}

TEST(SameSite, APageOverHttpMayPostToHttps) {
    EXPECT_TRUE(isOwn({{"http_sec_fetch_site", "cross-site"}, {"http_origin", "http://www.site.test"}}));
    EXPECT_TRUE(isOwn({{"http_sec_fetch_site", "cross-site"}, {"http_origin", "http://www.site.test:8080"}},
                      "www.site.test:8443"));
    EXPECT_FALSE(isOwn({{"http_origin", "http://www.site.test:8081"}}, "www.site.test:8443"));
}

TEST(SameSite, TheOwnOriginIsLetThroughWithEitherScheme) {
    EXPECT_TRUE(isOwn({{"http_origin", "http://www.site.test"}}));
    EXPECT_TRUE(isOwn({{"http_origin", "https://www.site.test"}}));
    EXPECT_TRUE(isOwn({{"http_origin", "https://WWW.site.test"}}));
}

TEST(SameSite, APageOfAnotherHostThatLedHereIsRefused) {
    for (const auto* referer :
         {"http://evil.test/", "http://evil.test/?http://www.site.test/", "http://www.site.test.evil.test/",
          "http://www.site.test@evil.test/", "https://www.site.test:8444/", "about:blank"}) {
        EXPECT_FALSE(isOwn({{"http_referer", referer}})) << referer;
        EXPECT_FALSE(isOwn({{"http_sec_fetch_site", "none"}, {"http_referer", referer}})) << referer;
    }
}

TEST(SameSite, AnOwnPageThatLedHereIsLetThrough) {
    for (const auto* referer :
         {"http://www.site.test/tvx.asp?pageId=11", "https://WWW.site.test/", "http://www.site.test?x#y"}) {
        EXPECT_TRUE(isOwn({{"http_referer", referer}})) << referer;
    }
    EXPECT_TRUE(isOwn({{"http_referer", "http://www.site.test:8080/"}}, "www.site.test:8443"));
}

TEST(SameSite, AnotherOriginIsRefused) {
    for (const auto* origin : {"http://evil.test", "http://www.site.test.evil.test",
                               "http://www.site.test:8080", "null", "ftp://www.site.test", "www.site.test"}) {
        EXPECT_FALSE(isOwn({{"http_origin", origin}})) << origin;
    }
}

}  // namespace
}  // namespace torvex
