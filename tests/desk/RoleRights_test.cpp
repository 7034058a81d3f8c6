#include <gmock/gmock.h>

#include "support/RolesTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class RoleRightsTest : public RolesTest {
  protected:
    std::string setEdit(const std::string& rights, const std::string& scope = "",
                        const std::string& site = "aa", const std::string& lang = "en") {
        return registers().setEditRights(programme, site, lang, rights, scope, 22);
    }
    std::string setEntry(int entry, bool view, bool edit, const std::string& site = "",
                         const std::string& lang = "") {
        return registers().setAdvancedRight(programme, entry, site, lang, view, edit, 22);
    }
    std::string setRole(int loginId, int roleId, bool has) {
        return registers().setLoginRole(loginId, roleId, has, 21);
    }
    std::vector<std::string> editRights() { return linesOf(registers().getEditRights(programme)); }
    std::vector<std::string> entries() { return linesOf(registers().getAdvancedRights(programme)); }
    std::vector<std::string> rolesOf(int loginId) {
        return rowsOf("select roleId from TORVEX_ROLES_LOGINS where loginId = " + std::to_string(loginId) +
                      " order by roleId");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RoleRightsTest, bothEngines(), engineName);

// ---- Edit rights ----

TEST_P(RoleRightsTest, EditRightsAreGivenInAWebsite) {
    actAsSa();
    EXPECT_EQ(setEdit("01001", " AA.en.01 ", " AA ", " EN "), "0");
    EXPECT_THAT(editRights(), ElementsAre("aa|en|0|1|0|0|1|aa.en.01"));
    EXPECT_THAT(auditTrail(), ElementsAre("2|The Administrator|0||22|save|Role \"Programme\" may move, edit "
                                          "in aa.en below aa.en.01"));
}

TEST_P(RoleRightsTest, TheyTakeThePlaceOfThoseThatItHadThereAndOfNoOthers) {
    actAsSa();
    mayEdit(programme, "en", {"edit", "publish"});
    mayEdit(programme, "de", {"edit"});
    mayEdit(desk, "en", {"edit"});
    EXPECT_EQ(setEdit("00010"), "0");
    EXPECT_THAT(editRights(), ElementsAre("aa|de|0|0|0|0|1|", "aa|en|0|0|0|1|0|"));
    EXPECT_THAT(linesOf(registers().getEditRights(desk)), ElementsAre("aa|en|0|0|0|0|1|"));
}

TEST_P(RoleRightsTest, NoRightsLeaveNoRow) {
    mayEdit(programme, "en", {"edit"});
    EXPECT_EQ(setEdit("00000", "aa.en.77"), "0");
    EXPECT_THAT(editRights(), IsEmpty());
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||22|save|Role \"Programme\" may do nothing in aa.en"));
}

TEST_P(RoleRightsTest, AScopeIsKeptWithoutWhatLiesBelowItsOtherNodes) {
    actAsSa();
    EXPECT_EQ(setEdit("00001", "aa.en.01.01, aa.en.02,aa.en.01,aa.en.02"), "0");
    EXPECT_THAT(editRights(), ElementsAre("aa|en|0|0|0|0|1|aa.en.01,aa.en.02"));
    EXPECT_EQ(setEdit("00001", "aa.en.01,aa.en"), "0");
    EXPECT_THAT(editRights(), ElementsAre("aa|en|0|0|0|0|1|"));
}

