#include <fmt/format.h>
#include <gmock/gmock.h>

#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::size_t nodeColumn = 3;
constexpr std::size_t stateColumn = 7;

class DeskWorkTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        addBert();
        role(3);
        editRights(3, "aa", "en", {"onOff", "move", "publish", "approve", "edit"});
    }
    PageBuilder changedBy(int loginId, const std::string& node, const DateTime& when,
                          const std::string& statuses = "M000") {
        return inState(node, statuses).set("editor", loginId).set("editingDate", when);
    }
    static DateTime at(int hour) { return {2026, 6, 1, hour, 0, 0}; }

    std::vector<std::string> nodes(const std::string& kind, const std::string& site = "",
                                   const std::string& lang = "") {
        return columnOf(desk().getWork(site, lang, kind), nodeColumn);
    }
    std::vector<std::string> recent(int number = 20) {
        return columnOf(desk().getRecent("", "", number), nodeColumn);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskWorkTest, bothEngines(), engineName);

TEST_P(DeskWorkTest, ALineSaysWhoChangedThePageAndWhoHasIt) {
    auto mine = changedBy(anna, "aa.en.01", at(9), "M100");
    mine.id(12).title("Walks").set("lockedBy", bert).set("lockingDate", at(10)).dates("20260101", "99999999");
    mine.insertInDesignOnly();
    mine.title("Old walks").insertInLiveOnly();
    EXPECT_THAT(linesOf(desk().getWork("aa", "en", "mine")),
                ElementsAre("12|aa|en|aa.en.01|Walks|Old walks|P|changed|Anna Author|2026-06-01T09:00:00|"
                            "Bert Broker|2026-06-01T10:00:00|20260101|"));
}

TEST_P(DeskWorkTest, WhatIsMissingIsEmpty) {
    auto mine = changedBy(anna, "aa.en.01", at(9));
    mine.id(12).title("").set("lockedBy", bert).set("lockingDate", at(10)).insertInDesignOnly();
    EXPECT_THAT(linesOf(desk().getWork("aa", "en", "mine")),
                ElementsAre("12|aa|en|aa.en.01|||P|changed|Anna Author|2026-06-01T09:00:00||-||"));
}

TEST_P(DeskWorkTest, MineIsWhatIHaveChangedOrHoldTheLatestFirst) {
    changedBy(anna, "aa.en.01", at(8)).insert();
    changedBy(anna, "aa.en.02", at(9), "N000").insertInDesignOnly();
    changedBy(anna, "aa.en.03", at(9), "M001").insert();
    changedBy(anna, "aa.en.04", at(10), "P000").insert();
    changedBy(bert, "aa.en.05", at(11)).insert();
    changedBy(bert, "aa.en.06", at(7), "P100").set("lockedBy", anna).insert();
    changedBy(bert, "aa.en.07", at(7), "P100").set("lockedBy", bert).insert();
    EXPECT_THAT(nodes("mine"), ElementsAre("aa.en.02", "aa.en.03", "aa.en.01", "aa.en.06"));
}

TEST_P(DeskWorkTest, ToApproveIsWhatApprovePageTakes) {
    int number = 0;
    std::vector<std::string> expected;
    for (const auto* statuses :
         {"N000", "M000", "P000", "M100", "M010", "P010", "N010", "M001", "P110", "P011"}) {
        const std::string node = fmt::format("aa.en.{:02}", ++number);
        const PageId pageId = inState(node, statuses).insert();
        db::Transaction probe(connection());
        const bool isTaken = manager().approvePage(ident(pageId), 1).front() != '-';
        if (isTaken && statuses[3] == '0') expected.push_back(node);
    }
    EXPECT_EQ(nodes("approve"), expected);
    EXPECT_THAT(expected, SizeIs(4));
}

TEST_P(DeskWorkTest, ToPublishIsWhatIsApprovedAndNotHeldByNode) {
    inState("aa.en.02", "M001").insert();
    inState("aa.en.01", "P011").insert();
    inState("aa.en.03", "M101").insert();
    inState("aa.en.04", "M000").insert();
    EXPECT_THAT(nodes("publish"), ElementsAre("aa.en.01", "aa.en.02"));
    EXPECT_THAT(columnOf(desk().getWork("", "", "publish"), stateColumn), ElementsAre("marked", "approved"));
}

TEST_P(DeskWorkTest, MarkedIsWhatWaitsForItsRemoval) {
    inState("aa.en.02", "P010").insert();
    inState("aa.en.01", "M011").insert();
    inState("aa.en.03", "M000").insert();
    EXPECT_THAT(nodes("marked"), ElementsAre("aa.en.01", "aa.en.02"));
}

/// Today is 15 June 2026.
TEST_P(DeskWorkTest, DatesAreThoseOfTheNextFourteenDays) {
    const auto dated = [&](const std::string& node, const std::string& from, const std::string& to) {
        page(node).dates(from, to).insert();
    };
    dated("aa.en.01", "20260616", "99999999");
    dated("aa.en.02", "20260629", "99999999");
    dated("aa.en.03", "20260630", "99999999");
    dated("aa.en.04", "20260615", "99999999");
    dated("aa.en.05", "00000000", "20260615");
    dated("aa.en.06", "00000000", "20260629");
    dated("aa.en.07", "00000000", "20260630");
    dated("aa.en.08", "00000000", "20260614");
    dated("aa.en.09", "20260616", "20260620");
    EXPECT_THAT(nodes("dates"), ElementsAre("aa.en.01", "aa.en.02", "aa.en.05", "aa.en.06", "aa.en.09"));
}

