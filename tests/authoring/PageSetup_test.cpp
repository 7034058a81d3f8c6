#include <algorithm>

#include "platform/text/Text.h"
#include "support/SetupTest.h"

namespace torvex::test {
namespace {

class PageSetupTest : public SetupTest {
  protected:
    /// Refused with the code, and nothing is written.
    void expectRefusedFor(const std::string& pageIdent, const std::string& code) {
        const std::string before = content();
        EXPECT_EQ(manager().savePageSetup(pageIdent), code) << pageIdent.substr(0, 50);
        EXPECT_EQ(content(), before);
    }
    void set(const std::string& assignments, PageId pageId) {
        connection().execute("update TORVEX_PAGES_DESIGN set " + assignments +
                             " where pageId = " + text::fromNumber(pageId));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PageSetupTest, bothEngines(), engineName);

// ---- What is written ----

TEST_P(PageSetupTest, TheRowTakesTheWholeRecord) {
    filled([](cManager& record) {
        giveDesign(record);
        record.setPgOrderId(17);
        record.setPgNavigation("M");
        record.setPgPrevious(0);
        record.setPgNext(11);
        record.setPgUp(10);
        record.setPgOnlineFrom("20260101");
        record.setPgOnlineTo("");
        record.setPgDynMenu("1");
        record.setPgGroups("Staff");
        record.setPgLoginPage(11);
    });
    EXPECT_EQ(saveTwelve(), "0");
    auto rows = connection().query("select * from TORVEX_PAGES_DESIGN where pageId = 12");
    ASSERT_TRUE(rows.next());
    for (const auto& [column, value] :
         std::initializer_list<std::pair<const char*, const char*>>{{"site", "aa"},
                                                                    {"lang", "en"},
                                                                    {"nodeId", "aa.en.02"},
                                                                    {"orderId", "17"},
                                                                    {"parent", "aa.en"},
                                                                    {"Type", "P"},
                                                                    {"title", "Fresh"},
                                                                    {"navigation", "M"},
                                                                    {"previous", "0"},
                                                                    {"Next", "11"},
                                                                    {"up", "10"},
                                                                    {"template", "2"},
                                                                    {"application", "-1"},
                                                                    {"app_param_public", ""},
                                                                    {"app_param_admin", ""},
                                                                    {"app_system_folder", "-1"},
                                                                    {"StyleSheet", "3"},
                                                                    {"BaseTemplate", "1"},
                                                                    {"onlineFrom", "20260101"},
                                                                    {"onlineTo", ""},
                                                                    {"breadcrumb", "1"},
                                                                    {"dynMenu", "1"},
                                                                    {"loginPage", "11"},
                                                                    {"editStatus", "M"},
                                                                    {"editor", "7"}}) {
        EXPECT_FALSE(rows.isNull(column)) << column;
        EXPECT_EQ(rows.text(column), value) << column;
    }
    EXPECT_EQ(rows.value("editingDate"), Value(host.clock.now()));
}

TEST_P(PageSetupTest, SavingTakesBackAMarkAndAnApproval) {
    set("editStatus = 'P', deleteStatus = 1, deletedBy = 8, deletingDate = '2026-01-01 10:00:00', "
        "approveStatus = 1, approvedBy = 8, approvingDate = '2026-01-01 10:00:00', emailNotification = 1",
        12);
    filled();
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(statuses(12), "M000");
    auto rows = connection().query("select * from TORVEX_PAGES_DESIGN where pageId = 12");
    ASSERT_TRUE(rows.next());
    EXPECT_TRUE(rows.isNull("deletedBy"));
    EXPECT_TRUE(rows.isNull("deletingDate"));
    EXPECT_EQ(rows.text("approvedBy"), "8") << "who approved it before stays known";
    EXPECT_EQ(rows.value("approvingDate"), Value(DateTime{2026, 1, 1, 10, 0, 0}));
    EXPECT_EQ(rows.text("emailNotification"), "1");
}

TEST_P(PageSetupTest, OtherPagesAndTheLivePageStayAsTheyAre) {
    const auto others = [this] {
        return cell("select title from TORVEX_PAGES_LIVE where pageId = 12") + liveOrderOf("aa.en.02") +
               column("title", 11) + column("orderId", 11);
    };
    const std::string before = others();
    filled().setPgOrderId(1);
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(others(), before);
    EXPECT_EQ(orderOf("aa.en.02"), "1");
}

TEST_P(PageSetupTest, ThePageIsNamedByItsNumberOrItsNode) {
    for (const auto* ident : {"12", "  12 ", "aa.en.02", " AA.EN.02 "}) {
        filled().setPgTitle(std::string("By ") + ident);
        manager().setPgPageId(11);
        manager().setPgNodeId("aa.en.01");
        EXPECT_EQ(manager().savePageSetup(ident), "0") << ident;
        EXPECT_EQ(manager().pgPageId(), 12);
        EXPECT_EQ(manager().pgNodeId(), "aa.en.02");
        EXPECT_EQ(column("title", 12), text::trim(std::string("By ") + ident));
    }
    EXPECT_EQ(column("title", 11), "Eleven");
}

TEST_P(PageSetupTest, TheAuditTrailSaysThatThePageWasSaved) {
    filled();
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(auditTrail(),
              std::vector<std::string>{"7|Anna Author|12|aa.en.02|0|save|Page setup has been updated"});
    EXPECT_EQ(cell("select pageTitle from TORVEX_AUDIT_TRAIL"), "Fresh");
}

TEST_P(PageSetupTest, ARecordThatWasReadIsSavedAsItWas) {
    set("editStatus = 'N', navigation = 'A', breadcrumb = '1', dynMenu = '1', title = 'Twelve', "
        "onlineFrom = '20260101', onlineTo = ''",
        12);
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 5}});
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 1}});
    const std::string order = column("orderId", 12);
    nextRequest().getPage("12", "D");
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(column("orderId", 12), order);
    EXPECT_EQ(column("title", 12), "Twelve");
    EXPECT_EQ(column("dynMenu", 12), "1");
    EXPECT_EQ(groupsOf(12), "1 5");
}

