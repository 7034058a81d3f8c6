#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PublishingTest : public PublishTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PublishingTest, bothEngines(), engineName);

// ---- Refusals, in the order of their tests ----

TEST_P(PublishingTest, NeedsALogin) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    actAsNobody();
    expectRefusal("-10", [&] { return publish(pageId); });
    expectRefusal("-10", [&] { return manager().publishPage("nonsense"); });
}

TEST_P(PublishingTest, DoesntFindWhatIsNoPage) {
    approved("aa.en.01").insertInDesignOnly();
    for (const std::string& identifier : badIdentifiers()) {
        expectRefusal("-3", [&] { return manager().publishPage(identifier); });
    }
    expectRefusal("-3", [&] { return manager().publishPage("aa.en.02"); });
    expectRefusal("-3", [&] { return manager().publishPage("77"); });
}

TEST_P(PublishingTest, DoesntFindAPageThatIsOnlyLive) {
    const PageId pageId = page("aa.en.01").insertInLiveOnly();
    expectRefusal("-3", [&] { return publish(pageId); });
}

TEST_P(PublishingTest, NeedsAnApproval) {
    const PageId pageId = approved("aa.en.01").set("approveStatus", 0).insertInDesignOnly();
    expectRefusal("-2", [&] { return publish(pageId); });
}

TEST_P(PublishingTest, NeedsAnApprovalAlsoOfWhatIsMarkedForDeletion) {
    const PageId pageId = marked("aa.en.01").set("approveStatus", 0).insert();
    expectRefusal("-2", [&] { return publish(pageId); });
}

TEST_P(PublishingTest, AsksForTheApprovalBeforeTheLock) {
    const PageId pageId =
        approved("aa.en.01").set("approveStatus", 0).set("lockStatus", 1).set("lockedBy", bert).insert();
    expectRefusal("-2", [&] { return publish(pageId); });
}

TEST_P(PublishingTest, LeavesAPageThatIsCheckedOutByWhomever) {
    const PageId others =
        approved("aa.en.01").set("lockStatus", 1).set("lockedBy", bert).insertInDesignOnly();
    const PageId own = approved("aa.en.02").set("lockStatus", 1).set("lockedBy", anna).insertInDesignOnly();
    const PageId removed = marked("aa.en.03").set("lockStatus", 1).set("lockedBy", bert).insert();
    for (const PageId pageId : {others, own, removed}) expectRefusal("-1", [&] { return publish(pageId); });
}

TEST_P(PublishingTest, NeedsALiveParentForANewPage) {
    page("aa.en.01").insertInDesignOnly();
    const PageId child = approved("aa.en.01.01").insertInDesignOnly();
    designBody(child, 1, "text");
    expectRefusal("-4", [&] { return publish(child); });
}

TEST_P(PublishingTest, NeedsNoLiveParentForAPageThatIsLive) {
    page("aa.en.01").insertInDesignOnly();
    const PageId child = approved("aa.en.01.01").title("new").insertInDesignOnly();
    page("aa.en.01.01").id(child).title("old").insertInLiveOnly();
    EXPECT_EQ(publish(child), "1");
    EXPECT_EQ(live(child, "title"), "new");
}

TEST_P(PublishingTest, NeedsNoParentForARoot) {
    const PageId root = approved("bb.en").insertInDesignOnly();
    EXPECT_EQ(publish(root), "1");
    EXPECT_TRUE(isLive(root));
}

// ---- The page row ----

TEST_P(PublishingTest, MakesALiveRowFromAllColumnsOfTheDesign) {
    const PageId pageId = approved("aa.en.05")
                              .title("Été <b>'\"")
                              .order(7)
                              .contentTemplate(11)
                              .stylesheet(12)
                              .baseTemplate(13)
                              .application(14)
                              .neighbours(21, 22, 23)
                              .dates("20260101", "20261231")
                              .set("app_param_public", "a=1,b=2")
                              .set("app_param_admin", "c='3'")
                              .set("app_system_folder", 31)
                              .set("breadcrumb", "1")
                              .set("dynMenu", "0")
                              .set("loginPage", 41)
                              .insertInDesignOnly();
    EXPECT_EQ(publish(pageId), "1");
    for (const auto* column : {"pageId",
                               "nodeId",
                               "orderId",
                               "site",
                               "lang",
                               "parent",
                               "type",
                               "title",
                               "template",
                               "stylesheet",
                               "baseTemplate",
                               "application",
                               "navigation",
                               "previous",
                               "next",
                               "up",
                               "onlineFrom",
                               "onlineTo",
                               "app_param_public",
                               "app_param_admin",
                               "app_system_folder",
                               "breadcrumb",
                               "dynMenu",
                               "loginPage"}) {
        EXPECT_EQ(live(pageId, column), design(pageId, column)) << column;
    }
    EXPECT_EQ(live(pageId, "nodeId"), "aa.en.05");
    EXPECT_EQ(live(pageId, "title"), "Été <b>'\"");
    EXPECT_EQ(live(pageId, "orderId"), "7");
    EXPECT_EQ(live(pageId, "parent"), "aa.en");
    EXPECT_EQ(live(pageId, "online"), "1");
}

