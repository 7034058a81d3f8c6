#pragma once

#include <string>

#include "accounts/StoredPassword.h"
#include "platform/Session.h"
#include "support/ManagerTest.h"

namespace torvex::test {

/// The base of tests at the door of the authoring side: nobody is logged in, and the only login is "anna"
/// (number 7, "Anna Author") with the password "Secret".
class DoorTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        connection().execute("delete from TORVEX_LOGINS");
        host.session = Session("session-a");
        host.session.set("torvex_current_interface", "en");
        author(anna, "anna", "Secret", "Anna Author");
        nextRequest();
    }

    void author(int loginId, const std::string& username, const std::string& password,
                const std::string& fullname, Columns further = {}) {
        const Columns columns{{"loginId", loginId},
                              {"username", username},
                              {"password", encodePassword(password)},
                              {"name", fullname}};
        further.insert(further.begin(), columns.begin(), columns.end());
        row("TORVEX_LOGINS", further);
    }
    /// The next request comes from another visitor, who begins with an empty session.
    cManager& comeFrom(const std::string& address, const std::string& sessionId) {
        host.session = Session(sessionId);
        host.session.set("torvex_current_interface", "en");
        return moveTo(address);
    }
    /// The same visitor at another address.
    cManager& moveTo(const std::string& address) {
        host.request.setServerVariable("remote_addr", address);
        return nextRequest();
    }
    void set(int loginId, const std::string& column, const Value& value) {
        if (value.isEmpty()) {
            connection().execute("update TORVEX_LOGINS set " + column + " = null where loginId = ?",
                                 {loginId});
        } else {
            connection().execute("update TORVEX_LOGINS set " + column + " = ? where loginId = ?",
                                 {std::string_view(value.text()), loginId});
        }
    }
    /// All that a row tells of its holder: "sessionId|ipAddress|currentSite|siteLock|date|time".
    std::string holder(int loginId) {
        return cell(
            "select coalesce(sessionId, '') || '|' || coalesce(ipAddress, '') || '|' || "
            "coalesce(currentSite, '') || '|' || coalesce(siteLock, '') || '|' || coalesce(date, '') "
            "|| '|' || coalesce(time, '') from TORVEX_LOGINS where loginId = " +
            std::to_string(loginId));
    }
    std::string stored(int loginId) {
        return cell("select password from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }
    std::string hash(int loginId) {
        return cell("select passwordHash from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }
    /// The session's keys: "loginId|username|password|fullname".
    std::string kept() {
        return host.session.text("torvex_loginId") + '|' + host.session.text("torvex_username") + '|' +
               host.session.text("torvex_password") + '|' + host.session.text("torvex_fullname");
    }
    /// Every change of the row fails from now on.
    void refuseChangesOf(int loginId) {
        const std::string id = std::to_string(loginId);
        if (GetParam() == db::Engine::Sqlite) {
            connection().executeScript(
                "create trigger guard before update on TORVEX_LOGINS when "
                "old.loginId = " +
                id + " begin select raise(abort, 'guarded'); end");
        } else {
            connection().executeScript(
                "create function refuse() returns trigger language plpgsql as $$ begin raise 'guarded'; end "
                "$$; create trigger guard before update on TORVEX_LOGINS for each row when (old.loginId = " +
                id + ") execute function refuse()");
        }
    }
};

}  // namespace torvex::test
