// checkOut and checkIn; what concerns all four operations on single pages.

#include <gmock/gmock.h>

#include "support/InterruptedConnection.h"
#include "support/WorkflowTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// All of the four, by name.
struct PageOperation {
    const char* name;
    std::string (*run)(cManager&, const std::string&);
};
const std::vector<PageOperation> pageOperations = {
    {"checkOut", [](cManager& manager, const std::string& page) { return manager.checkOut(page); }},
    {"checkIn", [](cManager& manager, const std::string& page) { return manager.checkIn(page); }},
    {"approvePage", [](cManager& manager, const std::string& page) { return manager.approvePage(page, 1); }},
    {"deletePage", [](cManager& manager, const std::string& page) { return manager.deletePage(page, 1); }},
};

class Workflow : public WorkflowTest {};
INSTANTIATE_TEST_SUITE_P(Engines, Workflow, bothEngines(), engineName);

// ---- All four ----

TEST_P(Workflow, NobodyWhoIsNotLoggedInChangesAPage) {
    const PageId modified = inState("M000");
    actAsNobody();
    for (const auto& [name, run] : pageOperations) {
        SCOPED_TRACE(name);
        expectRefusal(modified, "-10", [&, run = run] { return run(manager(), ident(modified)); });
    }
}

TEST_P(Workflow, WhetherSomebodyIsLoggedInIsAskedBeforeThePage) {
    actAsNobody();
    for (const auto& [name, run] : pageOperations) EXPECT_EQ(run(manager(), "4711"), "-10") << name;
}

TEST_P(Workflow, WhetherSomebodyIsLoggedInIsAskedBeforeTheState) {
    const PageId approved = inState("M101", bert);
    actAsNobody();
    for (const auto& [name, run] : pageOperations) EXPECT_EQ(run(manager(), ident(approved)), "-10") << name;
}

TEST_P(Workflow, APageThatIsNotThereIsMinusNinetyNine) {
    const PageId other = inState("M000");
    for (const auto& [name, run] : pageOperations) {
        SCOPED_TRACE(name);
        expectRefusal(other, "-99", [&, run = run] { return run(manager(), "4711"); });
        expectRefusal(other, "-99", [&, run = run] { return run(manager(), "aa.en.77"); });
    }
}

TEST_P(Workflow, TextsThatAreNoPageAreMinusNinetyNine) {
    const PageId other = inState("M000");
    for (const std::string& bad : badIdentifiers()) {
        SCOPED_TRACE(bad.substr(0, 40));
        for (const auto& [name, run] : pageOperations) {
            SCOPED_TRACE(name);
            expectRefusal(other, "-99", [&, run = run] { return run(manager(), bad); });
        }
    }
}

TEST_P(Workflow, APageThatIsOnlyLiveIsMinusNinetyNine) {
    const PageId live = page("aa.en.50").insertInLiveOnly();
    for (const auto& [name, run] : pageOperations) EXPECT_EQ(run(manager(), ident(live)), "-99") << name;
}