TEST_P(PublishingTest, KeepsTheLivePlaceOfAPageAndCopiesTheRest) {
    const PageId pageId = approved("aa.en.05")
                              .order(7)
                              .set("site", "aa")
                              .set("parent", "aa.en")
                              .title("new")
                              .contentTemplate(11)
                              .insertInDesignOnly();
    page("aa.en.06")
        .id(pageId)
        .order(3)
        .set("site", "xx")
        .set("lang", "yy")
        .set("parent", "other")
        .title("old")
        .insertInLiveOnly();
    publish(pageId);
    EXPECT_EQ(live(pageId, "nodeId"), "aa.en.06");
    EXPECT_EQ(live(pageId, "orderId"), "3");
    EXPECT_EQ(live(pageId, "site"), "xx");
    EXPECT_EQ(live(pageId, "lang"), "yy");
    EXPECT_EQ(live(pageId, "parent"), "other");
    EXPECT_EQ(live(pageId, "title"), "new");
    EXPECT_EQ(live(pageId, "template"), "11");
}

TEST_P(PublishingTest, CopiesNullsOverWhatWasThere) {
    PageBuilder builder = approved("aa.en.05");
    for (const auto* column :
         {"title", "navigation", "onlineFrom", "onlineTo", "app_param_public", "breadcrumb", "dynMenu"}) {
        builder.set(column, Value());
    }
    const PageId pageId = builder.insertInDesignOnly();
    page("aa.en.05").id(pageId).title("old").set("breadcrumb", "1").insertInLiveOnly();
    EXPECT_EQ(publish(pageId), "1");
    EXPECT_EQ(live(pageId, "title"), "-");
    EXPECT_EQ(live(pageId, "breadcrumb"), "-");
    EXPECT_EQ(live(pageId, "onlineFrom"), "-");
}

TEST_P(PublishingTest, NamesTheAuthorAndThePublisherWithTheirTimes) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    publish(pageId);
    EXPECT_EQ(live(pageId, "author"), ident(bert));
    EXPECT_EQ(live(pageId, "authoringDate"), "2026-01-02T03:04:05");
    EXPECT_EQ(live(pageId, "publisher"), ident(anna));
    EXPECT_EQ(live(pageId, "publishingDate"), "2026-06-15T12:00:00");
}

TEST_P(PublishingTest, LeavesTheDesignPublishedWithTheRecordOfItsApproval) {
    const PageId pageId = approved("aa.en.01")
                              .set("lockedBy", bert)
                              .set("lockingDate", DateTime{2026, 1, 1, 1, 1, 1})
                              .set("deletedBy", bert)
                              .set("deletingDate", DateTime{2026, 1, 1, 1, 1, 1})
                              .set("emailNotification", 1)
                              .insertInDesignOnly();
    publish(pageId);
    EXPECT_EQ(statuses(pageId), "P000");
    for (const auto* column : {"lockedBy", "lockingDate", "deletedBy", "deletingDate"}) {
        EXPECT_EQ(design(pageId, column), "-") << column;
    }
    EXPECT_EQ(design(pageId, "emailNotification"), "0");
    EXPECT_EQ(design(pageId, "approvedBy"), ident(bert));
    EXPECT_EQ(design(pageId, "approvingDate"), "2026-01-02T03:04:05");
    EXPECT_EQ(design(pageId, "editor"), ident(bert));
    EXPECT_EQ(design(pageId, "editingDate"), "2026-01-02T03:04:05");
}

TEST_P(PublishingTest, TakesEitherNameOfAPageInAnyCaseWithBlanks) {
    const PageId first = approved("aa.en.01").insertInDesignOnly();
    const PageId second = approved("aa.en.02").insertInDesignOnly();
    EXPECT_EQ(manager().publishPage("  " + ident(first) + " "), "1");
    EXPECT_EQ(manager().publishPage(" AA.EN.02 "), "1");
    EXPECT_TRUE(isLive(first));
    EXPECT_TRUE(isLive(second));
}

