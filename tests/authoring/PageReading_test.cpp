#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class PageReadingTest : public ManagerTest {
  protected:
    /// The record is that of a new object.
    void expectNothing() {
        const cManager& page = manager();
        EXPECT_FALSE(page.pgExists());
        for (const double number :
             {page.pgPageId(), page.pgAppSystemFolder(), page.pgLoginPage(), page.pgTotalHits(),
              static_cast<double>(page.pgLockStatus()), static_cast<double>(page.pgDeleteStatus()),
              static_cast<double>(page.pgApproveStatus())}) {
            EXPECT_EQ(number, 0);
        }
        for (const double number :
             {page.pgOrderId(), page.pgPrevious(), page.pgNext(), page.pgUp(),
              static_cast<double>(page.pgTemplateId()), static_cast<double>(page.pgStylesheetId()),
              static_cast<double>(page.pgBaseTemplateId()), static_cast<double>(page.pgAppId()),
              static_cast<double>(page.pgOnline())}) {
            EXPECT_EQ(number, -1);
        }
        EXPECT_EQ(page.pgBreadcrumb(), "-1");
        EXPECT_EQ(page.pgDynMenu(), "-1");
        expectNoTexts();
        for (const DateTime& moment : {page.pgAuthoringDate(), page.pgPublishingDate(), page.pgEditingDate(),
                                       page.pgLockingDate(), page.pgDeletingDate(), page.pgApprovingDate()}) {
            EXPECT_EQ(moment, never);
        }
    }
    void expectNoTexts() {
        const cManager& page = manager();
        for (const std::string& text :
             {page.pgNodeId(),           page.pgType(),           page.pgTitle(),
              page.pgNavigation(),       page.pgOnlineFrom(),     page.pgOnlineTo(),
              page.pgEditStatus(),       page.pgAuthor(),         page.pgPublisher(),
              page.pgEditor(),           page.pgLockedBy(),       page.pgDeletedBy(),
              page.pgApprovedBy(),       page.pgTemplateFile(),   page.pgTemplateName(),
              page.pgStylesheetFile(),   page.pgStylesheetName(), page.pgBaseTemplateFile(),
              page.pgBaseTemplateName(), page.pgAppName(),        page.pgAppDesc(),
              page.pgAppParamPublic(),   page.pgAppParamAdmin(),  page.pgAppURLpublic(),
              page.pgAppURLadmin(),      page.pgGroups()}) {
            EXPECT_EQ(text, "");
        }
    }
    void expectNoWorkflow() {
        EXPECT_EQ(manager().pgEditStatus(), "");
        EXPECT_EQ(manager().pgLockStatus(), 0);
        EXPECT_EQ(manager().pgEditor(), "");
        EXPECT_EQ(manager().pgLockedBy(), "");
        EXPECT_EQ(manager().pgDeletedBy(), "");
        EXPECT_EQ(manager().pgApprovedBy(), "");
        EXPECT_EQ(manager().pgEditingDate(), never);
        EXPECT_EQ(manager().pgLockingDate(), never);
        EXPECT_EQ(manager().pgDeletingDate(), never);
        EXPECT_EQ(manager().pgApprovingDate(), never);
    }
    void expectNoPublication() {
        EXPECT_EQ(manager().pgOnline(), -1);
        EXPECT_EQ(manager().pgAuthor(), "");
        EXPECT_EQ(manager().pgPublisher(), "");
        EXPECT_EQ(manager().pgAuthoringDate(), never);
        EXPECT_EQ(manager().pgPublishingDate(), never);
        EXPECT_EQ(manager().pgTotalHits(), 0);
    }

    void set(const std::string& table, PageId pageId, const Columns& columns) {
        for (const auto& [name, value] : columns) {
            const std::string statement = "update " + table + " set " + name + " = ? where pageId = ?";
            if (value.isEmpty()) {
                connection().execute(statement, {nullptr, pageId});
            } else if (value.isDate()) {
                connection().execute(statement, {value.date(), pageId});
            } else if (value.isNumber()) {
                connection().execute(statement, {value.number(), pageId});
            } else {
                connection().execute(statement, {std::string_view(value.text()), pageId});
            }
        }
    }
    void setLive(PageId pageId, const Columns& columns) { set("TORVEX_PAGES_LIVE", pageId, columns); }
    void setDesign(PageId pageId, const Columns& columns) { set("TORVEX_PAGES_DESIGN", pageId, columns); }

    /// "online" of the page 12 with these limits.
    int onlineWith(const Value& from, const Value& to) {
        setLive(12, {{"onlineFrom", from}, {"onlineTo", to}});
        manager().getPage("12");
        return manager().pgOnline();
    }

    static constexpr DateTime never{1900, 1, 1, 0, 0, 0};
};
INSTANTIATE_TEST_SUITE_P(Engines, PageReadingTest, bothEngines(), engineName);

