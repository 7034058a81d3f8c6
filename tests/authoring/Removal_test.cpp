#include <gmock/gmock.h>

#include "records/PageIdentity.h"
#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

/// A branch aa.en.02 that is marked for deletion, and aa.en.01 and aa.en.03 beside it, which stay.
class RemovalTest : public PublishTest {
  protected:
    void SetUp() override {
        PublishTest::SetUp();
        if (HasFatalFailure()) return;
        before_ = page("aa.en.01").insert();
        root_ = marked("aa.en.02").title("Gone").insert();
        child_ = page("aa.en.02.01").set("lockStatus", 1).set("lockedBy", bert).insert();
        grandchild_ = page("aa.en.02.01.05").insertInDesignOnly();
        system_ = page("aa.en.02.99").type("F").insert();
        after_ = page("aa.en.03").insert();
    }

    std::vector<PageId> branch() const { return {root_, child_, grandchild_, system_}; }

    /// A row for each page of the branch and for its neighbours.
    void forEach(const std::function<void(PageId)>& add) {
        for (const PageId pageId : branch()) add(pageId);
        add(before_);
        add(after_);
    }

    /// That the table only holds rows of the neighbours.
    void expectNeighboursOnly(const std::string& table, const std::string& column) {
        auto rows = connection().query("select " + column + " as page from " + table);
        std::vector<double> pages;
        while (rows.next()) pages.push_back(rows.number("page"));
        EXPECT_THAT(pages, ::testing::UnorderedElementsAre(before_, after_)) << table;
    }

    PageId before_ = 0;
    PageId root_ = 0;
    PageId child_ = 0;
    PageId grandchild_ = 0;
    PageId system_ = 0;
    PageId after_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, RemovalTest, bothEngines(), engineName);

TEST_P(RemovalTest, TakesThePageAndAllBelowItWhateverTheirState) {
    EXPECT_EQ(publish(root_), "0");
    for (const PageId pageId : branch()) {
        EXPECT_FALSE(isThere(pageId));
        EXPECT_FALSE(isLive(pageId));
    }
    for (const PageId pageId : {before_, after_}) {
        EXPECT_TRUE(isThere(pageId));
        EXPECT_TRUE(isLive(pageId));
    }
}

TEST_P(RemovalTest, LeavesNoRowOfThePagesInAnyTable) {
    row("TORVEX_METADATA", {{"metaData_id", 1}, {"metaData_site", "aa"}});
    forEach([&](PageId pageId) {
        designGroup(pageId, 3);
        pageGroup(pageId, 3);
        designBody(pageId, 1, "text");
        body(pageId, 1, "text");
        designMetadata(pageId, 1, "value");
        metaData(pageId, 1, "value");
        row("TORVEX_MAILFORM", {{"pageId", pageId}});
        row("TORVEX_MAILFORM_OPTIONS", {{"pageId", pageId}});
        row("TORVEX_SEARCH", {{"search_pageId", pageId}});
        row("TORVEX_SEARCH_LOG", {{"search_pageId", pageId}, {"search_word", "word"}});
        row("TORVEX_SEARCH_DAYS",
            {{"search_pageId", pageId}, {"search_word", "word"}, {"yyyymmdd", "20260615"}});
        row("TORVEX_DYNMENU_DESIGN", {{"pageId", pageId}});
        row("TORVEX_DYNMENU_LIVE", {{"pageId", pageId}});
    });
    EXPECT_EQ(publish(root_), "0");
    for (const auto* table : {"TORVEX_PAGES_GROUPS_DESIGN", "TORVEX_PAGES_GROUPS_LIVE",
                              "TORVEX_BODIES_DESIGN", "TORVEX_BODIES_LIVE", "TORVEX_MAILFORM",
                              "TORVEX_MAILFORM_OPTIONS", "TORVEX_DYNMENU_DESIGN", "TORVEX_DYNMENU_LIVE"}) {
        expectNeighboursOnly(table, "pageId");
    }
    for (const auto* table : {"TORVEX_PAGES_METADATA_DESIGN", "TORVEX_PAGES_METADATA_LIVE"}) {
        expectNeighboursOnly(table, "metaData_pageId");
    }
    for (const auto* table : {"TORVEX_SEARCH", "TORVEX_SEARCH_LOG", "TORVEX_SEARCH_DAYS"}) {
        expectNeighboursOnly(table, "search_pageId");
    }
}