TEST_P(RoleRightsTest, RefusalsOfEditRightsChangeNothing) {
    actAsSa();
    mayEdit(programme, "en", {"edit"});
    expectRefusal("-1", [&] { return registers().setEditRights(99, "aa", "en", "00001", "", 22); });
    expectRefusal("-2", [&] { return setEdit("00001", "", "zz", "en"); });
    expectRefusal("-2", [&] { return setEdit("00001", "", "aa", "zz"); });
    for (const auto* flags : {"", "1", "0000", "000001", "0000x", "00002"})
        expectRefusal("-3", [&] { return setEdit(flags); });
    for (const auto* scope : {"aa.en.77", "aa.en.01,aa.en.77", "aa.de.01", "bb.en", "11", "aa", "aa.en.0"})
        expectRefusal("-3", [&] { return setEdit("00001", scope); });
    expectRefusal("-3", [&] { return setEdit("00001", "aa.en." + std::string(2000, '1')); });
    hold("TORVEX_ROLES", "roleId", programme, bertsSession);
    expectRefusal("-4", [&] { return setEdit("00001"); });
    actAsNobody();
    expectRefusal("-10", [&] { return setEdit("00001"); });
}

TEST_P(RoleRightsTest, NobodyGivesEditRightsThatSheHasntGot) {
    mayEdit(desk, "en", {"edit", "move"}, "aa.en.01");
    EXPECT_EQ(setEdit("00001", "aa.en.01"), "0");
    EXPECT_EQ(setEdit("01001", "aa.en.01.01"), "0");
    expectRefusal("-5", [&] { return setEdit("00001"); });
    expectRefusal("-5", [&] { return setEdit("00001", "aa.en.02"); });
    expectRefusal("-5", [&] { return setEdit("00001", "aa.en.01.01,aa.en.02"); });
    expectRefusal("-5", [&] { return setEdit("00101", "aa.en.01"); });
    expectRefusal("-5", [&] { return setEdit("00001", "", "aa", "de"); });
}

TEST_P(RoleRightsTest, WhatARoleHasAlreadyMayStayOrBeTaken) {
    mayEdit(programme, "en", {"edit", "publish"});
    EXPECT_EQ(setEdit("00001"), "0");
    EXPECT_EQ(setEdit("00001", "aa.en.02"), "0");
    expectRefusal("-5", [&] { return setEdit("00001"); });
    expectRefusal("-5", [&] { return setEdit("00101", "aa.en.02"); });
}

TEST_P(RoleRightsTest, AChangeLeavesTheLockAsItWas) {
    actAsSa();
    EXPECT_EQ(setEdit("00001"), "0");
    EXPECT_EQ(cell("select coalesce(lock, '') from TORVEX_ROLES where roleId = 4"), "");
    hold("TORVEX_ROLES", "roleId", programme, host.session.id());
    EXPECT_EQ(setEdit("00000"), "0");
    EXPECT_EQ(cell("select lock from TORVEX_ROLES where roleId = 4"), host.session.id());
}

TEST_P(RoleRightsTest, AFailureWhileRightsAreWrittenChangesNothing) {
    actAsSa();
    mayEdit(programme, "en", {"edit"});
    failEverywhere("0", "-99", [&] { return setEdit("00100", "aa.en.01"); });
}

// ---- Entries of the administration ----

TEST_P(RoleRightsTest, AnEntryIsGivenForOneOrAllPlaces) {
    actAsSa();
    EXPECT_EQ(setEntry(22, true, false), "0");
    EXPECT_EQ(setEntry(111, true, true, " AA "), "0");
    EXPECT_EQ(setEntry(221, false, true, "", "de"), "0");
    EXPECT_THAT(entries(), ElementsAre("22|||1|0", "111|aa||1|1", "221||de|0|1"));
    EXPECT_THAT(
        auditTrail(),
        ElementsAre("2|The Administrator|0||22|save|Role \"Programme\" may view entry 22",
                    "2|The Administrator|0||22|save|Role \"Programme\" may view, edit entry 111 in aa.",
                    "2|The Administrator|0||22|save|Role \"Programme\" may edit entry 221 in .de"));
}

TEST_P(RoleRightsTest, ItTakesThePlaceOfWhatTheRoleHadThere) {
    actAsSa();
    mayOpen(programme, 111);
    mayOpen(programme, 111, "aa");
    EXPECT_EQ(setEntry(111, true, false), "0");
    EXPECT_THAT(entries(), ElementsAre("111|||1|0", "111|aa||1|1"));
    EXPECT_EQ(setEntry(111, false, false), "0");
    EXPECT_THAT(entries(), ElementsAre("111|aa||1|1"));
}

