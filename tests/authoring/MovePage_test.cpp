#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A branch "aa.en.01" of three pages, and a page "aa.en.02" to hang it on.
class MovePageTest : public PublishTest {
  protected:
    void SetUp() override {
        PublishTest::SetUp();
        if (HasFatalFailure()) return;
        first = page("aa.en.01").insert();
        child = page("aa.en.01.03").order(5).insert();
        grandchild = page("aa.en.01.03.01").insert();
        target = page("aa.en.02").insert();
    }

    std::string move(const std::string& from, const std::string& to) { return manager().movePage(from, to); }
    std::string node(PageId pageId) { return design(pageId, "nodeId"); }
    std::string siteLock(int loginId) {
        return cell("select siteLock from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }
    void enter(int loginId, const std::string& website) {
        connection().execute("update TORVEX_LOGINS set currentSite = ? where loginId = ?",
                             {website, loginId});
    }
    void snapshot(const std::string& nodeId, const std::string& text = "text") {
        host.files.bytes[snapshotPath(nodeId)] = text;
    }
    bool hasSnapshot(const std::string& nodeId) { return host.files.bytes.contains(snapshotPath(nodeId)); }
    /// "node day hits" of all that was viewed.
    std::vector<std::string> allHits() {
        std::vector<std::string> found;
        auto rows =
            connection().query("select nodeId, yyyymmdd, hits from TORVEX_LOGGING order by nodeId, yyyymmdd");
        while (rows.next()) {
            found.push_back(rows.text("nodeId") + " " + rows.text("yyyymmdd") + " " + rows.text("hits"));
        }
        return found;
    }
    void right(const std::string& scope) {
        row("TORVEX_EDIT_RIGHTS", {{"roleId", 3}, {"site", "aa"}, {"lang", "en"}, {"scope", scope}});
    }
    std::vector<std::string> scopes() {
        std::vector<std::string> found;
        auto rows = connection().query("select scope from TORVEX_EDIT_RIGHTS order by scope");
        while (rows.next()) found.push_back(rows.text("scope"));
        return found;
    }

    PageId first = 0;
    PageId child = 0;
    PageId grandchild = 0;
    PageId target = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, MovePageTest, bothEngines(), engineName);

// ---- The order of tests ----

TEST_P(MovePageTest, NobodyMoves) {
    actAsNobody();
    expectRefusal("-10", [&] { return move("aa.en.01", "aa.en.02"); });
    expectRefusal("-10", [&] { return move("nowhere", "nowhere"); });
}

TEST_P(MovePageTest, ASourceOrATargetThatIsNoPageIsRefused) {
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-99", [&] { return move(bad, "aa.en.02"); });
        expectRefusal("-99", [&] { return move("aa.en.01", bad); });
    }
    expectRefusal("-99", [&] { return move("4711", "aa.en.02"); });
    expectRefusal("-99", [&] { return move("aa.en.01", "4711"); });
}

TEST_P(MovePageTest, SystemPagesDoNotMove) {
    page("aa.en.99").type("F").insert();
    page("aa.en.99.01").insert();
    expectRefusal("-99", [&] { return move("aa.en.99", "aa.en.02"); });
    expectRefusal("-99", [&] { return move("aa.en.99.01", "aa.en.02"); });
    expectRefusal("-99", [&] { return move("aa.en.01", "aa.en.99"); });
    // Ahead of any test of the place.
    expectRefusal("-99", [&] { return move("aa.en.99", "aa.en.99.01"); });
}

TEST_P(MovePageTest, ABranchDoesNotGoIntoItself) {
    expectRefusal("-2", [&] { return move("aa.en.01", "aa.en.01.03"); });
    expectRefusal("-2", [&] { return move("aa.en.01", "aa.en.01"); });
    expectRefusal("-2", [&] { return move("aa.en", "aa.en.02"); });
}

TEST_P(MovePageTest, ABranchStaysInItsSiteAndLanguage) {
    page("aa.de").insert();
    page("bb.en").insert();
    enter(bert, "aa.en");
    expectRefusal("-2", [&] { return move("aa.en.01", "aa.de"); });
    expectRefusal("-2", [&] { return move("aa.en.01", "bb.en"); });
    expectRefusal("-2", [&] { return move("bb.en", "aa.en"); });
}

TEST_P(MovePageTest, NobodyElseMayWorkInTheSite) {
    enter(bert, "aa.en");
    // Ahead of title and place.
    page("aa.en.02.01").title("aa.en.01").insert();
    expectRefusal("-1", [&] { return move("aa.en.01", "aa.en.02"); });
    enter(bert, "AA.EN");
    expectRefusal("-1", [&] { return move("aa.en.01", "aa.en.02"); });
}

TEST_P(MovePageTest, OthersElsewhereOrGoneAndOneselfDoNotCount) {
    enter(bert, "aa.de");
    enter(anna, "aa.en");
    login(9, "carl", "Carl Clerk");
    enter(9, "aa.en");
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "aa.en.02.01");
}