TEST_P(PublishingTest, LeavesOtherPagesAlone) {
    const PageId other = approved("aa.en.02").insertInDesignOnly();
    designBody(other, 1, "other");
    publish(approved("aa.en.01").insertInDesignOnly());
    EXPECT_EQ(statuses(other), "M001");
    EXPECT_FALSE(isLive(other));
}

// ---- Groups, bodies, meta data ----

TEST_P(PublishingTest, ReplacesTheLiveGroupsWithRepetitions) {
    const PageId pageId = approved("aa.en.01").insert();
    pageGroup(pageId, 9);
    for (const int group : {3, 5, 3}) designGroup(pageId, group);
    publish(pageId);
    const std::string id = ident(pageId);
    EXPECT_THAT(content()["TORVEX_PAGES_GROUPS_LIVE"], ElementsAre(id + "|3|", id + "|3|", id + "|5|"));
}

TEST_P(PublishingTest, RemovesTheLiveGroupsWhenTheDesignHasNone) {
    const PageId pageId = approved("aa.en.01").insert();
    pageGroup(pageId, 9);
    publish(pageId);
    EXPECT_THAT(content()["TORVEX_PAGES_GROUPS_LIVE"], IsEmpty());
}

TEST_P(PublishingTest, ReplacesTheLiveBodies) {
    const PageId pageId = approved("aa.en.01").insert();
    body(pageId, 1, "old one");
    body(pageId, 4, "old four");
    designBody(pageId, 1, "new <b>'one'</b> é");
    designBody(pageId, 2, "", 2, 17);
    publish(pageId);
    const std::string id = ident(pageId);
    EXPECT_THAT(content()["TORVEX_BODIES_LIVE"],
                ElementsAre(id + "|1|1|0|new <b>'one'</b> é|", id + "|2|2|17||"));
}

TEST_P(PublishingTest, LeavesOutInheritedMetadataWithoutAValue) {
    const PageId pageId = approved("aa.en.01").insert();
    metaData(pageId, 9, "old");
    designMetadata(pageId, 1, "own");
    designMetadata(pageId, 2, "", 0);
    designMetadata(pageId, 3, "   ", 0);
    designMetadata(pageId, 4, "inherited with a value", 1);
    designMetadata(pageId, 5, "", 1);
    designMetadata(pageId, 6, "   ", 1);
    designMetadata(pageId, 7, Value(), 1);
    designMetadata(pageId, 8, Value(), 0);
    publish(pageId);
    const std::string id = ident(pageId);
    EXPECT_THAT(content()["TORVEX_PAGES_METADATA_LIVE"],
                ElementsAre(id + "|1|0|own|", id + "|2|0||", id + "|3|0|   |",
                            id + "|4|1|inherited with a value|", id + "|8|0|-|"));
}

// ---- What follows ----

TEST_P(PublishingTest, LeavesALineInTheAuditTrail) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    publish(pageId);
    EXPECT_THAT(auditTrail(), ElementsAre(annasLine(pageId, "aa.en.01", "publish")));
}

TEST_P(PublishingTest, WritesTheSnapshotOfThePage) {
    const PageId pageId = approved("aa.en.01").title("Fresh").insertInDesignOnly();
    publish(pageId);
    const auto text = host.files.readText(snapshotPath("aa.en.01"), TextFormat::Unicode);
    ASSERT_TRUE(text);
    EXPECT_THAT(*text, ::testing::HasSubstr("<TITLE>Fresh</TITLE>"));
}

TEST_P(PublishingTest, StandsWhenTheSnapshotCantBeWritten) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    host.files.writeFailure = "disk full";
    EXPECT_EQ(publish(pageId), "1");
    EXPECT_TRUE(isLive(pageId));
    EXPECT_EQ(statuses(pageId), "P000");
    ASSERT_FALSE(host.log.lines.empty());
    EXPECT_THAT(host.log.lines.back(), ::testing::HasSubstr("disk full"));
}

TEST_P(PublishingTest, StandsWhenTheAuditTrailIsBroken) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_EQ(publish(pageId), "1");
    EXPECT_TRUE(isLive(pageId));
    ASSERT_FALSE(host.log.lines.empty());
    EXPECT_THAT(host.log.lines.front(), ::testing::HasSubstr("publishPage of page " + ident(pageId)));
}

