#include <gmock/gmock.h>

#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// A line of the trail in the making: by anna, of no page.
struct Line {
    std::string action;
    int loginId = 7;
    PageId pageId = 0;
    std::string nodeId = {};
    int entry = 0;
    std::string day = "20260101";
    std::string time = "09:00:00";
};

class DeskTrailTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        walks_ = page("aa.en.01").insert();
        page("aa.en.01.02").insert();
    }
    void add(const Line& line) {
        row("TORVEX_AUDIT_TRAIL", {{"pageId", line.pageId},
                                   {"nodeId", line.nodeId},
                                   {"pageTitle", line.pageId > 0 ? "Title " + ident(line.pageId) : ""},
                                   {"loginId", line.loginId},
                                   {"loginName", "Login " + std::to_string(line.loginId)},
                                   {"advId", line.entry},
                                   {"action", line.action},
                                   {"description", "Of " + line.action},
                                   {"Date", line.day},
                                   {"time", line.time}});
    }
    /// More than are counted before another way to them is taken.
    void addMany(const Line& line, int lines) {
        const std::string count = std::to_string(lines);
        connection().execute(
            "insert into TORVEX_AUDIT_TRAIL (loginId, pageId, nodeId, advId, action, description, Date, "
            "time) "
            "with recursive n (i) as (select 1 union all select i + 1 from n where i < " +
                count +
                ") select cast(? as integer), cast(? as integer), ?, cast(? as integer), ?, '', ?, ? from n",
            {line.loginId, line.pageId, line.nodeId, line.entry, line.action, line.day, line.time});
    }
    std::vector<std::string> actions(const std::string& filters, int from = 0) {
        return columnOf(desk().getTrail(filters, from), 8);
    }

    PageId walks_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskTrailTest, bothEngines(), engineName);

TEST_P(DeskTrailTest, ALineSaysWhoDidWhatToWhatAndWhen) {
    manager().checkOut(ident(walks_));
    const std::string line = cell("select auditId from TORVEX_AUDIT_TRAIL");
    EXPECT_THAT(linesOf(desk().getTrail("")), ElementsAre(line + "|2026-06-15T12:00:00|7|Anna Author|" +
                                                          ident(walks_) + "|aa.en.01|aa.en.01|0|check out|"));
}

TEST_P(DeskTrailTest, TheLatestStandsFirst) {
    add({.action = "second", .day = "20260102"});
    add({.action = "third", .day = "20260102", .time = "10:00:00"});
    add({.action = "first"});
    add({.action = "fourth", .day = "20260102", .time = "10:00:00"});
    EXPECT_THAT(actions(""), ElementsAre("fourth", "third", "second", "first"));
    EXPECT_THAT(actions("", 3), ElementsAre("first"));
    EXPECT_THAT(actions("", -1), IsEmpty());
}

TEST_P(DeskTrailTest, ALongOneComesInParts) {
    addMany({.action = "save"}, 210);
    EXPECT_THAT(actions(""), SizeIs(200));
    EXPECT_THAT(actions("", 200), SizeIs(10));
}

TEST_P(DeskTrailTest, EachFilterNarrowsIt) {
    add({.action = "save", .loginId = 8, .pageId = walks_, .nodeId = "aa.en.01"});
    add({.action = "check in", .nodeId = "aa.en.01.02"});
    add({.action = "edit", .entry = 61, .day = "20260301"});
    add({.action = "gone", .nodeId = "aa.en.02"});
    EXPECT_THAT(actions("login:8"), ElementsAre("save"));
    EXPECT_THAT(actions("page:" + ident(walks_)), ElementsAre("save"));
    EXPECT_THAT(actions(" page : AA.en.01 "), ElementsAre("save"));
    EXPECT_THAT(actions("branch:AA.EN.01"), ElementsAre("check in", "save"));
    EXPECT_THAT(actions("branch:aa.en"), ElementsAre("gone", "check in", "save"));
    EXPECT_THAT(actions("action:CHECK IN"), ElementsAre("check in"));
    EXPECT_THAT(actions("entry:61"), ElementsAre("edit"));
    EXPECT_THAT(actions("from:20260201"), ElementsAre("edit"));
    EXPECT_THAT(actions("to:20260101"), ElementsAre("gone", "check in", "save"));
    EXPECT_THAT(actions("from:20260301,to:20260301"), ElementsAre("edit"));
}

