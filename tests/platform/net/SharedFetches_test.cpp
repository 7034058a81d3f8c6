#include "platform/net/SharedFetches.h"

#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "platform/Errors.h"

namespace torvex {
namespace {

using namespace std::chrono_literals;

/// Counts what it is asked for, and does as it is told.
class Source final : public HttpClient {
  public:
    using HttpClient::get;
    Answer get(const std::string& url, Deadline deadline) override {
        {
            const std::scoped_lock lock(mutex);
            urls.push_back(url);
            most = std::max(most, ++running);
        }
        const auto leave = std::shared_ptr<void>(nullptr, [this](void*) {
            const std::scoped_lock lock(mutex);
            --running;
        });
        return answer(url, deadline);
    }
    std::size_t asked() {
        const std::scoped_lock lock(mutex);
        return urls.size();
    }

    std::function<Answer(const std::string&, Deadline)> answer;
    std::mutex mutex;
    std::vector<std::string> urls;
    int running = 0;
    int most = 0;
};

HttpClient::Answer good(std::string body, std::chrono::seconds fresh = 0s, std::chrono::seconds stale = 0s) {
    HttpClient::Answer answer;
    answer.status = 200;
    answer.body = std::move(body);
    answer.freshness = {fresh, stale};
    return answer;
}

HttpClient::Answer bad(int status) {
    HttpClient::Answer answer;
    answer.status = status;
    return answer;
}

class SharedFetchesTest : public testing::Test {
  protected:
    std::string bodyOf(const std::string& url) { return fetches().get(url).body; }
    std::string failureOf(const std::string& url, Deadline deadline = {}) {
        try {
            return "no failure: " + fetches().get(url, deadline).body;
        } catch (const Error& error) {
            return error.what();
        }
    }
    /// Asks from so many threads at once.
    std::vector<std::string> together(int count, const std::function<std::string(int)>& ask) {
        fetches();
        std::vector<std::string> results(static_cast<std::size_t>(count));
        std::vector<std::thread> threads;
        for (int n = 0; n < count; ++n) {
            threads.emplace_back([&, n] { results[static_cast<std::size_t>(n)] = ask(n); });
        }
        for (auto& thread : threads) thread.join();
        return results;
    }
    SharedFetches& fetches() {
        if (!fetches_) fetches_.emplace(source, admission, limits);
        return *fetches_;
    }

    Source source;
    Admission admission{16};
    SharingLimits limits;

