#include "support/ExtranetTest.h"

namespace torvex::test {
namespace {

class UsersTest : public ExtranetTest {
  protected:
    void entryAndExit(int groupId, int entry, int exit) {
        connection().execute("update TORVEX_USERGROUPS set entryPage = ?, exitPage = ? where groupId = ?",
                             {entry, exit, groupId});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, UsersTest, bothEngines(), engineName);

TEST_P(UsersTest, AUserIsKnownByNameAndPassword) {
    EXPECT_TRUE(server().isUser("ann", "annpw"));
    EXPECT_FALSE(server().isUser("ann", "benpw"));
    EXPECT_FALSE(server().isUser("nobody", "annpw"));
}

TEST_P(UsersTest, AUserIsNeverTheSessions) {
    logIn("ann");
    EXPECT_FALSE(server().isUser("", ""));
}

TEST_P(UsersTest, QuotesInANameAreAnyOtherCharacter) {
    user(110, "o'hara", "p'w", {2});
    EXPECT_TRUE(server().isUser("o'hara", "p'w"));
    EXPECT_FALSE(server().isUser("' or '1'='1", "' or '1'='1"));
}

TEST_P(UsersTest, TheUsersNumberIsFoundByNameAndPassword) {
    EXPECT_EQ(server().getUserId("ben", "benpw"), 102);
    EXPECT_EQ(server().getUserId("ben", "wrong"), 0);
}

TEST_P(UsersTest, TheUsersNumberIsTheSessionsWhenNobodyIsNamed) {
    EXPECT_EQ(server().getUserId(), 0);
    logIn("ben");
    EXPECT_EQ(server().getUserId(), 102);
    EXPECT_EQ(server().getUserId("ann"), 0);
    EXPECT_EQ(server().getUserId("ben"), 102);
}

TEST_P(UsersTest, ThePasswordIsFoundByName) {
    EXPECT_EQ(server().getUserPassword("ben"), "benpw");
    EXPECT_EQ(server().getUserPassword("nobody"), "");
    EXPECT_EQ(server().getUserPassword(), "");
    logIn("ann");
    EXPECT_EQ(server().getUserPassword(), "annpw");
}

TEST_P(UsersTest, TheEntryAndExitPagesAreThoseOfTheLowestGroupWithOne) {
    entryAndExit(3, 14, 15);
    EXPECT_EQ(server().getEntryPage("ann", "annpw"), 14);
    EXPECT_EQ(server().getExitPage("ann", "annpw"), 15);
    entryAndExit(2, 12, -1);
    EXPECT_EQ(server().getEntryPage("ann", "annpw"), 12);
    EXPECT_EQ(server().getExitPage("ann", "annpw"), 15);
}

TEST_P(UsersTest, WithoutAPageOfAGroupThereIsNone) {
    EXPECT_EQ(server().getEntryPage("ann", "annpw"), -1);
    EXPECT_EQ(server().getExitPage("cleo", "cleopw"), -1);
}

TEST_P(UsersTest, AWrongPasswordHasNoEntryPage) {
    entryAndExit(2, 12, 13);
    EXPECT_EQ(server().getEntryPage("ann", "wrong"), -1);
    EXPECT_EQ(server().getExitPage("ann", "wrong"), -1);
}

TEST_P(UsersTest, TheSessionsUserIsTakenWhenNobodyIsNamed) {
    entryAndExit(2, 12, 13);
    EXPECT_EQ(server().getEntryPage(), -1);
    logIn("ben");
    EXPECT_EQ(server().getEntryPage(), 12);
    EXPECT_EQ(server().getExitPage(), 13);
}

TEST_P(UsersTest, WithoutTheExtranetThereAreNoSuchPages) {
    entryAndExit(2, 12, 13);
    host.application.set("torvex_extranet", false);
    EXPECT_EQ(server().getEntryPage("ann", "annpw"), -1);
    EXPECT_EQ(server().getExitPage("ann", "annpw"), -1);
}

TEST_P(UsersTest, FailuresBearTheirLines) {
    drop("TORVEX_USERS");
    EXPECT_TRUE(errorOf([&] { server().isUser("a", "b"); }).starts_with(chain({"isUser !"})));
    EXPECT_TRUE(errorOf([&] { server().getUserId("a", "b"); }).starts_with(chain({"getUserId !"})));
    EXPECT_TRUE(errorOf([&] { server().getUserPassword("a"); }).starts_with(chain({"getUserPassword !"})));
    EXPECT_TRUE(errorOf([&] { server().getEntryPage("a", "b"); }).starts_with(chain({"getEntryPage !"})));
    EXPECT_TRUE(errorOf([&] { server().getExitPage("a", "b"); }).starts_with(chain({"getExitPage !"})));
}

}  // namespace
}  // namespace torvex::test