// Whether there is a page

TEST_P(PageReadingTest, ANewObjectHoldsTheRecordOfNoPage) {
    expectNothing();
}

TEST_P(PageReadingTest, APageIsFoundByEitherName) {
    page("aa.en.01").id(12).title("Twelve").insert();
    manager().getPage(" 12 ");
    EXPECT_TRUE(manager().pgExists());
    EXPECT_EQ(manager().pgPageId(), 12);
    EXPECT_EQ(manager().pgNodeId(), "aa.en.01");
    nextRequest().getPage(" AA.EN.01 ", "d");
    EXPECT_TRUE(manager().pgExists());
    EXPECT_EQ(manager().pgPageId(), 12);
}

TEST_P(PageReadingTest, APageOfTheDesignAloneIsNotLive) {
    page("aa.en.01").id(12).insertInDesignOnly();
    manager().getPage("12");
    expectNothing();
    manager().getPage("12", "D");
    EXPECT_TRUE(manager().pgExists());
}

TEST_P(PageReadingTest, ALivePageWithoutADesignIsNotThere) {
    page("aa.en.01").id(12).insertInLiveOnly();
    manager().getPage("12");
    expectNothing();
    manager().getPage("12", "D");
    expectNothing();
}

TEST_P(PageReadingTest, BadIdentifiersFindNothing) {
    page("aa.en.01").id(12).insert();
    for (const std::string& bad : badIdentifiers()) {
        SCOPED_TRACE(bad.substr(0, 40));
        manager().getPage(bad);
        EXPECT_FALSE(manager().pgExists());
        manager().getPage(bad, "D");
        EXPECT_FALSE(manager().pgExists());
    }
}

TEST_P(PageReadingTest, TheRecordOfAnEarlierPageIsReset) {
    page("aa.en.01").id(12).title("Twelve").neighbours(1, 2, 3).insert();
    setDesign(12, {{"lockStatus", 1}, {"deleteStatus", 1}, {"approveStatus", 1}});
    manager().getPage("12", "D");
    EXPECT_TRUE(manager().pgExists());
    manager().getPage("13");
    expectNothing();
}

TEST_P(PageReadingTest, WhatWasSetByHandIsReset) {
    manager().setPgTitle("Mine");
    manager().setPgPageId(77);
    manager().setPgGroups("5");
    manager().setPgLockingDate({2026, 1, 1, 0, 0, 0});
    manager().setPgBreadcrumb("1");
    manager().getPage("");
    expectNothing();
}

// What both modes read

