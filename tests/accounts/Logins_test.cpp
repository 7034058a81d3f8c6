#include "accounts/Logins.h"

#include <gtest/gtest.h>

#include "accounts/Actor.h"
#include "support/ManagerTest.h"

namespace torvex {
namespace {

class LoginQuestionsTest : public test::ManagerTest {
  protected:
    Actor annaNow() { return actorOf(host.context()); }
};
INSTANTIATE_TEST_SUITE_P(Engines, LoginQuestionsTest, test::bothEngines(), test::engineName);

TEST_P(LoginQuestionsTest, ALoginIsFoundByItsNameInAnyCase) {
    EXPECT_EQ(loginIdOf(connection(), " ANNA "), anna);
    EXPECT_EQ(loginIdOf(connection(), "nobody"), -1);
    EXPECT_EQ(loginIdOf(connection(), ""), -1);
}

TEST_P(LoginQuestionsTest, ALoginThatIsGoneHasNoName) {
    EXPECT_EQ(fullnameOf(connection(), anna), "Anna Author");
    EXPECT_EQ(fullnameOf(connection(), 99), "");
}

TEST_P(LoginQuestionsTest, ASessionOwnsItsLoginUntilAnotherHoldsIt) {
    EXPECT_TRUE(ownsItsLogin(connection(), annaNow()));
    EXPECT_TRUE(isOnline(connection(), anna));
    connection().execute("update TORVEX_LOGINS set sessionId = 'another' where loginId = 7");
    EXPECT_FALSE(ownsItsLogin(connection(), annaNow()));
    EXPECT_TRUE(isOnline(connection(), anna));
    connection().execute("update TORVEX_LOGINS set sessionId = '' where loginId = 7");
    EXPECT_FALSE(ownsItsLogin(connection(), annaNow()));
    EXPECT_FALSE(isOnline(connection(), anna));
}

TEST_P(LoginQuestionsTest, NobodyOwnsNothingAndTheAdministratorAlways) {
    EXPECT_FALSE(ownsItsLogin(connection(), Actor()));
    Actor administrator;
    administrator.username = "SA";
    EXPECT_TRUE(ownsItsLogin(connection(), administrator));
}

TEST_P(LoginQuestionsTest, AQuestionThatCannotBeAnsweredIsAnsweredByNo) {
    connection().execute("alter table TORVEX_LOGINS rename to TORVEX_ELSEWHERE");
    EXPECT_FALSE(ownsItsLogin(connection(), annaNow()));
    EXPECT_FALSE(isOnline(connection(), anna));
    connection().execute("alter table TORVEX_ELSEWHERE rename to TORVEX_LOGINS");
}

}  // namespace
}  // namespace torvex