TEST_P(MovePageTest, WithoutAFreeTitleNothingMoves) {
    const std::string longest(44, 'x');
    connection().execute("update TORVEX_PAGES_LIVE set title = ? where pageId = ?", {longest, first});
    page("aa.en.02.01").title(longest).insert();
    expectRefusal("-3", [&] { return move("aa.en.01", "aa.en.02"); });
    EXPECT_EQ(siteLock(anna), "");
}

TEST_P(MovePageTest, WithoutAFreeNumberNothingMoves) {
    for (int i = 1; i <= 98; ++i) {
        page("aa.en.02." + std::string(i < 10 ? "0" : "") + std::to_string(i)).insertInDesignOnly();
    }
    expectRefusal("-4", [&] { return move("aa.en.01", "aa.en.02"); });
    EXPECT_EQ(siteLock(anna), "");
}

TEST_P(MovePageTest, WithoutAFreeSortPositionNothingMoves) {
    for (int i = 1; i <= 98; ++i) {
        if (i == 50) continue;
        page("aa.en.02." + std::string(i < 10 ? "0" : "") + std::to_string(i)).insertInDesignOnly();
    }
    // It stands under the parent with another number.
    page("aa.en.02.99").order(50).insertInDesignOnly();
    connection().execute("update TORVEX_PAGES_DESIGN set nodeId = 'xx.en.50' where nodeId = 'aa.en.02.99'");
    expectRefusal("-4", [&] { return move("aa.en.01", "aa.en.02"); });
}

// ---- What moves ----

TEST_P(MovePageTest, TheBranchGetsItsNewNodesInBothTrees) {
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "aa.en.02.01");
    for (const auto& [pageId, nodeId] : std::initializer_list<std::pair<PageId, const char*>>{
             {first, "aa.en.02.01"}, {child, "aa.en.02.01.03"}, {grandchild, "aa.en.02.01.03.01"}}) {
        const std::string expected = nodeId;
        EXPECT_EQ(design(pageId, "nodeId"), expected);
        EXPECT_EQ(live(pageId, "nodeId"), expected);
        EXPECT_EQ(design(pageId, "parent"), expected.substr(0, expected.size() - 3));
        EXPECT_EQ(live(pageId, "parent"), expected.substr(0, expected.size() - 3));
    }
    EXPECT_EQ(node(target), "aa.en.02");
}

TEST_P(MovePageTest, OnlyTheFirstGetsAnotherPlaceAmongItsSiblings) {
    page("aa.en.02.01").order(7).insert();
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "aa.en.02.02");
    EXPECT_EQ(design(first, "orderId"), "8");
    EXPECT_EQ(live(first, "orderId"), "8");
    EXPECT_EQ(design(child, "orderId"), "5");
    EXPECT_EQ(live(child, "orderId"), "5");
}

TEST_P(MovePageTest, ItMovesUpAsWell) {
    EXPECT_EQ(move("aa.en.01.03", "aa.en"), "aa.en.03");
    EXPECT_EQ(node(grandchild), "aa.en.03.01");
    EXPECT_EQ(live(grandchild, "parent"), "aa.en.03");
    EXPECT_EQ(node(first), "aa.en.01");
}

TEST_P(MovePageTest, SiblingsStay) {
    const PageId beside = page("aa.en.03").insert();
    page("aa.en.03.01").insert();
    move("aa.en.01", "aa.en.02");
    EXPECT_EQ(node(beside), "aa.en.03");
    EXPECT_TRUE(manager().isPage("aa.en.03.01", "L"));
}

TEST_P(MovePageTest, NumbersNameThePages) {
    EXPECT_EQ(move(" " + ident(first), ident(target) + " "), "aa.en.02.01");
}