TEST_P(Workflow, ARowWithoutAPositiveNumberIsNoPage) {
    page("aa.en.50").id(0).set("editStatus", "M").insertInDesignOnly();
    page("aa.en.51").id(-3).set("editStatus", "M").insertInDesignOnly();
    for (const auto& [name, run] : pageOperations) {
        for (const auto* bad : {"0", "-3", "aa.en.50", "aa.en.51"}) {
            EXPECT_EQ(run(manager(), bad), "-99") << name << ' ' << bad;
        }
    }
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(Workflow, APageIsFoundByItsNodeInAnyCaseWithBlanksAroundIt) {
    for (const auto& [name, run] : pageOperations) {
        const PageId modified = inState("M000");
        const std::string node =
            cell("select nodeId from TORVEX_PAGES_DESIGN where pageId = " + ident(modified));
        EXPECT_THAT(run(manager(), "  " + std::string("AA") + node.substr(2) + " "), StartsWith("M")) << name;
    }
}

TEST_P(Workflow, APageIsFoundByItsNumberWithBlanksAroundIt) {
    for (const auto& [name, run] : pageOperations) {
        const PageId modified = inState("M000");
        EXPECT_THAT(run(manager(), "  " + ident(modified) + " "), StartsWith("M")) << name;
    }
}

TEST_P(Workflow, OnlyThePageThatIsNamedIsChanged) {
    const PageId other = inState("M100", bert);
    const PageId below = page("aa.en.01.01").set("editStatus", "M").insertInDesignOnly();
    const std::string otherRow = rowOf(other);
    const std::string belowRow = rowOf(below);
    for (const auto& [name, run] : pageOperations) {
        EXPECT_THAT(run(manager(), ident(inState("M000"))), StartsWith("M")) << name;
    }
    EXPECT_EQ(rowOf(other), otherRow);
    EXPECT_EQ(rowOf(below), belowRow);
}

TEST_P(Workflow, ADatabaseThatFailsIsAnErrorWithTheOperationsLine) {
    drop("TORVEX_PAGES_DESIGN");
    for (const auto& [name, run] : pageOperations) {
        const std::string line = name + std::string(" !");
        EXPECT_THAT(errorOf([&, run = run] { run(manager(), "12"); }), StartsWith(chain({line}))) << name;
        EXPECT_THAT(errorOf([&, run = run] { run(manager(), "aa.en.01"); }),
                    StartsWith(chain({line, "getPageId !"})))
            << name;
    }
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(Workflow, ATrailThatCanNotBeWrittenIsAnErrorAfterTheChange) {
    const PageId modified = inState("M000");
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_THAT(errorOf([&] { manager().checkOut(ident(modified)); }),
                StartsWith(chain({"checkOut !", "addAuditTrail !"})));
    EXPECT_EQ(statuses(modified), "M100");
}

TEST_P(Workflow, AnAuthorWhoComesInBetweenIsSeen) {
    const PageId wanted = inState("M000");
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute(
            "update TORVEX_PAGES_DESIGN set lockStatus = 1, lockedBy = 8 where pageId = ? and lockStatus = 0",
            {wanted});
    };
    manager().connect(interrupted);
    for (const auto& [name, run] : pageOperations) {
        EXPECT_EQ(run(manager(), ident(wanted)), "-1") << name;
        EXPECT_EQ(statuses(wanted), "M100") << name;
        connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 0, lockedBy = null");
    }
    EXPECT_EQ(interrupted.changesTried, 4);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(Workflow, AHolderWhoChangesInBetweenIsSeen) {
    const PageId mine = inState("M100", anna);
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute("update TORVEX_PAGES_DESIGN set lockedBy = 8 where pageId = ?", {mine});
    };
    manager().connect(interrupted);
    EXPECT_EQ(manager().checkIn(ident(mine)), "-1");
    EXPECT_EQ(statuses(mine), "M100");
}

TEST_P(Workflow, AnApprovalInBetweenIsSeen) {
    const PageId wanted = inState("M000");
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute("update TORVEX_PAGES_DESIGN set approveStatus = 1 where pageId = ?", {wanted});
    };
    manager().connect(interrupted);
    EXPECT_EQ(manager().checkOut(ident(wanted)), "-2");
    EXPECT_EQ(statuses(wanted), "M001");
}

TEST_P(Workflow, AChangeInBetweenThatStandsInNobodysWayIsBuiltUpon) {
    const PageId wanted = inState("N000");
    autoApprove(true);
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute("update TORVEX_PAGES_DESIGN set editStatus = 'M' where pageId = ?", {wanted});
    };
    manager().connect(interrupted);
    EXPECT_EQ(manager().checkIn(ident(wanted)), "M001");
    EXPECT_EQ(statuses(wanted), "M001");
    EXPECT_EQ(interrupted.changesTried, 2);
    EXPECT_EQ(auditTrail(), annasLine(wanted, "check in - approve"));
}

TEST_P(Workflow, APageThatIsRemovedInBetweenIsMinusNinetyNine) {
    const PageId wanted = inState("M000");
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {wanted});
    };
    manager().connect(interrupted);
    EXPECT_EQ(manager().checkOut(ident(wanted)), "-99");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(Workflow, APageThatIsNeverTheSameTwiceIsAnErrorInTheEnd) {
    const PageId wanted = inState("M000");
    int holder = 100;
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute("update TORVEX_PAGES_DESIGN set lockedBy = ? where pageId = ?",
                             {++holder, wanted});
    };
    manager().connect(interrupted);
    EXPECT_EQ(errorOf([&] { manager().checkOut(ident(wanted)); }),
              chain({"checkOut !"}) + "the page is changed by others all the time");
    EXPECT_EQ(statuses(wanted), "M000");
}

