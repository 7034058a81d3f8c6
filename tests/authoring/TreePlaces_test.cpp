#include <fmt/format.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class TreePlacesTest : public ManagerTest {
  protected:
    /// Children of a node by their numbers, in the design.
    void children(const std::string& parent, std::initializer_list<int> numbers) {
        for (const int number : numbers) child(parent, number);
    }
    void childrenUpTo(const std::string& parent, int last) {
        db::Transaction transaction(connection());
        for (int number = 1; number <= last; ++number) child(parent, number);
        transaction.commit();
    }
    void child(const std::string& parent, int number) {
        page(fmt::format("{}.{:02}", parent, number)).insertInDesignOnly();
    }
    /// Children of "aa.en" whose orders are these, numbered from 01.
    void orders(std::initializer_list<int> orderIds) {
        int number = 0;
        for (const int orderId : orderIds) {
            page(fmt::format("aa.en.{:02}", ++number)).order(orderId).insertInDesignOnly();
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, TreePlacesTest, bothEngines(), engineName);

// Counting

TEST_P(TreePlacesTest, PagesAreCountedWithAndWithoutFolders) {
    page("aa.en").insert();
    page("aa.en.01").type("F").insert();
    page("aa.en.02").type("A").insert();
    page("bb.nl").type("p").insert();
    page("aa.en.03").insertInDesignOnly();
    page("aa.en.04").type("F").insertInDesignOnly();
    EXPECT_EQ(manager().getPageCount(), 3);
    EXPECT_EQ(manager().getPageCount("L", true), 4);
    EXPECT_EQ(manager().getPageCount("D"), 4);
    EXPECT_EQ(manager().getPageCount("d", true), 6);
    EXPECT_EQ(manager().getPageCount("x"), 3);
}

TEST_P(TreePlacesTest, AnEmptyTreeHasNoPages) {
    EXPECT_EQ(manager().getPageCount(), 0);
    EXPECT_EQ(manager().getPageCount("D", true), 0);
}

TEST_P(TreePlacesTest, TheChildrenOfAPageAreCounted) {
    page("aa.en").id(10).insert();
    children("aa.en", {1, 2, 99});
    child("aa.en.01", 1);
    page("aa.en.03").insertInLiveOnly();
    EXPECT_EQ(manager().countPages("10"), 3);
    EXPECT_EQ(manager().countPages(" AA.EN "), 3);
    EXPECT_EQ(manager().countPages("aa.en.01"), 1);
    EXPECT_EQ(manager().countPages("aa.en.02"), 0);
}

TEST_P(TreePlacesTest, FurtherLevelsAreCountedWithThem) {
    page("aa.en").id(10).insert();
    children("aa.en", {1, 2});
    children("aa.en.01", {1, 2, 3});
    child("aa.en.01.02", 1);
    page("aa.eo").insert();
    child("aa.eo", 1);
    EXPECT_EQ(manager().countPages("10", 2), 5);
    EXPECT_EQ(manager().countPages("10", 3), 6);
    EXPECT_EQ(manager().countPages("10", 32767), 6);
    EXPECT_EQ(manager().countPages("aa.en.01", 2), 4);
    EXPECT_EQ(manager().countPages("aa.en.02", 2), 0);
}

TEST_P(TreePlacesTest, WithoutAPageOrLevelsNothingIsCounted) {
    page("aa.en").id(10).insert();
    child("aa.en", 1);
    page("aa").id(11).insert();
    EXPECT_EQ(manager().countPages("10", 0), 0);
    EXPECT_EQ(manager().countPages("10", -1), 0);
    EXPECT_EQ(manager().countPages("77"), 0);
    EXPECT_EQ(manager().countPages("11"), 0);
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().countPages(bad), 0) << bad.substr(0, 40);
        EXPECT_EQ(manager().countPages(bad, 2), 0) << bad.substr(0, 40);
    }
}

// A new child

TEST_P(TreePlacesTest, TheFirstChildIsNumberedOne) {
    page("aa.en").id(10).insertInDesignOnly();
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.01");
    EXPECT_EQ(manager().getNewChild(" AA.EN "), "aa.en.01");
}