TEST_P(RoleRightsTest, RefusalsOfEntriesChangeNothing) {
    actAsSa();
    expectRefusal("-1", [&] { return registers().setAdvancedRight(99, 22, "", "", true, false, 22); });
    expectRefusal("-2", [&] { return setEntry(999, true, false); });
    expectRefusal("-3", [&] { return setEntry(10, true, false); });
    expectRefusal("-3", [&] { return setEntry(63, true, true); });
    expectRefusal("-3", [&] { return setEntry(22, true, false, "aa"); });
    expectRefusal("-3", [&] { return setEntry(22, true, false, "", "en"); });
    expectRefusal("-3", [&] { return setEntry(111, true, false, "aa", "en"); });
    expectRefusal("-3", [&] { return setEntry(111, true, false, "zz"); });
    expectRefusal("-3", [&] { return setEntry(221, true, false, "aa", "zz"); });
    hold("TORVEX_ROLES", "roleId", programme, bertsSession);
    expectRefusal("-4", [&] { return setEntry(22, true, false); });
    actAsNobody();
    expectRefusal("-10", [&] { return setEntry(22, true, false); });
}

TEST_P(RoleRightsTest, ARowOfAPlaceThatIsGoneCanBeTaken) {
    mayOpen(programme, 22, "zz");
    EXPECT_EQ(setEntry(22, false, false, "zz"), "0");
    EXPECT_THAT(entries(), IsEmpty());
}

TEST_P(RoleRightsTest, NobodyGivesEntriesThatSheHasntGot) {
    mayOpen(desk, 22, "", "", true, false);
    mayOpen(desk, 221, "aa");
    EXPECT_EQ(setEntry(22, true, false), "0");
    EXPECT_EQ(setEntry(221, true, true, "aa"), "0");
    EXPECT_EQ(setEntry(221, true, true, "aa", "de"), "0");
    expectRefusal("-5", [&] { return setEntry(22, true, true); });
    expectRefusal("-5", [&] { return setEntry(221, true, false); });
    expectRefusal("-5", [&] { return setEntry(221, true, false, "", "de"); });
    expectRefusal("-5", [&] { return setEntry(221, true, false, "bb"); });
    expectRefusal("-5", [&] { return setEntry(111, true, false, "aa"); });
}

TEST_P(RoleRightsTest, WhatARoleOpensAlreadyMayStayOrBeTaken) {
    mayOpen(programme, 22);
    EXPECT_EQ(setEntry(22, true, false), "0");
    expectRefusal("-5", [&] { return setEntry(22, true, true); });
    EXPECT_EQ(setEntry(22, false, false), "0");
}

TEST_P(RoleRightsTest, TheLastWhoMayGiveRightsKeepsThem) {
    mayOpen(programme, 21);
    mayOpen(programme, 22);
    expectRefusal("-6", [&] { return setEntry(22, true, false); });
    expectRefusal("-6", [&] { return setEntry(21, false, false); });
    mayOpen(desk, 21);
    mayOpen(desk, 22);
    EXPECT_EQ(setEntry(22, true, false), "0");
}

TEST_P(RoleRightsTest, TheSystemAdministratorMayTakeThemFromAll) {
    mayOpen(programme, 21);
    mayOpen(programme, 22);
    actAsSa();
    EXPECT_EQ(setEntry(22, false, false), "0");
}

TEST_P(RoleRightsTest, AFailureWhileAnEntryIsWrittenChangesNothing) {
    actAsSa();
    failEverywhere("0", "-99", [&] { return setEntry(22, true, false); });
}

// ---- Memberships ----

