#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class CascadeTest : public PublishTest {
  protected:
    std::string cascade(const std::string& pageIdent) { return manager().publishPageCascading(pageIdent); }
    std::string line(PageId pageId, const std::string& nodeId) {
        return annasLine(pageId, nodeId, "publish");
    }
    std::string removalLine(PageId pageId, const std::string& nodeId) {
        return annasLine(pageId, nodeId, "publish (delete)", "The page has been removed");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, CascadeTest, bothEngines(), engineName);

TEST_P(CascadeTest, NeedsALogin) {
    approved("aa.en.01").insertInDesignOnly();
    actAsNobody();
    expectRefusal("-10", [&] { return cascade("aa.en"); });
}

TEST_P(CascadeTest, WithoutApprovedPagesNothingIsDone) {
    page("aa.en.01").insertInDesignOnly();
    expectRefusal("0", [&] { return cascade("aa.en"); });
}

TEST_P(CascadeTest, WhatIsNoNodePublishesNothing) {
    approved("aa.en.01").insertInDesignOnly();
    for (const std::string& identifier : badIdentifiers()) {
        expectRefusal("0", [&] { return cascade(identifier); });
    }
    for (const auto* identifier : {"a", "aa", "aa.e", "77"}) {
        expectRefusal("0", [&] { return cascade(identifier); });
    }
}

TEST_P(CascadeTest, PublishesAllApprovedPagesFromANodeOn) {
    const PageId top = approved("aa.en.01").insertInDesignOnly();
    const PageId child = approved("aa.en.01.01").insertInDesignOnly();
    const PageId deep = approved("aa.en.01.01.05").insertInDesignOnly();
    const PageId beside = approved("aa.en.02").insertInDesignOnly();
    const PageId draft = page("aa.en.01.02").insertInDesignOnly();
    designBody(deep, 1, "text");
    designGroup(deep, 3);
    designMetadata(deep, 1, "value");
    EXPECT_EQ(cascade(ident(top)), "0");
    for (const PageId pageId : {top, child, deep}) {
        EXPECT_TRUE(isLive(pageId));
        EXPECT_EQ(statuses(pageId), "P000");
        EXPECT_EQ(live(pageId, "publisher"), ident(anna));
    }
    EXPECT_FALSE(isLive(beside));
    EXPECT_FALSE(isLive(draft));
    EXPECT_EQ(statuses(beside), "M001");
    const std::string id = ident(deep);
    EXPECT_THAT(content()["TORVEX_BODIES_LIVE"], ElementsAre(id + "|1|1|0|text|"));
    EXPECT_THAT(content()["TORVEX_PAGES_GROUPS_LIVE"], ElementsAre(id + "|3|"));
    EXPECT_THAT(content()["TORVEX_PAGES_METADATA_LIVE"], ElementsAre(id + "|1|0|value|"));
}

TEST_P(CascadeTest, TakesANodeInAnyCaseThoughNoPageBearsIt) {
    page("aa.en.01").insert();
    const PageId child = approved("aa.en.01.01").insertInDesignOnly();
    EXPECT_EQ(cascade("  AA.EN.01 "), "0");
    EXPECT_TRUE(isLive(child));
}

TEST_P(CascadeTest, OfThreePagesTheOneThatIsCheckedOutIsPassedOver) {
    const PageId first = approved("aa.en.01").insertInDesignOnly();
    const PageId locked =
        approved("aa.en.02").set("lockStatus", 1).set("lockedBy", anna).insertInDesignOnly();
    const PageId third = approved("aa.en.03").insertInDesignOnly();
    EXPECT_EQ(cascade("aa.en"), "0");
    EXPECT_TRUE(isLive(first));
    EXPECT_TRUE(isLive(third));
    EXPECT_FALSE(isLive(locked));
    EXPECT_EQ(statuses(locked), "M101");
    EXPECT_THAT(auditTrail(), ElementsAre(line(first, "aa.en.01"), line(third, "aa.en.03")));
}

