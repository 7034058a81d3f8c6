#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Pages below "aa.en"; a second tree "bb.en" stands beside it.
class CopyPageTest : public PublishTest {
  protected:
    void SetUp() override {
        PublishTest::SetUp();
        if (HasFatalFailure()) return;
        page("bb.en").insert();
    }

    std::string paste(const std::string& from, const std::string& to, int flag = 0,
                      const std::string& mode = "D") {
        return manager().pastePage(mode, from, to, flag);
    }
    PageId idOf(const std::string& node) { return manager().getPageId(node); }
    std::string at(const std::string& node, const std::string& column) { return design(idOf(node), column); }
    bool exists(const std::string& node) { return idOf(node) > 0; }
    /// The nodes of the design from one on.
    std::vector<std::string> branch(const std::string& node) {
        std::vector<std::string> nodes;
        auto rows = connection().query(
            "select nodeId from TORVEX_PAGES_DESIGN where nodeId like ? order by nodeId", {node + "%"});
        while (rows.next()) nodes.push_back(rows.text("nodeId"));
        return nodes;
    }
    /// "bodyId type feed text" of each body of a page's design.
    std::vector<std::string> bodies(const std::string& node) {
        std::vector<std::string> found;
        auto rows = connection().query(
            "select bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId = ? order by "
            "bodyId",
            {idOf(node)});
        while (rows.next()) {
            found.push_back(rows.text("bodyId") + " " + rows.text("bodyType") + " " + rows.text("feedId") +
                            " " + rows.text("bodyText"));
        }
        return found;
    }
    std::vector<std::string> groups(const std::string& node) {
        std::vector<std::string> found;
        auto rows = connection().query(
            "select groupId from TORVEX_PAGES_GROUPS_DESIGN where pageId = ? order by groupId", {idOf(node)});
        while (rows.next()) found.push_back(rows.text("groupId"));
        return found;
    }
    std::vector<std::string> metadata(const std::string& node) {
        std::vector<std::string> found;
        auto rows = connection().query(
            "select metaData_id, metaData_inherited, metaData_value from TORVEX_PAGES_METADATA_DESIGN "
            "where metaData_pageId = ? order by metaData_id",
            {idOf(node)});
        while (rows.next()) {
            found.push_back(rows.text("metaData_id") + " " + rows.text("metaData_inherited") + " " +
                            rows.text("metaData_value"));
        }
        return found;
    }
    /// The children 01 to `last` of a page.
    void children(const std::string& parent, int last) {
        for (int i = 1; i <= last; ++i) {
            page(parent + (i < 10 ? ".0" : ".") + std::to_string(i)).insertInDesignOnly();
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, CopyPageTest, bothEngines(), engineName);

// ---- The order of tests ----

TEST_P(CopyPageTest, NobodyCopies) {
    page("aa.en.01").insert();
    actAsNobody();
    expectRefusal("-10", [&] { return paste("aa.en.01", "aa.en"); });
    expectRefusal("-10", [&] { return paste("nowhere", "nowhere"); });
}

TEST_P(CopyPageTest, ASourceOrATargetThatIsNoPageIsRefused) {
    page("aa.en.01").insert();
    for (const std::string& bad : badIdentifiers()) {
        expectRefusal("-99", [&] { return paste(bad, "aa.en"); });
        expectRefusal("-99", [&] { return paste("aa.en.01", bad); });
    }
    expectRefusal("-99", [&] { return paste("aa.en.02", "aa.en"); });
    expectRefusal("-99", [&] { return paste("12345", "aa.en"); });
    expectRefusal("-99", [&] { return paste("aa.en.01", "54321"); });
}

TEST_P(CopyPageTest, ASystemBranchIsRefusedWhereThereIsOne) {
    page("aa.en.99").type("F").insert();
    page("bb.en.99").type("F").insert();
    expectRefusal("-1", [&] { return paste("aa.en.99", "bb.en", 1); });
}

TEST_P(CopyPageTest, SystemPagesStayAmongThemselves) {
    page("aa.en.01").insert();
    page("aa.en.99").type("F").insert();
    page("aa.en.99.01").insert();
    page("aa.en.99.02").insert();
    // An ordinary page, and a branch itself, into a branch; a page of it out of it.
    expectRefusal("-2", [&] { return paste("aa.en.01", "aa.en.99"); });
    expectRefusal("-2", [&] { return paste("aa.en.99", "aa.en.99.01"); });
    expectRefusal("-2", [&] { return paste("aa.en.99.01", "aa.en.01"); });
    expectRefusal("-2", [&] { return paste("aa.en.99.01", "bb.en"); });
    EXPECT_EQ(paste("aa.en.99.01", "aa.en.99.02"), "aa.en.99.02.01");
}

TEST_P(CopyPageTest, ASystemBranchGoesWhereThereIsNone) {
    page("aa.en.99").type("F").order(99).insert();
    page("aa.en.99.01").insert();
    EXPECT_EQ(paste("aa.en.99", "bb.en", 1), "bb.en.99");
    EXPECT_EQ(at("bb.en.99", "orderId"), "99");
    EXPECT_EQ(at("bb.en.99", "parent"), "bb.en");
    EXPECT_TRUE(exists("bb.en.99.01"));
}

TEST_P(CopyPageTest, WithoutAFreeTitleThereIsNoCopy) {
    const std::string longest(44, 'x');
    page("aa.en.01").title(longest).insert();
    expectRefusal("-3", [&] { return paste("aa.en.01", "aa.en"); });
    // Elsewhere the title is free.
    EXPECT_EQ(paste("aa.en.01", "bb.en"), "bb.en.01");
}

TEST_P(CopyPageTest, LengthsOfTitlesAreCharacters) {
    std::string title;
    for (int i = 0; i < 43; ++i) title += "É";
    page("aa.en.01").title(title).insert();
    EXPECT_EQ(paste("aa.en.01", "aa.en"), "aa.en.02");
    EXPECT_EQ(at("aa.en.02", "title"), title + " (copy)");
    expectRefusal("-3", [&] { return paste("aa.en.02", "aa.en"); });
}

TEST_P(CopyPageTest, WithoutAFreeNumberThereIsNoCopy) {
    page("bb.en.01").insert();
    children("aa.en", 98);
    expectRefusal("-4", [&] { return paste("bb.en.01", "aa.en"); });
    // The title is tested ahead of the place.
    page("bb.en.02").title("aa.en.05").insert();
    connection().execute("update TORVEX_PAGES_DESIGN set title = ? where nodeId = 'aa.en.05'",
                         {std::string_view("a title that is much too long to be extended by anything")});
    page("bb.en.03").title("a title that is much too long to be extended by anything").insert();
    expectRefusal("-3", [&] { return paste("bb.en.03", "aa.en"); });
}

TEST_P(CopyPageTest, WithoutAFreeSortPositionThereIsNoCopy) {
    page("bb.en.01").insert();
    for (int i = 1; i <= 49; ++i) {
        const std::string number = (i < 10 ? "0" : "") + std::to_string(i);
        page("aa.en." + number).order(2 * i - 1).insertInDesignOnly();
        page("aa.en." + std::to_string(i + 49)).order(2 * i).insertInDesignOnly();
    }
    connection().execute("update TORVEX_PAGES_DESIGN set nodeId = 'cc.en.01' where nodeId = 'aa.en.05'");
    expectRefusal("-4", [&] { return paste("bb.en.01", "aa.en"); });
}

// ---- The title ----

TEST_P(CopyPageTest, BesideASiblingOfThatTitleTheWordIsAdded) {
    page("aa.en.01").title("News").insert();
    EXPECT_EQ(paste("aa.en.01", "aa.en"), "aa.en.02");
    EXPECT_EQ(at("aa.en.02", "title"), "News (copy)");
    EXPECT_EQ(paste("aa.en.01", "aa.en"), "aa.en.03");
    EXPECT_EQ(at("aa.en.03", "title"), "News (copy) (copy)");
}

TEST_P(CopyPageTest, ALiveSiblingOfThatTitleCountsAsWell) {
    page("aa.en.01").title("News").insertInDesignOnly();
    page("bb.en.01").id(2001).title("Other").insertInDesignOnly();
    page("bb.en.01").id(2001).title("NEWS").insertInLiveOnly();
    EXPECT_EQ(paste("aa.en.01", "bb.en"), "bb.en.02");
    EXPECT_EQ(at("bb.en.02", "title"), "News (copy)");
}

TEST_P(CopyPageTest, TheTitleIsThatOfTheMode) {
    const PageId id = page("aa.en.01").title("Design").insertInDesignOnly();
    page("aa.en.01").id(id).title("Live").insertInLiveOnly();
    EXPECT_EQ(paste("aa.en.01", "bb.en", 0, "D"), "bb.en.01");
    EXPECT_EQ(paste("aa.en.01", "bb.en", 0, " l "), "bb.en.02");
    EXPECT_EQ(at("bb.en.01", "title"), "Design");
    EXPECT_EQ(at("bb.en.02", "title"), "Live");
}

TEST_P(CopyPageTest, TheWordIsOfTheInterfaceLanguage) {
    word(2581, "Abschrift");
    page("aa.en.01").title("News").insert();
    paste("aa.en.01", "aa.en");
    EXPECT_EQ(at("aa.en.02", "title"), "News (Abschrift)");
}

TEST_P(CopyPageTest, AnUntitledPageIsCopiedUnderTheWordThatStandsForItsTitle) {
    page("aa.en.01").title("").insert();
    paste("aa.en.01", "bb.en");
    EXPECT_EQ(at("bb.en.01", "title"), "[no title]");
}

// ---- What is copied ----

TEST_P(CopyPageTest, FlagZeroCopiesThePageAlone) {
    page("aa.en.01").insert();
    page("aa.en.01.01").insert();
    EXPECT_EQ(paste("aa.en.01", "bb.en"), "bb.en.01");
    EXPECT_THAT(branch("bb.en"), ElementsAre("bb.en", "bb.en.01"));
}

TEST_P(CopyPageTest, AnyOtherFlagCopiesWhatIsBelow) {
    page("aa.en.01").insert();
    page("aa.en.01.01").order(7).title("First").insert();
    page("aa.en.01.01.02").insert();
    page("aa.en.02").insert();
    EXPECT_EQ(paste("aa.en.01", "bb.en", -1), "bb.en.01");
    EXPECT_THAT(branch("bb.en.01"), ElementsAre("bb.en.01", "bb.en.01.01", "bb.en.01.01.02"));
    EXPECT_EQ(at("bb.en.01.01", "orderId"), "7");
    EXPECT_EQ(at("bb.en.01.01", "title"), "First");
    EXPECT_EQ(at("bb.en.01.01.02", "parent"), "bb.en.01.01");
    EXPECT_EQ(at("bb.en.01.01.02", "site"), "bb");
    EXPECT_EQ(at("bb.en.01.01.02", "lang"), "en");
}

TEST_P(CopyPageTest, TheFirstCopyTakesTheFreeNumberAndTheLastPlace) {
    page("aa.en.01").order(1).insert();
    page("bb.en.01").order(3).insert();
    page("bb.en.03").order(9).insert();
    EXPECT_EQ(paste("aa.en.01", "bb.en"), "bb.en.02");
    EXPECT_EQ(at("bb.en.02", "orderId"), "10");
}

TEST_P(CopyPageTest, NumbersAndBlanksAroundThemNameThePages) {
    const PageId from = page("aa.en.01").insert();
    const PageId to = page("aa.en.02").insert();
    EXPECT_EQ(paste(" " + ident(from) + " ", " AA.EN.02"), "aa.en.02.01");
    EXPECT_EQ(paste("aa.en.01", ident(to)), "aa.en.02.02");
}

TEST_P(CopyPageTest, AMarkedPageStaysBehindWithItsChildren) {
    page("aa.en.01").insert();
    page("aa.en.01.01").insert();
    marked("aa.en.01.02").insert();
    page("aa.en.01.02.01").insert();
    marked("aa.en.01.02.01.01").insert();
    page("aa.en.01.03").insert();
    marked("aa.en.01.04").insert();
    EXPECT_EQ(paste("aa.en.01", "bb.en", 1), "bb.en.01");
    EXPECT_THAT(branch("bb.en.01"), ElementsAre("bb.en.01", "bb.en.01.01", "bb.en.01.03"));
}

TEST_P(CopyPageTest, FromLiveTheRowsAreTakenAsTheyAre) {
    page("aa.en.01").insert();
    marked("aa.en.01.02").title("Marked").insert();
    page("aa.en.01.03").insertInDesignOnly();
    EXPECT_EQ(paste("aa.en.01", "bb.en", 1, "L"), "bb.en.01");
    EXPECT_THAT(branch("bb.en.01"), ElementsAre("bb.en.01", "bb.en.01.02"));
    EXPECT_EQ(statuses(idOf("bb.en.01.02")), "M000");
}

TEST_P(CopyPageTest, WhereNothingIsCopiedTheNodeIsAnsweredWithoutALine) {
    marked("aa.en.01").insert();
    page("aa.en.01.01").insert();
    page("aa.en.02").insertInDesignOnly();
    EXPECT_EQ(paste("aa.en.01", "bb.en", 1), "bb.en.01");
    EXPECT_EQ(paste("aa.en.01", "bb.en", 0), "bb.en.01");
    EXPECT_EQ(paste("aa.en.02", "bb.en", 1, "L"), "bb.en.01");
    EXPECT_THAT(branch("bb.en"), ElementsAre("bb.en"));
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(CopyPageTest, ABranchIsCopiedIntoItself) {
    page("aa.en.01").insert();
    page("aa.en.01.01").insert();
    designBody(idOf("aa.en.01.01"), 1, "text");
    EXPECT_EQ(paste("aa.en.01", "aa.en.01.01", 1), "aa.en.01.01.01");
    EXPECT_THAT(branch("aa.en.01.01"), ElementsAre("aa.en.01.01", "aa.en.01.01.01", "aa.en.01.01.01.01"));
    EXPECT_THAT(bodies("aa.en.01.01.01.01"), ElementsAre("1 1 0 text"));
}

TEST_P(CopyPageTest, ANodeThatOnlyBeginsAlikeIsNoPartOfTheBranch) {
    page("aa.en.01").insert();
    page("aa.en.010").insertInDesignOnly();
    EXPECT_EQ(paste("aa.en.01", "bb.en", 0), "bb.en.01");
    EXPECT_THAT(branch("bb.en"), ElementsAre("bb.en", "bb.en.01"));
}

TEST_P(CopyPageTest, OfTheSameTreeEverythingIsKept) {
    page("aa.en.01")
        .type("A")
        .neighbours(11, 12, 13)
        .application(5)
        .baseTemplate(2)
        .contentTemplate(3)
        .stylesheet(4)
        .dates("20260101", "20261231")
        .set("app_param_public", "a=1")
        .set("app_param_admin", "b=2")
        .set("app_system_folder", 77)
        .set("breadcrumb", "1")
        .set("dynMenu", "1")
        .set("loginPage", 66)
        .insert();
    paste("aa.en.01", "aa.en.01");
    for (const auto& [column, value] :
         std::initializer_list<std::pair<const char*, const char*>>{{"type", "A"},
                                                                    {"previous", "11"},
                                                                    {"next", "12"},
                                                                    {"up", "13"},
                                                                    {"navigation", "M"},
                                                                    {"application", "5"},
                                                                    {"baseTemplate", "2"},
                                                                    {"template", "3"},
                                                                    {"stylesheet", "4"},
                                                                    {"onlineFrom", "20260101"},
                                                                    {"onlineTo", "20261231"},
                                                                    {"app_param_public", "a=1"},
                                                                    {"app_param_admin", "b=2"},
                                                                    {"app_system_folder", "77"},
                                                                    {"breadcrumb", "1"},
                                                                    {"dynMenu", "1"},
                                                                    {"loginPage", "66"}}) {
        EXPECT_EQ(at("aa.en.01.01", column), value) << column;
    }
}

TEST_P(CopyPageTest, InAnotherTreeWhatOnlyTheOldOneHasIsLost) {
    page("aa.en.01")
        .neighbours(11, 12, 13)
        .application(5)
        .baseTemplate(2)
        .contentTemplate(3)
        .stylesheet(4)
        .set("app_system_folder", 77)
        .set("loginPage", 66)
        .set("app_param_public", "a=1")
        .insert();
    page("aa.en.01.01").contentTemplate(3).set("app_system_folder", 0).insert();
    paste("aa.en.01", "bb.en", 1);
    for (const auto& [column, value] :
         std::initializer_list<std::pair<const char*, const char*>>{{"previous", "-1"},
                                                                    {"next", "-1"},
                                                                    {"up", "-1"},
                                                                    {"navigation", "A"},
                                                                    {"application", "5"},
                                                                    {"baseTemplate", "0"},
                                                                    {"template", "0"},
                                                                    {"stylesheet", "0"},
                                                                    {"app_param_public", "a=1"},
                                                                    {"app_system_folder", "-1"},
                                                                    {"loginPage", "-1"}}) {
        EXPECT_EQ(at("bb.en.01", column), value) << column;
    }
    EXPECT_EQ(at("bb.en.01.01", "template"), "0");
    EXPECT_EQ(at("bb.en.01.01", "app_system_folder"), "0");
    // The source isn't touched.
    EXPECT_EQ(at("aa.en.01", "template"), "3");
}

TEST_P(CopyPageTest, AnotherLanguageOfTheSiteIsAnotherTree) {
    page("aa.de").insert();
    const PageId source = page("aa.en.01").contentTemplate(3).insert();
    designBody(source, 1, "", 2, 9);
    EXPECT_EQ(paste("aa.en.01", "aa.de"), "aa.de.01");
    EXPECT_EQ(at("aa.de.01", "template"), "0");
    EXPECT_THAT(bodies("aa.de.01"), ElementsAre("1 1 0 "));
}

TEST_P(CopyPageTest, BodiesOfTheSameTreeKeepTheirFeeds) {
    const PageId source = page("aa.en.01").insert();
    designBody(source, 1, "it's a text");
    designBody(source, 2, "old text", 2, 9);
    designBody(source, 3, "", 3, 8);
    paste("aa.en.01", "aa.en.01");
    EXPECT_THAT(bodies("aa.en.01.01"), ElementsAre("1 1 0 it's a text", "2 2 9 ", "3 3 8 "));
}

TEST_P(CopyPageTest, InAnotherTreeFeedsBecomeTextsWithoutText) {
    const PageId source = page("aa.en.01").insert();
    designBody(source, 1, "text");
    designBody(source, 2, "old text", 2, 9);
    paste("aa.en.01", "bb.en");
    EXPECT_THAT(bodies("bb.en.01"), ElementsAre("1 1 0 text", "2 1 0 "));
    EXPECT_THAT(bodies("aa.en.01"), ElementsAre("1 1 0 text", "2 2 9 old text"));
}

TEST_P(CopyPageTest, OnlyAContentPageHasItsBodiesCopied) {
    const PageId source = page("aa.en.01").type("A").insert();
    designBody(source, 1, "text");
    paste("aa.en.01", "bb.en");
    EXPECT_THAT(bodies("bb.en.01"), IsEmpty());
}

TEST_P(CopyPageTest, FromLiveTheLiveBodiesGroupsAndMetaDataAreTaken) {
    const PageId source = page("aa.en.01").insert();
    designBody(source, 1, "design");
    body(source, 1, "live");
    designGroup(source, 5);
    pageGroup(source, 6);
    designMetadata(source, 1, "design");
    metaData(source, 2, "live");
    paste("aa.en.01", "bb.en", 0, "L");
    EXPECT_THAT(bodies("bb.en.01"), ElementsAre("1 1 0 live"));
    EXPECT_THAT(groups("bb.en.01"), ElementsAre("6"));
    EXPECT_THAT(metadata("bb.en.01"), ElementsAre("2 0 live"));
}

TEST_P(CopyPageTest, GroupsAndMetaDataTravelWithFoldersToo) {
    const PageId source = page("aa.en.01").type("F").insert();
    designGroup(source, 5);
    designGroup(source, 5);
    designMetadata(source, 1, "one");
    designMetadata(source, 2, {}, 1);
    paste("aa.en.01", "bb.en");
    EXPECT_THAT(groups("bb.en.01"), ElementsAre("5", "5"));
    EXPECT_THAT(metadata("bb.en.01"), ElementsAre("1 0 one", "2 1 "));
}

// ---- The state of a copy ----

TEST_P(CopyPageTest, WhatWasPublishedIsModifiedAndWhatIsNewStaysNew) {
    int pageId = 10;
    for (const auto& [number, status] :
         std::initializer_list<std::pair<const char*, const char*>>{{"01", "P"}, {"02", "N"}, {"03", "M"}}) {
        // A copy gets the number behind the last.
        page(std::string("aa.en.") + number).id(pageId += 10).set("editStatus", status).insert();
        paste(std::string("aa.en.") + number, "bb.en");
    }
    EXPECT_EQ(at("bb.en.01", "editStatus"), "M");
    EXPECT_EQ(at("bb.en.02", "editStatus"), "N");
    EXPECT_EQ(at("bb.en.03", "editStatus"), "M");
    EXPECT_EQ(paste("aa.en.02", "bb.en", 0, "L"), "bb.en.04");
    EXPECT_EQ(at("bb.en.04", "editStatus"), "M");
}

TEST_P(CopyPageTest, ACopyIsFreeUnapprovedAndOnlyInTheDesign) {
    approved("aa.en.01").set("lockStatus", 1).set("lockedBy", bert).insert();
    paste("aa.en.01", "bb.en");
    const PageId copy = idOf("bb.en.01");
    EXPECT_EQ(statuses(copy), "M000");
    EXPECT_EQ(design(copy, "lockedBy"), "-");
    EXPECT_EQ(design(copy, "approvedBy"), "-");
    EXPECT_EQ(design(copy, "editor"), std::to_string(anna));
    EXPECT_EQ(design(copy, "editingDate"), "2026-06-15T12:00:00");
    EXPECT_FALSE(isLive(copy));
    EXPECT_EQ(paste("aa.en.01", "bb.en", 0, "L"), "bb.en.02");
    EXPECT_FALSE(isLive(idOf("bb.en.02")));
}

TEST_P(CopyPageTest, MailsAwaitModifiedCopiesOnlyWhereTheyAreWanted) {
    page("aa.en.01").set("editStatus", "P").insert();
    page("aa.en.02").set("editStatus", "N").insert();
    paste("aa.en.01", "bb.en");
    EXPECT_EQ(at("bb.en.01", "emailNotification"), "0");
    host.application.set("torvex_emailNotification", 1);
    paste("aa.en.01", "bb.en");
    paste("aa.en.02", "bb.en");
    EXPECT_EQ(at("bb.en.02", "emailNotification"), "1");
    EXPECT_EQ(at("bb.en.03", "emailNotification"), "0");
}

// ---- The trail ----

TEST_P(CopyPageTest, BothEndsGetALine) {
    const PageId source = page("aa.en.01").insert();
    page("aa.en.01.01").insert();
    paste("aa.en.01", "bb.en");
    const PageId one = idOf("bb.en.01");
    paste("aa.en.01", "bb.en", 1);
    const PageId two = idOf("bb.en.02");
    EXPECT_THAT(
        auditTrail(),
        ElementsAre(
            annasLine(source, "aa.en.01", "copy", "Copied to page " + ident(one) + " (bb.en.01)"),
            annasLine(one, "bb.en.01", "paste", "Copied from page " + ident(source) + " (aa.en.01)"),
            annasLine(source, "aa.en.01", "copy+", "Copied to page " + ident(two) + " (bb.en.02)"),
            annasLine(two, "bb.en.02", "paste+", "Copied from page " + ident(source) + " (aa.en.01)")));
}

TEST_P(CopyPageTest, ATrailThatCantBeWrittenDoesNotUndoTheCopy) {
    page("aa.en.01").insert();
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_EQ(paste("aa.en.01", "bb.en"), "bb.en.01");
    EXPECT_TRUE(exists("bb.en.01"));
    EXPECT_EQ(host.log.lines.size(), 2U);
}

// ---- Failures ----

TEST_P(CopyPageTest, AFailureAtAnyStepLeavesBothTreesAsTheyWere) {
    const PageId source = page("aa.en.01").contentTemplate(3).insert();
    page("aa.en.01.01").insert();
    marked("aa.en.01.02").insert();
    page("aa.en.01.03").insert();
    designBody(source, 1, "text");
    designGroup(source, 5);
    designMetadata(source, 1, "value");
    failEverywhere(
        "bb.en.01", [&] { return paste("aa.en.01", "bb.en", 1); },
        [&] { EXPECT_THAT(auditTrail(), IsEmpty()); });
}

TEST_P(CopyPageTest, AParentThatVanishesBetweenTestAndCopyIsRefused) {
    page("aa.en.01").insert();
    const PageId target = page("aa.en.02").insert();
    failing().atStep = [&](int step) {
        // Before the transaction begins.
        if (step == 1) connection().execute("delete from TORVEX_PAGES_DESIGN where pageId = ?", {target});
    };
    EXPECT_EQ(paste("aa.en.01", "aa.en.02"), "-99");
    EXPECT_THAT(branch("aa.en"), ElementsAre("aa.en", "aa.en.01"));
}

TEST_P(CopyPageTest, ABrokenDatabaseIsAnError) {
    page("aa.en.01").insert();
    drop("TORVEX_INTERFACE_VOCAB");
    EXPECT_TRUE(
        errorOf([&] { paste("aa.en.01", "bb.en"); }).starts_with(chain({"pastePage !", "getVocab !"})));
}

}  // namespace
}  // namespace torvex::test
