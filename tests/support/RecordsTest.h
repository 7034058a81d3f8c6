#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/FailingDatabase.h"
#include "support/ManagerTest.h"

namespace torvex::test {

/// The base of tests of administrative records: all that the database holds in a form that can be compared,
/// locks of other sessions, and transactions that can be made to fail. "bert" (number 8) is another author
/// who is logged in.
class RecordsTest : public ManagerTest {
  protected:
    using Tables = std::map<std::string, std::vector<std::string>>;

    static constexpr int bert = 8;
    static constexpr const char* bertsSession = "session-of-bert";

    void SetUp() override;
    void TearDown() override;

    /// The rows of all tables but the audit trail.
    Tables everything();
    /// The rows that a statement finds, their cells divided by "|"; "-" for null.
    std::vector<std::string> rowsOf(const std::string& statement);

    /// The session holds the record's lock.
    void hold(const std::string& table, const std::string& key, const Value& id, const std::string& session);

    /// That the call answers with the code and changes nothing, files and audit trail included.
    template <typename Call>
    void expectRefusal(const std::string& code, Call call) {
        const Tables before = everything();
        const auto files = host.files.bytes;
        const auto trail = auditTrail();
        EXPECT_EQ(call(), code);
        EXPECT_TRUE(everything() == before) << "something has changed";
        EXPECT_EQ(host.files.bytes, files);
        EXPECT_EQ(auditTrail(), trail);
    }
    /// That the call, failing at each step of its transaction in turn, answers with `failure` and leaves
    /// database, files and trail as they were, and says why to operators; and that it succeeds at last.
    template <typename Call>
    void failEverywhere(const std::string& success, const std::string& failure, Call call) {
        const Tables before = everything();
        const auto files = host.files.bytes;
        const auto folders = host.files.madeFolders;
        const auto trail = auditTrail();
        for (int step = 1;; ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            ASSERT_LT(step, 500);
            failing().reset(step);
            host.log.lines.clear();
            const std::string result = call();
            const bool failed = failing().steps >= step;
            failing().reset(0);
            if (!failed) {
                EXPECT_EQ(result, success);
                EXPECT_GT(step, 4) << "hardly anything was tried";
                return;
            }
            EXPECT_EQ(result, failure);
            EXPECT_EQ(host.log.lines.size(), 1U);
            ASSERT_TRUE(everything() == before) << "something has changed";
            ASSERT_EQ(host.files.bytes, files);
            ASSERT_EQ(host.files.madeFolders, folders);
            ASSERT_EQ(auditTrail(), trail);
        }
    }

    /// What another session does just before the next transaction begins.
    void beforeTransaction(std::function<void()> work);

    FailingDatabase& failing() { return *failing_; }

  private:
    std::vector<std::string> tableNames();

    std::unique_ptr<FailingDatabase> failing_;
    std::function<void()> interruption_;
};

}  // namespace torvex::test
