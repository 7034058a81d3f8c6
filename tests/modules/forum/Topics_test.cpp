#include "modules/forum/Topics.h"

#include <gmock/gmock.h>

#include "support/ForumTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TopicsTest : public ForumTest {
  protected:
    void SetUp() override {
        ForumTest::SetUp();
        if (HasFatalFailure()) return;
        forum_.id = 1;
        forum_.pageSize = 2;
        topic(2, "Fern", "20260610");
        topic(3, "Oak", "20250101");
        topic(4, "Hidden", "20260614", {{"topic_online", 0}});
        topic(5, "Elm", "20260501", {{"topic_lastDate", "20260612"}});
        topic(1, "Elsewhere", "20260614", {}, 2);
    }
    TopicPage page(double number, TopicAge age = TopicAge::Current) {
        return topicsOf(connection(), forum_, age, number, host.clock.now());
    }
    static std::vector<std::string> titles(const TopicPage& found) {
        std::vector<std::string> all;
        for (const auto& one : found.topics) all.push_back(one.topic.title);
        return all;
    }
    bool isThere(int topicId) { return topicOf(connection(), forum_, topicId, host.clock.now()).has_value(); }

    ForumRecord forum_;
};
INSTANTIATE_TEST_SUITE_P(Engines, TopicsTest, bothEngines(), engineName);

TEST_P(TopicsTest, TheLiveliestComesFirst) {
    EXPECT_THAT(titles(page(1)), ElementsAre("Elm", "Fern"));
    EXPECT_THAT(titles(page(2)), ElementsAre("Moss & lichen", "Oak"));
    EXPECT_EQ(page(1).pages, 2);
}

TEST_P(TopicsTest, APageThatIsNotThereLeadsToTheNearest) {
    for (const double number : {0.0, -5.0, 0.9, -1e300}) EXPECT_EQ(page(number).page, 1) << number;
    for (const double number : {3.0, 1e9, 1e300}) EXPECT_EQ(page(number).page, 2) << number;
}

TEST_P(TopicsTest, ReactionsThatAreShownAreCounted) {
    reaction(1, "01", "a", "20260611", 1, 2);
    reaction(2, "02", "b", "20260611", 0, 2);
    EXPECT_EQ(page(1).topics[1].reactions, 1);
    EXPECT_EQ(page(1).topics[0].reactions, 0);
    EXPECT_EQ(page(1).topics[0].lastDay, "20260612");
}

TEST_P(TopicsTest, WithoutAPageSizeAHundredStandOnAPage) {
    forum_.pageSize = 0;
    EXPECT_EQ(page(1).topics.size(), 4U);
    EXPECT_EQ(page(1).pages, 1);
    forum_.pageSize = 5000;
    for (int id = 10; id < 120; ++id) topic(id, "Many", "20260101");
    EXPECT_EQ(page(1).topics.size(), 100U);
}

TEST_P(TopicsTest, WhatHadNoPostForLongerThanTheArchiveAgeIsArchived) {
    forum_.archiveAfter = 14;  // the 1st of June is the oldest day that stays
    EXPECT_THAT(titles(page(1)), ElementsAre("Elm", "Fern"));
    EXPECT_THAT(titles(page(2)), ElementsAre("Moss & lichen"));
    EXPECT_THAT(titles(page(1, TopicAge::Archived)), ElementsAre("Oak"));
    forum_.archiveAfter = 13;
    EXPECT_THAT(titles(page(1, TopicAge::Archived)), ElementsAre("Moss & lichen", "Oak"));
}

TEST_P(TopicsTest, WithoutAnAgeNothingIsArchived) {
    EXPECT_THAT(titles(page(1, TopicAge::Archived)), IsEmpty());
    EXPECT_FALSE(hasArchive(connection(), forum_, host.clock.now()));
}

TEST_P(TopicsTest, AnArchiveIsThereWhenItMayBeSeenAndHoldsSomething) {
    forum_.archiveAfter = 14;
    EXPECT_FALSE(hasArchive(connection(), forum_, host.clock.now()));
    forum_.isArchiveVisible = true;
    EXPECT_TRUE(hasArchive(connection(), forum_, host.clock.now()));
    forum_.archiveAfter = 2000;
    EXPECT_FALSE(hasArchive(connection(), forum_, host.clock.now()));
}

TEST_P(TopicsTest, ATopicIsReadWhereItIsShown) {
    EXPECT_TRUE(isThere(1));
    EXPECT_FALSE(isThere(4));
    EXPECT_FALSE(isThere(4711));
    EXPECT_FALSE(isThere(0));
}

TEST_P(TopicsTest, AnOldTopicIsReadOnlyWhereTheArchiveMayBeSeen) {
    forum_.archiveAfter = 14;
    EXPECT_FALSE(isThere(3));
    forum_.isArchiveVisible = true;
    EXPECT_TRUE(isThere(3));
}

TEST_P(TopicsTest, ReactionsComeInTheOrderOfTheTreeWithTheirTexts) {
    row("TORVEX_FORUM_REACTIONS", {{"reaction_id", 7},
                                   {"reaction_forumId", 1},
                                   {"reaction_topicId", 1},
                                   {"reaction_reference", "02"},
                                   {"reaction_title", "two"},
                                   {"reaction_text", "text of two"},
                                   {"reaction_author", "Ann"},
                                   {"reaction_date", "20260602"},
                                   {"reaction_online", 1}});
    reaction(8, "01", "one");
    reaction(9, "01.01", "hidden", "20260602", 0);
    const auto found = reactionsOf(connection(), 1, 1, 0);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].title, "one");
    EXPECT_EQ(found[1].text, "text of two");
    EXPECT_EQ(found[1].author, "Ann");
    EXPECT_EQ(reactionOf(connection(), 1, 1, 7)->title, "two");
    EXPECT_FALSE(reactionOf(connection(), 1, 1, 9));
    EXPECT_FALSE(reactionOf(connection(), 1, 1, 0));
}

TEST_P(TopicsTest, ALongTopicHasTheTextOfOneReactionAtATime) {
    const int many = static_cast<int>(mostTextsOfTopic) + 1;
    for (int id = 1; id <= many; ++id) reaction(id, "01", "Re", "20260602");
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_text = 'long'");
    const auto found = reactionsOf(connection(), 1, 1, 5);
    ASSERT_EQ(found.size(), static_cast<std::size_t>(many));
    EXPECT_EQ(found[4].text, "long");
    EXPECT_EQ(found[5].text, "");
    connection().execute("delete from TORVEX_FORUM_REACTIONS where reaction_id = 1");
    EXPECT_EQ(reactionsOf(connection(), 1, 1, 5).back().text, "long");
    connection().execute("update TORVEX_FORUM_REACTIONS set reaction_text = ?", {std::string(2000, 'x')});
    EXPECT_EQ(reactionsOf(connection(), 1, 1, 5).back().text, "");
}

}  // namespace
}  // namespace torvex::test