TEST_P(TreePlacesTest, AGapIsFilled) {
    page("aa.en").id(10).insertInDesignOnly();
    children("aa.en", {1, 2, 4});
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.03");
}

TEST_P(TreePlacesTest, TheGapAheadOfTheFirstChildIsFilled) {
    page("aa.en").id(10).insertInDesignOnly();
    children("aa.en", {2, 3});
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.01");
}

TEST_P(TreePlacesTest, WithoutAGapTheNextNumberIsTaken) {
    page("aa.en").id(10).insertInDesignOnly();
    childrenUpTo("aa.en", 9);
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.10");
    child("aa.en", 99);
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.10");
}

TEST_P(TreePlacesTest, TheLastOrdinaryNumberIsNinetyEight) {
    page("aa.en").id(10).insertInDesignOnly();
    childrenUpTo("aa.en", 97);
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.98");
}

TEST_P(TreePlacesTest, AFullParentHasNoPlaceWithOrWithoutASystemBranch) {
    page("aa.en").id(10).insertInDesignOnly();
    childrenUpTo("aa.en", 98);
    EXPECT_EQ(manager().getNewChild("10"), "");
    child("aa.en", 99);
    EXPECT_EQ(manager().getNewChild("10"), "");
}

TEST_P(TreePlacesTest, InTheSystemBranchNinetyNineIsANumberLikeAnyOther) {
    page("aa.en.99").id(10).insertInDesignOnly();
    page("aa.en.01.99.02").id(11).insertInDesignOnly();
    childrenUpTo("aa.en.99", 98);
    childrenUpTo("aa.en.01.99.02", 98);
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.99.99");
    EXPECT_EQ(manager().getNewChild("11"), "aa.en.01.99.02.99");
    child("aa.en.99", 99);
    EXPECT_EQ(manager().getNewChild("10"), "");
}

TEST_P(TreePlacesTest, TheNumberIsLookedForInTheWholeNode) {
    page("99.en").id(10).insertInDesignOnly();
    childrenUpTo("99.en", 98);
    EXPECT_EQ(manager().getNewChild("10"), "99.en.99");
}

TEST_P(TreePlacesTest, TheLivePagesTakeNoNumber) {
    page("aa.en").id(10).insertInDesignOnly();
    page("aa.en.01").insertInLiveOnly();
    EXPECT_EQ(manager().getNewChild("10"), "aa.en.01");
}

TEST_P(TreePlacesTest, WhatIsNoPageGetsNoChild) {
    page("aa.en").id(10).insertInLiveOnly();
    page("aa").id(11).insertInDesignOnly();
    EXPECT_EQ(manager().getNewChild("10"), "");
    EXPECT_EQ(manager().getNewChild("aa.en"), "");
    EXPECT_EQ(manager().getNewChild("11"), "");
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().getNewChild(bad), "") << bad.substr(0, 40);
    }
}

// A new order

TEST_P(TreePlacesTest, TheFirstAmongItsSiblingsGetsOrderOne) {
    page("aa.en").insertInDesignOnly();
    EXPECT_EQ(manager().getNewOrderId("aa.en.01"), 1);
}

TEST_P(TreePlacesTest, ANewPageGoesBehindTheLast) {
    orders({1, 7, 3});
    EXPECT_EQ(manager().getNewOrderId("aa.en.04"), 8);
    EXPECT_EQ(manager().getNewOrderId(" AA.EN.04 "), 8);
}

TEST_P(TreePlacesTest, ANumberIsResolvedToItsNode) {
    orders({1, 2});
    page("aa.en.03").id(12).order(3).insertInDesignOnly();
    EXPECT_EQ(manager().getNewOrderId("12"), 4);
    EXPECT_EQ(manager().getNewOrderId("77"), -1);
}

TEST_P(TreePlacesTest, TheSystemBranchDoesNotCountAsTheLast) {
    orders({1, 2});
    page("aa.en.99").order(99).insertInDesignOnly();
    EXPECT_EQ(manager().getNewOrderId("aa.en.03"), 3);
}