// ---- checkOut ----

class CheckOut : public WorkflowTest {};
INSTANTIATE_TEST_SUITE_P(Engines, CheckOut, bothEngines(), engineName);

TEST_P(CheckOut, TakesAFreePageInEveryState) {
    for (const auto* state : {"N000", "M000", "P000"}) {
        const PageId free = inState(state);
        const std::string taken = state[0] + std::string("100");
        EXPECT_EQ(manager().checkOut(ident(free)), taken);
        EXPECT_EQ(rowOf(free), taken + " locked 7 2026-06-15T12:00:00 deleted - - approved - - mail 0");
    }
}

TEST_P(CheckOut, CancelsAMarkForDeletion) {
    for (const auto* state : {"N010", "M010", "P010"}) {
        const PageId marked = inState(state);
        const std::string taken = state[0] + std::string("100");
        EXPECT_EQ(manager().checkOut(ident(marked)), taken);
        EXPECT_EQ(rowOf(marked), taken + " locked 7 2026-06-15T12:00:00 deleted - - approved - - mail 0");
    }
}

TEST_P(CheckOut, KeepsWhoApprovedAnEarlierVersion) {
    const PageId free = inState("P000");
    connection().execute("update TORVEX_PAGES_DESIGN set approvedBy = 8, approvingDate = ? where pageId = ?",
                         {earlier, free});
    EXPECT_EQ(manager().checkOut(ident(free)), "P100");
    EXPECT_EQ(rowOf(free),
              "P100 locked 7 2026-06-15T12:00:00 deleted - - approved 8 2026-01-02T03:04:05 mail 0");
}

TEST_P(CheckOut, LeavesALineInTheTrail) {
    const PageId free = inState("M000");
    manager().checkOut(ident(free));
    EXPECT_EQ(auditTrail(), annasLine(free, "check out"));
}

TEST_P(CheckOut, TheBufferFollows) {
    const PageId marked = inState("M010");
    scribbleOnBuffer();
    manager().checkOut(ident(marked));
    EXPECT_EQ(bufferText(), "lock 1 'Anna Author' now, delete 0 '' reset, approve 0 '?' ?");
}

TEST_P(CheckOut, ASecondOneByTheSameLoginWritesNothing) {
    const PageId mine = inState("M100");
    const std::string row = rowOf(mine);
    EXPECT_EQ(manager().checkOut(ident(mine)), "M100");
    EXPECT_EQ(rowOf(mine), row);
}

TEST_P(CheckOut, ASecondOneLeavesALineInTheTrailAllTheSame) {
    const PageId mine = inState("M100");
    manager().checkOut(ident(mine));
    EXPECT_EQ(auditTrail(), annasLine(mine, "check out"));
}

TEST_P(CheckOut, AfterASecondOneTheBufferHoldsTheStoredDate) {
    const PageId mine = inState("M100");
    scribbleOnBuffer();
    manager().checkOut(ident(mine));
    EXPECT_EQ(bufferText(), "lock 1 'Anna Author' earlier, delete 0 '' reset, approve 0 '?' ?");
}

TEST_P(CheckOut, ASecondOneAnswersWithTheStatusesAsTheyStand) {
    const PageId mine = inState("M110");
    const std::string row = rowOf(mine);
    EXPECT_EQ(manager().checkOut(ident(mine)), "M110");
    EXPECT_EQ(rowOf(mine), row);
}

TEST_P(CheckOut, ALockWithoutADateLeavesTheBuffersDateReset) {
    const PageId mine = inState("M100");
    connection().execute("update TORVEX_PAGES_DESIGN set lockingDate = null");
    EXPECT_EQ(manager().checkOut(ident(mine)), "M100");
    EXPECT_EQ(manager().pgLockingDate(), (DateTime{1900, 1, 1, 0, 0, 0}));
}

