#include "modules/forum/Posting.h"

#include <barrier>
#include <gmock/gmock.h>
#include <thread>

#include "platform/db/OwnTransaction.h"
#include "support/ForumTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

using Result = std::variant<Posted, PostFault>;

class PostingTest : public ForumTest {
  protected:
    static ForumRecord record(bool showsAtOnce = true) {
        ForumRecord forum;
        forum.id = 1;
        forum.showsAtOnce = showsAtOnce;
        return forum;
    }
    /// On a connection of its own, as a request does it.
    Result keep(const PostTarget& target, const std::string& showing, const ForumRecord& forum = record(),
                const PostForm& form = {"Moss", "It grows.", "Ann", "ann@a.test"}) {
        const auto connection = openAnother(db::Purpose::Transaction);
        return db::inTransaction(*connection,
                                 [&](db::Connection& own) -> db::Outcome<Result> {
                                     Result result =
                                         keepPost(own, forum, target, form, showing, host.clock.now());
                                     const bool isKept = std::holds_alternative<Posted>(result);
                                     return {isKept, std::move(result)};
                                 })
            .value;
    }
    static Posted posted(const Result& result) { return std::get<Posted>(result); }
    static PostFault fault(const Result& result) { return std::get<PostFault>(result); }
    std::vector<std::string> places() {
        return rowsOf(
            "select reaction_id, reaction_reference from TORVEX_FORUM_REACTIONS order by reaction_id");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PostingTest, bothEngines(), engineName);

TEST_P(PostingTest, ATopicIsKeptWithAllThatWasTyped) {
    const Posted kept = posted(keep({}, "first"));
    EXPECT_EQ(kept.topicId, 2);
    EXPECT_EQ(kept.reactionId, 0);
    EXPECT_TRUE(kept.isShown);
    EXPECT_FALSE(kept.isRepeated);
    EXPECT_THAT(
        rowsOf("select topic_forumId, topic_title, topic_text, topic_author, topic_email, topic_online, "
               "topic_dateCreation, topic_lastDate from TORVEX_FORUM_TOPICS where topic_id = 2"),
        ElementsAre("1|Moss|It grows.|Ann|ann@a.test|1|20260615|20260615"));
}

TEST_P(PostingTest, AReactionIsKeptAtTheNextPlace) {
    EXPECT_EQ(posted(keep({1, 0}, "a")).reactionId, 1);
    EXPECT_EQ(posted(keep({1, 0}, "b")).reactionId, 2);
    EXPECT_EQ(posted(keep({1, 1}, "c")).reactionId, 3);
    EXPECT_EQ(posted(keep({1, 3}, "d")).reactionId, 4);
    EXPECT_EQ(posted(keep({1, 1}, "e")).reactionId, 5);
    EXPECT_EQ(posted(keep({1, 0}, "f")).reactionId, 6);
    EXPECT_THAT(places(), ElementsAre("1|01", "2|02", "3|01.01", "4|01.01.01", "5|01.02", "6|03"));
    EXPECT_EQ(cell("select topic_lastDate from TORVEX_FORUM_TOPICS where topic_id = 1"), "20260615");
}

TEST_P(PostingTest, APlaceThatIsHiddenIsTakenAllTheSame) {
    reaction(1, "01", "hidden", "20260602", 0);
    posted(keep({1, 0}, "a"));
    EXPECT_THAT(places(), ElementsAre("1|01", "2|02"));
}

TEST_P(PostingTest, BehindReactionsThatSkipALevelTheNextPlaceIsFree) {
    reaction(1, "01.01.03");
    reaction(2, "02.05");
    posted(keep({1, 0}, "a"));
    posted(keep({1, 2}, "b"));
    EXPECT_THAT(places(), ElementsAre("1|01.01.03", "2|02.05", "3|03", "4|02.05.01"));
}

TEST_P(PostingTest, BehindTheNinetyNinthComesAHundredth) {
    reaction(1, "99.01");
    posted(keep({1, 0}, "a"));
    EXPECT_THAT(places(), ElementsAre("1|99.01", "2|A0"));
}

TEST_P(PostingTest, WhereNoPlaceIsLeftNothingIsKept) {
    reaction(1, "ZZ");
    EXPECT_EQ(fault(keep({1, 0}, "a")), PostFault::NoPlaceLeft);
    EXPECT_THAT(places(), ElementsAre("1|ZZ"));
}

TEST_P(PostingTest, NumbersHaveSixteenBits) {
    reaction(32767, "01");
    EXPECT_EQ(fault(keep({1, 0}, "a")), PostFault::NoPlaceLeft);
    topic(32767, "Last", "20260601");
    EXPECT_EQ(fault(keep({}, "b")), PostFault::NoPlaceLeft);
}

TEST_P(PostingTest, ATopicHoldsFiveThousandReactions) {
    connection().execute(
        "insert into TORVEX_FORUM_REACTIONS (reaction_id, reaction_forumId, reaction_topicId, "
        "reaction_reference) "
        "with recursive numbers (n) as (select 1 union all select n + 1 from numbers where n < 4999) "
        "select n, 1, 1, '01' from numbers");
    EXPECT_EQ(posted(keep({1, 0}, "a")).reactionId, 5000);
    EXPECT_EQ(fault(keep({1, 0}, "b")), PostFault::NoPlaceLeft);
}

TEST_P(PostingTest, TheSameFormIsKeptOnce) {
    const Posted first = posted(keep({1, 0}, "twice"));
    const Posted second = posted(keep({1, 0}, "twice"));
    EXPECT_EQ(second.reactionId, first.reactionId);
    EXPECT_TRUE(second.isRepeated);
    EXPECT_THAT(places(), ElementsAre("1|01"));
    const Posted topic = posted(keep({}, "twice"));
    EXPECT_EQ(posted(keep({}, "twice")).topicId, topic.topicId);
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_TOPICS"), "2");
}

TEST_P(PostingTest, WhatNeedsAModeratorIsKeptOutOfSight) {
    const Posted kept = posted(keep({1, 0}, "a", record(false)));
    EXPECT_FALSE(kept.isShown);
    EXPECT_EQ(cell("select reaction_online from TORVEX_FORUM_REACTIONS"), "0");
    EXPECT_EQ(cell("select topic_lastDate from TORVEX_FORUM_TOPICS where topic_id = 1"), "");
    EXPECT_FALSE(posted(keep({}, "b", record(false))).isShown);
    EXPECT_EQ(cell("select topic_online from TORVEX_FORUM_TOPICS where topic_id = 2"), "0");
}

TEST_P(PostingTest, AReactionToWhatWasRemovedMeanwhileIsAFault) {
    EXPECT_EQ(fault(keep({4711, 0}, "a")), PostFault::TopicGone);
    EXPECT_EQ(fault(keep({1, 4711}, "b")), PostFault::ReactionGone);
    reaction(1, "01", "hidden", "20260602", 0);
    EXPECT_EQ(fault(keep({1, 1}, "c")), PostFault::ReactionGone);
    connection().execute("update TORVEX_FORUM_TOPICS set topic_online = 0");
    EXPECT_EQ(fault(keep({1, 0}, "d")), PostFault::TopicGone);
    connection().execute("delete from TORVEX_FORUM_LIVE");
    EXPECT_EQ(fault(keep({}, "e")), PostFault::ForumGone);
    EXPECT_THAT(places(), ElementsAre("1|01"));
}

TEST_P(PostingTest, VisitorsOfTheSameMomentAllGetAPlace) {
    constexpr int visitors = 6;
    reaction(1, "01");
    std::vector<Result> results(visitors, PostFault::Failed);
    {
        std::barrier start(visitors);
        std::vector<std::jthread> threads;
        for (int i = 0; i < visitors; ++i) {
            threads.emplace_back([&, i] {
                start.arrive_and_wait();
                results[static_cast<std::size_t>(i)] = keep({1, i % 2}, "visitor " + std::to_string(i));
            });
        }
    }
    for (const Result& result : results) EXPECT_TRUE(std::holds_alternative<Posted>(result));
    EXPECT_THAT(rowsOf("select reaction_reference from TORVEX_FORUM_REACTIONS"),
                UnorderedElementsAre("01", "01.01", "01.02", "01.03", "02", "03", "04"));
    EXPECT_EQ(cell("select count(distinct reaction_id) from TORVEX_FORUM_REACTIONS"), "7");
}

TEST_P(PostingTest, TopicsOfTheSameMomentAllGetANumber) {
    constexpr int visitors = 6;
    {
        std::barrier start(visitors);
        std::vector<std::jthread> threads;
        for (int i = 0; i < visitors; ++i) {
            threads.emplace_back([&, i] {
                start.arrive_and_wait();
                posted(keep({}, "visitor " + std::to_string(i)));
            });
        }
    }
    EXPECT_EQ(cell("select max(topic_id) from TORVEX_FORUM_TOPICS"), "7");
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_TOPICS"), "7");
}

TEST_P(PostingTest, ADoubleClickOfTheSameMomentIsOnePost) {
    constexpr int clicks = 4;
    {
        std::barrier start(clicks);
        std::vector<std::jthread> threads;
        for (int i = 0; i < clicks; ++i) {
            threads.emplace_back([&] {
                start.arrive_and_wait();
                EXPECT_EQ(posted(keep({1, 0}, "the same")).reactionId, 1);
            });
        }
    }
    EXPECT_THAT(places(), ElementsAre("1|01"));
}

}  // namespace
}  // namespace torvex::test