TEST_P(TreePlacesTest, TheSystemBranchHasItsFixedOrder) {
    orders({1, 2});
    EXPECT_EQ(manager().getNewOrderId("aa.en.99"), 99);
    EXPECT_EQ(manager().getNewOrderId("aa.en.01.99"), 99);
}

TEST_P(TreePlacesTest, InTheSystemBranchAPageNumberedNinetyNineIsOrderedLikeAnyOther) {
    page("aa.en.99.01").order(4).insertInDesignOnly();
    EXPECT_EQ(manager().getNewOrderId("aa.en.99.99"), 5);
}

TEST_P(TreePlacesTest, ALastOrderOfNinetySevenIsFollowedByNinetyEight) {
    orders({97});
    EXPECT_EQ(manager().getNewOrderId("aa.en.02"), 98);
}

TEST_P(TreePlacesTest, BehindTheHighestOrderAGapIsFilled) {
    orders({1, 2, 4, 98});
    EXPECT_EQ(manager().getNewOrderId("aa.en.05"), 3);
}

TEST_P(TreePlacesTest, TheScanForAGapStopsAtADoubledOrder) {
    orders({1, 1, 2, 98});
    EXPECT_EQ(manager().getNewOrderId("aa.en.05"), 2);
}

TEST_P(TreePlacesTest, TheScanCountsFromOne) {
    orders({98});
    EXPECT_EQ(manager().getNewOrderId("aa.en.02"), 1);
    page("aa.en.05").order(0).insertInDesignOnly();
    EXPECT_EQ(manager().getNewOrderId("aa.en.02"), 1);
}

TEST_P(TreePlacesTest, FullSiblingsHaveNoOrderLeft) {
    childrenUpTo("aa.en", 98);
    EXPECT_EQ(manager().getNewOrderId("aa.en.01"), -1);
    child("aa.en", 99);
    EXPECT_EQ(manager().getNewOrderId("aa.en.01"), -1);
}

TEST_P(TreePlacesTest, InTheSystemBranchTheLastOrderIsNinetyNine) {
    childrenUpTo("aa.en.99", 98);
    EXPECT_EQ(manager().getNewOrderId("aa.en.99.01"), 99);
    child("aa.en.99", 99);
    EXPECT_EQ(manager().getNewOrderId("aa.en.99.01"), 99) << "the order 99 is looked for below 99 alone";
}

TEST_P(TreePlacesTest, ARootHasNoSiblingsToJoin) {
    page("aa.en").id(10).insertInDesignOnly();
    EXPECT_EQ(manager().getNewOrderId("10"), -1);
    EXPECT_EQ(manager().getNewOrderId("aa.en"), -1);
    EXPECT_EQ(manager().getNewOrderId("aa.en.1"), -1);
    EXPECT_EQ(manager().getNewOrderId(""), -1);
    EXPECT_EQ(manager().getNewOrderId("-5"), -1);
    EXPECT_EQ(manager().getNewOrderId("1.5"), -1);
    EXPECT_EQ(manager().getNewOrderId(std::string(100 * 1024, 'a')), -1);
}

TEST_P(TreePlacesTest, TheNodeNeedNotBeThere) {
    EXPECT_EQ(manager().getNewOrderId("zz.yy.01"), 1);
    EXPECT_EQ(manager().getNewOrderId("aa.en'01"), 1);
}

TEST_P(TreePlacesTest, AFailureNamesTheOperation) {
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(errorOf([&] { manager().getPageCount(); }).starts_with(chain({"getPageCount !"})));
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(errorOf([&] { manager().countPages("12"); }).starts_with(chain({"countPages !"})));
    EXPECT_TRUE(errorOf([&] { manager().getNewChild("12"); }).starts_with(chain({"getNewChild !"})));
    EXPECT_TRUE(
        errorOf([&] { manager().getNewOrderId("aa.en.01"); }).starts_with(chain({"getNewOrderId !"})));
}

}  // namespace
}  // namespace torvex::test