TEST_P(CascadeTest, AMarkedPageThatIsCheckedOutStays) {
    const PageId locked = marked("aa.en.02").set("lockStatus", 1).insert();
    EXPECT_EQ(cascade("aa.en"), "0");
    EXPECT_TRUE(isThere(locked));
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(CascadeTest, APageWithoutALiveParentIsPassedOverAndTheOthersGoOn) {
    page("aa.en.01").insertInDesignOnly();
    const PageId orphan = approved("aa.en.01.01").insertInDesignOnly();
    const PageId fine = approved("aa.en.02").insertInDesignOnly();
    EXPECT_EQ(cascade("aa.en"), "0");
    EXPECT_FALSE(isLive(orphan));
    EXPECT_EQ(statuses(orphan), "M001");
    EXPECT_TRUE(isLive(fine));
}

TEST_P(CascadeTest, ANewPageTakesTheColumnsDefault) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    cascade("aa.en");
    EXPECT_EQ(live(pageId, "online"), "1");
}

TEST_P(CascadeTest, APageKeepsItsStateWhateverItsDates) {
    const PageId off = approved("aa.en.01").offline().dates("20260101", "20260102").insert();
    const PageId on = approved("aa.en.02").online(1).dates("20270101", "20270102").insert();
    cascade("aa.en");
    EXPECT_EQ(live(off, "online"), "0");
    EXPECT_EQ(live(on, "online"), "1");
}

TEST_P(CascadeTest, ASystemPageGoesOfflineEvenAsAFolder) {
    const PageId folder = approved("aa.en.99").type("F").online(1).insert();
    const PageId below = approved("aa.en.99.01").insertInDesignOnly();
    const PageId ordinary = approved("aa.en.01").type("F").online(1).insert();
    cascade("aa.en");
    EXPECT_EQ(live(folder, "online"), "0");
    EXPECT_EQ(live(below, "online"), "0");
    EXPECT_EQ(live(ordinary, "online"), "1");
}

TEST_P(CascadeTest, RemovesWhatIsMarkedWithAllBelowIt) {
    const PageId gone = marked("aa.en.01").title("Gone").insert();
    const PageId below = approved("aa.en.01.01").insert();
    const PageId kept = approved("aa.en.02").title("Kept").insertInDesignOnly();
    hits("aa.en.01.01", "20260101", 3);
    body(below, 1, "text");
    EXPECT_EQ(cascade("aa.en"), "0");
    EXPECT_FALSE(isThere(gone));
    EXPECT_FALSE(isThere(below));
    EXPECT_TRUE(isLive(kept));
    EXPECT_THAT(content()["TORVEX_LOGGING"], IsEmpty());
    EXPECT_THAT(content()["TORVEX_BODIES_LIVE"], IsEmpty());
    EXPECT_THAT(auditTrail(), ElementsAre(removalLine(gone, "aa.en.01"), line(kept, "aa.en.02")));
    EXPECT_EQ(cell("select pageTitle from TORVEX_AUDIT_TRAIL where pageId = " + ident(gone)), "Gone");
    EXPECT_EQ(cell("select pageTitle from TORVEX_AUDIT_TRAIL where pageId = " + ident(kept)), "Kept");
}

TEST_P(CascadeTest, AnUntitledPageHasTheWordForItInTheTrail) {
    const PageId pageId = approved("aa.en.01").title("").insertInDesignOnly();
    cascade("aa.en");
    EXPECT_EQ(cell("select pageTitle from TORVEX_AUDIT_TRAIL"), manager().getPageTitle(ident(pageId), "D"));
    EXPECT_THAT(cell("select pageTitle from TORVEX_AUDIT_TRAIL"), ::testing::MatchesRegex("\\[.+\\]"));
}

