#pragma once

#include "platform/text/Text.h"
#include "support/SiteTest.h"

namespace torvex::test {

/// The base of tests of access: the extranet is on and its site "aa" in "bb" has
///   10 aa.bb     open to everybody
///   11 aa.bb.01  inherits, so it is open
///   12 aa.bb.02  for the members (group 2), login page 18
///   13 aa.bb.02.01 inherits, so it is for members
///   14 aa.bb.03  for the staff (group 3)
///   15 aa.bb.04  without any group
///   18 aa.bb.08  the login page, open
/// Ann is a member and of the staff, Ben is a member, Cleo is in no group; their passwords are their names
/// and "pw": "annpw".
class ExtranetTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_extranet", true);
        host.application.set("tvx_default_pageId", 10);
        group(2, "members");
        group(3, "staff");
        page("aa.bb").id(10).insert();
        page("aa.bb.01").id(11).insert();
        page("aa.bb.02").id(12).set("loginPage", 18).insert();
        page("aa.bb.02.01").id(13).insert();
        page("aa.bb.03").id(14).insert();
        page("aa.bb.04").id(15).insert();
        page("aa.bb.08").id(18).insert();
        for (const auto& [pageId, groupId] : std::initializer_list<std::pair<int, int>>{
                 {10, 1}, {11, 0}, {12, 2}, {13, 0}, {14, 3}, {18, 1}}) {
            pageGroup(pageId, groupId);
        }
        user(101, "ann", "annpw", {2, 3});
        user(102, "ben", "benpw", {2});
        user(103, "cleo", "cleopw", {});
    }

    void logIn(const std::string& name) {
        host.session.set("tvx_username", name);
        host.session.set("tvx_password", name + "pw");
    }
    /// `getPage` with the session's visitor, as a page does it.
    void get(const std::string& pageIdent) {
        server().getPage(pageIdent, host.session.text("tvx_username"), host.session.text("tvx_password"));
    }
    std::string check(const std::string& pageIdent, const std::string& applicationDir = "") {
        get(pageIdent);
        return server().securityCheck(applicationDir);
    }
    std::string kept(std::string_view key) { return host.session.text(key); }
};

}  // namespace torvex::test