TEST_P(RemovalTest, TakesTheHitsOfTheBranch) {
    for (const auto* node : {"aa.en.02", "aa.en.02.01", "aa.en.02.01.05", "aa.en.02.07", "aa.en.01",
                             "aa.en.03", "aa.en", "ba.en.02"}) {
        hits(node, "20260101", 1);
        hits(node, "20260102", 2);
    }
    publish(root_);
    auto rows = connection().query("select distinct nodeId from TORVEX_LOGGING order by nodeId");
    std::vector<std::string> left;
    while (rows.next()) left.push_back(rows.text("nodeId"));
    EXPECT_THAT(left, ElementsAre("aa.en", "aa.en.01", "aa.en.03", "ba.en.02"));
}

TEST_P(RemovalTest, ResetsTheReferencesOfThePagesThatRemain) {
    for (const auto* column : {"previous", "next", "up", "loginPage"}) {
        for (const std::string table : {"TORVEX_PAGES_DESIGN", "TORVEX_PAGES_LIVE"}) {
            const std::string set = "update " + table + " set " + column + " = ? where pageId = ?";
            connection().execute(set, {root_, before_});
            connection().execute(set, {before_, after_});
        }
    }
    connection().execute("update TORVEX_PAGES_DESIGN set next = ? where pageId = ?", {grandchild_, before_});
    EXPECT_EQ(publish(root_), "0");
    for (const auto* column : {"previous", "next", "up", "loginPage"}) {
        EXPECT_EQ(design(before_, column), "-1") << column;
        EXPECT_EQ(live(before_, column), "-1") << column;
        EXPECT_EQ(design(after_, column), ident(before_)) << column;
        EXPECT_EQ(live(after_, column), ident(before_)) << column;
    }
}

TEST_P(RemovalTest, ResetsTheEntryAndExitPagesOfGroups) {
    row("TORVEX_USERGROUPS",
        {{"groupId", 51}, {"name", "one"}, {"entryPage", child_}, {"exitPage", before_}});
    row("TORVEX_USERGROUPS", {{"groupId", 52}, {"name", "two"}, {"entryPage", after_}, {"exitPage", root_}});
    publish(root_);
    const auto pagesOf = [&](int groupId) {
        return cell("select entryPage from TORVEX_USERGROUPS where groupId = " + std::to_string(groupId)) +
               " " +
               cell("select exitPage from TORVEX_USERGROUPS where groupId = " + std::to_string(groupId));
    };
    EXPECT_EQ(pagesOf(51), "-1 " + ident(before_));
    EXPECT_EQ(pagesOf(52), ident(after_) + " -1");
}

TEST_P(RemovalTest, WorksForAPageThatWasNeverLive) {
    const PageId pageId = marked("aa.en.07").insertInDesignOnly();
    EXPECT_EQ(publish(pageId), "0");
    EXPECT_FALSE(isThere(pageId));
}

TEST_P(RemovalTest, AsksForNoLiveParent) {
    page("aa.en.08").insertInDesignOnly();
    EXPECT_EQ(publish(marked("aa.en.08.01").insertInDesignOnly()), "0");
}

TEST_P(RemovalTest, LeavesOneLineWithTheTitleInTheAuditTrail) {
    EXPECT_EQ(publish(root_), "0");
    EXPECT_THAT(auditTrail(),
                ElementsAre(annasLine(root_, "aa.en.02", "publish (delete)", "The page has been removed")));
    EXPECT_EQ(cell("select pageTitle from TORVEX_AUDIT_TRAIL"), "Gone");
}

