#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include "host/sessions/SessionStoreTest.h"

namespace torvex {

namespace {

using namespace std::chrono_literals;
using test::SessionStoreTest;

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

TEST_F(SessionStoreTest, OneInWhichNothingWasStoredIsNotKept) {
    EXPECT_EQ(passingRequest(""), "");
    EXPECT_EQ(passingRequest("", [](SessionLease& lease) { lease.session().setPassing("counter", 1); }), "");
    EXPECT_EQ(passingRequest("", [](SessionLease& lease) { lease.session().set("applied", ""); }), "");
    EXPECT_EQ(store().size(), 0U);
}

TEST_F(SessionStoreTest, OneWhoseDefaultsWereChangedIsKept) {
    const auto change = [](SessionLease& lease) {
        lease.session().set("limit", 10);
        lease.keepAsDefaults();
        lease.session().set("limit", 10);
        EXPECT_FALSE(lease.session().holdsSomething());
        lease.session().set("limit", 11);
    };
    EXPECT_NE(passingRequest("", change), "");
    EXPECT_EQ(store().size(), 1U);
}

TEST_F(SessionStoreTest, OneWithAnObjectIsKept) {
    const auto keepObject = [](SessionLease& lease) {
        lease.session().setObject("key", std::make_shared<const SessionObject>());
    };
    EXPECT_NE(passingRequest("", keepObject), "");
}

TEST_F(SessionStoreTest, OnlyTokensOfSessionsThatLiveAreKnown) {
    const std::string token = request("");
    EXPECT_TRUE(store().isKnown(token));
    EXPECT_FALSE(store().isKnown("0123456789abcdef0123456789abcdef"));
    EXPECT_FALSE(store().isKnown("no token"));
    now += 10min;
    EXPECT_FALSE(store().isKnown(token));
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
    store().enter("", origin, [](SessionLease) {});
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
        EXPECT_EQ(lease.session().ownValues().size(), 2U);
    });
    EXPECT_EQ(url, "http://a");
}

