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
        for (int i = 0; i < times; ++i) attempt(address, name).failed();
    }
    bool waits(const std::string& address, const std::string& name,
               LoginAttempt::Kind kind = LoginAttempt::Kind::Author) {
        return attempt(address, name, kind).wait().count() > 0;
    }

  private:
    GuessThrottle throttle_;
};

TEST_F(LoginAttemptTest, FailuresSlowDownTheAddressAndTheName) {
    fail("10.0.0.1", "anna", 6);
    EXPECT_TRUE(waits("10.0.0.1", "ben"));
    EXPECT_TRUE(waits("10.0.0.2", " ANNA "));
    EXPECT_FALSE(waits("10.0.0.2", "ben"));
}

TEST_F(LoginAttemptTest, AFewFailuresAreFree) {
    fail("10.0.0.1", "anna", 5);
    EXPECT_FALSE(waits("10.0.0.1", "anna"));
}

TEST_F(LoginAttemptTest, SuccessForgivesTheNameAlone) {
    fail("10.0.0.1", "anna", 6);
    attempt("10.0.0.1", "Anna").succeeded();
    EXPECT_FALSE(waits("10.0.0.2", "anna"));
    EXPECT_TRUE(waits("10.0.0.1", "anna"));
}

TEST_F(LoginAttemptTest, AVisitorOfAnAuthorsNameIsSomebodyElse) {
    fail("10.0.0.1", "anna", 6);
    EXPECT_FALSE(waits("10.0.0.2", "anna", LoginAttempt::Kind::Visitor));
    attempt("10.0.0.2", "anna", LoginAttempt::Kind::Visitor).succeeded();
    EXPECT_TRUE(waits("10.0.0.2", "anna"));
}

TEST_F(LoginAttemptTest, TheEmptyNameIsNobodys) {
    fail("10.0.0.1", " ", 6);
    EXPECT_TRUE(waits("10.0.0.1", ""));
    EXPECT_FALSE(waits("10.0.0.2", ""));
}

TEST_F(LoginAttemptTest, NamesThatAreTooLongToBeOneAreToldApartByTheirBeginning) {
    const std::string longName(100'000, 'x');
    fail("10.0.0.1", longName + "1", 6);
    EXPECT_TRUE(waits("10.0.0.2", longName + "2"));
}

}  // namespace
}  // namespace torvex