TEST_P(CheckOut, APageOfAnotherIsMinusOne) {
    for (const auto* state : {"N100", "M100", "P100", "M110"}) {
        const PageId theirs = inState(state, bert);
        expectRefusal(theirs, "-1", [&] { return manager().checkOut(ident(theirs)); });
    }
}

TEST_P(CheckOut, APageThatIsLockedByNobodyKnownIsMinusOne) {
    const PageId stray = inState("M100");
    connection().execute("update TORVEX_PAGES_DESIGN set lockedBy = null");
    expectRefusal(stray, "-1", [&] { return manager().checkOut(ident(stray)); });
}

TEST_P(CheckOut, AnApprovedPageIsMinusTwo) {
    for (const auto* state : {"M001", "P011", "N011"}) {
        const PageId approved = inState(state);
        expectRefusal(approved, "-2", [&] { return manager().checkOut(ident(approved)); });
    }
}

TEST_P(CheckOut, AnApprovedPageIsMinusTwoEvenIfTheCallerHoldsIt) {
    const PageId approved = inState("M101", anna);
    expectRefusal(approved, "-2", [&] { return manager().checkOut(ident(approved)); });
}

TEST_P(CheckOut, ThatThePageIsApprovedComesBeforeThatAnotherHoldsIt) {
    const PageId approved = inState("M101", bert);
    expectRefusal(approved, "-2", [&] { return manager().checkOut(ident(approved)); });
}

TEST_P(CheckOut, NeverAsksForAMail) {
    autoApprove(true);
    for (const Value& setting : {Value(), Value(0), Value(1), Value(2), Value("1")}) {
        mails(setting);
        const PageId free = inState("M000");
        EXPECT_EQ(manager().checkOut(ident(free)), "M100");
        EXPECT_EQ(mailFlag(free), 0);
    }
}

TEST_P(CheckOut, FoldersAndApplicationsAreTakenAsPagesAre) {
    for (const auto* type : {"F", "A"}) {
        const PageId free = inState("M000");
        connection().execute("update TORVEX_PAGES_DESIGN set type = ? where pageId = ?",
                             {std::string_view(type), free});
        EXPECT_EQ(manager().checkOut(ident(free)), "M100");
    }
}

TEST_P(CheckOut, ARowWhoseStatusesWereNeverSetIsFree) {
    const PageId bare = page("aa.en.50")
                            .set("lockStatus", Value())
                            .set("deleteStatus", Value())
                            .set("approveStatus", Value())
                            .set("editStatus", "N")
                            .insertInDesignOnly();
    EXPECT_EQ(manager().checkOut(ident(bare)), "N100");
    EXPECT_EQ(statuses(bare), "N100");
}

// ---- checkIn ----

class CheckIn : public WorkflowTest {};
INSTANTIATE_TEST_SUITE_P(Engines, CheckIn, bothEngines(), engineName);

TEST_P(CheckIn, GivesThePageBack) {
    for (const auto* state : {"N100", "M100", "P100"}) {
        const PageId mine = inState(state);
        const std::string free = state[0] + std::string("000");
        EXPECT_EQ(manager().checkIn(ident(mine)), free);
        EXPECT_EQ(rowOf(mine), free + " locked - - deleted - - approved - - mail 0");
    }
}

TEST_P(CheckIn, APageThatIsNotLockedPasses) {
    for (const auto* state : {"N000", "M000", "P000"}) {
        const PageId free = inState(state);
        EXPECT_EQ(manager().checkIn(ident(free)), state);
        EXPECT_EQ(auditTrail().back(), annasLine(free, "check in").front());
    }
}

TEST_P(CheckIn, TakesAMarkForDeletionOffButKeepsWhoMadeIt) {
    const PageId marked = inState("M110");
    EXPECT_EQ(manager().checkIn(ident(marked)), "M000");
    EXPECT_EQ(rowOf(marked), "M000 locked - - deleted 8 2026-01-02T03:04:05 approved - - mail 0");
}

TEST_P(CheckIn, LeavesALineInTheTrail) {
    const PageId mine = inState("M100");
    manager().checkIn(ident(mine));
    EXPECT_EQ(auditTrail(), annasLine(mine, "check in"));
}