TEST_P(PublishingTest, ASecondTimeNeedsANewApproval) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(publish(pageId), "1");
    expectRefusal("-2", [&] { return publish(pageId); });
}

// ---- Lists ----

TEST_P(PublishingTest, AListOfPagesReturnsWhatWasntPublished) {
    const PageId good = approved("aa.en.01").insertInDesignOnly();
    const PageId locked = approved("aa.en.02").set("lockStatus", 1).insertInDesignOnly();
    const PageId folder = approved("aa.en.03").type("F").insertInDesignOnly();
    EXPECT_EQ(
        manager().publishPages("  AA.EN.04 , " + ident(good) + "-" + ident(locked) + ",,- " + ident(folder)),
        "aa.en.04," + ident(locked));
    EXPECT_TRUE(isLive(good));
    EXPECT_TRUE(isLive(folder));
}

TEST_P(PublishingTest, AListMayNameChildrenBeforeTheirParents) {
    const PageId parent = approved("aa.en.01").insertInDesignOnly();
    const PageId child = approved("aa.en.01.01").insertInDesignOnly();
    const PageId grandchild = approved("aa.en.01.01.01").insertInDesignOnly();
    EXPECT_EQ(manager().publishPages("aa.en.01.01.01,aa.en.01.01,aa.en.01"), "");
    for (const PageId pageId : {parent, child, grandchild}) EXPECT_TRUE(isLive(pageId));
    EXPECT_THAT(auditTrail(), ElementsAre(annasLine(parent, "aa.en.01", "publish"),
                                          annasLine(child, "aa.en.01.01", "publish"),
                                          annasLine(grandchild, "aa.en.01.01.01", "publish")));
}

TEST_P(PublishingTest, AnEmptyListIsDoneAtOnce) {
    for (const auto* empty : {"", "  ", ",", " - , -"}) EXPECT_EQ(manager().publishPages(empty), "");
}

TEST_P(PublishingTest, AListThatNobodyMayPublishComesBackWhole) {
    approved("aa.en.01").insertInDesignOnly();
    actAsNobody();
    expectRefusal("aa.en.01,5", [&] { return manager().publishPages("aa.en.01 - 5"); });
}

TEST_P(PublishingTest, AListWithRepetitionsKeepsTheSecondOne) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    EXPECT_EQ(manager().publishPages(ident(pageId) + ",aa.en.01"), "aa.en.01");
}

// ---- Broken databases ----

TEST_P(PublishingTest, IsWholeOrNothingWhereverItFails) {
    const PageId pageId = approved("aa.en.01").title("new").insertInDesignOnly();
    page("aa.en.01").id(pageId).title("old").insertInLiveOnly();
    designGroup(pageId, 3);
    designBody(pageId, 1, "new");
    designMetadata(pageId, 1, "new");
    pageGroup(pageId, 9);
    body(pageId, 1, "old");
    metaData(pageId, 1, "old");
    failEverywhere(
        "1", [&] { return publish(pageId); }, [&] { EXPECT_THAT(auditTrail(), IsEmpty()); });
    EXPECT_EQ(live(pageId, "title"), "new");
}

TEST_P(PublishingTest, ANewPageIsWholeOrNothingWhereverItFails) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    designBody(pageId, 1, "new");
    failEverywhere(
        "1", [&] { return publish(pageId); }, [&] { EXPECT_THAT(auditTrail(), IsEmpty()); });
}

TEST_P(PublishingTest, AMissingTableAnswersWithTheCodeForFailuresAndTellsWhy) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    const std::string before = design(pageId, "editStatus");
    drop("TORVEX_PAGES_METADATA_LIVE");
    EXPECT_EQ(publish(pageId), "-99");
    EXPECT_FALSE(isLive(pageId));
    EXPECT_EQ(statuses(pageId), "M001");
    ASSERT_EQ(host.log.lines.size(), 1U);
    EXPECT_THAT(host.log.lines.front(), ::testing::HasSubstr("publishPage of page " + ident(pageId) + ": "));
}

TEST_P(PublishingTest, RaisesWhenNotEvenThePageCanBeLookedUp) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT(errorOf([&] { manager().publishPage("12"); }),
                ::testing::StartsWith(chain({"publishPage !", "getNodeId !"})));
    EXPECT_THAT(errorOf([&] { manager().publishPages("12"); }),
                ::testing::StartsWith(chain({"publishPages !", "publishPage !"})));
}

}  // namespace
}  // namespace torvex::test
