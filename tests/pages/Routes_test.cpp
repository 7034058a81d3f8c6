#include "pages/Routes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace torvex {
namespace {

std::vector<std::string> paths(bool onlyPosted) {
    std::vector<std::string> found;
    for (const PageRoute& route : pageRoutes()) {
        if (route.path.starts_with("/torvex/api/")) continue;
        if (route.methods.has(Method::Post) || !onlyPosted) found.push_back(route.path);
    }
    return found;
}

TEST(Routes, OnlyTheDoorSearchesReportsOfBrowsersAndTheFormsOfForumAndAuthorsTakeAPost) {
    EXPECT_THAT(paths(true), ::testing::UnorderedElementsAre(
                                 "/tvxlogin.asp", "/tvxlogout.asp", "/torvex_secondfactor/", "/tvxreport.asp",
                                 "/torvex_forum/reaction.asp", "/torvex_search/", "/torvex_search/search.asp",
                                 "/torvex/login", "/torvex/logout", "/torvex/view.asp"));
}

TEST(Routes, APostBringsNoMoreThanItNeeds) {
    for (const PageRoute& route : pageRoutes()) {
        if (!route.methods.has(Method::Post) || route.path.starts_with("/torvex/api/")) continue;
        // The text of a body may be as long as the server takes.
        if (route.path == "/torvex/view.asp") continue;
        const bool isForum = route.path.starts_with("/torvex_forum/");
        EXPECT_EQ(route.bodyLimit, (isForum ? 512U : 16U) * 1024) << route.path;
    }
}

TEST(Routes, EveryScriptThatTextsNameIsThere) {
    EXPECT_THAT(paths(false), ::testing::IsSupersetOf({"/", "/tvx.asp", "/frameset.asp", "/redirect.asp",
                                                       "/error.asp", "/tvxlogin.asp"}));
}

}  // namespace
}  // namespace torvex
