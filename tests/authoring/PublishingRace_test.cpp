#include <gmock/gmock.h>

#include "support/RaceTest.h"

namespace torvex::test {
namespace {

using ::testing::AnyOf;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class PublishingRaceTest : public RaceTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PublishingRaceTest, bothEngines(), engineName);

TEST_P(PublishingRaceTest, OfTwoWhoPublishAPageOneFindsItPublished) {
    const auto one = author(anna);
    const auto two = author(bert);
    for (int i = 1; i <= 25; ++i) {
        const std::string node = "aa.en." + std::string(i < 10 ? "0" : "") + std::to_string(i);
        const PageId pageId = approved(node).insertInDesignOnly();
        designBody(pageId, 1, "text");
        EXPECT_THAT(together([&] { return one->manager->publishPage(node); },
                             [&] { return two->manager->publishPage(node); }),
                    UnorderedElementsAre("1", "-2"));
        EXPECT_EQ(statuses(pageId), "P000");
        EXPECT_EQ(cell("select count(*) from TORVEX_BODIES_LIVE where pageId = " + ident(pageId)), "1");
    }
    EXPECT_EQ(auditTrail().size(), 25U);
}

TEST_P(PublishingRaceTest, OfTwoWhoRemoveAPageOneFindsItGone) {
    const auto one = author(anna);
    const auto two = author(bert);
    for (int i = 1; i <= 15; ++i) {
        const std::string node = "aa.en." + std::string(i < 10 ? "0" : "") + std::to_string(i);
        const PageId pageId = marked(node).insert();
        page(node + ".01").insert();
        EXPECT_THAT(together([&] { return one->manager->publishPage(ident(pageId)); },
                             [&] { return two->manager->publishPage(ident(pageId)); }),
                    UnorderedElementsAre("0", "-3"));
        EXPECT_FALSE(isThere(pageId));
    }
}

TEST_P(PublishingRaceTest, APageThatIsResetMeanwhileIsEitherPublishedOrRefused) {
    const auto one = author(anna);
    const auto two = author(bert);
    for (int i = 1; i <= 15; ++i) {
        const std::string node = "aa.en." + std::string(i < 10 ? "0" : "") + std::to_string(i);
        const PageId pageId = approved(node).insert();
        // A reset before the publishing finds the approval, one behind it finds it gone.
        const auto results = together([&] { return one->manager->publishPage(node); },
                                      [&] { return two->manager->resetPage(node); });
        EXPECT_EQ(results[0], "1");
        EXPECT_THAT(results[1], AnyOf("-2", "PP000"));
        EXPECT_EQ(statuses(pageId), "P000");
    }
}

TEST_P(PublishingRaceTest, TwoBranchesThatOverlapAreBothPublished) {
    const auto one = author(anna);
    const auto two = author(bert);
    for (int round = 0; round < 5; ++round) {
        std::vector<PageId> pages;
        const std::string top = "aa.en.0" + std::to_string(round + 1);
        pages.push_back(approved(top).insertInDesignOnly());
        for (int i = 1; i <= 9; ++i) {
            pages.push_back(approved(top + ".0" + std::to_string(i)).insertInDesignOnly());
        }
        EXPECT_THAT(together([&] { return one->manager->publishPageCascading(top); },
                             [&] { return two->manager->publishPageCascading("aa.en"); }),
                    UnorderedElementsAre("0", "0"));
        for (const PageId pageId : pages) EXPECT_EQ(statuses(pageId), "P000");
    }
    EXPECT_EQ(auditTrail().size(), 50U);
    EXPECT_THAT(one->host.log.lines, IsEmpty());
    EXPECT_THAT(two->host.log.lines, IsEmpty());
}

TEST_P(PublishingRaceTest, VisitorsReadWhileABranchIsPublished) {
    page("aa.en.01").insert();
    const PageId below = approved("aa.en.01.01").title("new").insertInDesignOnly();
    page("aa.en.01.01").id(below).title("old").insertInLiveOnly();
    const auto visitors = openAnother();
    std::vector<std::string> seen;
    failing().atStep = [&](int) {
        const db::ReadScope visit(*visitors);
        auto rows = visitors->query("select title from TORVEX_PAGES_LIVE where pageId = ?", {below});
        if (rows.next()) seen.push_back(rows.text("title"));
    };
    EXPECT_EQ(manager().publishPageCascading("aa.en"), "0");
    EXPECT_GT(seen.size(), 5U);
    EXPECT_THAT(seen, ::testing::Each("old"));
    EXPECT_EQ(live(below, "title"), "new");
}

}  // namespace
}  // namespace torvex::test