TEST_P(RoleRightsTest, ALoginGetsARoleOnceAndLosesIt) {
    actAsSa();
    EXPECT_EQ(setRole(bert, desk, true), "0");
    EXPECT_EQ(setRole(bert, desk, true), "0");
    EXPECT_THAT(rolesOf(bert), ElementsAre("3", "4"));
    EXPECT_EQ(setRole(bert, desk, false), "0");
    EXPECT_THAT(rolesOf(bert), ElementsAre("4"));
    EXPECT_THAT(auditTrail().back(),
                "2|The Administrator|0||21|save|Login \"Bert Broker\" no longer has the role \"Desk\"");
}

TEST_P(RoleRightsTest, RefusalsOfMembershipsChangeNothing) {
    actAsSa();
    expectRefusal("-1", [&] { return setRole(99, desk, true); });
    expectRefusal("-1", [&] { return setRole(bert, 99, true); });
    hold("TORVEX_LOGINS", "loginId", anna, bertsSession);
    expectRefusal("-4", [&] { return setRole(anna, programme, true); });
    actAsNobody();
    expectRefusal("-10", [&] { return setRole(anna, programme, true); });
}

TEST_P(RoleRightsTest, NobodyGivesARoleThatGivesMoreThanSheHas) {
    mayEdit(desk, "en", {"edit"}, "aa.en.01");
    mayOpen(desk, 221, "aa");
    mayEdit(programme, "en", {"edit"}, "aa.en.01.01");
    mayOpen(programme, 221, "aa", "en");
    EXPECT_EQ(setRole(anna, programme, true), "0");
    EXPECT_EQ(setRole(anna, programme, false), "0");
    mayOpen(programme, 63, "", "", true, true);
    expectRefusal("-5", [&] { return setRole(anna, programme, true); });
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS where advId = 63");
    mayEdit(programme, "de", {"publish"});
    expectRefusal("-5", [&] { return setRole(anna, programme, true); });
}

TEST_P(RoleRightsTest, WhatAnEntryDoesntOfferIsNoMoreThanSheHas) {
    mayOpen(desk, 63, "", "", true, false);
    mayOpen(programme, 63);
    EXPECT_EQ(setRole(anna, programme, true), "0");
}

TEST_P(RoleRightsTest, AnybodysRoleMayBeTaken) {
    mayEdit(programme, "en", {"publish"});
    EXPECT_EQ(setRole(bert, programme, false), "0");
    EXPECT_THAT(rolesOf(bert), IsEmpty());
}

TEST_P(RoleRightsTest, TheLastWhoMayGiveRightsKeepsHerRole) {
    mayOpen(desk, 21);
    mayOpen(desk, 22);
    expectRefusal("-6", [&] { return setRole(anna, desk, false); });
    EXPECT_EQ(setRole(bert, desk, true), "0");
    EXPECT_EQ(setRole(anna, desk, false), "0");
}

TEST_P(RoleRightsTest, AFailureWhileAMembershipIsWrittenChangesNothing) {
    actAsSa();
    failEverywhere("0", "-99", [&] { return setRole(bert, desk, true); });
}

TEST_P(RoleRightsTest, ListsSayWhatFailed) {
    connection().execute("drop table TORVEX_EDIT_RIGHTS");
    connection().execute("drop table TORVEX_ADVANCED_RIGHTS");
    EXPECT_THAT(errorOf([&] { registers().getEditRights(3); }), StartsWith(chain({"getEditRights !"})));
    EXPECT_THAT(errorOf([&] { registers().getAdvancedRights(3); }),
                StartsWith(chain({"getAdvancedRights !"})));
    EXPECT_THAT(errorOf([&] { registers().weighEditRights(3, "aa", "en", "00001"); }),
                StartsWith(chain({"weighEditRights !"})));
    EXPECT_THAT(errorOf([&] { registers().weighAdvancedRight(3, 22, "", "", true, true); }),
                StartsWith(chain({"weighAdvancedRight !"})));
}

}  // namespace
}  // namespace torvex::test