TEST_P(MovePageTest, StatusesStay) {
    connection().execute(
        "update TORVEX_PAGES_DESIGN set editStatus = 'M', lockStatus = 1, lockedBy = 8, deleteStatus = 1, "
        "approveStatus = 1 where pageId = ?",
        {child});
    move("aa.en.01", "aa.en.02");
    EXPECT_EQ(statuses(child), "M111");
    EXPECT_EQ(design(child, "lockedBy"), "8");
    EXPECT_EQ(live(child, "online"), "1");
}

TEST_P(MovePageTest, APageThatWasNeverPublishedMovesWithItsOwnTitle) {
    const PageId fresh = page("aa.en.04").title("Fresh").insertInDesignOnly();
    EXPECT_EQ(move("aa.en.04", "aa.en.02"), "aa.en.02.01");
    EXPECT_EQ(design(fresh, "title"), "Fresh");
    EXPECT_FALSE(isLive(fresh));
}

TEST_P(MovePageTest, TheLiveTitleIsTakenAlong) {
    connection().execute("update TORVEX_PAGES_DESIGN set title = 'Design' where pageId = ?", {first});
    connection().execute("update TORVEX_PAGES_LIVE set title = 'Live' where pageId = ?", {first});
    connection().execute("update TORVEX_PAGES_DESIGN set title = 'Kept' where pageId = ?", {child});
    move("aa.en.01", "aa.en.02");
    EXPECT_EQ(design(first, "title"), "Live");
    EXPECT_EQ(live(first, "title"), "Live");
    EXPECT_EQ(design(child, "title"), "Kept");
    EXPECT_EQ(live(child, "title"), "aa.en.01.03");
}

TEST_P(MovePageTest, BesideASiblingOfThatTitleTheWordIsAdded) {
    page("aa.en.02.01").title("AA.EN.01").insertInDesignOnly();
    move("aa.en.01", "aa.en.02");
    EXPECT_EQ(design(first, "title"), "aa.en.01 (copy)");
    EXPECT_EQ(live(first, "title"), "aa.en.01 (copy)");
}

TEST_P(MovePageTest, HitsFollowThePages) {
    hits("aa.en.01", "20260601", 3);
    hits("aa.en.01.03.01", "20260602", 4);
    hits("aa.en.02", "20260601", 5);
    move("aa.en.01", "aa.en.02");
    EXPECT_THAT(allHits(),
                ElementsAre("aa.en.02 20260601 5", "aa.en.02.01 20260601 3", "aa.en.02.01.03.01 20260602 4"));
}

TEST_P(MovePageTest, HitsOfAPageThatIsGoneFromTheNewPlaceAreNotMixedIn) {
    hits("aa.en.02.01", "20260601", 100);
    hits("aa.en.01", "20260601", 3);
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "aa.en.02.01");
    EXPECT_THAT(allHits(), ElementsAre("aa.en.02.01 20260601 3"));
}

TEST_P(MovePageTest, ScopesOfRightsFollowTheBranch) {
    right("");
    right("aa.en.01");
    right("aa.en.02,aa.en.01.03, AA.EN.01");
    right("aa.en.02");
    right("aa.en.02");
    move("aa.en.01", "aa.en.02");
    EXPECT_THAT(scopes(), ElementsAre("", "aa.en.02", "aa.en.02", "aa.en.02,aa.en.02.01.03, aa.en.02.01",
                                      "aa.en.02.01"));
}

TEST_P(MovePageTest, ScopesOfTheSearchFollowTheBranch) {
    row("TORVEX_SEARCH", {{"search_pageId", 1}, {"search_pageScopes", "aa.en.01++,aa.en.02+"}});
    row("TORVEX_SEARCH", {{"search_pageId", 2}, {"search_pageScopes", "allsites"}});
    row("TORVEX_SEARCH", {{"search_pageId", 3}});
    move("aa.en.01", "aa.en.02");
    EXPECT_EQ(cell("select search_pageScopes from TORVEX_SEARCH where search_pageId = 1"),
              "aa.en.02.01++,aa.en.02+");
    EXPECT_EQ(cell("select search_pageScopes from TORVEX_SEARCH where search_pageId = 2"), "allsites");
}

// ---- The files for the catalogue ----