TEST_P(DeskTrailTest, FiltersHoldTogether) {
    add({.action = "save", .pageId = walks_, .nodeId = "aa.en.01"});
    add({.action = "save", .loginId = 8, .pageId = walks_, .nodeId = "aa.en.01"});
    add({.action = "publish", .loginId = 8, .pageId = walks_, .nodeId = "aa.en.01"});
    add({.action = "save", .loginId = 8, .nodeId = "aa.en.02"});
    EXPECT_THAT(actions("login:8,action:save,branch:aa.en.01"), ElementsAre("save"));
    EXPECT_THAT(actions("login:8,page:" + ident(walks_)), ElementsAre("publish", "save"));
    EXPECT_THAT(actions("login:8,action:save,from:20260102"), IsEmpty());
}

TEST_P(DeskTrailTest, WhatManyLinesHoldForIsFoundAllTheSame) {
    addMany({.action = "save", .loginId = 8, .nodeId = "aa.en.01"}, 20500);
    add({.action = "save", .nodeId = "aa.en.01", .day = "20250101"});
    add({.action = "publish", .loginId = 8, .nodeId = "aa.en.01", .day = "20250102"});
    EXPECT_THAT(actions("branch:aa.en.01,login:7"), ElementsAre("save"));
    EXPECT_THAT(actions("branch:aa.en,login:8,action:publish"), ElementsAre("publish"));
    EXPECT_THAT(actions("branch:aa.en,to:20251231"), ElementsAre("publish", "save"));
    EXPECT_THAT(actions("branch:aa.en"), SizeIs(200));
    EXPECT_THAT(actions("login:8"), SizeIs(200));
    EXPECT_THAT(actions("login:8,branch:aa.de"), IsEmpty());
}

TEST_P(DeskTrailTest, AFilterThatIsNoneFindsNothing) {
    add({.action = "save", .pageId = walks_, .nodeId = "aa.en.01"});
    for (const auto* filters : {"colour:red", "login", "login:", "login:anna", "login:-1",
                                "login:99999999999", "page:99", "page:nowhere", "entry:x", "action: ",
                                "from:today", "to:20261301", "login:7,login:8", "login:7' or '1'='1"}) {
        EXPECT_THAT(actions(filters), IsEmpty()) << filters;
    }
    EXPECT_THAT(actions(" , ,"), SizeIs(1));
}

TEST_P(DeskTrailTest, ALineOfNobodyOrWithoutAMomentIsThere) {
    row("TORVEX_AUDIT_TRAIL", {{"action", "Access denied"}, {"Date", "20260101"}, {"time", "25 past"}});
    const auto lines = linesOf(desk().getTrail("action:access denied"));
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_THAT(lines.front(), testing::HasSubstr("|-|-||0|||0|Access denied|"));
}

TEST_P(DeskTrailTest, TheChoicesAreWhatTheTrailHolds) {
    add({.action = "save", .loginId = 9});
    add({.action = "SAVE", .loginId = 8, .entry = 61});
    add({.action = "approve", .loginId = 9, .entry = 63, .day = "20260202"});
    connection().execute(
        "update TORVEX_AUDIT_TRAIL set loginName = 'Zoe' where loginId = 9 and Date = '20260202'");
    row("TORVEX_AUDIT_TRAIL", {{"action", "login"}, {"loginName", ""}});
    const auto lines = linesOf(desk().getTrailChoices());
    ASSERT_THAT(lines, SizeIs(7));
    EXPECT_EQ(lines[0], "login|8|Login 8");
    EXPECT_EQ(lines[1], "login|9|Zoe");
    EXPECT_EQ(lines[2], "action|-|approve");
    EXPECT_EQ(lines[3], "action|-|login");
    EXPECT_THAT(lines[4], testing::AnyOf("action|-|save", "action|-|SAVE"));
    EXPECT_EQ(lines[5], "entry|61|Settings");
    EXPECT_EQ(lines[6], "entry|63|Audit trail");
}

TEST_P(DeskTrailTest, AnEmptyTrailHasNothing) {
    EXPECT_TRUE(desk().getTrail("").isEmpty());
    EXPECT_TRUE(desk().getTrailChoices().isEmpty());
}

TEST_P(DeskTrailTest, WhatFailsIsRaised) {
    drop("TORVEX_AUDIT_TRAIL");
    EXPECT_THAT(errorOf([&] { desk().getTrail(""); }), StartsWith(chain({"getTrail !"})));
    EXPECT_THAT(errorOf([&] { desk().getTrailChoices(); }), StartsWith(chain({"getTrailChoices !"})));
}

}  // namespace
}  // namespace torvex::test
