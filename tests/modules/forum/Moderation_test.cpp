#include <gmock/gmock.h>

#include "support/ForumTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ModerationTest : public ForumTest {
  protected:
    void SetUp() override {
        ForumTest::SetUp();
        if (HasFatalFailure()) return;
        reaction(1, "01");
        reaction(2, "01.01", "waits", "20260603", 0);
        reaction(3, "01.01.01", "below", "20260604", 0);
        reaction(4, "02", "other", "20260605");
        reaction(5, "01", "elsewhere", "20260602", 1, 2);
    }
    /// The numbers of the reactions of topic 1 that are shown.
    std::vector<std::string> shown() {
        return rowsOf(
            "select reaction_id from TORVEX_FORUM_REACTIONS where reaction_topicId = 1 "
            "and reaction_online = 1 order by reaction_id");
    }
    std::vector<std::string> kept() {
        return rowsOf(
            "select reaction_topicId, reaction_id from TORVEX_FORUM_REACTIONS "
            "order by reaction_topicId, reaction_id");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ModerationTest, bothEngines(), engineName);

TEST_P(ModerationTest, WhatWaitsIsListedTheOldestFirst) {
    topic(2, "Fern", "20260602", {{"topic_online", 0}, {"topic_author", "Ann"}, {"topic_text", "Words"}});
    const Value list = forum().getWaiting(" AA ", "en");
    ASSERT_TRUE(list.isGrid());
    EXPECT_EQ(list.grid().rows(), 3U);
    EXPECT_EQ(list.grid().columns(), 9U);
    EXPECT_EQ(list.grid().at(1, 0).toText(), "2");
    EXPECT_EQ(list.grid().at(2, 0).toText(), "0");
    EXPECT_EQ(list.grid().at(4, 0).toText(), "Fern");
    EXPECT_EQ(list.grid().at(5, 0).toText(), "Ann");
    EXPECT_EQ(list.grid().at(7, 0).toText(), "Words");
    EXPECT_EQ(list.grid().at(8, 0).toText(), "Plants");
    EXPECT_EQ(list.grid().at(3, 1).toText(), "01.01");
    EXPECT_EQ(list.grid().at(4, 2).toText(), "below");
}

TEST_P(ModerationTest, OtherSitesAndLanguagesWaitElsewhere) {
    EXPECT_TRUE(forum().getWaiting("aa", "de").isEmpty());
    EXPECT_TRUE(forum().getWaiting("bb", "en").isEmpty());
}

TEST_P(ModerationTest, ShowingShowsWhatIsAnsweredAsWell) {
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_online = 0 where reaction_topicId = 1");
    EXPECT_EQ(forum().setOnOff(1, 1, "01.01.01", true), "");
    EXPECT_THAT(shown(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(cell("select topic_lastDate from TORVEX_FORUM_TOPICS where topic_id = 1"), "20260604");
}

TEST_P(ModerationTest, HidingHidesWhatAnswersItAsWell) {
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_online = 1");
    EXPECT_EQ(forum().setOnOff(1, 1, "01.01", false), "");
    EXPECT_THAT(shown(), ElementsAre("1", "4"));
    EXPECT_EQ(cell("select topic_lastDate from TORVEX_FORUM_TOPICS where topic_id = 1"), "20260605");
    EXPECT_EQ(cell("select reaction_online from TORVEX_FORUM_REACTIONS where reaction_topicId = 2"), "1");
}

TEST_P(ModerationTest, WithoutAPlaceItIsTheTopic) {
    EXPECT_EQ(forum().setOnOff(1, 1, "", false), "");
    EXPECT_EQ(cell("select topic_online from TORVEX_FORUM_TOPICS"), "0");
    EXPECT_EQ(forum().setOnOff(1, 1, " ", true), "");
    EXPECT_EQ(cell("select topic_online from TORVEX_FORUM_TOPICS"), "1");
}

TEST_P(ModerationTest, ShowingAReactionShowsItsTopic) {
    connection().execute("update TORVEX_FORUM_TOPICS set topic_online = 0");
    EXPECT_EQ(forum().setOnOff(1, 1, "02", true), "");
    EXPECT_EQ(cell("select topic_online from TORVEX_FORUM_TOPICS"), "1");
}

TEST_P(ModerationTest, RemovingRemovesWhatAnswersItAsWell) {
    EXPECT_EQ(forum().deleteReactions(1, 1, "01.01, 01.01.01"), "");
    EXPECT_THAT(kept(), ElementsAre("1|1", "1|4", "2|5"));
    EXPECT_EQ(forum().deleteReactions(1, 1, ""), "");
    EXPECT_THAT(kept(), ElementsAre("2|5"));
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_TOPICS"), "0");
}

TEST_P(ModerationTest, WhatIsNotThereIsRefusedAndNothingOfTheListIsDone) {
    for (const auto* list : {"07", "02,07", "%", "0", "01.01.01.01"}) {
        expectRefusal("-2", [&] { return forum().deleteReactions(1, 1, list); });
        expectRefusal("-2", [&] { return forum().setOnOff(1, 1, list, true); });
    }
    expectRefusal("-2", [&] { return forum().setOnOff(1, 4711, "", true); });
    expectRefusal("-2", [&] { return forum().deleteReactions(4711, 1, "01"); });
}

TEST_P(ModerationTest, AFailureHalfWayChangesNothing) {
    failEverywhere("", "-99", [&] { return forum().deleteReactions(1, 1, "01,02"); });
}

TEST_P(ModerationTest, ShowingThatFailsHalfWayChangesNothing) {
    failEverywhere("", "-99", [&] { return forum().setOnOff(1, 1, "01.01.01", true); });
}

TEST_P(ModerationTest, AnEntryOfTheMenuLeavesALineInTheTrail) {
    forum().setOnOff(1, 1, "01.01", true, 243);
    forum().deleteReactions(1, 1, "02", 243);
    forum().deleteReactions(1, 1, "02", 243);
    const auto trail = auditTrail();
    ASSERT_EQ(trail.size(), 2U);
    EXPECT_THAT(trail[0], HasSubstr("|243|save|Reactions 01.01 in topic 1 of forum 1 switched on"));
    EXPECT_THAT(trail[1], HasSubstr("|243|delete|Reactions 02 in topic 1 of forum 1 removed"));
}

TEST_P(ModerationTest, WithoutAnEntryThereIsNone) {
    forum().setOnOff(1, 1, "01.01", true);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

}  // namespace
}  // namespace torvex::test
