#include "support/RightsTest.h"

namespace torvex::test {
namespace {

class EditRightsTest : public RightsTest {
  protected:
    bool may(const std::string& action, const std::string& pageIdent = "") {
        return manager().checkEditRights(action, "aa", "en", pageIdent);
    }
    std::string flags(const std::string& pageIdent = "") {
        return manager().getLoginEditRights("aa", "en", pageIdent);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, EditRightsTest, bothEngines(), engineName);

// ---- checkEditRights ----

TEST_P(EditRightsTest, EachActionAsksForTheFlagOfItsOwn) {
    const std::vector<std::pair<const char*, const char*>> actions{{"onoff", "onOff"},
                                                                   {"move", "move"},
                                                                   {"publish", "publish"},
                                                                   {"approve", "approve"},
                                                                   {"edit", "edit"}};
    role(3);
    for (const auto& given : actions) {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        editRights(3, "aa", "en", {given.second});
        for (const auto& asked : actions) {
            EXPECT_EQ(may(asked.first), given.first == asked.first) << given.first << ", " << asked.first;
        }
    }
}

TEST_P(EditRightsTest, AnActionInCapitalsAndBlanksWorks) {
    role(3);
    editRights(3, "aa", "en", {"onOff", "edit"});
    EXPECT_TRUE(may(" EDIT "));
    EXPECT_TRUE(may("onOff"));
    EXPECT_FALSE(may("PUBLISH"));
}

TEST_P(EditRightsTest, AnyOtherActionIsRefused) {
    role(3);
    editRights(3, "aa", "en", {"onOff", "move", "publish", "approve", "edit"});
    for (const auto* action : {"", " ", "delete", "edits", "ed it", "1", "5", "scope", "edit'", "*"}) {
        EXPECT_FALSE(may(action)) << action;
    }
}

TEST_P(EditRightsTest, TheAdministratorPassesWithoutARow) {
    actAsSa();
    EXPECT_TRUE(may("edit"));
    EXPECT_TRUE(may("anything"));
    EXPECT_TRUE(manager().checkEditRights("edit", "zz", "zz", "no page"));
}

TEST_P(EditRightsTest, TheNameOfTheAdministratorPassesForAnotherCaller) {
    EXPECT_TRUE(manager().checkEditRights("edit", "aa", "en", "", " SA "));
}

TEST_P(EditRightsTest, ANameAsksForThatLogin) {
    login(8, "ben", "Ben");
    role(3, 8);
    editRights(3, "aa", "en", {"edit"});
    EXPECT_FALSE(may("edit"));
    EXPECT_TRUE(manager().checkEditRights("edit", "aa", "en", "", " BEN "));
    EXPECT_FALSE(actAsSa().checkEditRights("edit", "aa", "en", "", "anna"));
}

TEST_P(EditRightsTest, AnUnknownLoginHasNoRight) {
    role(3);
    editRights(3, "aa", "en", {"edit"});
    EXPECT_FALSE(manager().checkEditRights("edit", "aa", "en", "", "nobody"));
    EXPECT_FALSE(manager().checkEditRights("edit", "aa", "en", "", "anna' or '1' = '1"));
    EXPECT_FALSE(actAsNobody().checkEditRights("edit", "aa", "en"));
}

TEST_P(EditRightsTest, SiteAndLanguageMustBeThoseOfTheRow) {
    role(3);
    editRights(3, "aa", "en", {"edit"});
    EXPECT_TRUE(manager().checkEditRights("edit", " AA ", " EN "));
    for (const auto& [site, lang] : std::vector<std::pair<std::string, std::string>>{
             {"bb", "en"}, {"aa", "de"}, {"", "en"}, {"aa", ""}, {"", ""}, {"a%", "en"}, {"en", "aa"}}) {
        EXPECT_FALSE(manager().checkEditRights("edit", site, lang)) << site << '.' << lang;
    }
}

TEST_P(EditRightsTest, AnEmptySiteIsNoWildcard) {
    role(3);
    editRights(3, "", "", {"edit"});
    EXPECT_FALSE(may("edit"));
}

TEST_P(EditRightsTest, APageIsGivenByNumberOrNode) {
    role(3);
    editRights(3, "aa", "en", {"edit"}, "aa.en.01");
    page("aa.en.01.02").id(12).insertInDesignOnly();
    page("aa.en.02").id(13).insertInDesignOnly();
    EXPECT_TRUE(may("edit", " 12 "));
    EXPECT_TRUE(may("edit", " AA.EN.01.02 "));
    EXPECT_FALSE(may("edit", "13"));
    EXPECT_FALSE(may("edit", "aa.en.02"));
}

TEST_P(EditRightsTest, ANumberWithoutAPageIsRefused) {
    role(3);
    editRights(3, "aa", "en", {"edit"});
    for (const auto* ident : {"12", "0", "-1", "12.5", "99999999999999999999", "+7"}) {
        EXPECT_FALSE(may("edit", ident)) << ident;
    }
    EXPECT_TRUE(may("edit"));
}

TEST_P(EditRightsTest, ATextShorterThanARootIsRefused) {
    role(3);
    editRights(3, "aa", "en", {"edit"});
    page("aa").id(12).insertInDesignOnly();
    EXPECT_FALSE(may("edit", "12"));
    EXPECT_FALSE(may("edit", "aa.e"));
    EXPECT_FALSE(may("edit", "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"));
    EXPECT_TRUE(may("edit", "aa.en"));
}

TEST_P(EditRightsTest, WhatIsTooLongForANodeIsRefused) {
    role(3);
    editRights(3, "aa", "en", {"edit"});
    EXPECT_FALSE(may("edit", "aa.en" + std::string(100'000, '1')));
}

TEST_P(EditRightsTest, TheRootIsNotUnderANodeOfIt) {
    role(3);
    editRights(3, "aa", "en", {"edit"}, "aa.en.01");
    EXPECT_FALSE(may("edit", "aa.en"));
    EXPECT_FALSE(may("edit"));
    EXPECT_TRUE(may("edit", "aa.en.01"));
}

TEST_P(EditRightsTest, ABrokenDatabaseIsAnErrorWithALineForEachOperation) {
    drop("TORVEX_ROLES_LOGINS");
    EXPECT_TRUE(
        errorOf([&] { may("edit"); }).starts_with(chain({"checkEditRights !", "getLoginEditRights !"})));
}

// ---- getLoginEditRights ----

TEST_P(EditRightsTest, TheFlagsStandInTheirOrder) {
    role(3);
    for (const auto& [task, expected] : std::vector<std::pair<const char*, const char*>>{{"onOff", "10000"},
                                                                                         {"move", "01000"},
                                                                                         {"publish", "00100"},
                                                                                         {"approve", "00010"},
                                                                                         {"edit", "00001"}}) {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        editRights(3, "aa", "en", {task});
        EXPECT_EQ(flags(), expected);
    }
}

TEST_P(EditRightsTest, WithoutARoleAllFlagsAreDown) {
    EXPECT_EQ(flags(), "00000");
}

TEST_P(EditRightsTest, TheAdministratorHasAllFlags) {
    EXPECT_EQ(actAsSa().getLoginEditRights("zz", "zz"), "11111");
    EXPECT_EQ(actAs(anna, "anna", "Anna Author").getLoginEditRights("aa", "en", "", "Sa"), "11111");
}

TEST_P(EditRightsTest, TheRightsOfSeveralRolesAddUp) {
    role(3);
    role(4);
    editRights(3, "aa", "en", {"edit", "move"});
    editRights(4, "aa", "en", {"publish"});
    EXPECT_EQ(flags(), "01101");
}

TEST_P(EditRightsTest, TheWholeTreeWinsOverAScopeWhicheverRowComesFirst) {
    role(3);
    role(4);
    for (const bool wholeFirst : {true, false}) {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        editRights(wholeFirst ? 3 : 4, "aa", "en", {"edit"}, wholeFirst ? "" : "aa.en.01");
        editRights(wholeFirst ? 4 : 3, "aa", "en", {"edit"}, wholeFirst ? "aa.en.01" : "");
        EXPECT_EQ(flags("aa.en.07"), "00001");
        EXPECT_EQ(flags(), "00001");
    }
}

TEST_P(EditRightsTest, AScopeLimitsOnlyTheRightsOfItsRow) {
    role(3);
    role(4);
    editRights(3, "aa", "en", {"publish"}, "aa.en.01");
    editRights(4, "aa", "en", {"approve"}, "aa.en.02");
    EXPECT_EQ(flags("aa.en.01.05"), "00100");
    EXPECT_EQ(flags("aa.en.02.05"), "00010");
    EXPECT_EQ(flags("aa.en.03"), "00000");
}

TEST_P(EditRightsTest, TheScopesOfSeveralRolesAddUp) {
    role(3);
    role(4);
    editRights(3, "aa", "en", {"edit"}, " aa.en.01 ");
    editRights(4, "aa", "en", {"edit"}, "aa.en.02, aa.en.03");
    for (const auto* node : {"aa.en.01", "aa.en.02.01", "aa.en.03"}) EXPECT_EQ(flags(node), "00001") << node;
    EXPECT_EQ(flags("aa.en.04"), "00000");
}

TEST_P(EditRightsTest, ABlankAMissingAndAWrittenOutScopeAreTheWholeTree) {
    role(3);
    for (const Value& scope : {Value("   "), Value(), Value("all"), Value("ALL")}) {
        connection().execute("delete from TORVEX_EDIT_RIGHTS");
        editRights(3, "aa", "en", {"edit"}, scope);
        EXPECT_EQ(flags("aa.en.01"), "00001");
    }
}

TEST_P(EditRightsTest, APageThatIsNoneGivesNoFlag) {
    role(3);
    editRights(3, "aa", "en", {"edit"});
    EXPECT_EQ(flags("12"), "00000");
    EXPECT_EQ(flags("aa.e"), "00000");
    EXPECT_EQ(flags("  "), "00001");
}

// ---- isMemberOfScope ----

TEST_P(EditRightsTest, AScopeCoversItsNodesAndAllUnderThem) {
    auto& m = manager();
    EXPECT_TRUE(m.isMemberOfScope("aa.en.01", "aa.en.01"));
    EXPECT_TRUE(m.isMemberOfScope(" AA.EN.01.02.03 ", "bb.en.01, aa.en . 01"));
    EXPECT_TRUE(m.isMemberOfScope("aa.en.01", "aa.en"));
    EXPECT_TRUE(m.isMemberOfScope("aa.en", ",aa.en"));
    EXPECT_FALSE(m.isMemberOfScope("aa.en", "aa.en.01"));
    EXPECT_FALSE(m.isMemberOfScope("aa.en.02", "aa.en.01"));
    EXPECT_FALSE(m.isMemberOfScope("aa.en.01", ""));
    EXPECT_FALSE(m.isMemberOfScope("", ""));
    EXPECT_FALSE(m.isMemberOfScope("aa.e", "aa.e"));
    EXPECT_FALSE(m.isMemberOfScope("aa.en.01", "aa.en.011"));
}

TEST_P(EditRightsTest, AScopeIsAskedWithoutADatabase) {
    cManager unconnected(host.context());
    EXPECT_TRUE(unconnected.isMemberOfScope("aa.en.01", "aa.en"));
}

// ---- getLoginScope ----

TEST_P(EditRightsTest, TheScopeOfATaskIsThatOfTheRolesThatGiveIt) {
    role(3);
    role(4);
    role(5);
    editRights(3, "aa", "en", {"edit"}, " aa.en.01 ");
    editRights(4, "aa", "en", {"publish"}, "aa.en.02");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "edit"), "aa.en.01");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "publish"), "aa.en.02");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "move"), "");
}

