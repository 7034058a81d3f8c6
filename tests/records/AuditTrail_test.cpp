#include "records/AuditTrail.h"

#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class AuditTrailTest : public ManagerTest {
  protected:
    static AuditLine line(int number) {
        AuditLine made;
        made.loginId = anna;
        made.loginName = "Anna Author";
        made.pageId = number;
        made.nodeId = "aa.en";
        made.action = "publish";
        return made;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, AuditTrailTest, bothEngines(), engineName);

TEST_P(AuditTrailTest, ManyLinesStandInTheirOrderWhateverTheirNumber) {
    std::vector<std::string> expected;
    for (const int count : {0, 1, 2, 63, 64, 65, 131}) {
        std::vector<AuditLine> lines;
        for (int i = 0; i < count; ++i) {
            lines.push_back(line(i + 1));
            expected.push_back("7|Anna Author|" + std::to_string(i + 1) + "|aa.en|0|publish|");
        }
        writeAuditLines(host.context(), lines);
    }
    EXPECT_EQ(auditTrail(), expected);
}

TEST_P(AuditTrailTest, LinesNeitherWaitForATransactionNorGoBackWithIt) {
    const auto other = openAnother(db::Purpose::Transaction);
    {
        db::Transaction transaction(*other);
        other->execute("update TORVEX_LOGINS set name = 'changed'");
        writeAuditLines(host.context(), std::vector<AuditLine>{line(1), line(2)});
    }
    EXPECT_EQ(auditTrail().size(), 2U);
    EXPECT_EQ(cell("select name from TORVEX_LOGINS where loginId = 7"), "Anna Author");
}

TEST_P(AuditTrailTest, EachLineHasTheMomentAndTheCutsOfASingleOne) {
    const std::string action(70, 'a');
    const std::string description(3000, 'd');
    AuditLine made = line(1);
    made.action = action;
    made.description = description;
    writeAuditLines(host.context(), std::vector<AuditLine>{made, made});
    auto rows = connection().query("select action, description, Date, time from TORVEX_AUDIT_TRAIL");
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(rows.next());
        EXPECT_EQ(rows.text("action"), action.substr(0, 50));
        EXPECT_EQ(rows.text("description"), description.substr(0, 2000));
        EXPECT_EQ(rows.text("Date"), "20260615");
        EXPECT_EQ(rows.text("time"), "12:00:00");
    }
}

}  // namespace
}  // namespace torvex::test
