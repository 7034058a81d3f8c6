#pragma once

#include <string>
#include <vector>

#include "accounts/SecondFactor.h"
#include "accounts/VisitorFactor.h"
#include "accounts/VisitorLogin.h"
#include "support/ExtranetTest.h"
#include "support/TimeCodes.h"

namespace torvex::test {

/// The base of tests of visitors' second factors: that of an extranet, where they are offered. Ben is user 102.
class VisitorFactorTest : public WithTimeCodes<ExtranetTest> {
  protected:
    static constexpr int ben = 102;
    static constexpr const char* ownPage = "http://www.site.test/tvx.asp?pageId=11";

    void SetUp() override {
        ExtranetTest::SetUp();
        if (!HasFatalFailure()) factors("offered");
    }
    void factors(const std::string& setting) { host.application.set(visitorFactorSetting, setting); }
    /// Ben has a factor, whose last step lies far back: his codes on paper.
    std::vector<std::string> enrolled(int userId = ben) {
        giveSecondFactor(connection(), ofVisitor(userId), secret, 1, host.clock.now());
        return renewRecoveryCodes(connection(), ofVisitor(userId));
    }
    std::string factorsAndCodes() {
        return cell("select count(*) from TORVEX_USER_FACTORS") + "|" +
               cell("select count(*) from TORVEX_USER_RECOVERY_CODES");
    }
    /// Posts the login form of page 11 as the operation that page scripts call.
    std::string post(const std::string& name = "ben", const std::string& further = "") {
        ask("",
            {{"torvex_pageId", "11"},
             {"torvex_username", name},
             {"torvex_password", name + "pw"},
             {"torvex_loginTarget", further}},
            {{"HTTP_Referer", ownPage}});
        return server().getLoginURL();
    }
    bool isIn() { return kept("tvx_username") == "ben" && !kept("tvx_password").empty(); }
    /// Whether a guarded page and a guarded document show.
    std::string open() {
        return std::string(server().hasAccess("12") ? "page" : "-") + "|" +
               (server().checkFolderAccess(documents) > 0 ? "document" : "-");
    }
    void guardDocuments() {
        host.application.set("torvex_doc_security", true);
        row("TORVEX_FOLDERS_GROUPS",
            {{"fld_type", "doc"}, {"fld_site", "aa"}, {"fld_id", "001"}, {"groupId", 2}});
    }
    static constexpr const char* documents = "/install/wwwroot/documents/aa/001/";
};

}  // namespace torvex::test
