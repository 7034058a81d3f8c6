#include <chrono>
#include <gmock/gmock.h>
#include <map>

#include "delivery/HitStore.h"
#include "platform/DateTime.h"
#include "platform/Days.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class DeskPageHitsTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        for (const auto* node : {"aa.en", "aa.en.01", "aa.en.02", "aa.en.03", "aa.de"})
            page(node).title(node).insert();
        addHits(connection(), "aa.en.01", "20260108", 30, 9);
        addHits(connection(), "aa.en.01", "20260110", 20, 8);
        addHits(connection(), "aa.en.02", "20260110", 15, 5);
        addHits(connection(), "aa.en.02", "20260111", 10, 5);
        addHits(connection(), "aa.en.77", "20260110", 99, 9);
        addHits(connection(), "aa.de", "20260110", 70, 9);
    }
    /// "nodeId|views|visitors|earlier"
    std::vector<std::string> pages(const std::string& kind, const std::string& from = "20260110",
                                   const std::string& to = "20260111", int start = 0) {
        const Value list = desk().getPageHits(" AA ", "en", from, to, kind, start);
        std::vector<std::string> lines;
        for (const std::string& line : linesOf(list)) {
            const auto node = line.substr(line.find('|') + 1);
            // The title is the node.
            lines.push_back(node.substr(0, node.find('|')) + node.substr(node.find('|', node.find('|') + 1)));
        }
        return lines;
    }
    void published(const std::string& node, const std::string& day, PageId pageId = 0,
                   const std::string& action = "publish") {
        row("TORVEX_AUDIT_TRAIL",
            {{"pageId", pageId}, {"nodeId", node}, {"action", action}, {"Date", day}, {"time", "09:00:00"}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskPageHitsTest, bothEngines(), engineName);

TEST_P(DeskPageHitsTest, TheBestComeFirst) {
    EXPECT_THAT(pages("best"), ElementsAre("aa.en.02|25|10|0", "aa.en.01|20|8|30"));
    EXPECT_THAT(pages(" BEST ", "", ""), ElementsAre("aa.en.01|50|17|0", "aa.en.02|25|10|0"));
    EXPECT_THAT(pages("best", "20260110", "20260111", 1), ElementsAre("aa.en.01|20|8|30"));
    EXPECT_THAT(pages("best", "20260110", "20260111", -1), IsEmpty());
}

TEST_P(DeskPageHitsTest, RisingPagesAreAboveAsManyDaysBefore) {
    EXPECT_THAT(pages("rising"), ElementsAre("aa.en.02|25|10|0"));
    addHits(connection(), "aa.en.03", "20260110", 100, 1);
    addHits(connection(), "aa.en.03", "20260109", 90, 1);
    EXPECT_THAT(pages("rising"), ElementsAre("aa.en.02|25|10|0", "aa.en.03|100|1|90"));
}

/// As the days alone say it.
TEST_P(DeskPageHitsTest, MonthsAddUpToTheirDays) {
    std::map<std::string, int> hits;
    auto day = std::chrono::sys_days(std::chrono::year(2024) / 1 / 1);
    for (int i = 0; i < 900; i += 3, day += std::chrono::days(3)) {
        const std::string digits = date8(momentOf(day));
        addHits(connection(), "aa.en.03", digits, i + 1, 1);
        hits[digits] += i + 1;
    }
    const auto between = [&](const std::string& from, const std::string& to) {
        int sum = 0;
        for (const auto& [when, count] : hits) sum += when >= from && when <= to ? count : 0;
        return std::to_string(sum);
    };
    struct Period {
        std::string from;
        std::string to;
        std::string before;  ///< as many days
        std::string dayBefore;
    };
    for (const auto& [from, to, before, dayBefore] :
         {Period{"20250101", "20251231", "20240102", "20241231"},
          Period{"20250115", "20250615", "20240816", "20250114"},
          Period{"20250201", "20250228", "20250104", "20250131"},
          Period{"20250131", "20250301", "20250101", "20250130"},
          Period{"20250310", "20250312", "20250307", "20250309"},
          Period{"20250630", "20250801", "20250528", "20250629"}}) {
        SCOPED_TRACE(from + " to " + to);
        const Value list = desk().getPageHits("aa", "en", from, to, "best");
        ASSERT_TRUE(list.isGrid());
        std::size_t row = 0;
        while (row < list.grid().rows() && list.grid().at(1, row).toText() != "aa.en.03") ++row;
        ASSERT_LT(row, list.grid().rows());
        EXPECT_EQ(list.grid().at(3, row).toText(), between(from, to));
        EXPECT_EQ(list.grid().at(5, row).toText(), between(before, dayBefore));
    }
    const Value all = desk().getPageHits("aa", "en", "", "", "best");
    EXPECT_EQ(all.grid().at(3, 0).toText(), between("", "9"));
    const Value since = desk().getPageHits("aa", "en", "20250115", "", "best");
    EXPECT_EQ(since.grid().at(3, 0).toText(), between("20250115", "9"));
}

TEST_P(DeskPageHitsTest, UnreadPagesCanBeSeenAndWerent) {
    page("aa.en.04").offline().insert();
    page("aa.en.05").type("F").insert();
    page("aa.en.99.01").insert();
    page("aa.en.06").insertInDesignOnly();
    EXPECT_THAT(pages("unread"), ElementsAre("aa.en|0|0|0", "aa.en.03|0|0|0"));
    EXPECT_THAT(pages("unread", "20260109", "20260109"), SizeIs(4));
}

TEST_P(DeskPageHitsTest, AnotherKindAndAnotherPlaceHaveNone) {
    EXPECT_THAT(pages("worst"), IsEmpty());
    EXPECT_TRUE(desk().getPageHits("", "", "", "", "best").isEmpty());
    EXPECT_TRUE(desk().getPageHits("zz", "en", "", "", "unread").isEmpty());
}

TEST_P(DeskPageHitsTest, PublishingsAreCountedByDay) {
    const PageId walks = 1002;
    published("aa.en.01", "20260103", walks);
    published("aa.en.02", "20260103");
    published("aa.en.01", "20260105", walks, "PUBLISH");
    published("aa.en.01", "20260105", walks, "publish (delete)");
    published("aa.de", "20260105");
    EXPECT_THAT(linesOf(desk().getPublishings("aa.en", "", "")), ElementsAre("20260103|2", "20260105|1"));
    EXPECT_THAT(linesOf(desk().getPublishings("aa.en", "20260104", "20260105")), ElementsAre("20260105|1"));
    EXPECT_THAT(linesOf(desk().getPublishings(ident(walks), "", "")),
                ElementsAre("20260103|1", "20260105|1"));
    EXPECT_TRUE(desk().getPublishings("aa.en", "soon", "").isEmpty());
    for (const auto& bad : badIdentifiers()) EXPECT_TRUE(desk().getPublishings(bad, "", "").isEmpty()) << bad;
}

TEST_P(DeskPageHitsTest, WhatFailsIsRaised) {
    drop("TORVEX_LOGGING");
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_THAT(errorOf([&] { desk().getPageHits("aa", "en", "", "", "best"); }),
                StartsWith(chain({"getPageHits !"})));
    EXPECT_THAT(errorOf([&] { desk().getPublishings("aa.en", "", ""); }),
                StartsWith(chain({"getPublishings !"})));
}

}  // namespace
}  // namespace torvex::test
