#include "support/RightsTest.h"

namespace torvex::test {
namespace {

class RolesTest : public RightsTest {
  protected:
    /// A row of a grid as "a|b|c".
    static std::string line(const Value& list, std::size_t row) {
        const auto& grid = list.grid();
        std::string joined;
        for (std::size_t column = 0; column < grid.columns(); ++column) {
            joined += (column ? "|" : "") + grid.at(column, row).toText();
        }
        return joined;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RolesTest, bothEngines(), engineName);

TEST_P(RolesTest, AMenuListHasTheEntriesOfTheDeepestLevelFirst) {
    emptyMenu();
    entry(501, 0, "x2");
    entry(502, 0, "x1", true, false);
    entry(503, 2, "x1");
    const Value list = manager().getAdvList();
    ASSERT_EQ(list.grid().rows(), 3U);
    EXPECT_EQ(line(list, 0), "503|2|x1|Entry 503|icon503.gif|/torvex/503.asp|1|1|1|");
    EXPECT_EQ(line(list, 1), "502|0|x1|Entry 502|icon502.gif|/torvex/502.asp|0|1|1|");
    EXPECT_EQ(line(list, 2), "501|0|x2|Entry 501|icon501.gif|/torvex/501.asp|1|1|1|");
    EXPECT_EQ(list.grid().columns(), 10U);
}

TEST_P(RolesTest, AnEmptyMenuIsAnEmptyValue) {
    emptyMenu();
    EXPECT_TRUE(manager().getAdvList().isEmpty());
    EXPECT_TRUE(manager().getRoleAdvancedRights(3, "aa", "en").isEmpty());
}

TEST_P(RolesTest, ATitleIsInTheInterfaceLanguageOrInEnglish) {
    emptyMenu();
    entry(501, 0, "x1");
    entry(502, 0, "x2");
    connection().execute(
        "update TORVEX_INTERFACE_VOCAB set lang_vocab2 = ' Eintrag ' where lang_label = 9501");
    host.session.set("torvex_current_interface", "de");
    EXPECT_EQ(manager().getAdvTitle(501), "Eintrag");
    EXPECT_EQ(manager().getAdvTitle(502), "Entry 502");
    const Value list = manager().getAdvList();
    EXPECT_EQ(list.grid().at(3, 0), Value("Eintrag"));
    EXPECT_EQ(list.grid().at(3, 1), Value("Entry 502"));
}

TEST_P(RolesTest, ATitleOfNoEntryOrNoLabelIsEmpty) {
    emptyMenu();
    entry(501, 0, "x1");
    connection().execute("delete from TORVEX_INTERFACE_VOCAB where lang_label = 9501");
    EXPECT_EQ(manager().getAdvTitle(501), "");
    EXPECT_EQ(manager().getAdvTitle(777), "");
    EXPECT_EQ(manager().getAdvList().grid().at(3, 0), Value(""));
}

TEST_P(RolesTest, TheRightsOfARoleAreTheWholeMenuWithStates) {
    emptyMenu();
    entry(501, 0, "x1", false, false);
    entry(502, 0, "x1.01", true, true);
    entry(503, 0, "x1.02", true, false);
    entry(504, 0, "x2", false, true);
    role(3);
    advancedRight(3, 502, "", "", true, false);
    for (const int advId : {501, 503, 504}) advancedRight(3, advId, "", "", true, true);
    const Value list = manager().getRoleAdvancedRights(3, "aa", "en");
    ASSERT_EQ(list.grid().rows(), 4U);
    EXPECT_EQ(line(list, 0), "501|0|x1|Entry 501|icon501.gif|/torvex/501.asp|1|-1|-1|");
    EXPECT_EQ(line(list, 1), "502|0|x1.01|Entry 502|icon502.gif|/torvex/502.asp|0|1|0|");
    EXPECT_EQ(line(list, 2), "503|0|x1.02|Entry 503|icon503.gif|/torvex/503.asp|0|1|-1|");
    EXPECT_EQ(line(list, 3), "504|0|x2|Entry 504|icon504.gif|/torvex/504.asp|0|-1|1|");
    EXPECT_EQ(list.grid().columns(), 10U);
}

TEST_P(RolesTest, OrderOneHasTheDeepestLevelFirst) {
    emptyMenu();
    entry(501, 0, "x1");
    entry(502, 1, "x1");
    const auto first = [&](int order) {
        return manager().getRoleAdvancedRights(3, "aa", "en", order).grid().at(0, 0);
    };
    EXPECT_EQ(first(1), Value(502));
    for (const int order : {0, 2, -1}) EXPECT_EQ(first(order), Value(501)) << order;
}

TEST_P(RolesTest, ARowCountsByTheLevelOfItsEntry) {
    emptyMenu();
    entry(501, 0, "x1");
    entry(502, 1, "x1");
    entry(503, 2, "x1");
    const std::vector<std::pair<std::string, std::string>> places{
        {"", ""}, {"aa", ""}, {"", "en"}, {"aa", "en"}, {"bb", ""}, {"", "de"}, {"bb", "en"}, {"aa", "de"}};
    const std::vector<std::string> expected{"111", "011", "001", "001", "000", "000", "000", "000"};
    for (std::size_t i = 0; i < places.size(); ++i) {
        connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
        for (const int advId : {501, 502, 503}) {
            advancedRight(3, advId, places[i].first, places[i].second, true, false);
        }
        const Value list = manager().getRoleAdvancedRights(3, "aa", "en");
        std::string states;
        for (std::size_t row = 0; row < 3; ++row) states += list.grid().at(7, row).toText();
        EXPECT_EQ(states, expected[i]) << places[i].first << '.' << places[i].second;
        EXPECT_EQ(list.grid().at(8, 0), Value(0));
    }
}

TEST_P(RolesTest, AnotherRolesRightsDoNotCount) {
    emptyMenu();
    entry(501, 0, "x1");
    advancedRight(4, 501, "", "", true, true);
    EXPECT_EQ(manager().getRoleAdvancedRights(3, "", "").grid().at(7, 0), Value(0));
}

TEST_P(RolesTest, TheEditRightsOfARoleStandInTheirOrderWithoutItsScope) {
    role(3);
    editRights(3, "aa", "en", {"onOff", "approve"}, "aa.en.01");
    EXPECT_EQ(manager().getRoleEditRights(3, "aa", "en"), "10010");
    EXPECT_EQ(manager().getRoleEditRights(3, "aa", "de"), "00000");
    EXPECT_EQ(manager().getRoleEditRights(4, "aa", "en"), "00000");
}

TEST_P(RolesTest, TheScopeOfARoleIsAsItStands) {
    role(3);
    editRights(3, "aa", "en", {"edit"}, " aa.en.01, aa.en.02 ");
    editRights(3, "aa", "de", {"edit"}, Value());
    EXPECT_EQ(manager().getRoleScope("aa", "en", 3), " aa.en.01, aa.en.02 ");
    EXPECT_EQ(manager().getRoleScope("aa", "de", 3), "");
    EXPECT_EQ(manager().getRoleScope("bb", "en", 3), "");
}

TEST_P(RolesTest, ARoleHasANumberANameAndADescription) {
    row("TORVEX_ROLES", {{"roleId", 5}, {"roleName", "Rédacteur d'été"}, {"roleDesc", "writes \"news\""}});
    EXPECT_EQ(manager().getRoleId("RÉDACTEUR D'ÉTÉ"), 5);
    EXPECT_EQ(manager().getRoleName(5), "Rédacteur d'été");
    EXPECT_EQ(manager().getRoleDescription(5), "writes \"news\"");
}

TEST_P(RolesTest, WhatIsNoRoleIsEmpty) {
    EXPECT_EQ(manager().getRoleId("none"), 0);
    EXPECT_EQ(manager().getRoleId(""), 0);
    EXPECT_EQ(manager().getRoleName(77), "");
    EXPECT_EQ(manager().getRoleDescription(-1), "");
}

TEST_P(RolesTest, ABrokenDatabaseIsAnErrorOfTheOperation) {
    drop("TORVEX_ROLES");
    drop("TORVEX_EDIT_RIGHTS");
    const auto starts = [](const std::string& error, const std::string& function) {
        EXPECT_TRUE(error.starts_with("Error in function " + function + " !\r\n")) << error;
    };
    starts(errorOf([&] { manager().getRoleId("a"); }), "getRoleId");
    starts(errorOf([&] { manager().getRoleName(1); }), "getRoleName");
    starts(errorOf([&] { manager().getRoleDescription(1); }), "getRoleDescription");
    starts(errorOf([&] { manager().getRoleEditRights(1, "aa", "en"); }), "getRoleEditRights");
    starts(errorOf([&] { manager().getRoleScope("aa", "en", 1); }), "getRoleScope");
    drop("TORVEX_INTERFACE_VOCAB");
    EXPECT_TRUE(errorOf([&] { manager().getAdvList(); }).starts_with(chain({"getAdvList !", "getVocab !"})));
    EXPECT_TRUE(
        errorOf([&] { manager().getAdvTitle(11); }).starts_with(chain({"getAdvTitle !", "getVocab !"})));
    starts(errorOf([&] { manager().getRoleAdvancedRights(1, "aa", "en"); }), "getRoleAdvancedRights");
}

}  // namespace
}  // namespace torvex::test
