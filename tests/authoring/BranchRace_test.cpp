#include <algorithm>
#include <gmock/gmock.h>

#include "support/NewPage.h"
#include "support/RaceTest.h"

namespace torvex::test {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BranchRaceTest : public RaceTest {
  protected:
    std::string node(PageId pageId) { return design(pageId, "nodeId"); }
    /// Pages whose parent isn't there, in either tree.
    std::vector<std::string> orphans() {
        std::vector<std::string> nodes;
        for (const std::string twin : {"DESIGN", "LIVE"}) {
            auto rows =
                connection().query("select nodeId from TORVEX_PAGES_" + twin +
                                   " a where parent <> '' and not exists (select 1 from TORVEX_PAGES_" +
                                   twin + " b where b.nodeId = a.parent)");
            while (rows.next()) nodes.push_back(twin + " " + rows.text("nodeId"));
        }
        return nodes;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, BranchRaceTest, bothEngines(), engineName);

TEST_P(BranchRaceTest, TwoWhoCopyToOnePlaceGetTwoNumbers) {
    const auto one = author(anna);
    const auto two = author(bert);
    page("aa.en.01").insert();
    page("aa.en.01.01").insert();
    page("aa.en.02").insert();
    for (int i = 1; i <= 15; ++i) {
        auto copies = together([&] { return one->manager->pastePage("D", "aa.en.01", "aa.en.02", 1); },
                               [&] { return two->manager->pastePage("D", "aa.en.01", "aa.en.02", 1); });
        std::sort(copies.begin(), copies.end());
        const auto expected = [](int number) {
            return "aa.en.02." + std::string(number < 10 ? "0" : "") + std::to_string(number);
        };
        ASSERT_THAT(copies, ElementsAre(expected(2 * i - 1), expected(2 * i)));
        // Titles grow by the word for each; they are made room for again.
        connection().execute("update TORVEX_PAGES_DESIGN set title = nodeId where parent = 'aa.en.02'");
    }
    EXPECT_EQ(cell("select count(distinct orderId) from TORVEX_PAGES_DESIGN where parent = 'aa.en.02'"),
              "30");
    EXPECT_THAT(one->host.log.lines, IsEmpty());
    EXPECT_THAT(two->host.log.lines, IsEmpty());
}

TEST_P(BranchRaceTest, TwoWhoMoveABranchMoveItOnce) {
    const auto one = author(anna);
    const auto two = author(bert);
    page("aa.en.02").insert();
    page("aa.en.03").insert();
    for (int i = 0; i < 10; ++i) {
        const PageId branch = page("aa.en.01").title("Branch " + std::to_string(i)).insert();
        const PageId below = page("aa.en.01.01").insert();
        const auto results = together([&] { return one->manager->movePage("aa.en.01", "aa.en.02"); },
                                      [&] { return two->manager->movePage("aa.en.01", "aa.en.03"); });
        EXPECT_EQ(std::count(results.begin(), results.end(), "-99"), 1);
        EXPECT_THAT(node(branch), AnyOf(results[0], results[1]));
        EXPECT_EQ(node(below), node(branch) + ".01");
        EXPECT_EQ(live(below, "nodeId"), node(below));
    }
    EXPECT_THAT(orphans(), IsEmpty());
}

TEST_P(BranchRaceTest, TwoWhoMoveBranchesIntoEachOtherDoNotTieAKnot) {
    const auto one = author(anna);
    const auto two = author(bert);
    for (int i = 0; i < 10; ++i) {
        const std::string first = "aa.en.01";
        const std::string second = "aa.en.02";
        const PageId a = page(first).insert();
        const PageId b = page(second).insert();
        const auto results = together([&] { return one->manager->movePage(first, second); },
                                      [&] { return two->manager->movePage(second, first); });
        EXPECT_THAT(results, AnyOf(ElementsAre("aa.en.02.01", "-99"), ElementsAre("-99", "aa.en.01.01")));
        EXPECT_THAT(orphans(), IsEmpty());
        for (const PageId pageId : {a, b}) {
            connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {pageId});
            connection().execute("delete from TORVEX_PAGES_LIVE where pageId = ?", {pageId});
        }
    }
}

TEST_P(BranchRaceTest, APageThatIsMadeInABranchOnItsWayIsNotLeftBehind) {
    const auto one = author(anna);
    const auto two = author(bert);
    page("aa.en.02").insert();
    for (int i = 0; i < 15; ++i) {
        // The page that is made gets the number behind the last.
        page("aa.en.01").id(2000 + 10 * i).title("Branch " + std::to_string(i)).insert();
        fillNewPage(*two->manager, "New", "F", 1);
        const auto results = together([&] { return one->manager->movePage("aa.en.01", "aa.en.02"); },
                                      [&] { return two->manager->saveNewPageSetup("aa", "en", "aa.en.01"); });
        EXPECT_THAT(results[0], ::testing::StartsWith("aa.en.02."));
        EXPECT_THAT(results[1], AnyOf("aa.en.01.01", "-4", "-5"));
        EXPECT_THAT(orphans(), IsEmpty());
    }
}

TEST_P(BranchRaceTest, OfTwoWhoSwapTheSameSiblingsOneFindsThemSwapped) {
    const auto one = author(anna);
    const auto two = author(bert);
    const PageId first = page("aa.en.01").order(1).insert();
    const PageId second = page("aa.en.02").order(2).insert();
    for (int i = 0; i < 15; ++i) {
        EXPECT_THAT(together([&] { return one->manager->moveNode("aa.en.01", "aa.en.02", "down"); },
                             [&] { return two->manager->moveNode("aa.en.02", "aa.en.01", "up"); }),
                    ElementsAre("", ""));
        EXPECT_EQ(design(first, "orderId") + live(first, "orderId"), "22");
        EXPECT_EQ(design(second, "orderId") + live(second, "orderId"), "11");
        EXPECT_EQ(manager().moveNode("aa.en.01", "aa.en.02", "up"), "");
    }
    EXPECT_THAT(one->host.log.lines, IsEmpty());
    EXPECT_THAT(two->host.log.lines, IsEmpty());
}

TEST_P(BranchRaceTest, VisitorsSeeABranchAtOnePlaceOrTheOther) {
    const PageId branch = page("aa.en.01").insert();
    const PageId below = page("aa.en.01.01").insert();
    page("aa.en.02").insert();
    const auto visitors = openAnother();
    std::vector<std::string> seen;
    failing().atStep = [&](int) {
        const db::ReadScope visit(*visitors);
        std::string places;
        for (const PageId pageId : {branch, below}) {
            auto rows = visitors->query("select nodeId from TORVEX_PAGES_LIVE where pageId = ?", {pageId});
            if (rows.next()) places += rows.text("nodeId") + " ";
        }
        seen.push_back(places);
    };
    EXPECT_EQ(manager().movePage("aa.en.01", "aa.en.02"), "aa.en.02.01");
    EXPECT_GT(seen.size(), 5U);
    EXPECT_THAT(seen, ::testing::Each("aa.en.01 aa.en.01.01 "));
}

}  // namespace
}  // namespace torvex::test
