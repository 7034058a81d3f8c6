#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ResetTest : public PublishTest {
  protected:
    std::string reset(PageId pageId) { return manager().resetPage(ident(pageId)); }
    /// A page whose design is a changed one.
    PageBuilder changed(const std::string& nodeId) { return page(nodeId).set("editStatus", "M"); }
};
INSTANTIATE_TEST_SUITE_P(Engines, ResetTest, bothEngines(), engineName);

TEST_P(ResetTest, NeedsALogin) {
    const PageId pageId = changed("aa.en.01").insert();
    actAsNobody();
    expectRefusal("-10", [&] { return reset(pageId); });
}

TEST_P(ResetTest, WhatIsNoPageWasNeverPublished) {
    changed("aa.en.01").insert();
    for (const std::string& identifier : badIdentifiers()) {
        expectRefusal("-3", [&] { return manager().resetPage(identifier); });
    }
}

TEST_P(ResetTest, APageThatWasNeverPublishedStays) {
    const PageId pageId = changed("aa.en.01").insertInDesignOnly();
    expectRefusal("-3", [&] { return reset(pageId); });
}

TEST_P(ResetTest, AskingForTheLivePageComesFirst) {
    const PageId pageId =
        approved("aa.en.01").set("lockStatus", 1).set("lockedBy", bert).insertInDesignOnly();
    expectRefusal("-3", [&] { return reset(pageId); });
}

TEST_P(ResetTest, APageWithoutADesignCantBeReset) {
    const PageId pageId = page("aa.en.01").insertInLiveOnly();
    expectRefusal("-4", [&] { return reset(pageId); });
}

TEST_P(ResetTest, APageThatAnotherHoldsStays) {
    const PageId pageId = changed("aa.en.01").set("lockStatus", 1).set("lockedBy", bert).insert();
    expectRefusal("-1", [&] { return reset(pageId); });
}

TEST_P(ResetTest, AsksForTheLockBeforeTheApproval) {
    const PageId pageId = approved("aa.en.01").set("lockStatus", 1).set("lockedBy", bert).insert();
    expectRefusal("-1", [&] { return reset(pageId); });
}

TEST_P(ResetTest, AnApprovedPageStays) {
    const PageId pageId = approved("aa.en.01").insert();
    expectRefusal("-2", [&] { return reset(pageId); });
    const PageId held = approved("aa.en.02").set("lockStatus", 1).set("lockedBy", anna).insert();
    expectRefusal("-2", [&] { return reset(held); });
}

TEST_P(ResetTest, AnswersWithTypeAndStatuses) {
    EXPECT_EQ(reset(changed("aa.en.01").insert()), "PP000");
    EXPECT_EQ(reset(changed("aa.en.02").type("F").insert()), "FP000");
    EXPECT_EQ(reset(changed("aa.en.03").set("lockStatus", 1).set("lockedBy", anna).insert()), "PP100");
    EXPECT_EQ(reset(changed("aa.en.04").set("deleteStatus", 1).insert()), "PP000");
}

TEST_P(ResetTest, BringsEveryColumnBackFromWhatIsLive) {
    const PageId pageId = page("aa.en.05")
                              .set("editStatus", "M")
                              .title("draft")
                              .dates("20200101", "20200102")
                              .insertInDesignOnly();
    page("bb.de.05")
        .id(pageId)
        .order(9)
        .type("A")
        .title("live é")
        .contentTemplate(11)
        .stylesheet(12)
        .baseTemplate(13)
        .application(14)
        .neighbours(21, 22, 23)
        .dates("20260101", "20261231")
        .set("app_param_public", "a=1")
        .set("app_param_admin", "b=2")
        .set("app_system_folder", 31)
        .set("breadcrumb", "1")
        .set("dynMenu", "0")
        .set("loginPage", 41)
        .insertInLiveOnly();
    EXPECT_EQ(reset(pageId), "AP000");
    for (const auto* column : {"site",
                               "lang",
                               "parent",
                               "type",
                               "title",
                               "template",
                               "stylesheet",
                               "baseTemplate",
                               "application",
                               "app_param_public",
                               "app_param_admin",
                               "app_system_folder",
                               "navigation",
                               "previous",
                               "next",
                               "up",
                               "onlineFrom",
                               "onlineTo",
                               "breadcrumb",
                               "dynMenu",
                               "loginPage"}) {
        EXPECT_EQ(design(pageId, column), live(pageId, column)) << column;
    }
    EXPECT_EQ(design(pageId, "title"), "live é");
    EXPECT_EQ(design(pageId, "nodeId"), "aa.en.05");
    EXPECT_EQ(design(pageId, "orderId"), "5");
}

