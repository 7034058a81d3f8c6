#pragma once

#include <string>

#include "support/ManagerTest.h"

namespace torvex::test {

/// The base of tests of a page's workflow: pages in any state, and all that an operation may change of them,
/// in a form that can be compared.
class WorkflowTest : public ManagerTest {
  protected:
    static constexpr int bert = 8;
    static constexpr DateTime now{2026, 6, 15, 12, 0, 0};
    static constexpr DateTime earlier{2026, 1, 2, 3, 4, 5};

    /// Anna works, Bert is online elsewhere.
    void SetUp() override;

    /// A page with these edit, lock, delete and approve statuses. Whoever is named holds it, if it is locked.
    /// Bert has marked or approved it, if it is; everything has happened earlier. Its mail flag is 5.
    PageId inState(const std::string& statuses, int lockedBy = anna);
    /// Its columns, as the tests below write them.
    std::string rowOf(PageId pageId);

    /// The page record holds what no operation writes: what it still holds afterwards wasn't written.
    void scribbleOnBuffer();
    std::string bufferText();

    void mails(const Value& setting) { host.application.set("torvex_emailNotification", setting); }
    void autoApprove(const Value& setting) { host.application.set("torvex_autoApprove", setting); }
    /// The column `emailNotification`.
    int mailFlag(PageId pageId);

    /// That the call answers with the code and changes nothing: page, page record, audit trail.
    template <typename Call>
    void expectRefusal(PageId pageId, const std::string& code, Call call) {
        const std::string row = rowOf(pageId);
        scribbleOnBuffer();
        const std::string buffer = bufferText();
        const auto trail = auditTrail();
        EXPECT_EQ(call(), code);
        EXPECT_EQ(rowOf(pageId), row);
        EXPECT_EQ(bufferText(), buffer);
        EXPECT_EQ(auditTrail(), trail);
    }

    static std::string ident(PageId pageId) { return std::to_string(static_cast<int>(pageId)); }
    /// The one line that an operation on the page leaves.
    std::vector<std::string> annasLine(PageId pageId, const std::string& action,
                                       const std::string& description = "");

  private:
    int lastNumber_ = 0;
};

}  // namespace torvex::test
