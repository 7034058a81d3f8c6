#include "records/ItemLocks.h"

#include <atomic>
#include <latch>
#include <thread>

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

constexpr int seekers = 16;

class ItemLocksTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        site("ab");
        for (int i = 0; i < seekers; ++i) {
            row("TORVEX_LOGINS", {{"loginId", 100 + i}, {"sessionId", sessionOf(i)}});
        }
    }

    static std::string sessionOf(int seeker) { return "session-" + std::to_string(seeker); }

    /// How many of the seekers, all at once and each on a connection of its own, get what they seek.
    template <typename Take>
    int countTakers(Take take) {
        std::atomic<int> takers = 0;
        std::latch start(seekers);
        std::vector<std::jthread> threads;
        for (int i = 0; i < seekers; ++i) {
            threads.emplace_back([&, i] {
                const db::Lease own = openAnother();
                const std::string session = sessionOf(i);
                start.arrive_and_wait();
                if (take(*own, LockSeeker{session, 100 + i})) ++takers;
            });
        }
        threads.clear();
        return takers;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ItemLocksTest, bothEngines(), engineName);

TEST_P(ItemLocksTest, OfManySessionsAtOnceOneTakesTheRecord) {
    for (int round = 0; round < 5; ++round) {
        connection().execute("update TORVEX_SITES set lock = 'session-long-gone'");
        EXPECT_EQ(countTakers([](db::Connection& own, const LockSeeker& seeker) {
                      return takeItem(own, "site", "ab", seeker);
                  }),
                  1);
    }
}

TEST_P(ItemLocksTest, OfManySessionsAtOnceOneTakesTheConfiguration) {
    for (int round = 0; round < 5; ++round) {
        host.application.set("torvex_config_lock", "session-long-gone");
        EXPECT_EQ(countTakers([this](db::Connection& own, const LockSeeker& seeker) {
                      return takeConfiguration(own, host.application, seeker);
                  }),
                  1);
    }
}

TEST_P(ItemLocksTest, WhoTookItLetsItGoForTheNext) {
    const LockSeeker first{"session-1", 101};
    const LockSeeker second{"session-2", 102};
    EXPECT_TRUE(takeItem(connection(), "site", "ab", first));
    EXPECT_FALSE(takeItem(connection(), "site", "ab", second));
    releaseItem(connection(), "site", "ab", second.sessionId);
    EXPECT_FALSE(takeItem(connection(), "site", "ab", second));
    releaseItem(connection(), "site", "ab", first.sessionId);
    EXPECT_TRUE(takeItem(connection(), "site", "ab", second));
}

TEST_P(ItemLocksTest, TheConfigurationIsNoRecord) {
    EXPECT_FALSE(takeItem(connection(), "config", "61", LockSeeker{"session-1", 101}));
}

}  // namespace
}  // namespace torvex::test
