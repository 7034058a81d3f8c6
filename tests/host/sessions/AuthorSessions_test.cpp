// Sessions that authors are logged in to.

#include <vector>

#include "host/sessions/SessionStoreTest.h"

namespace torvex {

namespace {

using namespace std::chrono_literals;

class AuthorSessionsTest : public test::SessionStoreTest {};

TEST_F(AuthorSessionsTest, AnAuthorsSessionLivesForATimeOfItsOwn) {
    limits.authorIdle = 1h;
    const std::string author = request("", logInAsAuthor);
    const std::string visitor = request("", logIn);
    now += 59min;
    store().sweep();
    EXPECT_FALSE(isKnown(visitor));
    EXPECT_TRUE(isKnown(author));
    now += 1h + 1s;
    EXPECT_FALSE(isKnown(author));
}

TEST_F(AuthorSessionsTest, AnAuthorWhoIdlesKeepsNoVisitorsSessionAlive) {
    limits.authorIdle = 10h;
    request("", logInAsAuthor);
    for (int i = 0; i < 100; ++i) request("", logIn);
    now += 21min;
    store().sweep();
    EXPECT_EQ(store().size(), 1U);
}

TEST_F(AuthorSessionsTest, TheSessionsOfAuthorsThatHaveEndedAreTold) {
    std::string id;
    request("", [&](SessionLease& lease) {
        logInAsAuthor(lease);
        id = lease.session().id();
    });
    request("", logIn);
    EXPECT_TRUE(store().takeEndedAuthors().empty());
    now += 25h;
    store().sweep();
    EXPECT_EQ(store().takeEndedAuthors(), std::vector<std::string>{id});
    EXPECT_TRUE(store().takeEndedAuthors().empty());
}

TEST_F(AuthorSessionsTest, AnEndIsToldHoweverItComes) {
    const std::string idle = request("", logInAsAuthor);
    now += 25h;
    EXPECT_FALSE(isKnown(idle));
    EXPECT_EQ(store().takeEndedAuthors().size(), 1U);
    const std::string abandoned = request("", logInAsAuthor);
    request(abandoned, [](SessionLease& lease) { lease.session().abandon(); });
    EXPECT_EQ(store().takeEndedAuthors().size(), 1U);
}

TEST_F(AuthorSessionsTest, ANewTokenIsNoEnd) {
    const std::string token = request("", logInAsAuthor);
    EXPECT_FALSE(request(token, logInAsAuthor).empty());
    EXPECT_TRUE(store().takeEndedAuthors().empty());
}

TEST_F(AuthorSessionsTest, AuthorsGoLastAndAreToldWhenTheyGo) {
    limits.established = 160;
    for (int i = 0; i < 50; ++i) request("", logInAsAuthor);
    for (int i = 0; i < 2000; ++i) request("", logIn);
    const std::size_t pushedOut = store().takeEndedAuthors().size();
    EXPECT_LT(pushedOut, 15U);  // where a sixteenth of the store has got more authors than it holds
    for (int i = 0; i < 1000; ++i) request("", logInAsAuthor);
    EXPECT_GE(store().takeEndedAuthors().size() + pushedOut, 890U);
}

TEST_F(AuthorSessionsTest, ASessionThatIsPushedOutDuringItsRequestEndsWithIt) {
    limits.established = 16;
    std::string token = request("", logInAsAuthor);
    request(token, [&](SessionLease&) {
        for (int i = 0; i < 1000; ++i) request("", logInAsAuthor);
        store().takeEndedAuthors();
    });
    EXPECT_EQ(store().takeEndedAuthors().size(), 1U);
    EXPECT_FALSE(isKnown(token));
}

}  // namespace

}  // namespace torvex