TEST_P(CheckIn, TheBufferFollows) {
    const PageId mine = inState("M110");
    scribbleOnBuffer();
    manager().checkIn(ident(mine));
    EXPECT_EQ(bufferText(), "lock 0 '' reset, delete 0 '?' ?, approve 9 '?' ?");
}

TEST_P(CheckIn, AnApprovedPageIsMinusNinetyNine) {
    for (const auto* state : {"M001", "M101", "P011"}) {
        const PageId approved = inState(state);
        expectRefusal(approved, "-99", [&] { return manager().checkIn(ident(approved)); });
    }
}

TEST_P(CheckIn, ThatThePageIsApprovedComesBeforeThatAnotherHoldsIt) {
    const PageId approved = inState("M101", bert);
    expectRefusal(approved, "-99", [&] { return manager().checkIn(ident(approved)); });
}

TEST_P(CheckIn, APageOfAnotherIsMinusOne) {
    autoApprove(true);
    for (const auto* state : {"N100", "M100", "M110"}) {
        const PageId theirs = inState(state, bert);
        expectRefusal(theirs, "-1", [&] { return manager().checkIn(ident(theirs)); });
    }
}

TEST_P(CheckIn, ApprovesAModifiedPageWhereThatIsTheRule) {
    for (const Value& setting : {Value(true), Value(1), Value("True")}) {
        autoApprove(setting);
        const PageId mine = inState("M100");
        EXPECT_EQ(manager().checkIn(ident(mine)), "M001");
        EXPECT_EQ(rowOf(mine), "M001 locked - - deleted - - approved 7 2026-06-15T12:00:00 mail 0");
    }
}

TEST_P(CheckIn, AnApprovalByItHasItsOwnWordInTheTrail) {
    autoApprove(true);
    const PageId mine = inState("M100");
    manager().checkIn(ident(mine));
    EXPECT_EQ(auditTrail(), annasLine(mine, "check in - approve"));
}

TEST_P(CheckIn, AfterAnApprovalByItTheBufferHoldsTheApproversNumber) {
    autoApprove(true);
    const PageId mine = inState("M100");
    scribbleOnBuffer();
    manager().checkIn(ident(mine));
    EXPECT_EQ(bufferText(), "lock 0 '' reset, delete 0 '?' ?, approve 1 '7' now");
}

TEST_P(CheckIn, ANewOrPublishedPageIsNotApprovedByIt) {
    autoApprove(true);
    for (const auto* state : {"N100", "P100"}) {
        const PageId mine = inState(state);
        const std::string free = state[0] + std::string("000");
        EXPECT_EQ(manager().checkIn(ident(mine)), free);
        EXPECT_EQ(rowOf(mine), free + " locked - - deleted - - approved - - mail 0");
        EXPECT_EQ(auditTrail().back(), annasLine(mine, "check in").front());
    }
}

TEST_P(CheckIn, NothingIsApprovedByItWhereThatIsNotTheRule) {
    for (const Value& setting : {Value(), Value(false), Value(0), Value("False"), Value("")}) {
        autoApprove(setting);
        EXPECT_EQ(manager().checkIn(ident(inState("M100"))), "M000");
    }
}

TEST_P(CheckIn, AsksForAMailAboutAModifiedPageWhereMailsAreWanted) {
    const auto flagAfter = [&](const Value& setting, const char* state) {
        mails(setting);
        const PageId mine = inState(state);
        manager().checkIn(ident(mine));
        return mailFlag(mine);
    };
    for (const bool approves : {false, true}) {
        autoApprove(approves);
        for (const Value& setting : {Value(1), Value(2), Value("1")}) {
            EXPECT_EQ(flagAfter(setting, "M100"), 1);
            EXPECT_EQ(flagAfter(setting, "M010"), 1);
            EXPECT_EQ(flagAfter(setting, "N100"), 0);
            EXPECT_EQ(flagAfter(setting, "P100"), 0);
        }
        for (const Value& setting : {Value(), Value(0), Value(-1)}) {
            EXPECT_EQ(flagAfter(setting, "M100"), 0);
            EXPECT_EQ(flagAfter(setting, "N100"), 0);
        }
    }
}

}  // namespace
}  // namespace torvex::test
