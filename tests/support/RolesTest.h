#pragma once

#include <initializer_list>
#include <string>

#include "support/RegistersTest.h"
#include "support/RightsRows.h"

namespace torvex::test {

/// The base of tests of roles: "anna" (7) holds role 3, "Desk", and bert (8) holds role 4, "Programme". Pages 10
/// "aa.en", 11 "aa.en.01", 12 "aa.en.01.01", 13 "aa.en.02"; there is a site "bb" and a language "de".
class RolesTest : public RegistersTest {
  protected:
    static constexpr int desk = 3;
    static constexpr int programme = 4;

    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        language("de");
        page("aa.en").id(10).insertInDesignOnly();
        page("aa.en.01").id(11).insertInDesignOnly();
        page("aa.en.01.01").id(12).insertInDesignOnly();
        page("aa.en.02").id(13).insertInDesignOnly();
        role(desk, "Desk", anna);
        role(programme, "Programme", bert);
    }
    void role(int roleId, const std::string& name, int loginId = 0) {
        row("TORVEX_ROLES", {{"roleId", roleId}, {"roleName", name}, {"roleDesc", "About " + name}});
        if (loginId > 0) row("TORVEX_ROLES_LOGINS", {{"roleId", roleId}, {"loginId", loginId}});
    }
    void mayEdit(int roleId, const std::string& lang, std::initializer_list<const char*> tasks,
                 const std::string& scope = "") {
        row("TORVEX_EDIT_RIGHTS", editRightsRow(roleId, "aa", lang, tasks, scope));
    }
    void mayOpen(int roleId, int entry, const std::string& site = "", const std::string& lang = "",
                 bool view = true, bool edit = true) {
        row("TORVEX_ADVANCED_RIGHTS", advancedRightRow(roleId, entry, site, lang, view, edit));
    }
    void actAsSa() {
        connection().execute("delete from TORVEX_LOGINS where username = 'sa'");
        login(2, "sa", "The Administrator");
        actAs(2, "sa", "The Administrator");
    }
};

}  // namespace torvex::test
