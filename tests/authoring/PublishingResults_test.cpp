#include "support/PublishTest.h"

namespace torvex::test {
namespace {

/// How a published page is live. Today is 2026-06-15.
class PublishingResultsTest : public PublishTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PublishingResultsTest, bothEngines(), engineName);

TEST_P(PublishingResultsTest, ANewPageIsOnline) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(publish(pageId), "1");
    EXPECT_EQ(live(pageId, "online"), "1");
}

TEST_P(PublishingResultsTest, APageThatWasSwitchedOffStaysOff) {
    const PageId pageId = approved("aa.en.01").offline().insert();
    EXPECT_EQ(publish(pageId), "0");
    EXPECT_EQ(live(pageId, "online"), "0");
}

TEST_P(PublishingResultsTest, OutsideOfItsDatesAPageKeepsItsState) {
    for (const auto& [from, to] :
         {std::pair{"20260101", "20260614"}, std::pair{"20260616", "20261231"}, std::pair{"20260616", ""},
          std::pair{"", "20260614"}, std::pair{"20260616", "20260614"}}) {
        const PageId pageId = approved("aa.en.01").dates(from, to).insertInDesignOnly();
        EXPECT_EQ(publish(pageId), "2") << from << " to " << to;
        EXPECT_EQ(live(pageId, "online"), "1");
        connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {pageId});
        connection().execute("delete from TORVEX_PAGES_LIVE where pageId = ?", {pageId});
    }
    const PageId off = approved("aa.en.02").dates("20260101", "20260614").offline().insert();
    EXPECT_EQ(publish(off), "2");
    EXPECT_EQ(live(off, "online"), "0");
}

TEST_P(PublishingResultsTest, TheFirstAndTheLastDayCount) {
    for (const auto& [from, to] :
         {std::pair{"20260615", "20260615"}, std::pair{"20260615", ""}, std::pair{"", "20260615"},
          std::pair{"", ""}, std::pair{"00000000", "99999999"}}) {
        const PageId pageId = approved("aa.en.01").dates(from, to).insertInDesignOnly();
        EXPECT_EQ(publish(pageId), "1") << from << " to " << to;
        connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {pageId});
        connection().execute("delete from TORVEX_PAGES_LIVE where pageId = ?", {pageId});
    }
}

TEST_P(PublishingResultsTest, NoDatesAtAllAreNoLimit) {
    const PageId pageId =
        approved("aa.en.01").set("onlineFrom", Value()).set("onlineTo", Value()).insertInDesignOnly();
    EXPECT_EQ(publish(pageId), "1");
}

TEST_P(PublishingResultsTest, AFolderKeepsItsState) {
    const PageId fresh = approved("aa.en.01").type("F").insertInDesignOnly();
    EXPECT_EQ(publish(fresh), "3");
    EXPECT_EQ(live(fresh, "online"), "1");
    const PageId off = approved("aa.en.02").type("F").offline().insert();
    EXPECT_EQ(publish(off), "3");
    EXPECT_EQ(live(off, "online"), "0");
}

TEST_P(PublishingResultsTest, AFolderIsOneBeforeItsDatesAndItsBranchCount) {
    const PageId pageId = approved("aa.en.99").type("F").dates("20260101", "20260102").insertInDesignOnly();
    EXPECT_EQ(publish(pageId), "3");
    EXPECT_EQ(live(pageId, "online"), "1");
}

TEST_P(PublishingResultsTest, APageOfASystemBranchGoesOffline) {
    page("aa.en.99").type("F").insert();
    const PageId fresh = approved("aa.en.99.01").insertInDesignOnly();
    EXPECT_EQ(publish(fresh), "4");
    EXPECT_EQ(live(fresh, "online"), "0");
    const PageId was = approved("aa.en.99.02").dates("20260101", "20260102").online(1).insert();
    EXPECT_EQ(publish(was), "4");
    EXPECT_EQ(live(was, "online"), "0");
}

TEST_P(PublishingResultsTest, TheDigitsOfASystemBranchCountAnywhere) {
    const PageId root = approved("99.en").insertInDesignOnly();
    EXPECT_EQ(publish(root), "4");
    EXPECT_EQ(live(root, "online"), "0");
}

TEST_P(PublishingResultsTest, AnApplicationIsAPageLikeOthers) {
    const PageId pageId = approved("aa.en.01").type("A").insertInDesignOnly();
    EXPECT_EQ(publish(pageId), "1");
}

TEST_P(PublishingResultsTest, ARemovalIsAZero) {
    const PageId pageId = marked("aa.en.01").online(1).insert();
    EXPECT_EQ(publish(pageId), "0");
}

}  // namespace
}  // namespace torvex::test
