#pragma once

#include <memory>
#include <string>

#include "authoring/cManager.h"
#include "support/SiteTest.h"

namespace torvex::test {

/// The base of tests of the authoring side: a site's database on each engine, and a `cManager` that works for
/// the login "anna" (number 7, "Anna Author"), whose row holds the test session. Site "aa" and language "en"
/// are there, and so are the labels that stand in for missing names.
class ManagerTest : public SiteTest {
  protected:
    static constexpr int anna = 7;

    void SetUp() override;
    void TearDown() override;

    cManager& manager() { return *manager_; }
    /// A new object, as the next request would make, that sees what the session holds now.
    cManager& nextRequest();
    /// Another author's row; `sessionId` "" for one who isn't logged in.
    void login(int loginId, const std::string& username, const std::string& fullname,
               const std::string& sessionId = "");
    /// The next object works for this login; its row must be there.
    cManager& actAs(int loginId, const std::string& username, const std::string& fullname);
    /// The next object works for nobody.
    cManager& actAsNobody();

    /// Rows of the audit trail, oldest first, as "loginId|loginName|pageId|nodeId|advId|action|description".
    std::vector<std::string> auditTrail();
    /// Design row: edit, lock, delete and approve status in one text.
    std::string statuses(PageId pageId);

  private:
    std::unique_ptr<cManager> manager_;
};

}  // namespace torvex::test
