// Where a new page comes among its siblings.

#include "authoring/SiblingOrder.h"

#include <chrono>
#include <fmt/format.h>

#include "platform/text/Text.h"
#include "support/SetupTest.h"

namespace torvex::test {
namespace {

class SiblingOrderTest : public SetupTest {
  protected:
    void SetUp() override {
        SetupTest::SetUp();
        if (HasFatalFailure()) return;
        // Under the folder 11: in the order 22, 21, 23, 24; 23 isn't published; the last stands apart.
        page("aa.en.01.01").id(21).order(20).insert();
        page("aa.en.01.02").id(22).order(10).insert();
        page("aa.en.01.03").id(23).order(30).insertInDesignOnly();
        page("aa.en.01.99").id(24).order(99).insert();
    }

    std::string saveBelow(const std::string& insertIdent) {
        filled();
        return saveNew("aa.en.01", insertIdent);
    }
    /// In the design: 22, 21, 23, the new one, and the one that stands apart.
    std::string orders() {
        std::string list;
        for (const auto* node : {"02", "01", "03", "04", "99"}) {
            list += orderOf(std::string("aa.en.01.") + node) + " ";
        }
        return list;
    }
    std::string liveOrders() {
        return liveOrderOf("aa.en.01.02") + " " + liveOrderOf("aa.en.01.01") + " " +
               liveOrderOf("aa.en.01.99");
    }
    /// So many ordinary children of a page, numbered and ordered from 1, all published.
    void children(const std::string& parent, int count) {
        for (int i = 1; i <= count; ++i) {
            page(fmt::format("{}.{:02}", parent, i)).order(i).insert();
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SiblingOrderTest, bothEngines(), engineName);

TEST_P(SiblingOrderTest, ANewPageComesLastAndAllAreRenumbered) {
    EXPECT_EQ(saveBelow(""), "aa.en.01.04");
    EXPECT_EQ(manager().pgOrderId(), 4);
    EXPECT_EQ(orders(), "1 2 3 4 99 ");
    EXPECT_EQ(liveOrders(), "1 2 99");
    EXPECT_EQ(liveOrderOf("aa.en.01.03"), "");
}

TEST_P(SiblingOrderTest, ANewPageTakesThePlaceOfTheSiblingThatItNames) {
    EXPECT_EQ(saveBelow("21"), "aa.en.01.04");
    EXPECT_EQ(manager().pgOrderId(), 2);
    EXPECT_EQ(orders(), "1 3 4 2 99 ");
    EXPECT_EQ(liveOrders(), "1 3 99");
}

TEST_P(SiblingOrderTest, TheSiblingMayBeNamedByItsNode) {
    EXPECT_EQ(saveBelow("aa.en.01.02"), "aa.en.01.04");
    EXPECT_EQ(orders(), "2 3 4 1 99 ");
    EXPECT_EQ(liveOrders(), "2 3 99");
}

TEST_P(SiblingOrderTest, TheNodeMayBeInCapitalsWithBlanks) {
    EXPECT_EQ(saveBelow(" AA.EN.01.03 "), "aa.en.01.04");
    EXPECT_EQ(orders(), "1 2 4 3 99 ");
}

TEST_P(SiblingOrderTest, APageThatIsNoSiblingMeansTheEnd) {
    for (const auto* ident : {"12", "aa.en.02", "999", "nowhere", "2", "21 or 1=1", "'", "-21", "21.5"}) {
        filled().setPgTitle(std::string("In front of ") + ident);
        const std::string node = saveNew("aa.en.01", ident);
        EXPECT_EQ(text::toNumber(orderOf(node)), text::toNumber(text::last(node, 2))) << ident;
        EXPECT_EQ(orderOf("aa.en.01.01"), "2");
    }
}

TEST_P(SiblingOrderTest, TheChildThatStandsApartCannotBeOvertaken) {
    EXPECT_EQ(saveBelow("24"), "aa.en.01.04");
    EXPECT_EQ(orders(), "1 2 3 4 99 ");
}

TEST_P(SiblingOrderTest, TheChildThatStandsApartKeepsAnyPlace) {
    connection().execute("update TORVEX_PAGES_DESIGN set orderId = 15 where pageId = 24");
    EXPECT_EQ(saveBelow("23"), "aa.en.01.04");
    EXPECT_EQ(orders(), "1 2 4 3 15 ");
    EXPECT_EQ(liveOrders(), "1 2 99");
}

TEST_P(SiblingOrderTest, OtherPagesKeepTheirPlaces) {
    page("aa.en.01.01.01").id(30).order(77).insert();
    EXPECT_EQ(saveBelow("21"), "aa.en.01.04");
    EXPECT_EQ(orderOf("aa.en.01.01.01"), "77");
    EXPECT_EQ(orderOf("aa.en.01"), "1");
    EXPECT_EQ(orderOf("aa.en.02"), "2");
}

TEST_P(SiblingOrderTest, AChildWithoutAPlaceGetsOne) {
    connection().execute("update TORVEX_PAGES_DESIGN set orderId = null where pageId = 23");
    connection().execute("update TORVEX_PAGES_LIVE set orderId = null where pageId = 22");
    EXPECT_EQ(saveBelow(""), "aa.en.01.04");
    EXPECT_NE(orderOf("aa.en.01.03"), "");
    EXPECT_NE(liveOrderOf("aa.en.01.02"), "");
}

TEST_P(SiblingOrderTest, NothingElseOfASiblingIsWritten) {
    connection().execute(
        "update TORVEX_PAGES_DESIGN set editStatus = 'P', approveStatus = 1, lockStatus = 1, lockedBy = 9 "
        "where pageId = 21");
    EXPECT_EQ(saveBelow("21"), "aa.en.01.04");
    EXPECT_EQ(statuses(21), "P101");
    EXPECT_EQ(column("lockedBy", 21), "9");
}

TEST_P(SiblingOrderTest, TheNinetyEighthChildIsTheLastOne) {
    children("aa.en.02", 97);
    page("aa.en.02.99").id(30).order(99).insert();
    filled();
    EXPECT_EQ(saveNew("aa.en.02", "aa.en.02.01"), "aa.en.02.98");
    EXPECT_EQ(orderOf("aa.en.02.98"), "1");
    for (int i = 1; i <= 97; ++i) {
        const std::string node = fmt::format("aa.en.02.{:02}", i);
        EXPECT_EQ(orderOf(node), std::to_string(i + 1));
        EXPECT_EQ(liveOrderOf(node), std::to_string(i + 1));
    }
    EXPECT_EQ(orderOf("aa.en.02.99"), "99");
    filled();
    const std::string before = content();
    manager().setPgTitle("One more");
    EXPECT_EQ(saveNew("aa.en.02"), "-5");
    EXPECT_EQ(content(), before);
}

TEST_P(SiblingOrderTest, InASystemBranchThereIsRoomForOneMore) {
    children("aa.en.99.01", 98);
    filled();
    EXPECT_EQ(saveNew("aa.en.99.01"), "aa.en.99.01.99");
    EXPECT_EQ(orderOf("aa.en.99.01.99"), "99");
    filled().setPgTitle("One more");
    EXPECT_EQ(saveNew("aa.en.99.01"), "-5");
}

TEST_P(SiblingOrderTest, APlaceBeyondTheLastUndoesTheRenumbering) {
    // Their numbers leave all of the ordinary ones free, so that only the places run out.
    for (int i = 1; i <= 98; ++i) {
        page(fmt::format("aa.en.02.{}{}", static_cast<char>('a' + i / 10), i % 10)).order(i + 5).insert();
    }
    const std::string before = content();
    filled();
    EXPECT_EQ(saveNew("aa.en.02"), "-99");
    EXPECT_EQ(content(), before);
    EXPECT_EQ(saveNew("aa.en.02", "aa.en.02.a1"), "aa.en.02.01") << "in front there is room";
    EXPECT_EQ(orderOf("aa.en.02.j8"), "99");
}

TEST_P(SiblingOrderTest, ThePlaceInANodeThatHoldsTheSystemNumberMayBeOneHigher) {
    for (int i = 1; i <= 98; ++i) {
        page(fmt::format("aa.en.99.01.{}{}", static_cast<char>('a' + i / 10), i % 10)).order(i).insert();
    }
    filled();
    EXPECT_EQ(saveNew("aa.en.99.01"), "aa.en.99.01.01");
    EXPECT_EQ(orderOf("aa.en.99.01.01"), "99");
    filled().setPgTitle("One more");
    const std::string before = content();
    EXPECT_EQ(saveNew("aa.en.99.01"), "-99");
    EXPECT_EQ(content(), before);
}

}  // namespace
}  // namespace torvex::test
