#include "host/cache/Looks.h"

#include <boost/asio/post.hpp>
#include <gtest/gtest.h>
#include <vector>

#include "host/cache/KeptPage.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"

namespace torvex {

namespace {

class OneState : public db::ContentWatch {
  public:
    db::SharedStates now() override { return std::make_shared<const db::TableStates>(); }
};

class LooksTest : public testing::Test {
  protected:
    /// As a connection does for a request.
    void request() {
        boost::asio::post(loop_, [this] { numbers_.push_back(looks_.now().number); });
    }
    void run() {
        loop_.restart();
        loop_.run();
    }

    boost::asio::io_context loop_{1};
    FixedClock clock_{DateTime{2026, 6, 15, 12, 0, 0}};
    int opened_ = 0;
    Looks looks_{loop_, clock_, [this] {
                     ++opened_;
                     return std::make_unique<OneState>();
                 }};
    std::vector<std::uint64_t> numbers_;
};

}  // namespace

TEST_F(LooksTest, OneServesAllThatWaitedWhenItWasBegun) {
    for (int i = 0; i < 3; ++i) request();
    run();
    EXPECT_EQ(numbers_[1], numbers_[0]);
    EXPECT_EQ(numbers_[2], numbers_[0]);
}

TEST_F(LooksTest, WhatComesLaterIsLookedAtAnew) {
    request();
    boost::asio::post(loop_, [this] { request(); });
    request();
    run();
    ASSERT_EQ(numbers_.size(), 3U);
    EXPECT_EQ(numbers_[1], numbers_[0]);
    EXPECT_GT(numbers_[2], numbers_[1]);
}

TEST_F(LooksTest, OneThatWasEndedServesNobody) {
    request();
    boost::asio::post(loop_, [this] { looks_.end(); });
    request();
    run();
    EXPECT_GT(numbers_[1], numbers_[0]);
}

TEST_F(LooksTest, KnowsTheDayAndTheContent) {
    EXPECT_EQ(looks_.now().today, "20260615");
    EXPECT_NE(looks_.now().content, nullptr);
    EXPECT_EQ(opened_, 1);
}

TEST_F(LooksTest, WithoutAWatchTheContentIsUnknownAndNobodyAsksForOneAllTheTime) {
    int tried = 0;
    Looks looks(loop_, clock_, [&]() -> std::unique_ptr<db::ContentWatch> {
        ++tried;
        throw std::runtime_error("no database");
    });
    EXPECT_EQ(looks.now().content, nullptr);
    looks.end();
    EXPECT_EQ(looks.now().content, nullptr);
    EXPECT_EQ(tried, 1);
}

class KeptPageTest : public testing::Test {
  protected:
    KeptPage page() {
        Ingredients made;
        made.conditions.emplace_back([this] {
            ++asked_;
            return holds_;
        });
        MadePage page;
        page.answer.body = std::string("body");
        return {std::move(made), 0, std::move(page)};
    }
    static Look look(std::uint64_t number) {
        return {.number = number, .content = std::make_shared<const db::TableStates>(), .today = "20260615"};
    }

    ApplicationValues application_;
    int asked_ = 0;
    bool holds_ = true;
};

TEST_F(KeptPageTest, IsLookedAtOnceForEachLook) {
    const KeptPage kept = page();
    EXPECT_TRUE(kept.stands(application_, look(7)));
    EXPECT_TRUE(kept.stands(application_, look(7)));
    EXPECT_EQ(asked_, 1);
    holds_ = false;
    EXPECT_FALSE(kept.stands(application_, look(8)));
}

TEST_F(KeptPageTest, WhatALaterLookHasFoundHoldsForAnEarlierOne) {
    const KeptPage kept = page();
    EXPECT_TRUE(kept.stands(application_, look(8)));
    EXPECT_TRUE(kept.stands(application_, look(7)));
    EXPECT_EQ(asked_, 1);
}

TEST_F(KeptPageTest, DoesNotStandWhereTheContentIsUnknown) {
    EXPECT_FALSE(page().stands(application_, {.number = 1, .content = nullptr, .today = "20260615"}));
}

}  // namespace torvex