TEST_P(EditRightsTest, TheScopesOfATaskAreJoined) {
    role(3);
    role(4);
    editRights(3, "aa", "en", {"edit"}, "aa.en.01,aa.en.02");
    editRights(4, "aa", "en", {"edit"}, "aa.en.03");
    const std::string scope = manager().getLoginScope("aa", "en", "edit");
    EXPECT_TRUE(scope == "aa.en.01,aa.en.02,aa.en.03" || scope == "aa.en.03,aa.en.01,aa.en.02") << scope;
}

TEST_P(EditRightsTest, AnEmptyScopeIsTheRootOfTheTree) {
    role(3);
    role(4);
    editRights(3, "aa", "en", {"edit"}, "aa.en.01");
    editRights(4, "aa", "en", {"edit"}, " ");
    EXPECT_EQ(manager().getLoginScope(" aa ", " en ", " edit "), "aa.en");
}

TEST_P(EditRightsTest, TheTaskOnOffIsKnownInAnySpelling) {
    role(3);
    editRights(3, "aa", "en", {"onOff"}, "aa.en.01");
    for (const auto* task : {"onOff", "onoff", "ONOFF"}) {
        EXPECT_EQ(manager().getLoginScope("aa", "en", task), "aa.en.01") << task;
    }
}

TEST_P(EditRightsTest, AnUnknownTaskSiteOrLanguageHasNoScope) {
    actAsSa();
    EXPECT_EQ(manager().getLoginScope("aa", "en", "delete"), "");
    EXPECT_EQ(manager().getLoginScope("aa", "en", ""), "");
    EXPECT_EQ(manager().getLoginScope("zz", "en", "edit"), "");
    EXPECT_EQ(manager().getLoginScope("aa", "zz", "edit"), "");
    EXPECT_EQ(manager().getLoginScope("", "", "edit"), "");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "edit"), "aa.en");
}

TEST_P(EditRightsTest, TheScopeOfANamedLoginIsItsOwn) {
    login(8, "ben", "Ben");
    role(3, 8);
    editRights(3, "aa", "en", {"edit"}, "aa.en.05");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "edit", " Ben "), "aa.en.05");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "edit", "SA"), "aa.en");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "edit"), "");
    EXPECT_EQ(manager().getLoginScope("aa", "en", "edit", "nobody"), "");
}

TEST_P(EditRightsTest, ABrokenDatabaseIsAnErrorOfTheScope) {
    drop("TORVEX_SITES");
    EXPECT_TRUE(errorOf([&] {
                    manager().getLoginScope("aa", "en", "edit");
                }).starts_with(chain({"getLoginScope !", "isSite !"})));
}

}  // namespace
}  // namespace torvex::test
