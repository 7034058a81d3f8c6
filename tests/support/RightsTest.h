#pragma once

#include <initializer_list>
#include <string>

#include "support/ManagerTest.h"
#include "support/RightsRows.h"

namespace torvex::test {

/// The base of tests of roles and rights: "anna" has no role yet.
class RightsTest : public ManagerTest {
  protected:
    static constexpr int sa = 2;

    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        connection().execute("delete from TORVEX_LOGINS where username = 'sa'");
        login(sa, "sa", "System Administrator", host.session.id());
    }

    cManager& actAsSa() { return actAs(sa, "SA", "System Administrator"); }

    /// A role that the login holds.
    void role(int roleId, int loginId = anna) {
        row("TORVEX_ROLES", {{"roleId", roleId}, {"roleName", "Role " + std::to_string(roleId)}});
        hold(roleId, loginId);
    }
    void hold(int roleId, int loginId) {
        row("TORVEX_ROLES_LOGINS", {{"roleId", roleId}, {"loginId", loginId}});
    }
    /// Edit rights of a role: the columns that are 1.
    void editRights(int roleId, const std::string& site, const std::string& lang,
                    std::initializer_list<const char*> tasks, const Value& scope = "") {
        row("TORVEX_EDIT_RIGHTS", editRightsRow(roleId, site, lang, tasks, scope));
    }

    /// In place of the fixed menu: an entry, with a title whose label is 9000 and its number.
    void entry(int advId, int level, const std::string& reference, bool view = true, bool edit = true) {
        row("TORVEX_ADVANCED", {{"advId", advId},
                                {"advLevel", level},
                                {"advReference", reference},
                                {"advTitle", std::to_string(9000 + advId)},
                                {"advIcon", "icon" + std::to_string(advId) + ".gif"},
                                {"advProgram", "/torvex/" + std::to_string(advId) + ".asp"},
                                {"advView", view ? 1 : 0},
                                {"advEdit", edit ? 1 : 0},
                                {"advAudit", 1}});
        word(9000 + advId, "Entry " + std::to_string(advId));
    }
    void emptyMenu() { connection().execute("delete from TORVEX_ADVANCED"); }
    void advancedRight(int roleId, int advId, const std::string& site, const std::string& lang, bool view,
                       bool edit) {
        row("TORVEX_ADVANCED_RIGHTS", advancedRightRow(roleId, advId, site, lang, view, edit));
    }
};

}  // namespace torvex::test
