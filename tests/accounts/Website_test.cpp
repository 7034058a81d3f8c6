#include "accounts/Website.h"

#include <barrier>
#include <gtest/gtest.h>
#include <optional>
#include <thread>

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class WebsiteTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        login(1001, "one");
        login(1002, "two");
    }
    void login(int loginId, const std::string& sessionId) {
        row("TORVEX_LOGINS", {{"loginId", loginId}, {"username", sessionId}, {"sessionId", sessionId}});
    }
    void goOffline(int loginId) {
        connection().execute("update TORVEX_LOGINS set sessionId = '' where loginId = ?", {loginId});
    }
    std::string column(const std::string& name, int loginId) {
        return cell("select " + name + " from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, WebsiteTest, bothEngines(), engineName);

TEST_P(WebsiteTest, WhoEntersIsNoted) {
    EXPECT_TRUE(enterWebsite(connection(), 1001, "aa.en"));
    EXPECT_EQ(column("currentSite", 1001), "aa.en");
    EXPECT_EQ(column("currentSite", 1002), "");
}

TEST_P(WebsiteTest, ALockedOneIsNotEntered) {
    EXPECT_TRUE(enterWebsite(connection(), 1001, "aa.de"));
    const WebsiteLock lock(connection(), 1002, "aa.en");
    EXPECT_TRUE(lock.isHeld());
    EXPECT_FALSE(enterWebsite(connection(), 1001, "AA.EN"));
    EXPECT_EQ(column("currentSite", 1001), "aa.de");
    EXPECT_TRUE(enterWebsite(connection(), 1001, "bb.en"));
}

TEST_P(WebsiteTest, ALockOfALoginThatIsGoneDoesNotCount) {
    const WebsiteLock lock(connection(), 1002, "aa.en");
    goOffline(1002);
    EXPECT_TRUE(enterWebsite(connection(), 1001, "aa.en"));
}

TEST_P(WebsiteTest, ALockEndsWithItsObject) {
    { const WebsiteLock lock(connection(), 1002, "aa.en"); }
    EXPECT_EQ(column("siteLock", 1002), "");
    EXPECT_TRUE(enterWebsite(connection(), 1001, "aa.en"));
}

TEST_P(WebsiteTest, OneThatOthersWorkInIsNotLocked) {
    EXPECT_TRUE(enterWebsite(connection(), 1001, "aa.en"));
    const WebsiteLock lock(connection(), 1002, "aa.en");
    EXPECT_FALSE(lock.isHeld());
    EXPECT_EQ(column("siteLock", 1002), "");
}

TEST_P(WebsiteTest, OneselfAndWhoIsGoneDoNotCount) {
    EXPECT_TRUE(enterWebsite(connection(), 1001, "aa.en"));
    EXPECT_TRUE(enterWebsite(connection(), 1002, "aa.en"));
    goOffline(1001);
    const WebsiteLock lock(connection(), 1002, "aa.en");
    EXPECT_TRUE(lock.isHeld());
}

TEST_P(WebsiteTest, NobodyEntersWhatIsLockedInTheSameMoment) {
    const auto theirs = openAnother();
    for (int round = 0; round < 100; ++round) {
        std::barrier start(2);
        std::barrier end(2);
        bool entered = false;
        std::thread author([&] {
            start.arrive_and_wait();
            entered = enterWebsite(*theirs, 1001, "aa.en");
            end.arrive_and_wait();
        });
        std::optional<WebsiteLock> lock;
        start.arrive_and_wait();
        lock.emplace(connection(), 1002, "aa.en");
        end.arrive_and_wait();
        author.join();
        EXPECT_FALSE(entered && lock->isHeld());
        connection().execute("update TORVEX_LOGINS set currentSite = ''");
    }
}

TEST_P(WebsiteTest, WhoLeavesIsNowhereAndLocksNothing) {
    enterWebsite(connection(), 1001, "aa.en");
    enterWebsite(connection(), 1002, "aa.en");
    leaveWebsite(connection(), 1001);
    EXPECT_EQ(column("currentSite", 1001), "");
    EXPECT_EQ(column("currentSite", 1002), "aa.en");
    EXPECT_TRUE(WebsiteLock(connection(), 1001, "aa.de").isHeld());
}

TEST_P(WebsiteTest, SessionsThatHaveEndedLeaveAndKeepTheirLogins) {
    enterWebsite(connection(), 1001, "aa.en");
    enterWebsite(connection(), 1002, "aa.en");
    connection().execute("update TORVEX_LOGINS set siteLock = 'aa.de' where loginId = 1001");
    std::vector<std::string> ended(70, "another");
    ended[40] = "one";
    leaveWebsites(connection(), ended);
    EXPECT_EQ(column("currentSite", 1001) + column("siteLock", 1001), "");
    EXPECT_EQ(column("sessionId", 1001), "one");
    EXPECT_EQ(column("currentSite", 1002), "aa.en");
}

TEST_P(WebsiteTest, ALoginThatNobodyHoldsIsNoEndedSession) {
    enterWebsite(connection(), 1001, "aa.en");
    goOffline(1001);
    leaveWebsites(connection(), std::vector<std::string>{"", "x"});
    EXPECT_EQ(column("currentSite", 1001), "aa.en");
}

}  // namespace
}  // namespace torvex::test