TEST_P(CascadeTest, RenewsTheSnapshotsAndRemovesThoseOfWhatIsGone) {
    marked("aa.en.01").insert();
    approved("aa.en.02").title("Fresh").insertInDesignOnly();
    approved("aa.en.03").type("F").insertInDesignOnly();
    page("aa.en.04").insert();
    for (const auto* node : {"aa.en.01", "aa.en.01.05", "aa.en.03", "aa.en.04"}) {
        host.files.bytes[snapshotPath(node)] = "old";
    }
    cascade("aa.en");
    EXPECT_FALSE(host.files.bytes.contains(snapshotPath("aa.en.01")));
    EXPECT_FALSE(host.files.bytes.contains(snapshotPath("aa.en.01.05")));
    EXPECT_FALSE(host.files.bytes.contains(snapshotPath("aa.en.03")));
    EXPECT_EQ(host.files.bytes[snapshotPath("aa.en.04")], "old");
    EXPECT_THAT(host.files.readText(snapshotPath("aa.en.02"), TextFormat::Unicode).value_or(""),
                HasSubstr("<TITLE>Fresh</TITLE>"));
}

TEST_P(CascadeTest, APageThatWasPassedOverHasItsSnapshotRenewedFromWhatIsLive) {
    const PageId locked = approved("aa.en.01").title("draft").set("lockStatus", 1).insertInDesignOnly();
    page("aa.en.01").id(locked).title("live").insertInLiveOnly();
    cascade("aa.en");
    EXPECT_THAT(host.files.readText(snapshotPath("aa.en.01"), TextFormat::Unicode).value_or(""),
                HasSubstr("<TITLE>live</TITLE>"));
}

TEST_P(CascadeTest, FilesThatCantBeChangedUndoNothing) {
    const PageId gone = marked("aa.en.01").insert();
    const PageId fresh = approved("aa.en.02").insertInDesignOnly();
    host.files.bytes[snapshotPath("aa.en.01")] = "old";
    host.files.writeFailure = "read-only";
    EXPECT_EQ(cascade("aa.en"), "0");
    EXPECT_FALSE(isThere(gone));
    EXPECT_TRUE(isLive(fresh));
    EXPECT_THAT(auditTrail(), SizeIs(2));
    EXPECT_FALSE(host.log.lines.empty());
}

TEST_P(CascadeTest, IsWholeOrNothingWhereverItFailsAndLeavesNoLineThen) {
    approved("aa.en.01").insertInDesignOnly();
    const PageId below = approved("aa.en.01.01").insertInDesignOnly();
    designBody(below, 1, "text");
    const PageId gone = marked("aa.en.02").insert();
    body(gone, 1, "text");
    hits("aa.en.02", "20260101", 3);
    failEverywhere(
        "0", [&] { return cascade("aa.en"); }, [&] { EXPECT_THAT(auditTrail(), IsEmpty()); });
    EXPECT_TRUE(isLive(below));
    EXPECT_FALSE(isThere(gone));
    EXPECT_THAT(auditTrail(), SizeIs(3));
}

TEST_P(CascadeTest, AMissingTableAnswersWithTheCodeForFailures) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    drop("TORVEX_BODIES_LIVE");
    EXPECT_EQ(cascade("aa.en"), "-99");
    EXPECT_FALSE(isLive(pageId));
    EXPECT_THAT(auditTrail(), IsEmpty());
    EXPECT_THAT(host.log.lines, ElementsAre(HasSubstr("publishPageCascading of page aa.en: ")));
}

TEST_P(CascadeTest, StandsWhenTheAuditTrailIsBroken) {
    const PageId pageId = approved("aa.en.01").insertInDesignOnly();
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_EQ(cascade("aa.en"), "0");
    EXPECT_TRUE(isLive(pageId));
    EXPECT_FALSE(host.log.lines.empty());
}

TEST_P(CascadeTest, WritesTheLinesOfManyPagesInTheirOrder) {
    std::vector<std::string> lines;
    for (int i = 1; i <= 90; ++i) {
        const std::string node = "aa.en." + std::string(i < 10 ? "0" : "") + std::to_string(i);
        lines.push_back(line(approved(node).insertInDesignOnly(), node));
    }
    EXPECT_EQ(cascade("aa.en"), "0");
    EXPECT_EQ(auditTrail(), lines);
}

}  // namespace
}  // namespace torvex::test