TEST_P(PageReadingTest, TheCommonFieldsComeFromTheTableOfTheMode) {
    for (const bool live : {false, true}) {
        auto made = page("aa.en.01").id(12);
        made.title(live ? " Live " : " Design ")
            .order(live ? 3 : 4)
            .dates(live ? "20260101" : "20260201", "");
        made.set("breadcrumb", live ? "1" : "0").set("dynMenu", live ? "0" : "1").type(live ? " p " : "f");
        made.set("nodeId", live ? " AA.EN.01 " : "aa.en.01").set("app_system_folder", live ? 5 : 6);
        live ? made.insertInLiveOnly() : made.insertInDesignOnly();
    }
    manager().getPage("12");
    EXPECT_EQ(manager().pgTitle(), "Live");
    EXPECT_EQ(manager().pgNodeId(), "aa.en.01");
    EXPECT_EQ(manager().pgOrderId(), 3);
    EXPECT_EQ(manager().pgType(), "P");
    EXPECT_EQ(manager().pgOnlineFrom(), "20260101");
    EXPECT_EQ(manager().pgOnlineTo(), "");
    EXPECT_EQ(manager().pgBreadcrumb(), "1");
    EXPECT_EQ(manager().pgDynMenu(), "0");
    EXPECT_EQ(manager().pgAppSystemFolder(), 5);
    manager().getPage("12", "D");
    EXPECT_EQ(manager().pgTitle(), "Design");
    EXPECT_EQ(manager().pgOrderId(), 4);
    EXPECT_EQ(manager().pgType(), "F");
    EXPECT_EQ(manager().pgOnlineFrom(), "20260201");
    EXPECT_EQ(manager().pgBreadcrumb(), "0");
    EXPECT_EQ(manager().pgDynMenu(), "1");
    EXPECT_EQ(manager().pgAppSystemFolder(), 6);
}

TEST_P(PageReadingTest, AnyModeButDIsLive) {
    page("aa.en.01").id(12).title("Design").insertInDesignOnly();
    page("aa.en.01").id(12).title("Live").insertInLiveOnly();
    for (const auto* mode : {"", "L", "l", "X", "Design"}) {
        manager().getPage("12", mode);
        EXPECT_EQ(manager().pgTitle(), "Live") << mode;
    }
    manager().getPage("12", "d");
    EXPECT_EQ(manager().pgTitle(), "Design");
}

TEST_P(PageReadingTest, AnEmptyTitleIsReplaced) {
    page("aa.en.01").id(12).title("   ").insert();
    page("aa.en.02").id(13).set("title", {}).insert();
    manager().getPage("12");
    EXPECT_EQ(manager().pgTitle(), "[no title]");
    manager().getPage("13", "D");
    EXPECT_EQ(manager().pgTitle(), "[no title]");
}

TEST_P(PageReadingTest, DeletionAndApprovalAreOfTheDesignInBothModes) {
    page("aa.en.01").id(12).insert();
    setDesign(12, {{"deleteStatus", 1}, {"approveStatus", 1}});
    for (const auto* mode : {"L", "D"}) {
        manager().getPage("12", mode);
        EXPECT_EQ(manager().pgDeleteStatus(), 1) << mode;
        EXPECT_EQ(manager().pgApproveStatus(), 1) << mode;
    }
}

TEST_P(PageReadingTest, ThePagesOwnAssetsAreNamed) {
    row("TORVEX_TEMPLATES", {{"tpl_id", 3}, {"tpl_name", "Content"}, {"tpl_filename", "content.html"}});
    row("TORVEX_STYLESHEETS", {{"ss_id", 4}, {"ss_name", "Style"}, {"ss_filename", "site.css"}});
    row("TORVEX_BASETEMPLATES", {{"btpl_id", 5}, {"btpl_name", "Base"}, {"btpl_filename", "base.html"}});
    page("aa.en.01").id(12).contentTemplate(3).stylesheet(4).baseTemplate(5).insert();
    for (const auto* mode : {"L", "D"}) {
        SCOPED_TRACE(mode);
        manager().getPage("12", mode);
        EXPECT_EQ(manager().pgTemplateId(), 3);
        EXPECT_EQ(manager().pgTemplateFile(), "content.html");
        EXPECT_EQ(manager().pgTemplateName(), "Content");
        EXPECT_EQ(manager().pgStylesheetId(), 4);
        EXPECT_EQ(manager().pgStylesheetFile(), "site.css");
        EXPECT_EQ(manager().pgStylesheetName(), "Style");
        EXPECT_EQ(manager().pgBaseTemplateId(), 5);
        EXPECT_EQ(manager().pgBaseTemplateFile(), "base.html");
        EXPECT_EQ(manager().pgBaseTemplateName(), "Base");
    }
}

