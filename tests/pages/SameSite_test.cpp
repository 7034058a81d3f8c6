#include "pages/SameSite.h"

#include <gtest/gtest.h>

#include "platform/Request.h"

namespace torvex {
namespace {

bool isOwn(NamedValues serverVariables) {
    serverVariables.emplace_back("http_host", "www.site.test");
    return comesFromOwnPages(Request("", {}, std::move(serverVariables)));
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

TEST(SameSite, TheBrowsersVerdictCountsMoreThanTheOrigin) {
    EXPECT_FALSE(isOwn({{"http_sec_fetch_site", "cross-site"}, {"http_origin", "http://www.site.test"}}));
}

TEST(SameSite, TheOwnOriginIsLetThroughWithEitherScheme) {
    EXPECT_TRUE(isOwn({{"http_origin", "http://www.site.test"}}));
    EXPECT_TRUE(isOwn({{"http_origin", "https://www.site.test"}}));
    EXPECT_TRUE(isOwn({{"http_origin", "https://WWW.site.test"}}));
}

TEST(SameSite, AnotherOriginIsRefused) {
    for (const auto* origin : {"http://evil.test", "http://www.site.test.evil.test",
                               "http://www.site.test:8080", "null", "ftp://www.site.test", "www.site.test"}) {
        EXPECT_FALSE(isOwn({{"http_origin", origin}})) << origin;
    }
}

}  // namespace
}  // namespace torvex
