#include <gmock/gmock.h>

#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using testing::StartsWith;

class DeskHistoryTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        pageId_ = page("aa.en").insert();
    }
    void line(const std::string& day, const std::string& time, const std::string& action) {
        row("TORVEX_AUDIT_TRAIL", {{"pageId", pageId_},
                                   {"loginId", anna},
                                   {"loginName", "Anna Author"},
                                   {"action", action},
                                   {"description", "Of " + action},
                                   {"Date", day},
                                   {"time", time}});
    }
    std::vector<std::string> actions(int from = 0) {
        return columnOf(desk().getHistory(ident(pageId_), from), 3);
    }

    PageId pageId_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskHistoryTest, bothEngines(), engineName);

TEST_P(DeskHistoryTest, ALineSaysWhoDidWhatWhen) {
    manager().checkOut(ident(pageId_));
    EXPECT_THAT(linesOf(desk().getHistory("aa.en")),
                ElementsAre("2026-06-15T12:00:00|7|Anna Author|check out|"));
}

TEST_P(DeskHistoryTest, TheLatestStandsFirst) {
    line("20260102", "09:00:00", "second");
    line("20260102", "10:00:00", "third");
    line("20260101", "23:00:00", "first");
    line("20260102", "10:00:00", "fourth");
    EXPECT_THAT(actions(), ElementsAre("fourth", "third", "second", "first"));
    EXPECT_THAT(actions(3), ElementsAre("first"));
    EXPECT_THAT(actions(-1), SizeIs(0));
}

TEST_P(DeskHistoryTest, ALongOneComesInParts) {
    for (int i = 0; i < 510; ++i) line("20260101", "09:00:00", std::to_string(i));
    EXPECT_THAT(actions(), SizeIs(500));
    EXPECT_THAT(actions(500), SizeIs(10));
    EXPECT_EQ(actions(500).back(), "0");
}

TEST_P(DeskHistoryTest, ALineWithoutAMomentHasNone) {
    line("", "", "imported");
    line("20260101", "25 past", "odd");
    EXPECT_THAT(columnOf(desk().getHistory(ident(pageId_)), 0), ElementsAre("", ""));
}

TEST_P(DeskHistoryTest, OtherPagesHaveTheirOwn) {
    line("20260101", "09:00:00", "mine");
    const PageId other = page("aa.en.01").insert();
    EXPECT_TRUE(desk().getHistory(ident(other)).isEmpty());
    for (const auto& bad : badIdentifiers()) EXPECT_TRUE(desk().getHistory(bad).isEmpty()) << bad;
}

TEST_P(DeskHistoryTest, WhatFailsIsRaised) {
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_THAT(errorOf([&] { desk().getHistory(ident(pageId_)); }), StartsWith(chain({"getHistory !"})));
}

}  // namespace
}  // namespace torvex::test
