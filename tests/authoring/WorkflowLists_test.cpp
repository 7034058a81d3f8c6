// approvePages, unlockPages and getLockList.

#include <gmock/gmock.h>

#include "support/InterruptedConnection.h"
#include "support/WorkflowTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

// ---- approvePages ----

class ApprovePages : public WorkflowTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ApprovePages, bothEngines(), engineName);

TEST_P(ApprovePages, ApprovesThemAll) {
    const PageId first = inState("M000");
    const PageId second = inState("P010");
    EXPECT_EQ(manager().approvePages(ident(first) + "," + ident(second)), "");
    EXPECT_EQ(statuses(first), "M001");
    EXPECT_EQ(statuses(second), "P011");
    EXPECT_THAT(auditTrail(),
                ElementsAre(annasLine(first, "approve").front(), annasLine(second, "approve").front()));
}

TEST_P(ApprovePages, AnswersWithThoseThatFailedInTheirOrder) {
    const PageId published = inState("P000");
    const PageId modified = inState("M000");
    const PageId locked = inState("M100");
    const std::string list =
        ident(published) + ", " + ident(modified) + "-" + ident(locked) + ",4711,AA.EN.77";
    EXPECT_EQ(manager().approvePages(list), ident(published) + "," + ident(locked) + ",4711,aa.en.77");
    EXPECT_EQ(statuses(published), "P000");
    EXPECT_EQ(statuses(modified), "M001");
    EXPECT_EQ(statuses(locked), "M100");
    EXPECT_EQ(auditTrail(), annasLine(modified, "approve"));
}