TEST_P(DeskWorkTest, DatesOfWhatIsNeverOnLineDontCount) {
    page("aa.en.01").dates("20260616", "99999999").offline().insert();
    page("aa.en.02").dates("20260616", "99999999").type("F").insert();
    page("aa.en.99.01").dates("20260616", "99999999").insert();
    page("aa.en.03").dates("20260616", "99999999").insertInDesignOnly();
    EXPECT_THAT(nodes("dates"), IsEmpty());
}

TEST_P(DeskWorkTest, OnlyPagesWhereIMayDoItAreListed) {
    for (const auto* node : {"aa.en.01", "aa.en.02", "aa.de.01", "bb.en.01"}) {
        changedBy(anna, node, at(9), "M001").insert();
        changedBy(anna, std::string(node) + ".01", at(9), "M000").insert();
    }
    EXPECT_THAT(nodes("publish"), ElementsAre("aa.en.01", "aa.en.02"));
    connection().execute("delete from TORVEX_EDIT_RIGHTS");
    editRights(3, "aa", "en", {"publish"}, "aa.en.02");
    editRights(3, "bb", "en", {"approve"});
    EXPECT_THAT(nodes("publish"), ElementsAre("aa.en.02"));
    EXPECT_THAT(nodes("approve"), ElementsAre("bb.en.01.01"));
    EXPECT_THAT(nodes("mine"), ElementsAre("aa.en.02", "aa.en.02.01", "bb.en.01", "bb.en.01.01"));
    connection().execute("delete from TORVEX_EDIT_RIGHTS");
    EXPECT_THAT(nodes("mine"), IsEmpty());
}

TEST_P(DeskWorkTest, TheAdministratorSeesAllAndNobodyNothing) {
    inState("aa.en.01", "M001").insert();
    inState("bb.de.01", "M001").insert();
    actAsSa();
    EXPECT_THAT(nodes("publish"), ElementsAre("aa.en.01", "bb.de.01"));
    actAsNobody();
    EXPECT_THAT(nodes("publish"), IsEmpty());
}

TEST_P(DeskWorkTest, ASiteOrALanguageNarrowsTheList) {
    actAsSa();
    for (const auto* node : {"aa.en.01", "aa.de.01", "bb.en.01"}) inState(node, "M001").insert();
    EXPECT_THAT(nodes("publish", " AA "), ElementsAre("aa.de.01", "aa.en.01"));
    EXPECT_THAT(nodes("publish", "", "en"), ElementsAre("aa.en.01", "bb.en.01"));
    EXPECT_THAT(nodes("publish", "bb", "en"), ElementsAre("bb.en.01"));
    EXPECT_THAT(nodes("publish", "zz", "en"), IsEmpty());
}

TEST_P(DeskWorkTest, AKindThatThereIsntListsNothing) {
    inState("aa.en.01", "M001").insert();
    EXPECT_THAT(nodes(""), IsEmpty());
    EXPECT_THAT(nodes("everything"), IsEmpty());
    EXPECT_THAT(nodes(" Publish "), SizeIs(1));
}

TEST_P(DeskWorkTest, LongListsComeInParts) {
    db::Transaction many(connection());
    for (int i = 0; i < 620; ++i)
        inState(fmt::format("aa.en.{:02}.{:02}", i / 50 + 1, i % 50 + 1), "M001").insert();
    many.commit();
    EXPECT_THAT(nodes("publish"), SizeIs(500));
    const auto rest = columnOf(desk().getWork("", "", "publish", 500), nodeColumn);
    EXPECT_THAT(rest, SizeIs(120));
    EXPECT_EQ(rest.front(), "aa.en.11.01");
    EXPECT_TRUE(desk().getWork("", "", "publish", 620).isEmpty());
    EXPECT_TRUE(desk().getWork("", "", "publish", -1).isEmpty());
}

TEST_P(DeskWorkTest, RecentIsWhatWasChangedLastByAnybody) {
    changedBy(anna, "aa.en.01", at(8)).insert();
    changedBy(bert, "aa.en.02", at(10), "P000").insert();
    changedBy(bert, "aa.en.03", at(9)).insert();
    changedBy(bert, "aa.en.04", at(9)).insert();
    page("aa.en.05").insert();
    changedBy(bert, "bb.en.01", at(12)).insert();
    EXPECT_THAT(recent(), ElementsAre("aa.en.02", "aa.en.04", "aa.en.03", "aa.en.01"));
    EXPECT_THAT(recent(2), ElementsAre("aa.en.02", "aa.en.04"));
    EXPECT_THAT(recent(0), IsEmpty());
    EXPECT_THAT(recent(-1), IsEmpty());
    EXPECT_THAT(columnOf(desk().getRecent("aa", "de"), nodeColumn), IsEmpty());
}

TEST_P(DeskWorkTest, WhatFailsIsRaised) {
    drop("TORVEX_PAGES_LIVE");
    EXPECT_THAT(errorOf([&] { desk().getWork("", "", "mine"); }), StartsWith(chain({"getWork !"})));
    EXPECT_THAT(errorOf([&] { desk().getRecent("", ""); }), StartsWith(chain({"getRecent !"})));
}

}  // namespace
}  // namespace torvex::test
