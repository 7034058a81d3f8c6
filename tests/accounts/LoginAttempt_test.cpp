#include "accounts/LoginAttempt.h"

#include <gtest/gtest.h>

#include "accounts/GuessThrottle.h"

namespace torvex {
namespace {

class LoginAttemptTest : public ::testing::Test {
  protected:
    LoginAttempt attempt(const std::string& address, const std::string& name,
                         LoginAttempt::Kind kind = LoginAttempt::Kind::Author) {
        return {throttle_, kind, address, name};
    }
    void fail(const std::string& address, const std::string& name, int times) {
        for (int i = 0; i < times; ++i) attempt(address, name).begin();
    }
    bool waits(const std::string& address, const std::string& name,
               LoginAttempt::Kind kind = LoginAttempt::Kind::Author) {
        return attempt(address, name, kind).waitAfterwards().count() > 0;
    }

  private:
    GuessThrottle throttle_;
};

TEST_F(LoginAttemptTest, FailuresSlowDownTheNameAtTheAddress) {
    fail("10.0.0.1", "anna", 6);
    EXPECT_TRUE(waits("10.0.0.1", " ANNA "));
    EXPECT_FALSE(waits("10.0.0.1", "ben"));
    EXPECT_FALSE(waits("10.0.0.2", "anna"));
}

TEST_F(LoginAttemptTest, AFewFailuresAreFree) {
    fail("10.0.0.1", "anna", 5);
    EXPECT_FALSE(waits("10.0.0.1", "anna"));
}

TEST_F(LoginAttemptTest, SuccessForgives) {
    fail("10.0.0.1", "anna", 5);
    auto right = attempt("10.0.0.1", "Anna");
    ASSERT_EQ(right.begin().count(), 0);
    right.succeeded();
    fail("10.0.0.1", "anna", 5);
    EXPECT_FALSE(waits("10.0.0.1", "anna"));
}

TEST_F(LoginAttemptTest, SoManyPasswordsAreTestedAtOnce) {
    GuessThrottle throttle({.atOnce = {.atOnce = 2, .patience = std::chrono::milliseconds(10)}});
    const auto kind = LoginAttempt::Kind::Visitor;
    LoginAttempt first(throttle, kind, "10.0.0.1", "anna");
    EXPECT_EQ(first.begin().count(), 0);
    {
        LoginAttempt second(throttle, kind, "10.0.0.1", "anna");
        EXPECT_EQ(second.begin().count(), 0);
        LoginAttempt third(throttle, kind, "10.0.0.2", "ben");
        EXPECT_EQ(third.begin().count(), 2);
    }
    LoginAttempt fourth(throttle, kind, "10.0.0.2", "ben");
    EXPECT_EQ(fourth.begin().count(), 0);
}

TEST_F(LoginAttemptTest, AVisitorOfAnAuthorsNameIsSomebodyElse) {
    fail("10.0.0.1", "anna", 6);
    EXPECT_FALSE(waits("10.0.0.1", "anna", LoginAttempt::Kind::Visitor));
}

TEST_F(LoginAttemptTest, WhatADatabaseTakesForOneNameIsOne) {
    for (const auto* spelling : {"jessi", "JESSI", "jeſſi", "jesſi", " Jeſsi", "jessİ"})
        fail("10.0.0.1", spelling, 1);
    EXPECT_TRUE(waits("10.0.0.1", "jessi"));
    EXPECT_TRUE(waits("10.0.0.1", "JEſSI"));
    fail("10.0.0.1", "ÉRIK", 3);
    fail("10.0.0.1", "éri\u212A", 3);
    EXPECT_TRUE(waits("10.0.0.1", "érik"));
    EXPECT_FALSE(waits("10.0.0.1", "erik"));
}

TEST_F(LoginAttemptTest, BytesThatAreNoTextAreAName) {
    fail("10.0.0.1", "\xff\xc5", 6);
    EXPECT_TRUE(waits("10.0.0.1", "\xff\xc5"));
    EXPECT_FALSE(waits("10.0.0.1", "\xff"));
}

TEST_F(LoginAttemptTest, ANetworkOfVersion6IsOnePlace) {
    fail("2001:db8:1:2::1", "anna", 3);
    fail("2001:db8:1:2:ffff::9", "anna", 3);
    EXPECT_TRUE(waits("2001:db8:1:2:3:4:5:6", "anna"));
    EXPECT_FALSE(waits("2001:db8:1:3::1", "anna"));
}

TEST_F(LoginAttemptTest, TheEmptyNameIsNobodys) {
    fail("10.0.0.1", " ", 21);
    EXPECT_TRUE(waits("10.0.0.1", ""));
    EXPECT_FALSE(waits("10.0.0.2", ""));
}

TEST_F(LoginAttemptTest, NamesThatAreTooLongToBeOneAreToldApartByTheirBeginning) {
    const std::string longName(100'000, 'x');
    fail("10.0.0.1", longName + "1", 6);
    EXPECT_TRUE(waits("10.0.0.1", longName + "2"));
}

}  // namespace
}  // namespace torvex
