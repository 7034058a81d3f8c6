#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Three siblings with gaps between them; the second was never published.
class MoveNodeTest : public PublishTest {
  protected:
    void SetUp() override {
        PublishTest::SetUp();
        if (HasFatalFailure()) return;
        one = page("aa.en.01").order(2).insert();
        two = page("aa.en.02").order(5).insertInDesignOnly();
        three = page("aa.en.03").order(9).insert();
    }
    std::string move(const std::string& from, const std::string& to, const std::string& direction) {
        return manager().moveNode(from, to, direction);
    }
    std::string order(PageId pageId) { return design(pageId, "orderId") + " " + live(pageId, "orderId"); }

    PageId one = 0;
    PageId two = 0;
    PageId three = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, MoveNodeTest, bothEngines(), engineName);

TEST_P(MoveNodeTest, NobodyMoves) {
    actAsNobody();
    expectRefusal("-10", [&] { return move("aa.en.01", "aa.en.03", "down"); });
}

TEST_P(MoveNodeTest, ANodeThatIsMissingOrARootIsRefused) {
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-1", [&] { return move(bad, "aa.en.03", "down"); });
        expectRefusal("-1", [&] { return move("aa.en.01", bad, "down"); });
    }
    expectRefusal("-1", [&] { return move("aa.en.01", "aa.en.04", "down"); });
    expectRefusal("-1", [&] { return move("aa.en.04", "aa.en.01", "up"); });
    expectRefusal("-1", [&] { return move("aa.en", "aa.en.01", "down"); });
    expectRefusal("-1", [&] { return move("4711", "aa.en.01", "down"); });
}

TEST_P(MoveNodeTest, ASystemBranchKeepsItsPlace) {
    page("aa.en.99").order(99).insert();
    const PageId inside = page("aa.en.99.01").order(1).insert();
    const PageId last = page("aa.en.99.99").order(2).insert();
    expectRefusal("-1", [&] { return move("aa.en.01", "aa.en.99", "down"); });
    expectRefusal("-1", [&] { return move("aa.en.99", "aa.en.01", "up"); });
    // Within the branch the number is like any other.
    EXPECT_EQ(move("aa.en.99.01", "aa.en.99.99", "down"), "");
    EXPECT_EQ(order(inside), "2 2");
    EXPECT_EQ(order(last), "1 1");
}

TEST_P(MoveNodeTest, AnUnknownDirectionIsRefused) {
    for (const auto* direction : {"", "left", "updown", " up"}) {
        expectRefusal("-1", [&] { return move("aa.en.01", "aa.en.03", direction); });
    }
}

TEST_P(MoveNodeTest, WhoLiesThereAlreadyStays) {
    expectRefusal("", [&] { return move("aa.en.03", "aa.en.01", "down"); });
    expectRefusal("", [&] { return move("aa.en.01", "aa.en.03", "up"); });
    expectRefusal("", [&] { return move("aa.en.01", "aa.en.01", "up"); });
    expectRefusal("", [&] { return move("aa.en.01", "aa.en.01", "down"); });
}

TEST_P(MoveNodeTest, DownSwapsThePlacesInBothTrees) {
    EXPECT_EQ(move("aa.en.01", "aa.en.03", "Down"), "");
    EXPECT_EQ(order(one), "9 9");
    EXPECT_EQ(order(three), "2 2");
    EXPECT_EQ(order(two), "5 ");
}

TEST_P(MoveNodeTest, UpSwapsThemToo) {
    EXPECT_EQ(move(ident(three), " " + ident(one), "UP"), "");
    EXPECT_EQ(order(one), "9 9");
    EXPECT_EQ(order(three), "2 2");
}

TEST_P(MoveNodeTest, APageThatIsNotLiveSwapsInTheDesign) {
    EXPECT_EQ(move("aa.en.01", "aa.en.02", "down"), "");
    EXPECT_EQ(order(one), "5 5");
    EXPECT_EQ(order(two), "2 ");
}

TEST_P(MoveNodeTest, OnlyTheFirstIsInTheTrail) {
    move("aa.en.01", "aa.en.03", "down");
    move("aa.en.01", "aa.en.02", "up");
    EXPECT_THAT(auditTrail(),
                ElementsAre(annasLine(one, "aa.en.01", "move down"), annasLine(one, "aa.en.01", "move up")));
}

TEST_P(MoveNodeTest, AFailureAtAnyStepLeavesBothWhereTheyWere) {
    failEverywhere(
        "", [&] { return move("aa.en.01", "aa.en.03", "down"); },
        [&] { EXPECT_THAT(auditTrail(), IsEmpty()); });
    EXPECT_EQ(order(one), "9 9");
}

}  // namespace
}  // namespace torvex::test
