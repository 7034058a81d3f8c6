// approvePage and deletePage.

#include "support/WorkflowTest.h"

namespace torvex::test {
namespace {

// ---- approvePage ----

class ApprovePage : public WorkflowTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ApprovePage, bothEngines(), engineName);

TEST_P(ApprovePage, ApprovesAModifiedPage) {
    const PageId modified = inState("M000");
    EXPECT_EQ(manager().approvePage(ident(modified), 1), "M001");
    EXPECT_EQ(rowOf(modified), "M001 locked - - deleted - - approved 7 2026-06-15T12:00:00 mail 0");
    EXPECT_EQ(auditTrail(), annasLine(modified, "approve"));
}

TEST_P(ApprovePage, ApprovesWhatIsMarkedForDeletionWhateverItsEdits) {
    for (const auto* state : {"N010", "M010", "P010"}) {
        const PageId marked = inState(state);
        const std::string approved = state[0] + std::string("011");
        EXPECT_EQ(manager().approvePage(ident(marked), 1), approved);
        EXPECT_EQ(rowOf(marked), approved +
                                     " locked - - deleted 8 2026-01-02T03:04:05 approved 7 "
                                     "2026-06-15T12:00:00 mail 0");
        EXPECT_EQ(auditTrail().back(), annasLine(marked, "approve").front());
    }
}

TEST_P(ApprovePage, MayBeDoneAgain) {
    const PageId approved = inState("M001");
    EXPECT_EQ(manager().approvePage(ident(approved), 1), "M001");
    EXPECT_EQ(rowOf(approved), "M001 locked - - deleted - - approved 7 2026-06-15T12:00:00 mail 0");
}

TEST_P(ApprovePage, NothingToApproveIsMinusTwo) {
    for (const auto* state : {"N000", "P000", "N001", "P001"}) {
        const PageId page = inState(state);
        expectRefusal(page, "-2", [&] { return manager().approvePage(ident(page), 1); });
    }
}

TEST_P(ApprovePage, ALockedPageIsMinusOneEvenForItsHolder) {
    for (const int holder : {anna, bert}) {
        for (const auto* state : {"M100", "N110", "P110", "M101"}) {
            const PageId locked = inState(state, holder);
            expectRefusal(locked, "-1", [&] { return manager().approvePage(ident(locked), 1); });
        }
    }
}

TEST_P(ApprovePage, ThatThereIsNothingToApproveComesBeforeTheLock) {
    for (const int holder : {anna, bert}) {
        const PageId locked = inState("P100", holder);
        expectRefusal(locked, "-2", [&] { return manager().approvePage(ident(locked), 1); });
    }
}

TEST_P(ApprovePage, TakesAnApprovalBackAndNotesWhoDidIt) {
    for (const auto* state : {"M001", "N011", "P011", "P001"}) {
        const PageId approved = inState(state);
        const std::string withdrawn = std::string(state).substr(0, 3) + "0";
        EXPECT_EQ(manager().approvePage(ident(approved), 0), withdrawn);
        EXPECT_EQ(statuses(approved), withdrawn);
        EXPECT_EQ(rowOf(approved).substr(rowOf(approved).find("approved")),
                  "approved 7 2026-06-15T12:00:00 mail 0");
        EXPECT_EQ(auditTrail().back(), annasLine(approved, "unapprove").front());
    }
}

TEST_P(ApprovePage, TakingBackNeedsNothingToApprove) {
    for (const auto* state : {"N000", "M000", "P000", "P010"}) {
        EXPECT_EQ(manager().approvePage(ident(inState(state)), 0), state);
    }
}

TEST_P(ApprovePage, TakingBackFromALockedPageIsMinusOneEvenForItsHolder) {
    for (const int holder : {anna, bert}) {
        for (const auto* state : {"M101", "N100"}) {
            const PageId locked = inState(state, holder);
            expectRefusal(locked, "-1", [&] { return manager().approvePage(ident(locked), 0); });
        }
    }
}

TEST_P(ApprovePage, AnyOtherStateTakesBackAndIsStoredAsItStands) {
    const PageId modified = inState("M001");
    EXPECT_EQ(manager().approvePage(ident(modified), 2), "M002");
    EXPECT_EQ(statuses(modified), "M002");
    EXPECT_EQ(auditTrail(), annasLine(modified, "unapprove"));
    EXPECT_EQ(manager().checkOut(ident(modified)), "M100");
}

TEST_P(ApprovePage, TheBufferFollows) {
    scribbleOnBuffer();
    manager().approvePage(ident(inState("M000")), 1);
    EXPECT_EQ(bufferText(), "lock 0 '?' ?, delete 9 '?' ?, approve 1 '?' ?");
    scribbleOnBuffer();
    manager().approvePage(ident(inState("M001")), 0);
    EXPECT_EQ(bufferText(), "lock 0 '?' ?, delete 9 '?' ?, approve 0 '?' ?");
}

TEST_P(ApprovePage, AsksForAMailWhereMailsAreWanted) {
    const auto flagAfter = [&](const Value& setting, const char* state, int approve) {
        mails(setting);
        const PageId page = inState(state);
        manager().approvePage(ident(page), approve);
        return mailFlag(page);
    };
    for (const Value& setting : {Value(1), Value(2)}) {
        EXPECT_EQ(flagAfter(setting, "M000", 1), 1);
        EXPECT_EQ(flagAfter(setting, "P010", 1), 1);
        EXPECT_EQ(flagAfter(setting, "M001", 0), 1);
        EXPECT_EQ(flagAfter(setting, "P011", 0), 1);
        EXPECT_EQ(flagAfter(setting, "P001", 0), 0);
        EXPECT_EQ(flagAfter(setting, "N000", 0), 0);
    }
    for (const Value& setting : {Value(), Value(0), Value(-1)}) {
        EXPECT_EQ(flagAfter(setting, "M000", 1), 0);
        EXPECT_EQ(flagAfter(setting, "P010", 1), 0);
        EXPECT_EQ(flagAfter(setting, "M001", 0), 0);
    }
}

// ---- deletePage ----

class DeletePage : public WorkflowTest {};
INSTANTIATE_TEST_SUITE_P(Engines, DeletePage, bothEngines(), engineName);

TEST_P(DeletePage, MarksAFreePage) {
    for (const auto* state : {"N000", "M000", "P000", "M010"}) {
        const PageId free = inState(state);
        const std::string marked = state[0] + std::string("010");
        EXPECT_EQ(manager().deletePage(ident(free), 1), marked);
        EXPECT_EQ(rowOf(free), marked + " locked - - deleted 7 2026-06-15T12:00:00 approved - - mail 0");
        EXPECT_EQ(auditTrail().back(), annasLine(free, "delete", "Marked for deletion").front());
    }
}

TEST_P(DeletePage, MarkingClearsTheCallersLock) {
    const PageId mine = inState("M100");
    EXPECT_EQ(manager().deletePage(ident(mine), 1), "M010");
    EXPECT_EQ(rowOf(mine), "M010 locked - - deleted 7 2026-06-15T12:00:00 approved - - mail 0");
}

TEST_P(DeletePage, EveryStateButZeroMarks) {
    for (const int state : {1, 2, -1}) {
        EXPECT_EQ(manager().deletePage(ident(inState("M000")), state), "M010") << state;
        EXPECT_EQ(auditTrail().back().find("|delete|Marked for deletion") != std::string::npos, true);
    }
}

TEST_P(DeletePage, TheRowStaysInTheTree) {
    const PageId page = inState("M000");
    manager().deletePage(ident(page), 1);
    EXPECT_TRUE(manager().isPage(ident(page), "D"));
}

TEST_P(DeletePage, TakesTheMarkBack) {
    for (const auto* state : {"N010", "M010", "P010"}) {
        const PageId marked = inState(state);
        const std::string free = state[0] + std::string("000");
        EXPECT_EQ(manager().deletePage(ident(marked), 0), free);
        EXPECT_EQ(rowOf(marked), free + " locked - - deleted - - approved - - mail 0");
        EXPECT_EQ(auditTrail().back(), annasLine(marked, "undelete").front());
    }
}

TEST_P(DeletePage, TakingTheMarkBackUnlocksButLeavesTheNameOnTheLock) {
    const PageId mine = inState("M110");
    EXPECT_EQ(manager().deletePage(ident(mine), 0), "M000");
    EXPECT_EQ(rowOf(mine), "M000 locked 7 2026-01-02T03:04:05 deleted - - approved - - mail 0");
}

TEST_P(DeletePage, APageWithoutAMarkCanBeUnmarked) {
    EXPECT_EQ(manager().deletePage(ident(inState("P000")), 0), "P000");
    EXPECT_EQ(manager().deletePage(ident(inState("M100")), 0), "M000");
}

TEST_P(DeletePage, AnApprovedPageIsMinusTwo) {
    for (const int state : {0, 1}) {
        for (const auto* approved : {"M001", "P011", "M101"}) {
            const PageId page = inState(approved);
            expectRefusal(page, "-2", [&] { return manager().deletePage(ident(page), state); });
        }
    }
}

TEST_P(DeletePage, APageOfAnotherIsMinusOne) {
    for (const int state : {0, 1}) {
        const PageId page = inState("M100", bert);
        expectRefusal(page, "-1", [&] { return manager().deletePage(ident(page), state); });
    }
}

TEST_P(DeletePage, ThatThePageIsApprovedComesBeforeThatAnotherHoldsIt) {
    for (const int state : {0, 1}) {
        const PageId page = inState("M101", bert);
        expectRefusal(page, "-2", [&] { return manager().deletePage(ident(page), state); });
    }
}

TEST_P(DeletePage, TheBufferFollowsAMark) {
    scribbleOnBuffer();
    manager().deletePage(ident(inState("M100")), 1);
    EXPECT_EQ(bufferText(), "lock 0 '' reset, delete 1 'Anna Author' now, approve 0 '?' ?");
}

TEST_P(DeletePage, OnlyTheMarkersNameAndDateLeaveTheBufferWithTheMark) {
    scribbleOnBuffer();
    manager().deletePage(ident(inState("M010")), 0);
    EXPECT_EQ(bufferText(), "lock 9 '?' ?, delete 9 '' reset, approve 9 '?' ?");
}

TEST_P(DeletePage, AsksForAMailWhereMailsAreWanted) {
    const auto flagAfter = [&](const Value& setting, const char* state, int mark) {
        mails(setting);
        const PageId page = inState(state);
        manager().deletePage(ident(page), mark);
        return mailFlag(page);
    };
    for (const Value& setting : {Value(1), Value(2)}) {
        for (const auto* state : {"N000", "M000", "P100"}) EXPECT_EQ(flagAfter(setting, state, 1), 1);
        EXPECT_EQ(flagAfter(setting, "M010", 0), 1);
        EXPECT_EQ(flagAfter(setting, "N010", 0), 0);
        EXPECT_EQ(flagAfter(setting, "P010", 0), 0);
    }
    for (const Value& setting : {Value(), Value(0), Value(-1)}) {
        EXPECT_EQ(flagAfter(setting, "M000", 1), 0);
        EXPECT_EQ(flagAfter(setting, "M010", 0), 0);
    }
}

TEST_P(DeletePage, AutoApprovalDoesNotReachIt) {
    autoApprove(true);
    EXPECT_EQ(manager().deletePage(ident(inState("M100")), 1), "M010");
    EXPECT_EQ(manager().deletePage(ident(inState("M010")), 0), "M000");
}

}  // namespace
}  // namespace torvex::test