TEST_P(PageReadingTest, AssetsThatAreInheritedOrGoneHaveNoNames) {
    page("aa.en.01").id(12).contentTemplate(0).stylesheet(77).set("baseTemplate", {}).insert();
    manager().getPage("12", "D");
    EXPECT_EQ(manager().pgTemplateId(), 0);
    EXPECT_EQ(manager().pgTemplateFile(), "");
    EXPECT_EQ(manager().pgStylesheetId(), 77);
    EXPECT_EQ(manager().pgStylesheetName(), "");
    EXPECT_EQ(manager().pgBaseTemplateId(), -1);
}

TEST_P(PageReadingTest, ARowWithNothingButItsNamesIsReadToo) {
    row("TORVEX_PAGES_DESIGN", {{"pageId", 12}, {"nodeId", "aa.en.01"}, {"orderId", {}}});
    row("TORVEX_PAGES_LIVE", {{"pageId", 12}, {"nodeId", "aa.en.01"}, {"orderId", {}}});
    for (const auto* mode : {"L", "D"}) {
        SCOPED_TRACE(mode);
        manager().getPage("12", mode);
        EXPECT_TRUE(manager().pgExists());
        EXPECT_EQ(manager().pgOrderId(), -1);
        EXPECT_EQ(manager().pgType(), "");
        EXPECT_EQ(manager().pgTitle(), "[no title]");
        EXPECT_EQ(manager().pgNavigation(), "");
        EXPECT_EQ(manager().pgPrevious(), -1);
        EXPECT_EQ(manager().pgBreadcrumb(), "-1");
        EXPECT_EQ(manager().pgDynMenu(), "-1");
        EXPECT_EQ(manager().pgAppId(), -1);
        EXPECT_EQ(manager().pgLoginPage(), -1);
    }
}

TEST_P(PageReadingTest, AnOrderThatDoesNotFitIsAnError) {
    page("aa.en.01").id(12).order(40000).insert();
    EXPECT_TRUE(errorOf([&] {
                    manager().getPage("12");
                }).starts_with(chain({"getPage!"}) + "orderId must be a whole number"));
    EXPECT_FALSE(manager().pgExists());
}

// The live page

TEST_P(PageReadingTest, ALivePageTellsWhoMadeIt) {
    login(8, "ben", "Ben Publisher");
    page("aa.en.01").id(12).insert();
    const DateTime written{2026, 2, 3, 4, 5, 6};
    const DateTime published{2026, 3, 4, 5, 6, 7};
    setLive(12,
            {{"author", anna}, {"authoringDate", written}, {"publisher", 8}, {"publishingDate", published}});
    manager().getPage("12");
    EXPECT_EQ(manager().pgAuthor(), "Anna Author");
    EXPECT_EQ(manager().pgAuthoringDate(), written);
    EXPECT_EQ(manager().pgPublisher(), "Ben Publisher");
    EXPECT_EQ(manager().pgPublishingDate(), published);
    expectNoWorkflow();
}

TEST_P(PageReadingTest, ALoginThatIsGoneIsAWordAndNoLoginIsEmpty) {
    page("aa.en.01").id(12).insert();
    setLive(12, {{"author", 77}});
    manager().getPage("12");
    EXPECT_EQ(manager().pgAuthor(), "[unknown]");
    EXPECT_EQ(manager().pgPublisher(), "");
    EXPECT_EQ(manager().pgAuthoringDate(), never);
    EXPECT_EQ(manager().pgPublishingDate(), never);
}

TEST_P(PageReadingTest, ALivePageHasItsHits) {
    page("aa.en.01").id(12).insert();
    row("TORVEX_LOGGING", {{"nodeId", "aa.en.01"}, {"yyyymmdd", "20260601"}, {"hits", 5}});
    row("TORVEX_LOGGING", {{"nodeId", "aa.en.01"}, {"yyyymmdd", "20260602"}, {"hits", 6}});
    manager().getPage("12");
    EXPECT_EQ(manager().pgTotalHits(), 11);
    manager().getPage("12", "D");
    expectNoPublication();
}

