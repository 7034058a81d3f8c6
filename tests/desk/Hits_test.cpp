#include <gmock/gmock.h>

#include "delivery/HitStore.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class DeskHitsTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        for (const auto* node : {"aa.en", "aa.en.01", "aa.en.01.01", "aa.de"}) page(node).insert();
        walks_ = cell("select pageId from TORVEX_PAGES_LIVE where nodeId = 'aa.en.01'");
        addHits(connection(), "aa.en", "20251231", 1, 1);
        addHits(connection(), "aa.en.01", "20251231", 10, 4);
        addHits(connection(), "aa.en.01", "20260101", 20, 8);
        addHits(connection(), "aa.en.01.01", "20260101", 300, 100);
        addHits(connection(), "aa.en.01.01", "20260201", 500, 200);
        addHits(connection(), "aa.de", "20260101", 7000, 5000);
    }
    std::vector<std::string> hits(const std::string& scope, const std::string& by,
                                  const std::string& from = "", const std::string& to = "") {
        return linesOf(desk().getHits(scope, from, to, by));
    }

    std::string walks_;
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskHitsTest, bothEngines(), engineName);

TEST_P(DeskHitsTest, ANumberIsThePageAlone) {
    EXPECT_THAT(hits(walks_, "day"), ElementsAre("20251231|10|4", "20260101|20|8"));
}

TEST_P(DeskHitsTest, ANodeIsThePageAndAllBelowIt) {
    EXPECT_THAT(hits("AA.en.01", "day"),
                ElementsAre("20251231|10|4", "20260101|320|108", "20260201|500|200"));
    EXPECT_THAT(hits("aa.en", "day"), ElementsAre("20251231|11|5", "20260101|320|108", "20260201|500|200"));
}

TEST_P(DeskHitsTest, TheyComeByMonthsAndYears) {
    EXPECT_THAT(hits("aa.en", "month"), ElementsAre("202512|11|5", "202601|320|108", "202602|500|200"));
    EXPECT_THAT(hits("aa.en.01", " Year "), ElementsAre("2025|10|4", "2026|820|308"));
}

TEST_P(DeskHitsTest, DaysLimitThem) {
    EXPECT_THAT(hits("aa.en", "day", "20260101"), ElementsAre("20260101|320|108", "20260201|500|200"));
    EXPECT_THAT(hits("aa.en", "month", "20260101", "20260101"), ElementsAre("202601|320|108"));
    EXPECT_THAT(hits(walks_, "year", "", "20251231"), ElementsAre("2025|10|4"));
    EXPECT_THAT(hits("aa.en.01", "day", "20270101"), IsEmpty());
}

TEST_P(DeskHitsTest, APageThatIsntThereHasNone) {
    for (const auto& bad : badIdentifiers()) EXPECT_THAT(hits(bad, "day"), IsEmpty()) << bad;
}

TEST_P(DeskHitsTest, WhatFailsIsRaised) {
    drop("TORVEX_LOGGING");
    EXPECT_THAT(errorOf([&] { desk().getHits("aa.en", "", "", "day"); }), StartsWith(chain({"getHits !"})));
}

}  // namespace
}  // namespace torvex::test