  private:
    std::optional<SharedFetches> fetches_;
};

TEST_F(SharedFetchesTest, WhoWantsTheSameAtTheSameTimeSharesAFetch) {
    source.answer = [](const auto&, Deadline) {
        std::this_thread::sleep_for(200ms);
        return good("once");
    };
    EXPECT_THAT(together(10, [&](int) { return bodyOf("http://a/"); }), testing::Each("once"));
    EXPECT_EQ(source.asked(), 1u);
}

TEST_F(SharedFetchesTest, AFailureIsSharedAsWell) {
    source.answer = [](const auto&, Deadline) -> HttpClient::Answer {
        std::this_thread::sleep_for(200ms);
        throw Error("gone");
    };
    EXPECT_THAT(together(10, [&](int) { return failureOf("http://a/"); }), testing::Each("gone"));
    EXPECT_EQ(source.asked(), 1u);
}

TEST_F(SharedFetchesTest, ParametersMakeAnotherFetch) {
    source.answer = [](const auto& url, Deadline) { return good(url, 60s); };
    EXPECT_EQ(bodyOf("http://a/?x=1"), "http://a/?x=1");
    EXPECT_EQ(bodyOf("http://a/?x=2"), "http://a/?x=2");
}

TEST_F(SharedFetchesTest, AnAnswerThatSaysNothingIsFetchedAnew) {
    source.answer = [](const auto&, Deadline) { return good("x"); };
    bodyOf("http://a/");
    bodyOf("http://a/");
    EXPECT_EQ(source.asked(), 2u);
}

TEST_F(SharedFetchesTest, AFreshAnswerIsHandedOutUntilItIsNot) {
    source.answer = [](const auto&, Deadline) { return good("x", 1s); };
    for (int n = 0; n < 5; ++n) EXPECT_EQ(bodyOf("http://a/"), "x");
    EXPECT_EQ(source.asked(), 1u);
    std::this_thread::sleep_for(1100ms);
    EXPECT_EQ(bodyOf("http://a/"), "x");
    EXPECT_EQ(source.asked(), 2u);
}

TEST_F(SharedFetchesTest, AFailureIsNeverHandedOutAsFresh) {
    source.answer = [](const auto&, Deadline) {
        HttpClient::Answer answer = bad(404);
        answer.freshness.fresh = 60s;
        return answer;
    };
    fetches().get("http://a/");
    fetches().get("http://a/");
    EXPECT_EQ(source.asked(), 2u);
}

TEST_F(SharedFetchesTest, TheLastGoodAnswerTakesAFailuresPlaceWhereItsSourceAllowsIt) {
    int n = 0;
    source.answer = [&n](const auto&, Deadline) -> HttpClient::Answer {
        if (++n == 1) return good("last", 0s, 60s);
        if (n == 2) return bad(503);
        throw Error("gone");
    };
    EXPECT_EQ(bodyOf("http://a/"), "last");
    EXPECT_EQ(bodyOf("http://a/"), "last");
    EXPECT_EQ(bodyOf("http://a/"), "last");
    EXPECT_EQ(failureOf("http://a/?other"), "gone");
}

TEST_F(SharedFetchesTest, AQuickFailureIsTriedAgain) {
    source.answer = [](const auto&, Deadline) -> HttpClient::Answer { throw Error("refused"); };
    failureOf("http://a/");
    failureOf("http://a/");
    EXPECT_EQ(source.asked(), 2u);
}

TEST_F(SharedFetchesTest, ASourceThatIsDownCostsNobodyElseTime) {
    source.answer = [](const auto&, Deadline) -> HttpClient::Answer {
        std::this_thread::sleep_for(600ms);
        throw Error("silent");
    };
    EXPECT_EQ(failureOf("http://a/?x=1"), "silent");
    const auto begin = Deadline::Clock::now();
    for (int n = 0; n < 20; ++n) EXPECT_EQ(failureOf("http://a/?x=" + std::to_string(n)), "silent");
    EXPECT_LT(Deadline::Clock::now() - begin, 100ms);
    EXPECT_EQ(source.asked(), 1u);
}

TEST_F(SharedFetchesTest, ASlowBadAnswerIsKeptForItsAddressAlone) {
    source.answer = [](const auto& url, Deadline) {
        if (url == "http://a/?good") return good("fine");
        std::this_thread::sleep_for(600ms);
        return bad(500);
    };
    EXPECT_EQ(fetches().get("http://a/?bad").status, 500);
    EXPECT_EQ(fetches().get("http://a/?bad").status, 500);
    EXPECT_EQ(source.asked(), 1u);
    EXPECT_EQ(bodyOf("http://a/?good"), "fine");
}

TEST_F(SharedFetchesTest, ASourceIsAskedTwiceAtATimeAtMost) {
    source.answer = [](const auto& url, Deadline) {
        std::this_thread::sleep_for(50ms);
        return good(url);
    };
    const auto bodies = together(8, [&](int n) { return bodyOf("http://a/?x=" + std::to_string(n)); });
    for (int n = 0; n < 8; ++n) {
        EXPECT_EQ(bodies[static_cast<std::size_t>(n)], "http://a/?x=" + std::to_string(n));
    }
    EXPECT_EQ(source.most, 2);
}

TEST_F(SharedFetchesTest, OneSourceLeavesPlacesToOthers) {
    limits.waitingForSource = 3;
    source.answer = [](const auto& url, Deadline) {
        if (url == "http://b/") return good("other");
        std::this_thread::sleep_for(400ms);
        return good("slow");
    };
    const auto results = together(10, [&](int n) -> std::string {
        if (n == 9) {
            std::this_thread::sleep_for(150ms);
            return bodyOf("http://b/");
        }
        return failureOf("http://a/");
    });
    EXPECT_EQ(std::count(results.begin(), results.end(), "no failure: slow"), 3);
    EXPECT_EQ(std::count(results.begin(), results.end(), "too many pages wait for this feed at the moment"),
              6);
    EXPECT_EQ(results.back(), "other");
}

TEST(SharedFetches, WithoutAPlaceOfTheAdmissionThereIsNoWait) {
    Source source;
    Admission admission(2);
    SharedFetches fetches(source, admission);
    source.answer = [](const auto&, Deadline) {
        std::this_thread::sleep_for(400ms);
        return good("x");
    };
    std::vector<std::thread> holding;
    for (const char* url : {"http://a/", "http://b/"})
        holding.emplace_back([&fetches, url] { fetches.get(url); });
    while (source.asked() < 2) std::this_thread::sleep_for(1ms);
    EXPECT_THROW(fetches.get("http://c/"), Error);
    EXPECT_EQ(source.asked(), 2u);
    for (auto& thread : holding) thread.join();
    EXPECT_EQ(fetches.get("http://c/").body, "x");
}

TEST_F(SharedFetchesTest, AWaiterGoesAtItsOwnDeadline) {
    source.answer = [](const auto&, Deadline) {
        std::this_thread::sleep_for(600ms);
        return good("late");
    };
    std::thread first([&] { bodyOf("http://a/"); });
    while (source.asked() < 1) std::this_thread::sleep_for(1ms);
    EXPECT_EQ(failureOf("http://a/", Deadline::in(100ms)), "the server took too long to answer");
    first.join();
}

TEST_F(SharedFetchesTest, CancellingSendsWaitersAway) {
    source.answer = [](const auto&, Deadline) {
        std::this_thread::sleep_for(500ms);
        return good("late");
    };
    std::thread first([&] { bodyOf("http://a/"); });
    while (source.asked() < 1) std::this_thread::sleep_for(1ms);
    std::thread canceller([&] {
        std::this_thread::sleep_for(50ms);
        fetches().cancel();
    });
    const auto begin = Deadline::Clock::now();
    EXPECT_EQ(failureOf("http://a/"), "the server is about to end");
    EXPECT_LT(Deadline::Clock::now() - begin, 300ms);
    canceller.join();
    first.join();
}

TEST_F(SharedFetchesTest, WhatIsKeptIsBounded) {
    limits.keptBytes = 10'000;
    source.answer = [](const auto& url, Deadline) {
        return good(std::string(url == "http://huge/" ? 9'000 : 1'000, 'x'), 60s);
    };
    const auto fetch = [&](int n) { bodyOf("http://a/?" + std::to_string(n)); };
    for (int n = 0; n < 10; ++n) fetch(n);
    fetch(9);
    EXPECT_EQ(source.asked(), 10u);
    fetch(0);
    EXPECT_EQ(source.asked(), 11u);
    bodyOf("http://huge/");
    bodyOf("http://huge/");
    EXPECT_EQ(source.asked(), 13u);
    fetch(9);
    EXPECT_EQ(source.asked(), 13u);
}

}  // namespace
}  // namespace torvex