TEST_P(ApprovePages, AnEmptyListIsDone) {
    for (const auto* empty : {"", "  ", ",", "-", " , - "}) EXPECT_EQ(manager().approvePages(empty), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(ApprovePages, TakesNodesWithBlanksInThem) {
    const PageId modified = inState("M000");
    EXPECT_EQ(manager().approvePages(" AA. en.01 "), "");
    EXPECT_EQ(statuses(modified), "M001");
}

TEST_P(ApprovePages, APageThatFailsIsTriedAgainAfterAPassWithASuccess) {
    const PageId late = inState("N000");
    const PageId early = inState("M000");
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute("update TORVEX_PAGES_DESIGN set editStatus = 'M' where pageId = ?", {late});
    };
    manager().connect(interrupted);
    EXPECT_EQ(manager().approvePages(ident(late) + "," + ident(early)), "");
    EXPECT_EQ(statuses(late), "M001");
    EXPECT_EQ(statuses(early), "M001");
}

TEST_P(ApprovePages, APassWithoutASuccessEndsIt) {
    const PageId published = inState("P000");
    InterruptedConnection interrupted(connection());
    manager().connect(interrupted);
    EXPECT_EQ(manager().approvePages(ident(published)), ident(published));
    EXPECT_EQ(interrupted.queries, 1);
}

TEST_P(ApprovePages, ForNobodyAllOfThemAreLeft) {
    const PageId modified = inState("M000");
    actAsNobody();
    EXPECT_EQ(manager().approvePages(ident(modified) + "-aa.en.77"), ident(modified) + ",aa.en.77");
    EXPECT_EQ(statuses(modified), "M000");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(ApprovePages, ADatabaseThatFailsIsAnErrorThroughBoth) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT(errorOf([&] { manager().approvePages("12"); }),
                StartsWith(chain({"approvePages !", "approvePage !"})));
}

// ---- unlockPages ----

class UnlockPages : public WorkflowTest {};
INSTANTIATE_TEST_SUITE_P(Engines, UnlockPages, bothEngines(), engineName);

TEST_P(UnlockPages, LetsGoWhatTheCallerHolds) {
    const PageId mine = inState("M100");
    EXPECT_EQ(manager().unlockPages(ident(mine)), "");
    EXPECT_EQ(rowOf(mine), "M000 locked - - deleted - - approved - - mail 0");
    EXPECT_EQ(auditTrail(), annasLine(mine, "unlock"));
}

TEST_P(UnlockPages, WhatAnotherHoldsWhoIsOnlineStaysLocked) {
    const PageId theirs = inState("M100", bert);
    expectRefusal(theirs, ident(theirs), [&] { return manager().unlockPages(ident(theirs)); });
}

TEST_P(UnlockPages, WhatAnotherHoldsWhoHasLeftIsLetGo) {
    connection().execute("update TORVEX_LOGINS set sessionId = '' where loginId = 8");
    const PageId theirs = inState("M100", bert);
    EXPECT_EQ(manager().unlockPages(ident(theirs)), "");
    EXPECT_EQ(rowOf(theirs), "M000 locked - - deleted - - approved - - mail 0");
    EXPECT_EQ(auditTrail(), annasLine(theirs, "unlock"));
}

TEST_P(UnlockPages, WhatARemovedLoginHoldsIsLetGo) {
    const PageId orphan = inState("M100", 999);
    EXPECT_EQ(manager().unlockPages(ident(orphan)), "");
    EXPECT_EQ(statuses(orphan), "M000");
}

TEST_P(UnlockPages, WhatNobodyKnownHoldsIsLetGo) {
    const PageId stray = inState("M100");
    connection().execute("update TORVEX_PAGES_DESIGN set lockedBy = null");
    EXPECT_EQ(manager().unlockPages(ident(stray)), "");
    EXPECT_EQ(statuses(stray), "M000");
}

TEST_P(UnlockPages, WhereNothingIsLockedNothingIsDone) {
    for (const auto* state : {"N000", "M010", "M001"}) {
        const PageId free = inState(state);
        expectRefusal(free, "", [&] { return manager().unlockPages(ident(free)); });
    }
}

TEST_P(UnlockPages, WhatIsNoPageIsLeftOut) {
    EXPECT_EQ(manager().unlockPages("4711,aa.en.77,1.5,0,99999999999999999999,x'y,<b>"), "");
    EXPECT_EQ(manager().unlockPages(std::string(100 * 1024, 'a')), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(UnlockPages, AnEmptyListIsDone) {
    for (const auto* empty : {"", "  ", ",", "-", " , - "}) EXPECT_EQ(manager().unlockPages(empty), "");
}

TEST_P(UnlockPages, AnswersWithThoseThatStayLockedInTheirOrder) {
    const PageId theirs = inState("M100", bert);
    const PageId mine = inState("M100");
    const PageId alsoTheirs = inState("N100", bert);
    const PageId free = inState("M000");
    const std::string list = ident(theirs) + "- AA.EN. 02 ,," + ident(free) + ",AA.en.03,4711";
    EXPECT_EQ(manager().unlockPages(list), ident(theirs) + ",aa.en.03");
    EXPECT_EQ(statuses(mine), "M000");
    EXPECT_EQ(statuses(alsoTheirs), "N100");
    EXPECT_EQ(auditTrail(), annasLine(mine, "unlock"));
}

TEST_P(UnlockPages, APageThatIsListedTwiceIsUnlockedOnce) {
    const PageId mine = inState("M100");
    EXPECT_EQ(manager().unlockPages(ident(mine) + "," + ident(mine)), "");
    EXPECT_EQ(auditTrail(), annasLine(mine, "unlock"));
}

TEST_P(UnlockPages, KeepsTheMarkAndTakesAnApprovalOff) {
    const PageId mine = inState("M111");
    EXPECT_EQ(manager().unlockPages(ident(mine)), "");
    EXPECT_EQ(rowOf(mine),
              "M010 locked - - deleted 8 2026-01-02T03:04:05 approved 8 2026-01-02T03:04:05 mail 0");
}

TEST_P(UnlockPages, ApprovesAModifiedPageWhereThatIsTheRule) {
    autoApprove(true);
    const PageId modified = inState("M110");
    EXPECT_EQ(manager().unlockPages(ident(modified)), "");
    EXPECT_EQ(rowOf(modified),
              "M011 locked - - deleted 8 2026-01-02T03:04:05 approved 7 2026-06-15T12:00:00 mail 0");
    EXPECT_EQ(auditTrail(), annasLine(modified, "unlock"));
}

TEST_P(UnlockPages, ANewOrPublishedPageIsNotApprovedByIt) {
    autoApprove(true);
    for (const auto* state : {"N100", "P101"}) {
        const PageId mine = inState(state);
        EXPECT_EQ(manager().unlockPages(ident(mine)), "");
        EXPECT_EQ(statuses(mine), state[0] + std::string("000"));
    }
}

TEST_P(UnlockPages, AsksForAMailWhereMailsAreWanted) {
    const auto flagAfter = [&](const Value& setting, const char* state) {
        mails(setting);
        const PageId mine = inState(state);
        manager().unlockPages(ident(mine));
        return mailFlag(mine);
    };
    for (const bool approves : {false, true}) {
        autoApprove(approves);
        for (const Value& setting : {Value(1), Value(2)}) {
            EXPECT_EQ(flagAfter(setting, "M100"), 1);
            EXPECT_EQ(flagAfter(setting, "N110"), 1);
            EXPECT_EQ(flagAfter(setting, "P110"), 1);
            EXPECT_EQ(flagAfter(setting, "N100"), 0);
            EXPECT_EQ(flagAfter(setting, "P100"), 0);
        }
        for (const Value& setting : {Value(), Value(0), Value(-1)}) {
            EXPECT_EQ(flagAfter(setting, "M100"), 0);
            EXPECT_EQ(flagAfter(setting, "N110"), 0);
        }
    }
}

TEST_P(UnlockPages, TheBufferDoesNotFollow) {
    scribbleOnBuffer();
    const std::string buffer = bufferText();
    EXPECT_EQ(manager().unlockPages(ident(inState("M100"))), "");
    EXPECT_EQ(bufferText(), buffer);
}

TEST_P(UnlockPages, AHolderWhoCheckedInInBetweenLeavesNothingToDo) {
    const PageId mine = inState("M100");
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] {
        connection().execute("update TORVEX_PAGES_DESIGN set lockStatus = 0, lockedBy = null");
    };
    manager().connect(interrupted);
    EXPECT_EQ(manager().unlockPages(ident(mine)), "");
    EXPECT_EQ(mailFlag(mine), 5);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(UnlockPages, APageThatAnotherTookInBetweenStaysLocked) {
    const PageId mine = inState("M100");
    InterruptedConnection interrupted(connection());
    interrupted.beforeChange = [&] { connection().execute("update TORVEX_PAGES_DESIGN set lockedBy = 8"); };
    manager().connect(interrupted);
    EXPECT_EQ(manager().unlockPages(ident(mine)), ident(mine));
    EXPECT_EQ(statuses(mine), "M100");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(UnlockPages, ForNobodyWhatIsHeldByOneOnlineStaysLocked) {
    const PageId held = inState("M100", bert);
    actAsNobody();
    expectRefusal(held, ident(held), [&] { return manager().unlockPages(ident(held)); });
}

TEST_P(UnlockPages, ADatabaseThatFailsIsAnErrorWithItsLine) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT(errorOf([&] { manager().unlockPages("12"); }), StartsWith(chain({"unlockPages !"})));
}

// ---- getLockList ----

class LockList : public WorkflowTest {
  protected:
    PageId titled(const std::string& title, const std::string& node, int lockedBy = anna) {
        return page(node)
            .title(title)
            .set("editStatus", "M")
            .set("lockStatus", 1)
            .set("lockedBy", lockedBy)
            .set("lockingDate", earlier)
            .insertInDesignOnly();
    }
    std::vector<std::string> nodes(const Value& list) {
        std::vector<std::string> found;
        if (!list.isGrid()) return found;
        for (std::size_t i = 0; i < list.grid().rows(); ++i) found.push_back(list.grid().at(1, i).text());
        return found;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LockList, bothEngines(), engineName);

TEST_P(LockList, TellsOfEachPageWhoHoldsItSinceWhen) {
    const PageId held = titled("About us", "aa.en.04", bert);
    const Value list = manager().getLockList("aa", "en");
    ASSERT_TRUE(list.isGrid());
    EXPECT_EQ(list.grid().columns(), 6U);
    ASSERT_EQ(list.grid().rows(), 1U);
    EXPECT_EQ(list.grid().at(0, 0), Value(held));
    EXPECT_EQ(list.grid().at(1, 0), Value("aa.en.04"));
    EXPECT_EQ(list.grid().at(2, 0), Value("About us"));
    EXPECT_EQ(list.grid().at(3, 0), Value("Bert Broker"));
    EXPECT_EQ(list.grid().at(4, 0), Value(earlier));
    EXPECT_TRUE(list.grid().at(5, 0).isEmpty());
}

TEST_P(LockList, IsOrderedByTitleInAnyCaseAndThenByNode) {
    titled("beta", "aa.en.01");
    titled("Alpha", "aa.en.03");
    titled("alpha", "aa.en.02");
    titled("Gamma", "aa.en.04");
    EXPECT_THAT(nodes(manager().getLockList("aa", "en")),
                ElementsAre("aa.en.02", "aa.en.03", "aa.en.01", "aa.en.04"));
}

TEST_P(LockList, HoldsOnlyLockedPagesOfTheSiteAndLanguage) {
    inState("M000");
    titled("Here", "aa.en.40");
    titled("Elsewhere", "bb.en.01");
    titled("Otherwise", "aa.de.01");
    EXPECT_THAT(nodes(manager().getLockList(" AA ", "EN ")), ElementsAre("aa.en.40"));
}

TEST_P(LockList, APageWithoutATitleShowsAWordInstead) {
    word(2597, "no title yet");
    titled("", "aa.en.01");
    EXPECT_EQ(manager().getLockList("aa", "en").grid().at(2, 0), Value("[no title yet]"));
}

TEST_P(LockList, ALockOfARemovedLoginHasNoName) {
    titled("Orphan", "aa.en.01", 999);
    const Value list = manager().getLockList("aa", "en");
    EXPECT_TRUE(list.grid().at(3, 0).isEmpty());
}

TEST_P(LockList, NothingLockedIsAnEmptyValue) {
    inState("M000");
    EXPECT_TRUE(manager().getLockList("aa", "en").isEmpty());
    EXPECT_TRUE(manager().getLockList("", "").isEmpty());
    EXPECT_TRUE(manager().getLockList("a'", "<b>").isEmpty());
    EXPECT_TRUE(manager().getLockList(std::string(10000, 'a'), "en").isEmpty());
}

TEST_P(LockList, ADatabaseThatFailsIsAnErrorWithItsLine) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT(errorOf([&] { manager().getLockList("aa", "en"); }), StartsWith(chain({"getLockList !"})));
}

}  // namespace
}  // namespace torvex::test
