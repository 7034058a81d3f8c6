#include <gmock/gmock.h>

#include "support/ForumTest.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// Topic 1 has the reactions 1 "01", 2 "01.01", 3 "01.01.01" and 4 "02"; 2 and 3 are hidden.
class RegistersForumPostsTest : public WithRegisters<ForumTest> {
  protected:
    void SetUp() override {
        WithRegisters<ForumTest>::SetUp();
        if (HasFatalFailure()) return;
        reaction(1, "01", "First", "20260602");
        reaction(2, "01.01", "Rude", "20260603", 0);
        reaction(3, "01.01.01", "Below", "20260604", 0);
        reaction(4, "02", "Other", "20260604");
        reaction(1, "01", "Elsewhere", "20260605", 1, 2);
    }
    std::string set(const std::string& references, bool on, int topicId = 1) {
        return registers().setReactions(1, topicId, references, on, 243);
    }
    std::string remove(const std::string& references, int topicId = 1) {
        return registers().deleteReactions(1, topicId, references, 243);
    }
    std::string save(int reactionId, const std::string& title, const std::string& text = "Words") {
        return registers().saveReaction(1, 1, reactionId, title, text, 243);
    }
    std::vector<std::string> shown() {
        return rowsOf(
            "select reaction_id from TORVEX_FORUM_REACTIONS where reaction_topicId = 1 "
            "and reaction_online = 1 order by reaction_id");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersForumPostsTest, bothEngines(), engineName);

TEST_P(RegistersForumPostsTest, TopicsAreListedTheLiveliestFirst) {
    topic(2, "Fern", "20260603",
          {{"topic_online", 0}, {"topic_author", "Ann"}, {"topic_lastDate", "20260610"}});
    EXPECT_THAT(linesOf(registers().getTopics(1)), ElementsAre("2|Fern|Ann|20260603|20260610|0|1|0",
                                                               "1|Moss & lichen|-|20260601|20260601|1|4|2"));
    EXPECT_THAT(linesOf(registers().getTopics(1, 1)), ElementsAre(StartsWith("1|Moss")));
    EXPECT_THAT(linesOf(registers().getTopics(2)), IsEmpty());
}

TEST_P(RegistersForumPostsTest, AThreadIsListedTheNewestFirstAndItsTopicLast) {
    EXPECT_THAT(linesOf(registers().getReactions(1, 1)),
                ElementsAre("4|02|Other|-|-|20260604|1|-", "3|01.01.01|Below|-|-|20260604|0|-",
                            "2|01.01|Rude|-|-|20260603|0|-", "1|01|First|-|-|20260602|1|-",
                            "0||Moss & lichen|-|-|20260601|1|-"));
    EXPECT_EQ(linesOf(registers().getReactions(1, 1, 3)).size(), 2U);
}

TEST_P(RegistersForumPostsTest, HidingHidesWhatIsBelowAndTellsHowMany) {
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_online = 1");
    EXPECT_EQ(set("01.01", false), "2");
    EXPECT_THAT(shown(), ElementsAre("1", "4"));
    EXPECT_EQ(set("01", false), "1") << "what is hidden already isn't counted again";
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||243|save|Reactions 01.01 in topic 1 of forum 1 switched off",
                            "7|Anna Author|0||243|save|Reactions 01 in topic 1 of forum 1 switched off"));
}

TEST_P(RegistersForumPostsTest, ShowingShowsWhatIsAboveAndTellsHowMany) {
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_online = 0");
    connection().execute("update TORVEX_FORUM_TOPICS set topic_online = 0");
    EXPECT_EQ(set("01.01.01", true), "4") << "three reactions and the topic";
    EXPECT_THAT(shown(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(set("01.01.01, 02", true), "1");
    EXPECT_EQ(cell("select topic_lastDate from TORVEX_FORUM_TOPICS"), "20260604");
}

TEST_P(RegistersForumPostsTest, WhatWasHiddenComesBackByItsPlaces) {
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_online = 1");
    EXPECT_EQ(set("01", false), "3");
    EXPECT_EQ(set("01,01.01,01.01.01", true), "3");
    EXPECT_THAT(shown(), ElementsAre("1", "2", "3", "4"));
}

TEST_P(RegistersForumPostsTest, WithoutAPlaceItIsTheTopic) {
    EXPECT_EQ(set("", false), "1");
    EXPECT_EQ(set("", false), "0");
    EXPECT_EQ(cell("select topic_online from TORVEX_FORUM_TOPICS"), "0");
    EXPECT_EQ(set(" ", true), "1");
    EXPECT_EQ(auditTrail().front(), "7|Anna Author|0||243|save|Topic 1 of forum 1 switched off");
}

TEST_P(RegistersForumPostsTest, RemovingRemovesWhatIsBelowAndTellsHowMany) {
    EXPECT_EQ(remove("01.01,01.01.01"), "2");
    EXPECT_EQ(remove(""), "3") << "two reactions and the topic";
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_REACTIONS"), "1") << "another topic's";
    EXPECT_EQ(auditTrail().back(), "7|Anna Author|0||243|delete|Topic 1 of forum 1 removed");
}

TEST_P(RegistersForumPostsTest, AReactionIsWrittenOtherwise) {
    EXPECT_EQ(save(2, "  Polite\nwords ", " One\r\ntwo "), "0");
    EXPECT_EQ(rowsOf("select reaction_title, reaction_text, reaction_online from TORVEX_FORUM_REACTIONS "
                     "where reaction_id = 2"),
              std::vector<std::string>{"Polite words|One\ntwo|0"});
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||243|save|Reaction 2 in topic 1 of forum 1 has been updated"));
}

TEST_P(RegistersForumPostsTest, TheTopicIsReactionZero) {
    EXPECT_EQ(save(0, std::string(200, 'x'), "About moss"), "0");
    EXPECT_EQ(rowsOf("select topic_title, topic_text from TORVEX_FORUM_TOPICS"),
              std::vector<std::string>{std::string(120, 'x') + "|About moss"});
}

TEST_P(RegistersForumPostsTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return set("01", false, 9); });
    expectRefusal("-1", [&] { return set("02,03", false); });
    expectRefusal("-1", [&] { return set("02,03", true); });
    expectRefusal("-1", [&] { return remove("02,03"); });
    expectRefusal("-1", [&] { return remove("", 9); });
    expectRefusal("-1", [&] { return save(9, "Title"); });
    expectRefusal("-1", [&] { return registers().saveReaction(1, 9, 0, "Title", "", 243); });
    expectRefusal("-3", [&] { return save(2, " \n "); });
    actAsNobody();
    expectRefusal("-10", [&] { return set("01", false); });
    expectRefusal("-10", [&] { return remove("01"); });
    expectRefusal("-10", [&] { return save(2, "Title"); });
}

TEST_P(RegistersForumPostsTest, AFailureAnywhereChangesNothing) {
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_online = 1");
    failEverywhere("2", "-99", [&] { return set("01.01", false); });
    failEverywhere("2", "-99", [&] { return set("01.01.01", true); });
    failEverywhere("0", "-99", [&] { return save(2, "Title"); });
    failEverywhere("2", "-99", [&] { return remove("01.01"); });
}

TEST_P(RegistersForumPostsTest, ListsSayWhatFailed) {
    connection().execute("drop table TORVEX_FORUM_REACTIONS");
    EXPECT_THAT(errorOf([&] { registers().getTopics(1); }), StartsWith(chain({"getTopics !"})));
    EXPECT_THAT(errorOf([&] { registers().getReactions(1, 1); }), StartsWith(chain({"getReactions !"})));
}

}  // namespace
}  // namespace torvex::test