// ---- Roots ----

TEST_P(PageSetupTest, ARootNeedsADesignOfItsOwn) {
    filled().setPgTitle("Eleven");
    expectRefusedFor("10", "-25");
    manager().setPgBaseTemplateId(1);
    expectRefusedFor("10", "-23");
    manager().setPgTemplateId(2);
    expectRefusedFor("aa.en", "-26");
    manager().setPgStylesheetId(3);
    EXPECT_EQ(manager().savePageSetup("aa.en"), "0");
    EXPECT_EQ(column("parent", 10), "");
    EXPECT_EQ(column("title", 10), "Eleven");
}

// ---- Refusals of its own ----

TEST_P(PageSetupTest, NobodySavesNothingWhateverElseIsWrong) {
    actAsNobody();
    expectRefusedFor("nowhere", "-10");
    EXPECT_EQ(manager().pgNodeId(), "");
}

TEST_P(PageSetupTest, APageThatIsNotThereIsInNoWebsite) {
    for (const std::string& ident : badIdentifiers()) {
        filled();
        const std::string before = content();
        const std::string code = manager().savePageSetup(ident);
        EXPECT_TRUE(code == "-20" || code == "-25" || code == "-4" || code == "-2")
            << ident.substr(0, 50) << " " << code;
        EXPECT_EQ(content(), before);
    }
    for (const auto* ident : {"", "999", "-12", "12.5", "nowhere", "zz.en.01", "aa.zz.01"}) {
        filled();
        expectRefusedFor(ident, "-20");
    }
}

TEST_P(PageSetupTest, TitleAndTypeAreBroughtIntoFormBeforeTheWebsiteIsTested) {
    page("zz.en.01").id(20).insert();
    filled().setPgTitle("  Eleven  ");
    manager().setPgType("x");
    expectRefusedFor("20", "-20");
    EXPECT_EQ(manager().pgTitle(), "Eleven");
    EXPECT_EQ(manager().pgType(), "X");
    EXPECT_EQ(manager().pgPageId(), 20);
    EXPECT_EQ(manager().pgNodeId(), "zz.en.01");
}

TEST_P(PageSetupTest, ASystemBranchIsNoTypeToSave) {
    filled().setPgType("S");
    expectRefusedFor("13", "-22");
}

TEST_P(PageSetupTest, APageWithoutItsParentIsRefused) {
    page("aa.en.07.01").id(20).set("lockStatus", 1).set("lockedBy", 8).insertInDesignOnly();
    filled();
    expectRefusedFor("20", "-4");
    expectRefusedFor("aa.en.07.02", "-4");
}

TEST_P(PageSetupTest, ANodeWithoutAPageIsRefused) {
    filled();
    expectRefusedFor("aa.en.77", "-2");
    EXPECT_EQ(manager().pgPageId(), 0);
    EXPECT_EQ(manager().pgNodeId(), "aa.en.77");
}

TEST_P(PageSetupTest, APageThatIsOnlyLiveIsRefused) {
    page("aa.en.07").id(20).insertInLiveOnly();
    filled();
    expectRefusedFor("aa.en.07", "-2");
    expectRefusedFor("20", "-20");
}

