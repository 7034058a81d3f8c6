// Who reads designs over the network.

#include "accounts/AdminEntries.h"
#include "operations/calls/GateTest.h"
#include "operations/register/Binding.h"

namespace torvex::operations {
namespace {

using Kind = Verdict::Kind;

class GateDesignTest : public GateTest {
  protected:
    const Operation& manager(std::string_view name) { return *classes.find("cManager").findOperation(name); }
    Operation withDefault(Operation operation, std::size_t argument, const char* value) {
        operation.arguments.at(argument).defaultValue = value;
        return operation;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, GateDesignTest, test::bothEngines(), test::engineName);

TEST_P(GateDesignTest, AnyEditRightInTheTreeOpensItsDesigns) {
    const Operation& getPage = manager("getPage");
    EXPECT_EQ(call(getPage, {"11", "D"}), Kind::NoRight);
    editRights(3, "aa", "en", {"onOff"}, "aa.en.02");
    for (const auto* ident : {"11", "10", "aa.en.01", " AA.EN.02 ", "aa.en.99"})
        EXPECT_EQ(call(getPage, {ident, "D"}), Kind::Allowed) << ident;
    for (const auto* ident : {"21", "bb.en.01", "aa.de.01", "aa.de", "BB.en"})
        EXPECT_EQ(call(getPage, {ident, "D"}), Kind::NoRight) << ident;
}

TEST_P(GateDesignTest, AnyEntryOfTheSiteOpensItsDesigns) {
    const Operation& getPage = manager("getPage");
    advancedRight(3, adminEntry::templates, "aa", "de", true, false);
    EXPECT_EQ(call(getPage, {"11", "D"}), Kind::Allowed);
    EXPECT_EQ(call(getPage, {"21", "D"}), Kind::NoRight);
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
    advancedRight(3, adminEntry::images, "", "", false, true);
    EXPECT_EQ(call(getPage, {"21", "D"}), Kind::Allowed);
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
    advancedRight(3, adminEntry::logins, "", "", true, true);
    EXPECT_EQ(call(getPage, {"11", "D"}), Kind::NoRight);
}

TEST_P(GateDesignTest, WhatIsLiveIsForEveryAuthor) {
    for (const auto* name : {"getPage", "getPageGroups", "getLoginPage", "getPageTitle", "getPageType",
                             "getBreadcrumb", "isPage", "getMetaData"}) {
        EXPECT_EQ(call(manager(name), {"21", "L"}), Kind::Allowed) << name;
        EXPECT_EQ(call(manager(name), {"21"}), Kind::Allowed) << name;
        EXPECT_EQ(call(manager(name), {"21", "d"}), Kind::NoRight) << name;
    }
    EXPECT_EQ(call(manager("torvex_preparePage"), {"L", "#edit#"}), Kind::Allowed);
    EXPECT_EQ(call(manager("getBody"), {"21", 1, 0, 0, "L"}), Kind::Allowed);
}

TEST_P(GateDesignTest, AModeThatMayMeanTheDesignCountsAsIt) {
    const Operation live = withDefault(sample({"page", "mode"}, designOf("page", "mode")), 1, "L");
    for (const auto* mode : {"L", "l", " l "}) EXPECT_EQ(call(live, {"11", mode}), Kind::Allowed) << mode;
    for (const auto* mode : {"D", "d", " D ", "", "X", "DL", "Live"})
        EXPECT_EQ(call(live, {"11", mode}), Kind::NoRight) << mode;
    const Operation design = withDefault(live, 1, "D");
    EXPECT_EQ(call(design, {"11"}), Kind::NoRight);
    const Operation visitors = withDefault(live, 1, "");
    EXPECT_EQ(call(visitors, {"11"}), Kind::Allowed);
    EXPECT_EQ(call(visitors, {"11", ""}), Kind::Allowed);
    EXPECT_EQ(call(visitors, {"11", "D"}), Kind::NoRight);
    EXPECT_EQ(call(manager("getBody"), {"11", 1}), Kind::NoRight);
    EXPECT_EQ(call(manager("getBody"), {"11", 1, 0, 0, ""}), Kind::NoRight);
    EXPECT_EQ(call(manager("getPageTitle"), {"11", "Dxx"}), Kind::NoRight);
}

TEST_P(GateDesignTest, WhatIsInTheDesignAloneHasNoMode) {
    for (const auto* name : {"getPageParameters", "countPages", "getNewChild", "getNewOrderId"}) {
        EXPECT_EQ(callOnPage11(manager(name)), Kind::NoRight) << name;
    }
    for (const auto* name : {"getSitemap", "getSystemFolders"})
        EXPECT_EQ(call(manager(name), {"aa", "en"}), Kind::NoRight) << name;
    editRights(3, "aa", "en", {"approve"});
    for (const auto* name : {"getPageParameters", "countPages", "getNewChild", "getNewOrderId"}) {
        EXPECT_EQ(callOnPage11(manager(name)), Kind::Allowed) << name;
    }
    for (const auto* name : {"getSitemap", "getSystemFolders"}) {
        EXPECT_EQ(call(manager(name), {" AA ", "En"}), Kind::Allowed) << name;
        for (const auto& [site, lang] : std::vector<std::pair<const char*, const char*>>{
                 {"bb", "en"}, {"aa", "de"}, {"", ""}, {"aa", ""}, {"", "en"}}) {
            EXPECT_EQ(call(manager(name), {site, lang}), Kind::NoRight) << name << site << lang;
        }
    }
}

TEST_P(GateDesignTest, APageThatIsNotThereHasNoDesign) {
    for (const auto* ident : {"99", "0", "-1", "aa", "11.5", ""})
        EXPECT_EQ(call(manager("getPage"), {ident, "D"}), Kind::Allowed) << ident;
    EXPECT_EQ(call(manager("getPage"), {"bb.en.99", "D"}), Kind::NoRight);
}

/// The tree under a node is another's when the node is, whatever site and language stand beside it.
TEST_P(GateDesignTest, ANodeCountsBesideTheSiteAndLanguage) {
    editRights(3, "aa", "en", {"edit"});
    const Operation& getSitemap = manager("getSitemap");
    EXPECT_EQ(call(getSitemap, {"aa", "en", "aa.en.01", 1}), Kind::Allowed);
    EXPECT_EQ(call(getSitemap, {"aa", "en", "bb.en", 1}), Kind::NoRight);
    EXPECT_EQ(call(getSitemap, {"bb", "en", "aa.en", 1}), Kind::NoRight);
    const Operation& getPageList = manager("getPageList");
    EXPECT_EQ(call(getPageList, {"aa", "en", "D", "12"}), Kind::Allowed);
    EXPECT_EQ(call(getPageList, {"", "", "D", "12"}), Kind::Allowed);
    EXPECT_EQ(call(getPageList, {"", "", "D", ""}), Kind::NoRight);
    EXPECT_EQ(call(getPageList, {"aa", "en", "D", "21"}), Kind::NoRight);
    EXPECT_EQ(call(getPageList, {"bb", "en", "D", "x"}), Kind::NoRight);
    EXPECT_EQ(call(getPageList, {"bb", "en", "L", "21"}), Kind::Allowed);
}

/// The number and the node of the record are set one by one.
TEST_P(GateDesignTest, ARecordCountsByBothNamesOfItsPage) {
    const Operation& prepare = manager("torvex_preparePage");
    editRights(3, "aa", "en", {"edit"});
    EXPECT_EQ(call(prepare, {"D", "#edit#"}), Kind::Allowed);
    recordId = 21;
    EXPECT_EQ(call(prepare, {"D", "#edit#"}), Kind::NoRight);
    EXPECT_EQ(call(prepare, {"L"}), Kind::Allowed);
    recordId = 11;
    recordNode = " BB.en.01";
    EXPECT_EQ(call(prepare, {"D"}), Kind::NoRight);
    recordId = 0;
    recordNode = "";
    EXPECT_EQ(call(prepare, {"D"}), Kind::Allowed);
}

TEST_P(GateDesignTest, NobodyCopiesWhatSheMayNotRead) {
    editRights(3, "aa", "en", {"edit"});
    const Operation& pasteBody = manager("pasteBody");
    EXPECT_EQ(call(pasteBody, {"12", "11", 1, 1, "D"}), Kind::Allowed);
    EXPECT_EQ(call(pasteBody, {"21", "11", 1, 1, "D"}), Kind::NoRight);
    EXPECT_EQ(call(pasteBody, {"21", "11", 1, 1}), Kind::NoRight);
    EXPECT_EQ(call(pasteBody, {"21", "11", 1, 1, "L"}), Kind::Allowed);
    const Operation& pastePage = manager("pastePage");
    EXPECT_EQ(call(pastePage, {"D", "12", "11", 0}), Kind::Allowed);
    EXPECT_EQ(call(pastePage, {"D", "21", "11", 0}), Kind::NoRight);
    EXPECT_EQ(call(pastePage, {"", "21", "11", 0}), Kind::NoRight);
    EXPECT_EQ(call(pastePage, {"L", "21", "11", 0}), Kind::Allowed);
    EXPECT_EQ(call(pastePage, {"L", "11", "21", 0}), Kind::NoRight);
}

TEST_P(GateDesignTest, ATreeOfAllWebsitesIsForWhoWorksInAllOfThem) {
    const Operation& treeView = manager("treeView");
    editRights(3, "aa", "en", {"edit"});
    EXPECT_EQ(call(treeView, {"aa", "en", "D", "pages"}), Kind::NoRight);
    EXPECT_EQ(call(treeView, {"aa", "en", "L", "pages"}), Kind::Allowed);
    editRights(3, "bb", "en", {"move"}, "bb.en.01");
    EXPECT_EQ(call(treeView, {"aa", "en", "D", "pages"}), Kind::Allowed);
    connection().execute("delete from TORVEX_EDIT_RIGHTS");
    EXPECT_EQ((actAsSa(), call(treeView, {"aa", "en", "D", "pages"})), Kind::Allowed);
}

TEST_P(GateDesignTest, WhoIsNotLoggedInIsToldSoFirst) {
    takeOver(anna);
    EXPECT_EQ(call(manager("getPage"), {"21", "D"}), Kind::NotLoggedIn);
}

TEST_P(GateDesignTest, ABrokenDatabaseOpensNoDesign) {
    drop("TORVEX_EDIT_RIGHTS");
    EXPECT_ANY_THROW(call(manager("getPage"), {"11", "D"}));
}

}  // namespace
}  // namespace torvex::operations
