#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/FailingDatabase.h"
#include "support/ManagerTest.h"

namespace torvex::test {

/// The rows of tables, as texts that can be compared.
using Content = std::map<std::string, std::vector<std::string>>;

/// The base of tests of publishing: pages at any point of their way from design to live, and all that the
/// database holds of them in a form that can be compared. Transactions go through a database that can be made
/// to fail.
class PublishTest : public ManagerTest {
  protected:
    static constexpr int bert = 8;

    void SetUp() override;
    void TearDown() override;

    /// A page that is approved, and marked for deletion as well.
    PageBuilder approved(const std::string& nodeId);
    PageBuilder marked(const std::string& nodeId);

    // Rows of the design
    void designBody(PageId pageId, int bodyId, const std::string& text, int type = 1, int feedId = 0);
    void designGroup(PageId pageId, int groupId);
    void designMetadata(PageId pageId, int id, const Value& value, int inherited = 0);
    void hits(const std::string& nodeId, const std::string& day, int count);

    std::string publish(PageId pageId) { return manager().publishPage(ident(pageId)); }

    /// One column of a page's row; "-" for null, "" when there is no row.
    std::string live(PageId pageId, const std::string& column);
    std::string design(PageId pageId, const std::string& column);
    bool isLive(PageId pageId) { return !live(pageId, "pageId").empty(); }
    bool isThere(PageId pageId) { return !design(pageId, "pageId").empty(); }

    /// Everything that an operation on pages may touch, but for the audit trail.
    Content content();
    /// That the call answers with the code and changes nothing, files and audit trail included.
    template <typename Call>
    void expectRefusal(const std::string& code, Call call) {
        const Content before = content();
        const auto files = host.files.bytes;
        const auto trail = auditTrail();
        EXPECT_EQ(call(), code);
        EXPECT_EQ(content(), before);
        EXPECT_EQ(host.files.bytes, files);
        EXPECT_EQ(auditTrail(), trail);
    }
    /// That the call, failing at each step of its transaction in turn, answers "-99" and leaves the database
    /// as it was; and that it succeeds at last. `expectTrail` looks at the trail after each failure.
    template <typename Call, typename ExpectTrail>
    void failEverywhere(const std::string& success, Call call, ExpectTrail expectTrail);

    static std::string ident(PageId pageId) { return std::to_string(static_cast<int>(pageId)); }
    std::string annasLine(PageId pageId, const std::string& nodeId, const std::string& action,
                          const std::string& description = "");
    static std::string snapshotPath(const std::string& nodeId);

    FailingDatabase& failing() { return *failing_; }

  private:
    std::string cellOf(const std::string& table, PageId pageId, const std::string& column);

    std::unique_ptr<FailingDatabase> failing_;
};

template <typename Call, typename ExpectTrail>
void PublishTest::failEverywhere(const std::string& success, Call call, ExpectTrail expectTrail) {
    const Content before = content();
    for (int step = 1;; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        ASSERT_LT(step, 500);
        failing().reset(step);
        const std::string result = call();
        if (failing().steps < step) {
            EXPECT_EQ(result, success);
            EXPECT_GT(step, 5) << "hardly anything was tried";
            return;
        }
        EXPECT_EQ(result, "-99");
        ASSERT_EQ(content(), before);
        expectTrail();
    }
}

}  // namespace torvex::test
