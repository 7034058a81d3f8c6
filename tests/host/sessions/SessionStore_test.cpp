#include "host/sessions/SessionStore.h"

#include <atomic>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

namespace torvex {

namespace {

using namespace std::chrono_literals;

class SessionStoreTest : public testing::Test {
  protected:
    SessionStore& store() {
        if (!store_) store_ = std::make_unique<SessionStore>(limits, [this] { return now; });
        return *store_;
    }

    /// One request: runs `body` with the session and returns the token sent, "" when none is.
    std::string request(std::string_view token, const std::function<void(SessionLease&)>& body = {}) {
        std::string sent;
        store().enter(token, [&](SessionLease lease) {
            if (body) body(lease);
            const auto fresh = lease.finish();
            if (fresh) sent = fresh->text();
        });
        return sent;
    }

    /// Whether the token leads to a session that was there before.
    bool isKnown(std::string_view token) {
        bool isNew = true;
        store().enter(token, [&](SessionLease lease) { isNew = lease.isNew(); });
        return !isNew;
    }

    static auto set(const char* value) {
        return [value](SessionLease& lease) { lease.session().set("key", Value(std::string(value))); };
    }

    SessionLimits limits;
    SessionStore::TimePoint now = SessionStore::TimePoint(1000h);

  private:
    std::unique_ptr<SessionStore> store_;
};

TEST_F(SessionStoreTest, AVisitorFindsTheSessionAgain) {
    const std::string token = request("", set("mine"));
    ASSERT_EQ(token.size(), 32U);
    std::string found;
    const std::string second =
        request(token, [&](SessionLease& lease) { found = lease.session().text("key"); });
    EXPECT_EQ(found, "mine");
    EXPECT_EQ(second, "");
}

TEST_F(SessionStoreTest, ATokenMadeUpIsNotAdopted) {
    const std::string madeUp(32, 'a');
    const std::string sent = request(madeUp);
    EXPECT_EQ(sent.size(), 32U);
    EXPECT_NE(sent, madeUp);
    EXPECT_FALSE(isKnown(madeUp));
}

TEST_F(SessionStoreTest, WhatIsNoTokenStartsAnew) {
    for (const std::string& token :
         {std::string("x"), std::string(31, 'a'), std::string(33, 'a'), std::string(32, 'g')})
        EXPECT_EQ(request(token).size(), 32U) << token;
}

TEST_F(SessionStoreTest, TokensAndIdsAreAllDifferent) {
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        seen.insert(request("", [&](SessionLease& lease) { seen.insert(lease.session().id()); }));
    }
    EXPECT_EQ(seen.size(), 2000U);
}

TEST_F(SessionStoreTest, ANewTokenComesWhenItIsAskedForAndTheOldOneIsWorthNothing) {
    const std::string before = request("", set("mine"));
    const std::string after = request(before, [](SessionLease& lease) { lease.session().renewToken(); });
    ASSERT_EQ(after.size(), 32U);
    EXPECT_NE(after, before);
    EXPECT_FALSE(isKnown(before));
    std::string found;
    request(after, [&](SessionLease& lease) { found = lease.session().text("key"); });
    EXPECT_EQ(found, "mine");
    EXPECT_EQ(store().size(), 1U);
}

TEST_F(SessionStoreTest, ANewSessionThatAsksForANewTokenKeepsItsFirst) {
    const std::string token = request("", [](SessionLease& lease) {
        lease.session().set("key", "mine");
        lease.session().renewToken();
    });
    for (int i = 0; i < 2; ++i) {
        std::string found;
        EXPECT_EQ(request(token, [&](SessionLease& lease) { found = lease.session().text("key"); }), "");
        EXPECT_EQ(found, "mine");
    }
}

TEST_F(SessionStoreTest, AnAbandonedSessionIsGone) {
    const std::string token = request("");
    EXPECT_EQ(request(token, [](SessionLease& lease) { lease.session().abandon(); }), "");
    EXPECT_FALSE(isKnown(token));
    EXPECT_EQ(store().size(), 0U);
}

TEST_F(SessionStoreTest, ANewSessionWhoseRequestFailsIsForgotten) {
    store().enter("", [](SessionLease) {});
    EXPECT_EQ(store().size(), 0U);
}

TEST_F(SessionStoreTest, ASessionWhoseCookieHasComeBackLivesOnWhileItIsUsed) {
    const std::string token = request("");
    now += 1min;
    EXPECT_TRUE(isKnown(token));
    now += 19min;
    EXPECT_TRUE(isKnown(token));
    now += 20min;
    EXPECT_TRUE(isKnown(token));
    now += 20min + 1s;
    EXPECT_FALSE(isKnown(token));
}

TEST_F(SessionStoreTest, ASessionWhoseCookieHasNotComeBackIsShortLived) {
    const std::string token = request("");
    now += 2min + 1s;
    EXPECT_FALSE(isKnown(token));
}

TEST_F(SessionStoreTest, ACookieSeenWithAnyRequestCounts) {
    const std::string token = request("");
    store().touch(token);
    now += 10min;
    EXPECT_TRUE(isKnown(token));
}

TEST_F(SessionStoreTest, SweepingDropsWhatIsOutlivedAndNothingElse) {
    const std::string known = request("");
    request(known);
    for (int i = 0; i < 100; ++i) request("");
    now += 2min + 1s;
    const std::string fresh = request("");
    store().sweep();
    EXPECT_EQ(store().size(), 2U);
    EXPECT_TRUE(isKnown(known));
    EXPECT_TRUE(isKnown(fresh));
    now += 21min;
    store().sweep();
    EXPECT_EQ(store().size(), 0U);
}

TEST_F(SessionStoreTest, CrawlersWithoutCookiesCannotFillTheMemory) {
    limits.onProbation = 1000;
    const std::string visitor = request("", set("mine"));
    request(visitor);
    std::string last;
    for (int i = 0; i < 20'000; ++i) last = request("");
    EXPECT_LE(store().size(), 1001U);
    EXPECT_GT(store().size(), 900U);
    EXPECT_TRUE(isKnown(visitor));
    EXPECT_TRUE(isKnown(last));
}

TEST_F(SessionStoreTest, EstablishedSessionsAreBoundedToo) {
    limits.established = 160;
    for (int i = 0; i < 5000; ++i) request(request(""));
    EXPECT_LE(store().size(), 160U);
}

TEST_F(SessionStoreTest, SessionsThatStartAlikeShareTheirValues) {
    const auto start = [](SessionLease& lease) {
        lease.session().set("tvx_url", Value(std::string("http://a")));
        lease.session().setCodePage(1252);
        lease.keepAsDefaults();
        EXPECT_TRUE(lease.session().ownValues().empty());
        EXPECT_EQ(lease.session().codePage(), 1252);
        EXPECT_EQ(lease.session().text("TVX_URL"), "http://a");
    };
    request("", start);
    const std::string token = request("", start);
    request(token, set("own"));
    std::string url;
    request(token, [&](SessionLease& lease) {
        url = lease.session().text("tvx_url");
        EXPECT_EQ(lease.session().ownValues().size(), 1U);
    });
    EXPECT_EQ(url, "http://a");
}

TEST_F(SessionStoreTest, RequestsOfOneSessionHaveTheirTurnsInOrder) {
    const std::string token = request("");
    std::vector<int> order;
    std::optional<SessionLease> running;
    store().enter(token, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    for (int i = 0; i < 5; ++i) {
        store().enter(token, [&, i](SessionLease lease) {
            order.push_back(i);
            lease.finish();
        });
    }
    EXPECT_TRUE(order.empty());
    running->finish();
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST_F(SessionStoreTest, ATurnThatIsJustDroppedLetsTheNextOneBegin) {
    const std::string token = request("");
    bool hasBegun = false;
    std::optional<SessionLease> running;
    store().enter(token, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    store().enter(token, [&](SessionLease) { hasBegun = true; });
    running.reset();
    EXPECT_TRUE(hasBegun);
    EXPECT_TRUE(isKnown(token));
}

TEST_F(SessionStoreTest, TooManyWaitingForOneSessionAreRefused) {
    limits.waiting = 2;
    const std::string token = request("");
    std::optional<SessionLease> running;
    store().enter(token, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    EXPECT_TRUE(store().enter(token, [](SessionLease) {}));
    EXPECT_TRUE(store().enter(token, [](SessionLease) {}));
    EXPECT_FALSE(store().enter(token, [](SessionLease) { ADD_FAILURE(); }));
    EXPECT_TRUE(store().enter("", [](SessionLease) {}));
    running->finish();
}

TEST_F(SessionStoreTest, ThoseWhoWaitForAnAbandonedSessionStartAnew) {
    const std::string token = request("", set("secret"));
    std::optional<SessionLease> running;
    store().enter(token, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    std::string found = "not run";
    bool isNew = false;
    store().enter(token, [&](SessionLease lease) {
        isNew = lease.isNew();
        found = lease.session().text("key");
    });
    running->session().abandon();
    running->finish();
    EXPECT_TRUE(isNew);
    EXPECT_EQ(found, "");
}

TEST_F(SessionStoreTest, ThoseWhoWaitFollowASessionToItsNewToken) {
    const std::string token = request("", set("mine"));
    std::optional<SessionLease> running;
    store().enter(token, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    std::string found;
    store().enter(token, [&](SessionLease lease) {
        found = lease.session().text("key");
        EXPECT_FALSE(lease.finish());
    });
    running->session().renewToken();
    const auto after = running->finish();
    EXPECT_EQ(found, "mine");
    ASSERT_TRUE(after);
    EXPECT_TRUE(isKnown(after->text()));
}

TEST_F(SessionStoreTest, ManyThreadsNeverHoldOneSessionTogether) {
    limits.waiting = 2000;
    const std::string token = request("");
    std::atomic<int> inside = 0;
    std::atomic<int> done = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int k = 0; k < 500; ++k) {
                const bool taken = store().enter(token, [&](SessionLease lease) {
                    EXPECT_EQ(++inside, 1);
                    Session& session = lease.session();
                    session.set("count", Value(session.number("count") + 1));
                    --inside;
                    ++done;
                    lease.finish();
                });
                if (k % 50 == 0) request("");
                EXPECT_TRUE(taken);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    double count = 0;
    request(token, [&](SessionLease& lease) { count = lease.session().number("count"); });
    EXPECT_EQ(count, done);
    EXPECT_EQ(done, 2000);
}

}  // namespace

}  // namespace torvex