TEST_P(PageSetupTest, APageThatAnotherAuthorHoldsIsRefused) {
    contentTemplate(8, "aa", "en", "", "");
    for (const auto* lockedBy : {"8", "null", "0"}) {
        set(std::string("lockStatus = 1, lockedBy = ") + lockedBy, 12);
        filled().setPgTemplateId(8);
        expectRefusedFor("12", "-1");
    }
}

TEST_P(PageSetupTest, ThePageThatTheAuthorHoldsStaysHeld) {
    set("lockStatus = 1, lockedBy = 7, lockingDate = '2026-06-01 08:00:00'", 12);
    filled();
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(statuses(12), "M100");
    EXPECT_EQ(column("lockedBy", 12), "7");
    EXPECT_EQ(cell("select lockingDate from TORVEX_PAGES_DESIGN where pageId = 12"), "2026-06-01T08:00:00");
}

TEST_P(PageSetupTest, ThatAPageWasHeldOnceIsNoLock) {
    set("lockStatus = 0, lockedBy = 8", 12);
    filled();
    EXPECT_EQ(saveTwelve(), "0");
    set("lockStatus = null, lockedBy = 8", 12);
    filled().setPgTitle("Again");
    EXPECT_EQ(saveTwelve(), "0");
}

// ---- Bodies ----

TEST_P(PageSetupTest, BodiesThatTheTemplateHasNoPlaceForAreDropped) {
    for (const int bodyId : {1, 2, 3, 7}) designBody(12, bodyId);
    designBody(11, 3);
    body(12, 3, "Live");
    filled().setPgTemplateId(2);
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(bodiesOf(12), "1 2");
    EXPECT_EQ(bodiesOf(11), "3") << "another page's";
    EXPECT_EQ(cell("select count(*) from TORVEX_BODIES_LIVE"), "1");
}

TEST_P(PageSetupTest, ATemplateWithoutBodiesLeavesNone) {
    contentTemplate(8, "aa", "en", "bare.htm", "<p>torvex_body_1</p>");
    designBody(12, 1);
    filled().setPgTemplateId(8);
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(bodiesOf(12), "");
}

TEST_P(PageSetupTest, APageThatInheritsItsTemplateKeepsItsBodies) {
    for (const int bodyId : {1, 7}) designBody(12, bodyId);
    filled();
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(bodiesOf(12), "1 7");
}

TEST_P(PageSetupTest, OnlyAContentPageHasBodies) {
    for (const auto* type : {"F", "A"}) {
        designBody(12, 1);
        designBody(11, 1);
        filled().setPgType(type);
        manager().setPgAppId(4);
        manager().setPgTemplateId(2);
        EXPECT_EQ(saveTwelve(), "0");
        EXPECT_EQ(bodiesOf(12), "");
        EXPECT_EQ(bodiesOf(11), "1");
        connection().execute("delete from TORVEX_BODIES_DESIGN");
    }
}

TEST_P(PageSetupTest, ATemplateThatCannotBeReadUndoesAll) {
    designBody(12, 3);
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 5}});
    contentTemplate(8, "aa", "en", "", "");
    contentTemplate(9, "aa", "en", "gone.htm", "");
    host.files.bytes.erase("/install/contentTemplates/aa/en/gone.htm");
    for (const int unreadable : {8, 9}) {
        filled().setPgTemplateId(unreadable);
        expectRefusedFor("12", "-34");
    }
}

TEST_P(PageSetupTest, ATemplateOfAFolderNeedNotBeReadable) {
    contentTemplate(8, "aa", "en", "", "");
    filled().setPgTemplateId(8);
    manager().setPgType("F");
    EXPECT_EQ(saveTwelve(), "0");
}

// ---- Meta data ----

TEST_P(PageSetupTest, PagesOfTheSystemBranchLoseTheirMetaData) {
    for (const int pageId : {12, 13, 14}) {
        row("TORVEX_PAGES_METADATA_DESIGN", {{"metaData_pageId", pageId}, {"metaData_id", 1}});
        row("TORVEX_PAGES_METADATA_LIVE", {{"metaData_pageId", pageId}, {"metaData_id", 1}});
    }
    const auto left = [this] { return cell("select count(*) from TORVEX_PAGES_METADATA_DESIGN"); };
    filled();
    EXPECT_EQ(saveTwelve(), "0");
    EXPECT_EQ(left(), "3");
    filled().setPgType("F");
    EXPECT_EQ(manager().savePageSetup("14"), "0");
    EXPECT_EQ(left(), "2");
    EXPECT_EQ(cell("select count(*) from TORVEX_PAGES_METADATA_LIVE"), "3");
    filled().setPgType("F");
    manager().setPgTitle("System");
    EXPECT_EQ(manager().savePageSetup("aa.en.99"), "0");
    EXPECT_EQ(left(), "1");
}

}  // namespace
}  // namespace torvex::test
