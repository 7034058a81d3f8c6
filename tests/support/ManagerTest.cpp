#include "support/ManagerTest.h"

namespace torvex::test {

void ManagerTest::SetUp() {
    SiteTest::SetUp();
    if (HasFatalFailure()) return;
    host.session.set("torvex_current_interface", "en");
    host.request.setServerVariable("remote_addr", "10.0.0.1");
    site("aa");
    language("en");
    login(anna, "anna", "Anna Author", host.session.id());
    actAs(anna, "anna", "Anna Author");
}

void ManagerTest::TearDown() {
    manager_.reset();
    SiteTest::TearDown();
}

cManager& ManagerTest::nextRequest() {
    manager_ = std::make_unique<cManager>(host.context());
    manager_->connect(connection());
    return *manager_;
}

void ManagerTest::login(int loginId, const std::string& username, const std::string& fullname,
                        const std::string& sessionId) {
    row("TORVEX_LOGINS", {{"loginId", loginId},
                          {"username", username},
                          {"name", fullname},
                          {"password", ""},
                          {"sessionId", sessionId}});
}

cManager& ManagerTest::actAs(int loginId, const std::string& username, const std::string& fullname) {
    host.session.set("torvex_loginId", loginId);
    host.session.set("torvex_username", username);
    host.session.set("torvex_password", "");
    host.session.set("torvex_fullname", fullname);
    return nextRequest();
}

cManager& ManagerTest::actAsNobody() {
    for (const auto* key : {"torvex_loginId", "torvex_username", "torvex_password", "torvex_fullname"}) {
        host.session.set(key, Value());
    }
    return nextRequest();
}

std::vector<std::string> ManagerTest::auditTrail() {
    std::vector<std::string> lines;
    auto rows = connection().query(
        "select loginId, loginName, pageId, nodeId, advId, action, description from TORVEX_AUDIT_TRAIL "
        "order by auditId");
    while (rows.next()) {
        std::string line = rows.text("loginId");
        for (const auto* column : {"loginName", "pageId", "nodeId", "advId", "action", "description"}) {
            line += "|" + rows.text(column);
        }
        lines.push_back(line);
    }
    return lines;
}

std::string ManagerTest::statuses(PageId pageId) {
    auto rows = connection().query(
        "select editStatus, lockStatus, deleteStatus, approveStatus from TORVEX_PAGES_DESIGN where pageId = "
        "?",
        {pageId});
    if (!rows.next()) return {};
    return rows.text("editStatus") + rows.text("lockStatus") + rows.text("deleteStatus") +
           rows.text("approveStatus");
}

}  // namespace torvex::test