TEST_P(PageReadingTest, APageIsOnlineWithinItsDates) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(onlineWith("", ""), 1);
    EXPECT_EQ(onlineWith({}, {}), 1);
    EXPECT_EQ(onlineWith("20260615", "20260615"), 1);
    EXPECT_EQ(onlineWith("00000000", "99999999"), 1);
    EXPECT_EQ(onlineWith("20260616", ""), 0);
    EXPECT_EQ(onlineWith("", "20260614"), 0);
    EXPECT_EQ(onlineWith("20260616", "20260614"), 0);
}

TEST_P(PageReadingTest, APageThatIsSwitchedOffIsNot) {
    page("aa.en.01").id(12).offline().insert();
    EXPECT_EQ(onlineWith("", ""), 0);
}

// The design

TEST_P(PageReadingTest, ADesignTellsItsWorkflow) {
    login(8, "ben", "Ben");
    login(9, "cor", "Cor");
    login(10, "dee", "Dee");
    page("aa.en.01").id(12).insert();
    const auto moment = [](int day) { return DateTime{2026, 5, day, 9, 30, 1}; };
    setDesign(12, {{"editStatus", "M"},
                   {"editor", anna},
                   {"editingDate", moment(1)},
                   {"lockStatus", 1},
                   {"lockedBy", 8},
                   {"lockingDate", moment(2)},
                   {"deletedBy", 9},
                   {"deletingDate", moment(3)},
                   {"approvedBy", 10},
                   {"approvingDate", moment(4)}});
    manager().getPage("12", "D");
    EXPECT_EQ(manager().pgEditStatus(), "M");
    EXPECT_EQ(manager().pgEditor(), "Anna Author");
    EXPECT_EQ(manager().pgEditingDate(), moment(1));
    EXPECT_EQ(manager().pgLockStatus(), 1);
    EXPECT_EQ(manager().pgLockedBy(), "Ben");
    EXPECT_EQ(manager().pgLockingDate(), moment(2));
    EXPECT_EQ(manager().pgDeletedBy(), "Cor");
    EXPECT_EQ(manager().pgDeletingDate(), moment(3));
    EXPECT_EQ(manager().pgApprovedBy(), "Dee");
    EXPECT_EQ(manager().pgApprovingDate(), moment(4));
    expectNoPublication();
    manager().getPage("12");
    expectNoWorkflow();
}

TEST_P(PageReadingTest, AWorkflowThatIsNullIsLeftAsReset) {
    page("aa.en.01").id(12).insert();
    manager().getPage("12", "D");
    expectNoWorkflow();
    EXPECT_EQ(manager().pgDeleteStatus(), 0);
    EXPECT_EQ(manager().pgApproveStatus(), 0);
}

// Failures

TEST_P(PageReadingTest, AFailureNamesAllOnTheWay) {
    page("aa.en.01").id(12).insert();
    setLive(12, {{"author", anna}});
    drop("TORVEX_LOGINS");
    EXPECT_TRUE(errorOf([&] { manager().getPage("12"); }).starts_with(chain({"getPage!", "getLoginName !"})));
    EXPECT_FALSE(manager().pgExists());
    drop("TORVEX_LOGGING");
    EXPECT_TRUE(
        errorOf([&] { manager().getPage("12"); }).starts_with(chain({"getPage!", "getNumberOfViews !"})));
    drop("TORVEX_USERGROUPS");
    EXPECT_TRUE(errorOf([&] {
                    manager().getPage("12", "D");
                }).starts_with(chain({"getPage!", "getPageGroupNames !"})));
    drop("TORVEX_TEMPLATES");
    EXPECT_TRUE(errorOf([&] { manager().getPage("12"); }).starts_with(chain({"getPage!"})));
}

TEST_P(PageReadingTest, AConnectionTextServesAsWellAsAConnection) {
    page("aa.en.01").id(12).title("Twelve").insert();
    cManager other(host.context());
    other.connect(connectionText());
    other.getPage("12");
    EXPECT_EQ(other.pgTitle(), "Twelve");
}

TEST_P(PageReadingTest, AnObjectWithoutAConnectionFails) {
    cManager other(host.context());
    EXPECT_TRUE(errorOf([&] { other.getPage("12", "D"); }).starts_with(chain({"getPage!"})));
}

}  // namespace
}  // namespace torvex::test
