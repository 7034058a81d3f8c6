#include "accounts/ProgramTokens.h"

#include <gtest/gtest.h>

#include "accounts/Actor.h"
#include "accounts/Logins.h"
#include "support/DoorTest.h"

namespace torvex {
namespace {

constexpr DateTime noon{2026, 6, 15, 12, 0, 0};

class ProgramTokens : public test::DoorTest {
  protected:
    static constexpr int robot = 9;

    void SetUp() override {
        DoorTest::SetUp();
        if (!HasFatalFailure()) author(robot, "robot", "Secret", "Robot", {{"kind", "program"}});
    }
    std::string make(const TokenWish& wish) { return makeToken(connection(), wish); }
    std::string make() { return make({robot, "menu", "reads", "", ""}); }
    bool works(const std::string& token, const std::string& address = "10.0.0.1",
               const DateTime& now = noon) {
        return useToken(connection(), token, address, now).has_value();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ProgramTokens, test::bothEngines(), test::engineName);

TEST_P(ProgramTokens, ATokenIsLongAndOnlyItsHashIsKept) {
    const std::string token = make();
    EXPECT_EQ(token.substr(0, 4), "tvx_");
    EXPECT_EQ(token.size(), 4 + 43U);
    EXPECT_NE(make(), token);
    EXPECT_EQ(cell("select count(*) from TORVEX_API_TOKENS where tokenHash = '" + token + "'"), "0");
    EXPECT_EQ(cell("select tokenHash from TORVEX_API_TOKENS").size(), 64U);
}

TEST_P(ProgramTokens, ItSaysWhoseItIsAndWhatItCovers) {
    const auto token =
        useToken(connection(), make({robot, " menu ", " cManager.saveBody ", "", ""}), "", noon);
    ASSERT_TRUE(token);
    EXPECT_EQ(token->loginId, robot);
    EXPECT_EQ(token->username, "robot");
    EXPECT_EQ(token->fullname, "Robot");
    EXPECT_EQ(token->operations, "cManager.saveBody");
    EXPECT_EQ(cell("select name from TORVEX_API_TOKENS"), "menu");
}

TEST_P(ProgramTokens, WhatWasNeverMadeIsNone) {
    const std::string token = make();
    for (const std::string& other :
         {std::string(), std::string("tvx_"), token.substr(4), token + "a", "x" + token,
          std::string(100'000, 'a'), "tvx_" + std::string(100'000, 'a')})
        EXPECT_FALSE(works(other));
    EXPECT_TRUE(works(token));
}

TEST_P(ProgramTokens, ItHoldsToItsLastDay) {
    const std::string token = make({robot, "menu", "reads", "", "20260615"});
    EXPECT_TRUE(works(token, "", {2026, 6, 15, 23, 59, 59}));
    EXPECT_FALSE(works(token, "", {2026, 6, 16, 0, 0, 0}));
}

TEST_P(ProgramTokens, ItHoldsForItsAddresses) {
    const std::string token = make({robot, "menu", "reads", "10.0.0.1, 192.168.0.0/16", ""});
    EXPECT_TRUE(works(token, "10.0.0.1"));
    EXPECT_TRUE(works(token, "192.168.3.4"));
    EXPECT_FALSE(works(token, "10.0.0.2"));
    EXPECT_FALSE(works(token, ""));
}

TEST_P(ProgramTokens, ItHoldsWhileItsLoginIsAProgramsAndValid) {
    const std::string token = make();
    set(robot, "validTo", "20260614");
    EXPECT_FALSE(works(token));
    set(robot, "validTo", "20260615");
    EXPECT_TRUE(works(token));
    set(robot, "kind", "");
    EXPECT_FALSE(works(token));
    set(robot, "kind", Value());
    EXPECT_FALSE(works(token));
}

TEST_P(ProgramTokens, ItsUseIsNotedOncePerMinute) {
    const std::string token = make();
    const auto lastUse = [&] { return cell("select lastUse from TORVEX_API_TOKENS").substr(0, 19); };
    works(token, "", noon);
    const std::string first = lastUse();
    EXPECT_FALSE(first.empty());
    works(token, "", {2026, 6, 15, 12, 0, 59});
    EXPECT_EQ(lastUse(), first);
    works(token, "", {2026, 6, 15, 12, 1, 0});
    EXPECT_NE(lastUse(), first);
}

TEST_P(ProgramTokens, WishesHaveTheirForm) {
    const auto usable = [](const std::string& name, const std::string& operations,
                           const std::string& lastDay) {
        return isUsable({robot, name, operations, "", lastDay});
    };
    EXPECT_TRUE(usable("a", "reads", ""));
    EXPECT_TRUE(usable("a", " READS ", "20260615"));
    EXPECT_TRUE(usable("a", "cManager.saveBody, desk.getWork", ""));
    EXPECT_FALSE(usable(" ", "reads", ""));
    EXPECT_FALSE(usable(std::string(101, 'a'), "reads", ""));
    for (const std::string operations :
         {"", " ", "all", "cManager", "cManager.", ".x", "a.b,,c.d", "a.b c.d", "reads, a.b", "a.b;"})
        EXPECT_FALSE(usable("a", operations, "")) << operations;
    EXPECT_FALSE(usable("a", "reads", "20260631"));
    EXPECT_FALSE(usable("a", "reads", "tomorrow"));
}

TEST_P(ProgramTokens, OperationsAreCoveredByTheirNames) {
    EXPECT_TRUE(coversOperation("cManager.saveBody, desk.find", "CMANAGER", "savebody"));
    EXPECT_FALSE(coversOperation("cManager.saveBodySetup", "cManager", "saveBody"));
    EXPECT_FALSE(coversOperation("reads", "cManager", "getPage"));
    EXPECT_TRUE(coversClass("cManager.saveBody", "cmanager"));
    EXPECT_FALSE(coversClass("cManagers.saveBody", "cManager"));
    EXPECT_TRUE(coversClass("reads", "cManager"));
}

// ---- The door ----

TEST_P(ProgramTokens, NobodyLogsInWithAProgramsLogin) {
    EXPECT_EQ(manager().login("robot", "Secret"), 1);
    set(robot, "kind", "");
    EXPECT_EQ(manager().login("robot", "Secret"), 0);
}

TEST_P(ProgramTokens, ASessionThatHeldTheLoginOfAPersonOwnsItNoMoreAsAPrograms) {
    ASSERT_EQ(manager().login("anna", "Secret"), 0);
    EXPECT_TRUE(ownsItsLogin(connection(), actorOf(host.context())));
    set(anna, "kind", "program");
    EXPECT_FALSE(ownsItsLogin(connection(), actorOf(host.context())));
}

TEST_P(ProgramTokens, AProgramsCallsOwnItsLoginAloneAndOnlyWhileItIsOne) {
    Actor actor{robot, "robot", "Robot", programSession(robot), noon};
    EXPECT_TRUE(ownsItsLogin(connection(), actor));
    actor.sessionId = programSession(anna);
    EXPECT_FALSE(ownsItsLogin(connection(), actor));
    actor = {anna, "anna", "Anna Author", programSession(anna), noon};
    EXPECT_FALSE(ownsItsLogin(connection(), actor));
}

}  // namespace
}  // namespace torvex
