#include "support/RightsTest.h"

namespace torvex::test {
namespace {

/// One entry of each level: 501 for the installation, 502 for a site, 503 for a site and language. Role 3 is
/// anna's.
class AdvancedRightsTest : public RightsTest {
  protected:
    void SetUp() override {
        RightsTest::SetUp();
        if (HasFatalFailure()) return;
        entry(501, 0, "x1");
        entry(502, 1, "x2");
        entry(503, 2, "x3");
        role(3);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AdvancedRightsTest, bothEngines(), engineName);

TEST_P(AdvancedRightsTest, WithoutARowNothingIsGranted) {
    for (const auto* flag : {"view", "edit", ""}) {
        for (const int advId : {501, 502, 503})
            EXPECT_FALSE(manager().checkAdvRights(flag, advId, "aa", "en"));
    }
}

TEST_P(AdvancedRightsTest, TheAdministratorPassesForAnyEntryAndFlag) {
    auto& m = actAsSa();
    EXPECT_TRUE(m.checkAdvRights("view", 501));
    EXPECT_TRUE(m.checkAdvRights("nonsense", 30000));
}

TEST_P(AdvancedRightsTest, TheCallerIsTheAdministratorNotTheOneAskedFor) {
    EXPECT_TRUE(actAsSa().checkAdvRights("view", 501, "", "", "x"));
    EXPECT_FALSE(actAs(anna, "anna", "Anna Author").checkAdvRights("view", 501, "", "", "sa"));
}

TEST_P(AdvancedRightsTest, ViewAndEditAreTwoRights) {
    advancedRight(3, 501, "", "", true, false);
    EXPECT_TRUE(manager().checkAdvRights("view", 501));
    EXPECT_FALSE(manager().checkAdvRights("edit", 501));
    EXPECT_TRUE(manager().checkAdvRights("", 501));
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
    advancedRight(3, 501, "", "", false, true);
    EXPECT_FALSE(manager().checkAdvRights("view", 501));
    EXPECT_TRUE(manager().checkAdvRights("edit", 501));
    EXPECT_TRUE(manager().checkAdvRights("", 501));
}

TEST_P(AdvancedRightsTest, TheFlagIsTrimmedAndItsCaseIgnored) {
    advancedRight(3, 501, "", "", true, true);
    EXPECT_TRUE(manager().checkAdvRights(" VIEW ", 501));
    EXPECT_TRUE(manager().checkAdvRights("Edit", 501));
    EXPECT_TRUE(manager().checkAdvRights("  ", 501));
}

TEST_P(AdvancedRightsTest, AnyOtherFlagNeverGrants) {
    advancedRight(3, 501, "", "", true, true);
    for (const auto* flag : {"v", "views", "viewedit", "1", "delete"}) {
        EXPECT_FALSE(manager().checkAdvRights(flag, 501)) << flag;
    }
}

TEST_P(AdvancedRightsTest, AnUnknownEntryIsRefused) {
    advancedRight(3, 777, "", "", true, true);
    EXPECT_FALSE(manager().checkAdvRights("view", 777));
    EXPECT_FALSE(manager().checkAdvRights("view", 0));
    EXPECT_FALSE(manager().checkAdvRights("view", -1));
}

TEST_P(AdvancedRightsTest, WhatTheEntryDoesNotOfferIsRefusedWhateverTheRowsSay) {
    entry(504, 0, "x4", true, false);
    entry(505, 0, "x5", false, true);
    entry(506, 0, "x6", false, false);
    for (const int advId : {504, 505, 506}) advancedRight(3, advId, "", "", true, true);
    EXPECT_TRUE(manager().checkAdvRights("view", 504));
    EXPECT_FALSE(manager().checkAdvRights("edit", 504));
    EXPECT_FALSE(manager().checkAdvRights("view", 505));
    EXPECT_TRUE(manager().checkAdvRights("edit", 505));
    EXPECT_FALSE(manager().checkAdvRights("", 506));
    EXPECT_TRUE(manager().checkAdvRights("", 504));
}

TEST_P(AdvancedRightsTest, ForTheInstallationOnlyRowsForAllCount) {
    advancedRight(3, 501, "aa", "", true, true);
    advancedRight(3, 501, "", "en", true, true);
    advancedRight(3, 501, "aa", "en", true, true);
    EXPECT_FALSE(manager().checkAdvRights("view", 501, "aa", "en"));
    advancedRight(3, 501, "", "", true, true);
    EXPECT_TRUE(manager().checkAdvRights("view", 501, "aa", "en"));
    EXPECT_TRUE(manager().checkAdvRights("view", 501));
}

TEST_P(AdvancedRightsTest, ForASiteRowsForItAndForAllCount) {
    advancedRight(3, 502, "aa", "", true, false);
    EXPECT_TRUE(manager().checkAdvRights("view", 502, " AA ", "en"));
    EXPECT_FALSE(manager().checkAdvRights("view", 502, "bb", "en"));
    EXPECT_FALSE(manager().checkAdvRights("view", 502));
    advancedRight(3, 502, "", "", true, false);
    EXPECT_TRUE(manager().checkAdvRights("view", 502, "bb"));
    EXPECT_TRUE(manager().checkAdvRights("view", 502));
}

TEST_P(AdvancedRightsTest, ForASiteARowForOneLanguageIsIgnored) {
    advancedRight(3, 502, "aa", "en", true, true);
    advancedRight(3, 502, "", "en", true, true);
    EXPECT_FALSE(manager().checkAdvRights("view", 502, "aa", "en"));
}

TEST_P(AdvancedRightsTest, ForASiteAndLanguageEachMayBeAllOrTheOne) {
    const std::vector<std::pair<std::string, std::string>> granting{
        {"", ""}, {"aa", ""}, {"", "en"}, {"aa", "en"}};
    const std::vector<std::pair<std::string, std::string>> others{
        {"bb", ""}, {"", "de"}, {"bb", "en"}, {"aa", "de"}};
    for (const auto& [site, lang] : granting) {
        connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
        advancedRight(3, 503, site, lang, true, false);
        EXPECT_TRUE(manager().checkAdvRights("view", 503, "aa", " EN ")) << site << '.' << lang;
    }
    for (const auto& [site, lang] : others) {
        connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
        advancedRight(3, 503, site, lang, true, false);
        EXPECT_FALSE(manager().checkAdvRights("view", 503, "aa", "en")) << site << '.' << lang;
    }
}

TEST_P(AdvancedRightsTest, WithoutASiteAndLanguageOnlyRowsForAllMatch) {
    advancedRight(3, 503, "aa", "en", true, true);
    EXPECT_FALSE(manager().checkAdvRights("view", 503, "", ""));
    advancedRight(3, 503, "", "", true, true);
    EXPECT_TRUE(manager().checkAdvRights("view", 503, "", ""));
}

TEST_P(AdvancedRightsTest, OneGrantingRowAmongMany) {
    role(4);
    advancedRight(3, 503, "aa", "en", false, false);
    advancedRight(3, 503, "", "", true, false);
    advancedRight(4, 503, "aa", "", false, true);
    EXPECT_TRUE(manager().checkAdvRights("view", 503, "aa", "en"));
    EXPECT_TRUE(manager().checkAdvRights("edit", 503, "aa", "en"));
}

TEST_P(AdvancedRightsTest, ARoleThatTheLoginDoesNotHoldGivesNothing) {
    login(8, "ben", "Ben");
    role(4, 8);
    advancedRight(4, 501, "", "", true, true);
    EXPECT_FALSE(manager().checkAdvRights("view", 501));
    EXPECT_TRUE(manager().checkAdvRights("view", 501, "", "", " BEN "));
    EXPECT_FALSE(manager().checkAdvRights("view", 501, "", "", "nobody"));
    EXPECT_FALSE(actAsNobody().checkAdvRights("view", 501));
}

TEST_P(AdvancedRightsTest, ABrokenDatabaseIsAnErrorWithTwoBlanks) {
    drop("TORVEX_ADVANCED");
    EXPECT_TRUE(errorOf([&] {
                    manager().checkAdvRights("view", 501);
                }).starts_with("Error in function checkAdvRights  !\r\n"));
}

}  // namespace
}  // namespace torvex::test
