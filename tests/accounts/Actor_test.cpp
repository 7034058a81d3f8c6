#include "accounts/Actor.h"

#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace torvex {
namespace {

TEST(Actor, TheAdministratorIsSaInAnyCase) {
    EXPECT_TRUE(isAdministrator("sa"));
    EXPECT_TRUE(isAdministrator("Sa"));
    EXPECT_FALSE(isAdministrator("sam"));
    EXPECT_FALSE(isAdministrator(" sa"));
    EXPECT_FALSE(isAdministrator(""));
    EXPECT_FALSE(isAdministrator("ſa"));
}

TEST(Actor, ASessionWithoutALoginIsNobody) {
    test::TestHost host;
    const Actor actor = actorOf(host.context());
    EXPECT_FALSE(actor.isLoggedIn());
    EXPECT_FALSE(actor.isAdministrator());
    EXPECT_EQ(actor.sessionId, "test-session");
}

TEST(Actor, IsWhoTheSessionSaysAtThisMoment) {
    test::TestHost host;
    host.session.set("torvex_loginId", 1);
    host.session.set("torvex_username", "SA");
    host.session.set("torvex_fullname", "Sam Adams");
    const Actor actor = actorOf(host.context());
    EXPECT_TRUE(actor.isLoggedIn());
    EXPECT_TRUE(actor.isAdministrator());
    EXPECT_EQ(actor.loginId, 1);
    EXPECT_EQ(actor.fullname, "Sam Adams");
    EXPECT_EQ(actor.now, host.clock.now());
}

}  // namespace
}  // namespace torvex