TEST_F(SessionStoreTest, RequestsOfOneSessionHaveTheirTurnsInOrder) {
    const std::string token = request("");
    std::vector<int> order;
    std::optional<SessionLease> running;
    store().enter(token, origin, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    for (int i = 0; i < 5; ++i) {
        store().enter(token, origin, [&, i](SessionLease lease) {
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
    store().enter(token, origin, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    store().enter(token, origin, [&](SessionLease) { hasBegun = true; });
    running.reset();
    EXPECT_TRUE(hasBegun);
    EXPECT_TRUE(isKnown(token));
}

TEST_F(SessionStoreTest, TooManyWaitingForOneSessionAreRefused) {
    limits.waiting = 2;
    const std::string token = request("");
    std::optional<SessionLease> running;
    store().enter(token, origin, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    EXPECT_TRUE(store().enter(token, origin, [](SessionLease) {}));
    EXPECT_TRUE(store().enter(token, origin, [](SessionLease) {}));
    EXPECT_FALSE(store().enter(token, origin, [](SessionLease) { ADD_FAILURE(); }));
    EXPECT_TRUE(store().enter("", origin, [](SessionLease) {}));
    running->finish();
}

TEST_F(SessionStoreTest, ThoseWhoWaitForAnAbandonedSessionStartAnew) {
    const std::string token = request("", set("secret"));
    std::optional<SessionLease> running;
    store().enter(token, origin, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    std::string found = "not run";
    bool isNew = false;
    store().enter(token, origin, [&](SessionLease lease) {
        isNew = lease.isNew();
        found = lease.session().text("key");
    });
    running->session().abandon();
    running->finish();
    EXPECT_TRUE(isNew);
    EXPECT_EQ(found, "");
}

// ---- A token that changes ----

/// A session whose login is running while others wait under its token.
class TokenChangeTest : public SessionStoreTest {
  protected:
    void SetUp() override {
        token = request("", set("secret"));
        store().enter(token, origin, [&](SessionLease lease) { running.emplace(std::move(lease)); });
    }
    std::string changeToken() {
        running->session().renewToken();
        return running->finish().value().text();
    }

    std::string token;
    std::optional<SessionLease> running;
};

TEST_F(TokenChangeTest, ThoseWhoWaitUnderTheOldTokenAreStrangers) {
    std::string found = "not run";
    store().enter(token, origin, [&](SessionLease lease) {
        found = lease.session().text("key");
        EXPECT_TRUE(lease.isNew());
        lease.finish();
    });
    const std::string after = changeToken();
    EXPECT_EQ(found, "");
    EXPECT_TRUE(isKnown(after));
}

TEST_F(TokenChangeTest, EachOfThemIsAnsweredWithoutACookieThatWouldOverwriteTheNewOne) {
    int answered = 0;
    for (int i = 0; i < 3; ++i) {
        store().enter(token, origin, [&](SessionLease lease) {
            ++answered;
            EXPECT_FALSE(lease.finish());
        });
    }
    changeToken();
    EXPECT_EQ(answered, 3);
    EXPECT_EQ(store().size(), 1U);
}

TEST_F(TokenChangeTest, SoIsARequestWithTheOldTokenThatArrivesAMomentLater) {
    changeToken();
    now += 59s;
    EXPECT_EQ(request(token, [](SessionLease& lease) { EXPECT_TRUE(lease.isNew()); }), "");
    now += 2s;
    EXPECT_EQ(request(token).size(), 32U);
}

TEST_F(TokenChangeTest, ALoginWithTheOldTokenGetsASessionOfItsOwn) {
    const std::string first = changeToken();
    const std::string second = request(token, [](SessionLease& lease) {
        lease.session().set("key", Value(std::string("another")));
        lease.session().renewToken();
    });
    EXPECT_EQ(second.size(), 32U);
    EXPECT_NE(second, first);
    EXPECT_TRUE(isKnown(second));
    EXPECT_TRUE(isKnown(first));
}

TEST_F(TokenChangeTest, OldTokensAreRememberedUpToABound) {
    std::string other = changeToken();
    for (int i = 0; i < 16 * 256 * 8; ++i)
        other = request(other, [](SessionLease& lease) { lease.session().renewToken(); });
    EXPECT_EQ(request(token).size(), 32U);
}

TEST_F(SessionStoreTest, ALoginWithoutASessionGetsItsTokenOnce) {
    const std::string token = request("", [](SessionLease& lease) { lease.session().renewToken(); });
    EXPECT_EQ(token.size(), 32U);
    EXPECT_EQ(request(token), "");
    EXPECT_TRUE(isKnown(token));
}

// ---- Who goes first ----

TEST_F(SessionStoreTest, StrangersDoNotPushOutSessionsThatSomebodyIsLoggedInTo) {
    limits.established = 160;
    const std::string visitor = request(request(""), logIn);
    const std::string author = request(request(""), logInAsAuthor);
    const std::string atOnce = request("", logIn);
    for (int i = 0; i < 5000; ++i) request(request(""));
    EXPECT_LE(store().size(), 160U);
    for (const std::string& token : {visitor, author, atOnce}) EXPECT_TRUE(isKnown(token));
}

TEST_F(SessionStoreTest, ASessionThatIsLoggedOutIsAStrangersAgain) {
    limits.established = 160;
    const std::string inside = request(request(""), logIn);
    const std::string outside = request(inside, [](SessionLease& lease) {
        lease.session().set("tvx_username", Value(std::string()));
        lease.session().renewToken();
    });
    for (int i = 0; i < 5000; ++i) request(request(""));
    EXPECT_FALSE(isKnown(outside));
}

TEST_F(SessionStoreTest, SessionsThatSomebodyIsLoggedInToAreBoundedToo) {
    limits.established = 160;
    for (int i = 0; i < 5000; ++i) request("", logIn);
    EXPECT_LE(store().size(), 160U);
}

TEST_F(SessionStoreTest, ALoginLivesAsLongAsAnEstablishedSession) {
    const std::string token = request("", logIn);
    now += 19min;
    store().sweep();
    EXPECT_TRUE(isKnown(token));
    now += 20min + 1s;
    store().sweep();
    EXPECT_EQ(store().size(), 0U);
}

TEST_F(SessionStoreTest, OneAddressPushesOutNobodyElse) {
    limits.ofOneAddress = 160;
    limits.established = 1600;
    limits.onProbation = 1600;
    origin = 2;
    const std::string known = request("");
    request(known);
    const std::string fresh = request("");
    origin = 1;
    for (int i = 0; i < 10'000; ++i) request(i % 2 == 0 ? "" : request(""));
    EXPECT_LE(store().size(), 162U);
    EXPECT_TRUE(isKnown(known));
    EXPECT_TRUE(isKnown(fresh));
}

TEST_F(SessionStoreTest, OfOneAddressTheIdlestGoesFirst) {
    limits.ofOneAddress = 160;
    const std::string used = request("");
    for (int i = 0; i < 3000; ++i) {
        request("");
        request(used);
    }
    EXPECT_TRUE(isKnown(used));
}

TEST_F(SessionStoreTest, LoginsDoNotCountForTheirAddress) {
    limits.ofOneAddress = 16;
    std::vector<std::string> tokens;
    for (int i = 0; i < 100; ++i) tokens.push_back(request(request(""), logIn));
    for (int i = 0; i < 1000; ++i) request("");
    for (const std::string& token : tokens) EXPECT_TRUE(isKnown(token));
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
                const bool taken = store().enter(token, origin, [&](SessionLease lease) {
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
