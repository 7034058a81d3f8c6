#include "desk/Presence.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Doing = Presence::Doing;

class PresenceTest : public testing::Test {
  protected:
    void tell(int loginId, PageId pageId, Doing doing = Doing::Looking, const char* site = "aa") {
        presence.note({{loginId, "Login " + std::to_string(loginId)}, {site, "en", pageId}, doing, clock});
    }
    std::vector<std::string> seenBy(int loginId, const char* site = "aa") {
        std::vector<std::string> seen;
        for (const auto& visit : presence.others(loginId, site, "en")) {
            seen.push_back(std::to_string(visit.who.loginId) + " at " +
                           std::to_string(static_cast<int>(visit.place.pageId)));
        }
        return seen;
    }
    void ask(int holder, int asker, PageId pageId) {
        presence.ask(holder, {{asker, "Login " + std::to_string(asker)}, pageId, "Title", clock});
    }

    Presence::TimePoint now = Presence::TimePoint(1000h);
    DateTime clock{2026, 6, 15, 12, 0, 0};
    Presence presence{[this] { return now; }};
};

TEST_F(PresenceTest, OthersSeeWhoIsInTheSameSiteAndLanguage) {
    tell(1, 11);
    tell(2, 12);
    tell(3, 13, Doing::Typing, "bb");
    EXPECT_THAT(seenBy(1), ElementsAre("2 at 12"));
    EXPECT_THAT(seenBy(3, "bb"), IsEmpty());
    EXPECT_THAT(seenBy(9), ElementsAre("1 at 11", "2 at 12"));
}

TEST_F(PresenceTest, WhoTellsNothingMoreIsGone) {
    tell(1, 11);
    now += 75s;
    EXPECT_THAT(seenBy(9), ElementsAre("1 at 11"));
    now += 1s;
    EXPECT_THAT(seenBy(9), IsEmpty());
    EXPECT_FALSE(presence.isHere(1));
}

TEST_F(PresenceTest, WhoIsAwayIsKeptLonger) {
    tell(1, 11, Doing::Away);
    now += 6min;
    EXPECT_THAT(seenBy(9), ElementsAre("1 at 11"));
    now += 1s;
    EXPECT_THAT(seenBy(9), IsEmpty());
}

TEST_F(PresenceTest, TwoWindowsAreTwoPlaces) {
    tell(1, 11);
    tell(1, 12);
    tell(1, 11);
    EXPECT_THAT(seenBy(9), ElementsAre("1 at 11", "1 at 12"));
    EXPECT_EQ(presence.latest(1, "aa", "en")->place.pageId, 11);
}

TEST_F(PresenceTest, APlaceIsHeldSinceItWasFirstTold) {
    tell(1, 11);
    const DateTime first = clock;
    clock.minute = 1;
    now += 30s;
    tell(1, 11, Doing::Typing);
    const auto visit = presence.latest(1, "aa", "en");
    EXPECT_EQ(visit->since, first);
    EXPECT_EQ(visit->doing, Doing::Typing);
    now += 76s;
    tell(1, 11);
    EXPECT_EQ(presence.latest(1, "aa", "en")->since, clock);
}

TEST_F(PresenceTest, OneLoginHasFewPlaces) {
    for (int i = 0; i < 100; ++i) tell(1, i + 1);
    EXPECT_EQ(seenBy(9).size(), 8U);
}

TEST_F(PresenceTest, IdleIsWhoDoesNothingOrIsAway) {
    EXPECT_EQ(presence.idle(1), std::nullopt);
    tell(1, 11);
    now += 40s;
    EXPECT_EQ(presence.idle(1), 40s);
    tell(1, 11, Doing::Away);
    EXPECT_EQ(presence.idle(1), 40s);
    tell(1, 11, Doing::Typing);
    EXPECT_EQ(presence.idle(1), 0s);
    presence.leave(1);
    now += 1min;
    EXPECT_EQ(presence.idle(1), 60s);
}

TEST_F(PresenceTest, WhoLeavesIsNowhere) {
    tell(1, 11);
    tell(1, 12);
    ask(1, 2, 11);
    presence.noteHeld(1, 11);
    presence.leave(1);
    EXPECT_THAT(seenBy(9), IsEmpty());
    EXPECT_THAT(presence.asksOf(1), IsEmpty());
    EXPECT_FALSE(presence.hasHeld(1, 11));
}

TEST_F(PresenceTest, WhoAsksOftenAsksOnce) {
    tell(1, 11);
    for (int i = 0; i < 10; ++i) ask(1, 2, 11);
    EXPECT_EQ(presence.asksOf(1).size(), 1U);
    ask(1, 3, 11);
    ask(1, 2, 12);
    EXPECT_EQ(presence.asksOf(1).size(), 3U);
    presence.answer(1, 11);
    EXPECT_EQ(presence.asksOf(1).size(), 1U);
}

TEST_F(PresenceTest, AnAskIsOverAfterTenMinutes) {
    tell(1, 11);
    ask(1, 2, 11);
    now += 10min + 1s;
    EXPECT_THAT(presence.asksOf(1), IsEmpty());
}

TEST_F(PresenceTest, AsksAreBounded) {
    tell(1, 11);
    for (int asker = 2; asker < 200; ++asker) ask(1, asker, 11);
    EXPECT_EQ(presence.asksOf(1).size(), 20U);
    ask(7, 1, 11);
    EXPECT_THAT(presence.asksOf(7), IsEmpty());
}

TEST_F(PresenceTest, OneSeesTwoHundredOthersAtMost) {
    for (int id = 1; id <= 300; ++id) tell(id, 11);
    EXPECT_EQ(seenBy(0).size(), 200U);
}

}  // namespace
}  // namespace torvex
