#include "platform/text/Text.h"
#include "support/SetupTest.h"

namespace torvex::test {
namespace {

class NewPageTest : public SetupTest {
  protected:
    void SetUp() override {
        SetupTest::SetUp();
        if (!HasFatalFailure()) language("nl");
    }

    std::string saveRoot(const std::string& lang = "nl") {
        return manager().saveNewPageSetup("aa", lang, "");
    }
    /// Refused with the code, and nothing is written.
    void expectRefusedAsNew(const std::string& code, const std::string& site, const std::string& lang,
                            const std::string& parentIdent) {
        const std::string before = content();
        EXPECT_EQ(manager().saveNewPageSetup(site, lang, parentIdent), code) << site << lang << parentIdent;
        EXPECT_EQ(content(), before);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, NewPageTest, bothEngines(), engineName);

// ---- What is written ----

TEST_P(NewPageTest, ARowHoldsTheWholeRecord) {
    filled([](cManager& record) {
        giveDesign(record);
        record.setPgNavigation("M");
        record.setPgPrevious(11);
        record.setPgNext(12);
        record.setPgUp(10);
        record.setPgOnlineFrom("20260101");
        record.setPgOnlineTo("20261231");
        record.setPgDynMenu("1");
        record.setPgGroups("Staff");
        record.setPgLoginPage(12);
    });
    EXPECT_EQ(saveNew("aa.en.01"), "aa.en.01.01");
    auto rows = connection().query("select * from TORVEX_PAGES_DESIGN where nodeId = 'aa.en.01.01'");
    ASSERT_TRUE(rows.next());
    for (const auto& [column, value] :
         std::initializer_list<std::pair<const char*, const char*>>{{"site", "aa"},
                                                                    {"lang", "en"},
                                                                    {"nodeId", "aa.en.01.01"},
                                                                    {"orderId", "1"},
                                                                    {"parent", "aa.en.01"},
                                                                    {"Type", "P"},
                                                                    {"title", "Fresh"},
                                                                    {"navigation", "M"},
                                                                    {"previous", "11"},
                                                                    {"Next", "12"},
                                                                    {"up", "10"},
                                                                    {"template", "2"},
                                                                    {"application", "-1"},
                                                                    {"app_param_public", ""},
                                                                    {"app_param_admin", ""},
                                                                    {"app_system_folder", "-1"},
                                                                    {"StyleSheet", "3"},
                                                                    {"BaseTemplate", "1"},
                                                                    {"onlineFrom", "20260101"},
                                                                    {"onlineTo", "20261231"},
                                                                    {"breadcrumb", "1"},
                                                                    {"dynMenu", "1"},
                                                                    {"loginPage", "12"},
                                                                    {"editStatus", "N"},
                                                                    {"lockStatus", "0"},
                                                                    {"editor", "7"},
                                                                    {"deleteStatus", "0"},
                                                                    {"approveStatus", "0"},
                                                                    {"emailNotification", "0"}}) {
        EXPECT_FALSE(rows.isNull(column)) << column;
        EXPECT_EQ(rows.text(column), value) << column;
    }
    EXPECT_EQ(rows.value("editingDate"), Value(host.clock.now()));
    for (const auto* column :
         {"lockedBy", "lockingDate", "deletedBy", "deletingDate", "approvedBy", "approvingDate"}) {
        EXPECT_TRUE(rows.isNull(column)) << column;
    }
}

TEST_P(NewPageTest, TheRecordLearnsWhereThePageIs) {
    filled();
    EXPECT_EQ(saveNew(), "aa.en.03");
    EXPECT_EQ(manager().pgNodeId(), "aa.en.03");
    EXPECT_EQ(manager().pgOrderId(), 3);
    EXPECT_EQ(text::fromNumber(manager().pgPageId()),
              cell("select pageId from TORVEX_PAGES_DESIGN where nodeId = 'aa.en.03'"));
    EXPECT_GT(manager().pgPageId(), 14);
}

TEST_P(NewPageTest, ANewPageIsOnlyInTheDesign) {
    filled();
    EXPECT_EQ(saveNew(), "aa.en.03");
    EXPECT_EQ(liveOrderOf("aa.en.03"), "");
    EXPECT_TRUE(manager().isPage("aa.en.03", "D"));
}

TEST_P(NewPageTest, OnlyAContentPageStartsAsNew) {
    for (const auto& [type, statuses] : {std::pair{"P", "N000"}, {"F", "M000"}, {"A", "M000"}}) {
        filled().setPgType(type);
        manager().setPgAppId(4);
        manager().setPgTitle(std::string("Of type ") + type);
        EXPECT_FALSE(saveNew().starts_with("-"));
        EXPECT_EQ(this->statuses(manager().pgPageId()), statuses);
    }
}

TEST_P(NewPageTest, TheAuditTrailNamesTheNode) {
    filled();
    EXPECT_EQ(saveNew(), "aa.en.03");
    const std::string pageId = text::fromNumber(manager().pgPageId());
    EXPECT_EQ(auditTrail(), std::vector<std::string>{"7|Anna Author|" + pageId +
                                                     "|aa.en.03|0|new|New page (node aa.en.03)"});
    EXPECT_EQ(cell("select pageTitle from TORVEX_AUDIT_TRAIL"), "Fresh");
}

// ---- Who, and in which website ----

TEST_P(NewPageTest, NobodyMakesNoPageWhateverElseIsWrong) {
    actAsNobody();
    expectRefusedAsNew("-10", "zz", "zz", "nowhere");
    EXPECT_EQ(manager().pgTitle(), "");
}

TEST_P(NewPageTest, AnUnknownSiteOrLanguageLeavesTheRecordAlone) {
    for (const auto& [site, lang] : {std::pair{"zz", "en"},
                                     {"aa", "zz"},
                                     {"", "en"},
                                     {"aa", ""},
                                     {" aa", "en"},
                                     {"aaa", "en"},
                                     {"a'", "en"},
                                     {"aa", "eñ"}}) {
        filled().setPgTitle("  Eleven ");
        manager().setPgType("x");
        expectRefusedAsNew("-99", site, lang, "aa.en");
        EXPECT_EQ(manager().pgTitle(), "  Eleven ");
        EXPECT_EQ(manager().pgType(), "x");
    }
}

TEST_P(NewPageTest, SiteLanguageAndParentMayBeInCapitals) {
    filled();
    EXPECT_EQ(manager().saveNewPageSetup("AA", "EN", "  AA.EN.01 "), "aa.en.01.01");
    EXPECT_EQ(column("site", manager().pgPageId()), "aa");
    filled();
    giveDesign(manager());
    EXPECT_EQ(manager().saveNewPageSetup("AA", "NL", ""), "aa.nl");
}

// ---- The place ----

TEST_P(NewPageTest, AParentIsNamedByItsNumberToo) {
    filled();
    EXPECT_EQ(saveNew(" 11 "), "aa.en.01.01");
}

TEST_P(NewPageTest, TheLowestFreeNumberIsTaken) {
    page("aa.en.04").id(20).insert();
    filled();
    EXPECT_EQ(saveNew(), "aa.en.03");
    filled().setPgTitle("Another");
    EXPECT_EQ(saveNew(), "aa.en.05");
}

TEST_P(NewPageTest, AParentThatIsNotThereHasNoFreeNumber) {
    for (const std::string& parent :
         {std::string("aa.en.77"), std::string("nowhere"), std::string("aa.en'"), std::string("aa.en.%"),
          std::string(100 * 1024, 'a'), std::string("<b>"), std::string("aa")}) {
        filled();
        expectRefusedAsNew("-5", "aa", "en", parent);
    }
}

TEST_P(NewPageTest, ANumberBelowZeroIsAParentThatIsNotThere) {
    for (const auto* parent : {"-11", " -10 ", "-0", "-999"}) {
        filled();
        giveDesign(manager());
        expectRefusedAsNew("-5", "aa", "nl", parent);
        manager().setPgType("S");
        expectRefusedAsNew("-4", "aa", "nl", parent);
    }
}

TEST_P(NewPageTest, ANumberOfNoPageIsNoParent) {
    for (const auto* parent : {"999", "0", "1.5", "99999999999999999999"}) {
        filled();
        expectRefusedAsNew("-25", "aa", "nl", parent);
        filled();
        giveDesign(manager());
        expectRefusedAsNew("-3", "aa", "en", parent);
    }
}

TEST_P(NewPageTest, ANodeThatStandsUnderAnotherParentIsTaken) {
    page("aa.en.01.01").id(20).set("parent", "aa.en.02").insertInDesignOnly();
    filled();
    expectRefusedAsNew("-3", "aa", "en", "aa.en.01");
    EXPECT_EQ(manager().pgNodeId(), "aa.en.01.01");
}

TEST_P(NewPageTest, ThePlaceIsLookedForWhenAllElseIsRight) {
    filled().setPgGroups("5");
    manager().setPgLoginPage(999);
    expectRefusedAsNew("-30", "aa", "en", "aa.en.77");
    EXPECT_EQ(manager().pgNodeId(), "");
}

// ---- Roots ----

TEST_P(NewPageTest, ARootNeedsADesignOfItsOwn) {
    filled();
    expectRefusedAsNew("-25", "aa", "nl", "");
    manager().setPgBaseTemplateId(1);
    expectRefusedAsNew("-23", "aa", "nl", " ");
    manager().setPgTemplateId(2);
    expectRefusedAsNew("-26", "aa", "nl", "");
    manager().setPgStylesheetId(3);
    EXPECT_EQ(saveRoot(), "aa.nl");
}

TEST_P(NewPageTest, ARootStandsFirstAndHasNoParent) {
    filled();
    giveDesign(manager());
    EXPECT_EQ(saveRoot(), "aa.nl");
    const PageId pageId = manager().pgPageId();
    EXPECT_EQ(column("orderId", pageId), "1");
    EXPECT_EQ(
        cell("select nodeId from TORVEX_PAGES_DESIGN where parent = '' and site = 'aa' and lang = 'nl'"),
        "aa.nl");
    EXPECT_EQ(statuses(pageId), "N000");
}

TEST_P(NewPageTest, ARootMayHaveTheTitleOfAnother) {
    filled();
    giveDesign(manager());
    manager().setPgTitle("Home");
    EXPECT_EQ(saveRoot(), "aa.nl");
}

TEST_P(NewPageTest, AWebsiteHasOneRoot) {
    filled();
    giveDesign(manager());
    expectRefusedAsNew("-3", "aa", "en", "");
}

// ---- System branches ----

TEST_P(NewPageTest, ASystemBranchIsAFolderAtTheEnd) {
    page("aa.nl").id(20).insert();
    filled().setPgType("s");
    manager().setPgBreadcrumb("0");
    EXPECT_EQ(manager().saveNewPageSetup("aa", "nl", "aa.nl"), "aa.nl.99");
    const PageId pageId = manager().pgPageId();
    EXPECT_EQ(manager().pgType(), "F");
    EXPECT_EQ(manager().pgOrderId(), 99);
    EXPECT_EQ(column("type", pageId), "F");
    EXPECT_EQ(column("orderId", pageId), "99");
    EXPECT_EQ(column("breadcrumb", pageId), "0");
    EXPECT_EQ(column("navigation", pageId), "");
    EXPECT_EQ(statuses(pageId), "M000");
}

TEST_P(NewPageTest, ASystemBranchLeavesItsSiblingsWhereTheyAre) {
    connection().execute("delete from TORVEX_PAGES_DESIGN where nodeId like 'aa.en.99%'");
    connection().execute("update TORVEX_PAGES_DESIGN set orderId = 50 where pageId = 12");
    filled().setPgType("S");
    EXPECT_EQ(saveNew("aa.en", "12"), "aa.en.99");
    EXPECT_EQ(orderOf("aa.en.02"), "50");
}

TEST_P(NewPageTest, ASecondSystemBranchIsRefused) {
    filled().setPgType("S");
    expectRefusedAsNew("-6", "aa", "en", "aa.en");
    EXPECT_EQ(manager().pgType(), "S");
}

TEST_P(NewPageTest, ASystemBranchMayStandUnderAnyPage) {
    filled().setPgType("S");
    EXPECT_EQ(saveNew("aa.en.01"), "aa.en.01.99");
}

TEST_P(NewPageTest, ASystemBranchUnderNoPageFindsNoParent) {
    filled().setPgType("S");
    expectRefusedAsNew("-4", "aa", "en", "aa.en.77");
    EXPECT_EQ(manager().pgNodeId(), "aa.en.77.99");
}

TEST_P(NewPageTest, ASystemBranchWithoutAParentIsARootAtTheEnd) {
    filled().setPgType("S");
    giveDesign(manager());
    expectRefusedAsNew("-6", "aa", "en", "");
    EXPECT_EQ(saveRoot(), "aa.nl");
    EXPECT_EQ(column("orderId", manager().pgPageId()), "99");
    EXPECT_EQ(column("type", manager().pgPageId()), "F");
}

}  // namespace
}  // namespace torvex::test