TEST_P(ResetTest, TakesTheMarksAwayAndNamesTheLastAuthor) {
    const DateTime published{2026, 2, 3, 4, 5, 6};
    const PageId pageId = changed("aa.en.01")
                              .set("deleteStatus", 1)
                              .set("deletedBy", bert)
                              .set("deletingDate", published)
                              .set("emailNotification", 1)
                              .set("editor", anna)
                              .set("editingDate", DateTime{2026, 6, 1, 1, 1, 1})
                              .insertInDesignOnly();
    page("aa.en.01").id(pageId).set("author", bert).set("authoringDate", published).insertInLiveOnly();
    EXPECT_EQ(reset(pageId), "PP000");
    EXPECT_EQ(design(pageId, "deletedBy"), "-");
    EXPECT_EQ(design(pageId, "deletingDate"), "-");
    EXPECT_EQ(design(pageId, "emailNotification"), "0");
    EXPECT_EQ(design(pageId, "editor"), ident(bert));
    EXPECT_EQ(design(pageId, "editingDate"), "2026-02-03T04:05:06");
}

TEST_P(ResetTest, LeavesTheLock) {
    const DateTime since{2026, 2, 3, 4, 5, 6};
    const PageId pageId =
        changed("aa.en.01").set("lockStatus", 1).set("lockedBy", anna).set("lockingDate", since).insert();
    reset(pageId);
    EXPECT_EQ(design(pageId, "lockStatus"), "1");
    EXPECT_EQ(design(pageId, "lockedBy"), ident(anna));
    EXPECT_EQ(design(pageId, "lockingDate"), "2026-02-03T04:05:06");
}

TEST_P(ResetTest, ReplacesGroupsBodiesAndMetadata) {
    const PageId pageId = changed("aa.en.01").insert();
    designGroup(pageId, 9);
    designBody(pageId, 1, "draft");
    designBody(pageId, 7, "draft");
    designMetadata(pageId, 1, "draft");
    designMetadata(pageId, 2, "", 1);
    for (const int group : {3, 4}) pageGroup(pageId, group);
    body(pageId, 1, "live <b>", 1);
    body(pageId, 2, "", 3, 17);
    metaData(pageId, 1, "live");
    inheritedMetaData(pageId, 5);
    EXPECT_EQ(reset(pageId), "PP000");
    const std::string id = ident(pageId);
    EXPECT_THAT(content()["TORVEX_PAGES_GROUPS_DESIGN"], ElementsAre(id + "|3|", id + "|4|"));
    EXPECT_THAT(content()["TORVEX_BODIES_DESIGN"], ElementsAre(id + "|1|1|0|live <b>|", id + "|2|3|17||"));
    EXPECT_THAT(content()["TORVEX_PAGES_METADATA_DESIGN"], ElementsAre(id + "|1|0|live|", id + "|5|1|-|"));
}

TEST_P(ResetTest, ChangesNothingThatIsLive) {
    const PageId pageId = changed("aa.en.01").insert();
    body(pageId, 1, "live");
    auto before = content();
    reset(pageId);
    auto after = content();
    for (const auto* table : {"TORVEX_PAGES_LIVE", "TORVEX_BODIES_LIVE", "TORVEX_PAGES_GROUPS_LIVE",
                              "TORVEX_PAGES_METADATA_LIVE"}) {
        EXPECT_EQ(after[table], before[table]) << table;
    }
}

TEST_P(ResetTest, LeavesALineInTheAuditTrail) {
    const PageId pageId = changed("aa.en.01").insert();
    EXPECT_EQ(manager().resetPage(" AA.en.01 "), "PP000");
    EXPECT_THAT(auditTrail(), ElementsAre(annasLine(pageId, "aa.en.01", "reset")));
}

TEST_P(ResetTest, IsWholeOrNothingWhereverItFails) {
    const PageId pageId = changed("aa.en.01").title("draft").insertInDesignOnly();
    page("aa.en.01").id(pageId).title("live").insertInLiveOnly();
    designBody(pageId, 1, "draft");
    body(pageId, 1, "live");
    designGroup(pageId, 3);
    designMetadata(pageId, 1, "draft");
    failEverywhere(
        "PP000", [&] { return reset(pageId); }, [&] { EXPECT_THAT(auditTrail(), IsEmpty()); });
    EXPECT_EQ(design(pageId, "title"), "live");
}

TEST_P(ResetTest, AMissingTableAnswersWithTheCodeForFailures) {
    const PageId pageId = changed("aa.en.01").insert();
    drop("TORVEX_PAGES_METADATA_LIVE");
    EXPECT_EQ(reset(pageId), "-99");
    EXPECT_EQ(statuses(pageId), "M000");
    EXPECT_THAT(host.log.lines, ElementsAre(HasSubstr("resetPage of page " + ident(pageId) + ": ")));
}

}  // namespace
}  // namespace torvex::test