TEST_P(RemovalTest, RemovesTheSnapshotsOfTheBranchAndNoOthers) {
    for (const auto* node : {"aa.en.02", "aa.en.02.01", "aa.en.02.44", "aa.en.01", "aa.en.03", "aa.en"}) {
        host.files.bytes[snapshotPath(node)] = "text";
    }
    host.files.bytes["/install/search/html/en/aa/aa.en.02.txt"] = "text";
    host.files.bytes["/install/search/html/en/bb/aa.en.02.html"] = "text";
    publish(root_);
    std::vector<std::string> left;
    for (const auto& [path, bytes] : host.files.bytes) left.push_back(path);
    EXPECT_THAT(
        left,
        ElementsAre("/install/search/html/en/aa/aa.en.01.html", "/install/search/html/en/aa/aa.en.02.txt",
                    "/install/search/html/en/aa/aa.en.03.html", "/install/search/html/en/aa/aa.en.html",
                    "/install/search/html/en/bb/aa.en.02.html"));
}

TEST_P(RemovalTest, FindsTheSnapshotsWhenTheInstallPathLacksItsDivider) {
    host.application.set("torvex_install_path", "/install");
    host.files.bytes[snapshotPath("aa.en.02")] = "text";
    publish(root_);
    EXPECT_THAT(host.files.bytes, IsEmpty());
}

TEST_P(RemovalTest, StandsWhenTheSnapshotsCantBeRemoved) {
    host.files.bytes[snapshotPath("aa.en.02")] = "text";
    host.files.writeFailure = "read-only";
    EXPECT_EQ(publish(root_), "0");
    EXPECT_FALSE(isThere(root_));
    ASSERT_THAT(host.log.lines, SizeIs(1));
    EXPECT_THAT(host.log.lines.front(), HasSubstr("read-only"));
}

TEST_P(RemovalTest, WritesNoSnapshotOfItsOwn) {
    publish(root_);
    EXPECT_THAT(host.files.bytes, IsEmpty());
}

TEST_P(RemovalTest, IsWholeOrNothingWhereverItFails) {
    forEach([&](PageId pageId) { body(pageId, 1, "text"); });
    hits("aa.en.02.01", "20260101", 3);
    host.files.bytes[snapshotPath("aa.en.02")] = "text";
    failEverywhere(
        "0", [&] { return publish(root_); }, [&] { EXPECT_THAT(host.files.bytes, SizeIs(1)); });
    EXPECT_FALSE(isThere(root_));
}

TEST_P(RemovalTest, ItsLineSurvivesTheRollback) {
    drop("TORVEX_DYNMENU_LIVE");
    EXPECT_EQ(publish(root_), "-99");
    EXPECT_TRUE(isThere(root_));
    EXPECT_TRUE(isLive(child_));
    EXPECT_THAT(auditTrail(),
                ElementsAre(annasLine(root_, "aa.en.02", "publish (delete)", "The page has been removed")));
}

TEST_P(RemovalTest, HappensNotWithoutAnAuditTrail) {
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_EQ(publish(root_), "-99");
    EXPECT_TRUE(isThere(root_));
    EXPECT_TRUE(isLive(root_));
}

TEST_P(RemovalTest, EveryTableItNeedsMayBeMissing) {
    for (const auto* table : {"TORVEX_MAILFORM_OPTIONS", "TORVEX_SEARCH_LOG", "TORVEX_LOGGING"}) {
        drop(table);
        EXPECT_EQ(publish(root_), "-99") << table;
        EXPECT_TRUE(isThere(root_));
        EXPECT_TRUE(isThere(grandchild_));
        EXPECT_TRUE(isLive(root_));
    }
}

TEST_P(RemovalTest, ANodeOfTheSameBeginningInUpperCaseIsOfTheBranch) {
    connection().execute("update TORVEX_PAGES_DESIGN set nodeId = 'AA.EN.02.01' where pageId = ?", {child_});
    EXPECT_EQ(publish(root_), "0");
    EXPECT_FALSE(isThere(child_));
}

}  // namespace
}  // namespace torvex::test
