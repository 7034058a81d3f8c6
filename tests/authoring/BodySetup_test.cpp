// saveBodySetup and clearBody.

#include "support/BodiesTest.h"

namespace torvex::test {
namespace {

// ---- saveBodySetup ----

class SaveBodySetup : public BodiesTest {
  protected:
    std::string save(PageId pageId, int bodyId, int type, int feedId) {
        return manager().saveBodySetup(ident(pageId), bodyId, type, feedId);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SaveBodySetup, bothEngines(), engineName);

TEST_P(SaveBodySetup, ChangesTheKindAndLeavesTheText) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    designBody(edited, 2, "text");
    EXPECT_EQ(save(edited, 2, 3, 15), "0");
    EXPECT_EQ(designBodyOf(edited, 2), "3|15|text");
    EXPECT_EQ(auditTrail(), std::vector<std::string>{
                                annasLine(edited, "aa.en.01", "save body", "Body setup 2 has been updated")});
}

TEST_P(SaveBodySetup, ABodyThatIsNotThereIsAddedWithoutAText) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(save(edited, 4, 2, 9), "0");
    EXPECT_EQ(designBodyOf(edited, 4), "2|9|");
}

TEST_P(SaveBodySetup, TakesAMarkAndAnApprovalBack) {
    const PageId edited = marked("aa.en.01").set("lockStatus", 0).insertInDesignOnly();
    EXPECT_EQ(save(edited, 1, 1, 0), "0");
    EXPECT_EQ(pageState(edited), std::string("M000") + editedByAnna);
}

TEST_P(SaveBodySetup, NobodyLoggedInIsMinusTen) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    actAsNobody();
    expectRefusal("-10", [&] { return save(edited, 1, 2, 1); });
}

TEST_P(SaveBodySetup, APageThatIsNotThereIsMinusTwo) {
    expectRefusal("-2", [&] { return save(4711, 1, 2, 1); });
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-2", [&] { return manager().saveBodySetup(bad, 1, 2, 1); });
    }
}

TEST_P(SaveBodySetup, APageThatAnotherHoldsIsMinusOne) {
    const PageId held = lockedBy("aa.en.01", bert).set("approveStatus", 1).insertInDesignOnly();
    expectRefusal("-1", [&] { return save(held, 1, 2, 1); });
}

TEST_P(SaveBodySetup, OnesOwnLockStays) {
    const PageId mine = lockedBy("aa.en.01", anna).insertInDesignOnly();
    EXPECT_EQ(save(mine, 1, 2, 1), "0");
    EXPECT_EQ(pageState(mine), std::string("M100") + editedByAnna);
}

TEST_P(SaveBodySetup, AFailureAtAnyStepLeavesEverythingAsItWas) {
    const PageId edited = marked("aa.en.01").set("lockStatus", 0).insertInDesignOnly();
    failEverywhere(
        "0", [&] { return save(edited, 1, 2, 1); }, [&] { EXPECT_TRUE(auditTrail().empty()); });
}

// ---- clearBody ----

class ClearBody : public BodiesTest {
  protected:
    std::string clear(PageId pageId, int bodyId) { return manager().clearBody(ident(pageId), bodyId); }
};
INSTANTIATE_TEST_SUITE_P(Engines, ClearBody, bothEngines(), engineName);

TEST_P(ClearBody, TakesTheBodyAway) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    designBody(edited, 1, "one");
    designBody(edited, 2, "two");
    EXPECT_EQ(clear(edited, 1), "0");
    EXPECT_EQ(designBodyOf(edited, 1), "none");
    EXPECT_EQ(designBodyOf(edited, 2), "1|0|two");
    EXPECT_EQ(auditTrail(),
              std::vector<std::string>{annasLine(edited, "aa.en.01", "save", "Body 1 has been cleared")});
}

TEST_P(ClearBody, TakesAMarkAndAnApprovalBack) {
    const PageId edited = marked("aa.en.01").set("lockStatus", 0).insertInDesignOnly();
    EXPECT_EQ(clear(edited, 1), "0");
    EXPECT_EQ(pageState(edited), std::string("M000") + editedByAnna);
}

TEST_P(ClearBody, NobodyLoggedInIsMinusTen) {
    const PageId edited = published("aa.en.01").insertInDesignOnly();
    designBody(edited, 1, "one");
    actAsNobody();
    expectRefusal("-10", [&] { return clear(edited, 1); });
}

TEST_P(ClearBody, APageThatIsNotThereIsMinusOne) {
    expectRefusal("-1", [&] { return clear(4711, 1); });
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-1", [&] { return manager().clearBody(bad, 1); });
    }
}

TEST_P(ClearBody, APageThatAnotherHoldsIsMinusTwo) {
    const PageId held = lockedBy("aa.en.01", bert).insertInDesignOnly();
    designBody(held, 1, "one");
    expectRefusal("-2", [&] { return clear(held, 1); });
}

TEST_P(ClearBody, AFailureAtAnyStepLeavesEverythingAsItWas) {
    const PageId edited = marked("aa.en.01").set("lockStatus", 0).insertInDesignOnly();
    designBody(edited, 1, "one");
    failEverywhere(
        "0", [&] { return clear(edited, 1); }, [&] { EXPECT_TRUE(auditTrail().empty()); });
}

}  // namespace
}  // namespace torvex::test
