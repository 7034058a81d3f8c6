#include "pages/Routes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace torvex {
namespace {

std::vector<std::string> paths(bool onlyPosted) {
    std::vector<std::string> found;
    for (const PageRoute& route : pageRoutes()) {
        if (route.acceptsPost || !onlyPosted) found.push_back(route.path);
    }
    return found;
}

TEST(Routes, OnlyLoginsLogoutsAndReportsOfBrowsersTakeAPost) {
    EXPECT_THAT(paths(true),
                ::testing::UnorderedElementsAre("/tvxlogin.asp", "/tvxlogout.asp", "/tvxreport.asp"));
}

TEST(Routes, APostBringsNoMoreThanItNeeds) {
    for (const PageRoute& route : pageRoutes()) {
        if (!route.acceptsPost) continue;
        EXPECT_EQ(route.bodyLimit, 16U * 1024) << route.path;
    }
}

TEST(Routes, EveryScriptThatTextsNameIsThere) {
    EXPECT_THAT(paths(false), ::testing::IsSupersetOf({"/", "/tvx.asp", "/frameset.asp", "/redirect.asp",
                                                       "/error.asp", "/tvxlogin.asp"}));
}

}  // namespace
}  // namespace torvex