TEST_P(MovePageTest, FilesAreRenamed) {
    page("aa.en.01.04").type("F").insert();
    for (const auto* nodeId : {"aa.en.01", "aa.en.01.03.01", "aa.en.01.04", "aa.en.02"})
        snapshot(nodeId, nodeId);
    move("aa.en.01", "aa.en.02");
    EXPECT_EQ(host.files.bytes.at(snapshotPath("aa.en.02.01")), "aa.en.01");
    EXPECT_EQ(host.files.bytes.at(snapshotPath("aa.en.02.01.03.01")), "aa.en.01.03.01");
    EXPECT_FALSE(hasSnapshot("aa.en.01"));
    EXPECT_FALSE(hasSnapshot("aa.en.01.03.01"));
    EXPECT_TRUE(hasSnapshot("aa.en.02"));
    // A folder has no file of its own, so that what bears its name isn't looked at.
    EXPECT_TRUE(hasSnapshot("aa.en.01.04"));
    EXPECT_FALSE(hasSnapshot("aa.en.02.01.03"));
}

TEST_P(MovePageTest, FilesThatCantBeRenamedDoNotUndoTheMove) {
    snapshot("aa.en.01");
    host.files.writeFailure = "disk full";
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "aa.en.02.01");
    EXPECT_EQ(node(first), "aa.en.02.01");
    EXPECT_THAT(host.log.lines, Contains(::testing::HasSubstr("disk full")));
}

// ---- The lock ----

TEST_P(MovePageTest, TheSiteIsLockedForAsLongAsTheMoveTakes) {
    std::vector<std::string> seen;
    const auto others = openAnother();
    failing().atStep = [&](int) {
        auto rows = others->query("select siteLock from TORVEX_LOGINS where loginId = ?", {anna});
        if (rows.next()) seen.push_back(rows.text("siteLock"));
    };
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "aa.en.02.01");
    EXPECT_THAT(seen, SizeIs(Gt(5U)));
    EXPECT_THAT(seen, ::testing::Each("aa.en"));
    EXPECT_EQ(siteLock(anna), "");
}

// ---- The trail ----

TEST_P(MovePageTest, TheMoveIsInTheTrail) {
    move("aa.en.01", "aa.en.02");
    EXPECT_THAT(auditTrail(), ElementsAre(annasLine(first, "aa.en.02.01", "move",
                                                    "Moved from node aa.en.01 to node aa.en.02.01")));
}

TEST_P(MovePageTest, ATrailThatCantBeWrittenDoesNotUndoTheMove) {
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "aa.en.02.01");
}

// ---- Failures ----

TEST_P(MovePageTest, AFailureAtAnyStepLeavesEverythingAsItWas) {
    hits("aa.en.01", "20260601", 3);
    right("aa.en.01");
    row("TORVEX_SEARCH", {{"search_pageId", 1}, {"search_pageScopes", "aa.en.01"}});
    snapshot("aa.en.01");
    const auto files = host.files.bytes;
    failEverywhere(
        "aa.en.02.01", [&] { return move("aa.en.01", "aa.en.02"); },
        [&] {
            EXPECT_THAT(auditTrail(), IsEmpty());
            EXPECT_EQ(host.files.bytes, files);
            EXPECT_EQ(siteLock(anna), "");
        });
}

TEST_P(MovePageTest, AParentThatVanishesBetweenTestAndMoveIsRefused) {
    failing().atStep = [&](int step) {
        if (step == 1) connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {target});
    };
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "-99");
    EXPECT_EQ(node(first), "aa.en.01");
}

TEST_P(MovePageTest, ABranchThatHasBeenMovedMeanwhileIsRefused) {
    failing().atStep = [&](int step) {
        if (step == 1)
            connection().execute("update TORVEX_PAGES_DESIGN set nodeId = 'aa.en.05' where pageId = ?",
                                 {first});
    };
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "-99");
    EXPECT_EQ(node(child), "aa.en.01.03");
}

TEST_P(MovePageTest, ALockThatCantBeTakenIsAFailure) {
    drop("TORVEX_LOGINS");
    EXPECT_EQ(move("aa.en.01", "aa.en.02"), "-99");
    EXPECT_EQ(node(first), "aa.en.01");
    EXPECT_THAT(host.log.lines, SizeIs(1));
}

TEST_P(MovePageTest, ABrokenDatabaseIsAnError) {
    drop("TORVEX_INTERFACE_VOCAB");
    EXPECT_TRUE(
        errorOf([&] { move("aa.en.01", "aa.en.02"); }).starts_with(chain({"movePage !", "getVocab !"})));
}

}  // namespace
}  // namespace torvex::test
