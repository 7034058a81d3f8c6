// The pages of the forum: what they show, and to whom.

#include "support/ForumPagesTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

INSTANTIATE_TEST_SUITE_P(Engines, ForumPagesTest, bothEngines(), engineName);

// ---- Reading ----

TEST_P(ForumPagesTest, TheForumsOfThePageAreListed) {
    const std::string html = forums("pageId=20");
    EXPECT_EQ(host.response.status, 200);
    EXPECT_THAT(html, HasSubstr("FORUMS [Plants|1|/torvex_forum/topics.asp?pageId=20&amp;forumId=1]"
                                "[Questions|1|/torvex_forum/topics.asp?pageId=20&amp;forumId=2]</body>"));
    EXPECT_EQ(host.response.charset, "utf-8");
}

TEST_P(ForumPagesTest, APageThatNamesAForumBeginsWithItsTopics) {
    logIn("ben");
    EXPECT_THAT(forums("pageId=21&&forumId=3"), HasSubstr("TOPICS Members"));
}

TEST_P(ForumPagesTest, TopicsComeByPages) {
    topic(1, 2, "Second");
    topic(1, 3, "Third");
    EXPECT_THAT(topics("pageId=20&forumId=1"), HasSubstr("[Third|/torvex_forum/reactions.asp?pageId=20&amp;"
                                                         "forumId=1&amp;topicId=3][Second|"));
    EXPECT_THAT(host.response.body(), HasSubstr("page 1 of 2"));
    EXPECT_THAT(topics("pageId=20&forumId=1&pageTo=2"), HasSubstr("[Topic of Plants|"));
}

TEST_P(ForumPagesTest, AnyPageNumberShowsAPage) {
    for (const std::string number :
         {"", "-1", "0", "x", "1e9", "99999999999999999999", "2.7", "%00", "1,2"}) {
        EXPECT_THAT(topics("pageId=20&forumId=1&pageTo=" + number), HasSubstr("TOPICS Plants")) << number;
        EXPECT_EQ(host.response.status, 200);
    }
}

TEST_P(ForumPagesTest, TheArchiveIsShownWhereItMayBeSeen) {
    connection().execute("update TORVEX_FORUM_LIVE set forum_archiveAfter = 5");
    EXPECT_THAT(topics("pageId=20&forumId=1&archive=1"), Not(HasSubstr("Topic of")));
    connection().execute("update TORVEX_FORUM_LIVE set forum_archiveVisible = 1");
    EXPECT_THAT(topics("pageId=20&forumId=1"), HasSubstr("ARCHIVE"));
    EXPECT_THAT(topics("pageId=20&forumId=1&archive=1"), HasSubstr("[Topic of Plants|"));
    EXPECT_THAT(host.response.body(), HasSubstr("CURRENT"));
}

TEST_P(ForumPagesTest, ATopicIsShownWithItsReactions) {
    row("TORVEX_FORUM_REACTIONS", {{"reaction_id", 1},
                                   {"reaction_forumId", 1},
                                   {"reaction_topicId", 1},
                                   {"reaction_reference", "01"},
                                   {"reaction_title", "Re"},
                                   {"reaction_text", "See http://a.example"},
                                   {"reaction_author", "Ann"},
                                   {"reaction_date", "20260602"},
                                   {"reaction_online", 1}});
    EXPECT_THAT(reactions("pageId=20&forumId=1&topicId=1"),
                HasSubstr("[Re|Ann|<p>See <a href=\"http://a.example\" rel=\"nofollow ugc noopener\">"));
}

TEST_P(ForumPagesTest, WhatIsNotThereIsToldWithWhatIs) {
    EXPECT_THAT(topics("pageId=20&forumId=4711"), HasSubstr("FORUMS GONE[Plants|"));
    EXPECT_EQ(host.response.status, 404);
    EXPECT_THAT(reactions("pageId=20&forumId=1&topicId=4711"),
                HasSubstr("TOPICS Plants GONE[Topic of Plants|"));
    EXPECT_EQ(host.response.status, 404);
    EXPECT_THAT(form("pageId=20&forumId=1&topicId=4711"), HasSubstr("TOPICS Plants GONE"));
    for (const auto* number : {"", "x", "-1", "70000", "1e3", "2%2C3"}) {
        reactions("pageId=20&forumId=1&topicId=" + std::string(number));
        EXPECT_EQ(host.response.status, 404) << number;
    }
}

TEST_P(ForumPagesTest, APageThatIsNotTheForumsLeadsAway) {
    for (const auto* query : {"", "pageId=4711", "pageId=11", "pageId=31", "pageId=x"}) {
        EXPECT_EQ(forums(query), "") << query;
        EXPECT_THAT(location(host), StartsWith("/error.asp?")) << query;
    }
}

TEST_P(ForumPagesTest, ReadingCountsTheTemplateAsAView) {
    forums("pageId=20");
    EXPECT_EQ((host.hits.views[{"aa.bb.05.99.01", "20260615"}]), 1);
}

// ---- Rights ----

TEST_P(ForumPagesTest, AGuardedForumIsShownToItsMembersAlone) {
    for (const auto& page : {forumsPage_, topicsPage_, reactionsPage_, formPage()}) {
        EXPECT_EQ(show(page, "pageId=21&forumId=3&topicId=1"), "");
        EXPECT_EQ(location(host), "/tvx.asp?pageId=18");
    }
    logIn("ben");
    EXPECT_THAT(reactions("pageId=21&forumId=3&topicId=1"), HasSubstr("TOPIC Topic of Members"));
}

TEST_P(ForumPagesTest, AGuardedForumIsNotReachedThroughAnotherPage) {
    for (const auto& page : {forumsPage_, topicsPage_, reactionsPage_, formPage()}) {
        const std::string html = show(page, "pageId=20&forumId=3&topicId=1");
        EXPECT_EQ(host.response.status, 404);
        EXPECT_THAT(html, Not(HasSubstr("Members")));
    }
    post("pageId=20&forumId=3&topicId=1", token(3, {1, 0}));
    EXPECT_EQ(host.response.status, 404);
    EXPECT_EQ(rowsKept(), "3 topics, 0 reactions");
}

TEST_P(ForumPagesTest, WhoMayNotReadMayNotPost) {
    post("pageId=21&forumId=3&topicId=1", token(3, {1, 0}));
    EXPECT_EQ(location(host), "/tvx.asp?pageId=18");
    EXPECT_EQ(rowsKept(), "3 topics, 0 reactions");
}

// ---- Templates ----

TEST_P(ForumPagesTest, ATemplateWithoutItsPlacesStillShowsThePage) {
    for (const auto* title : {"forums", "topics", "reactions", "reaction"}) {
        templateOf(title) = "<!--!torvex_content_start!-->BARE<!--!torvex_content_end!-->";
    }
    for (const auto& page : {forumsPage_, topicsPage_, reactionsPage_, formPage()}) {
        EXPECT_THAT(show(page, "pageId=20&forumId=1&topicId=1"), HasSubstr("BARE"));
    }
}

TEST_P(ForumPagesTest, ATemplateMayLackAnyOfItsBlocks) {
    for (const auto& [title, page] :
         std::initializer_list<std::pair<const char*, Page>>{{"forums", forumsPage_},
                                                             {"topics", topicsPage_},
                                                             {"reactions", reactionsPage_},
                                                             {"reaction", formPage()}}) {
        std::string& layout = templateOf(title);
        const auto lacking = withoutOneBlock(layout);
        EXPECT_FALSE(lacking.empty());
        for (const std::string& one : lacking) {
            layout = one;
            const std::string html =
                show(page, title == std::string("forums") ? "pageId=20" : "pageId=20&forumId=1&topicId=1");
            EXPECT_THAT(html, StartsWith("<html>")) << one;
            EXPECT_THAT(html, Not(HasSubstr("_start!-->"))) << one;
            EXPECT_THAT(html, Not(HasSubstr("_end!-->"))) << one;
        }
    }
}

TEST_P(ForumPagesTest, ATemplateMayShowTheTreeInPlaceOfTheThread) {
    templateOf("reactions") =
        "<!--!torvex_content_start!-->TREE <!--!forum_tree!--> END<!--!torvex_content_end!-->";
    EXPECT_THAT(reactions("pageId=20&forumId=1&topicId=1"), HasSubstr("TREE  END"));
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    EXPECT_THAT(reactions("pageId=20&forumId=1&topicId=1&reactionId=1"),
                HasSubstr("TREE <table class=\"forum_bgcolor\""));
    EXPECT_THAT(host.response.body(), HasSubstr("view(1,1,1)\" class=\"forum_reactionTitle_hl\""));
}

TEST_P(ForumPagesTest, WithoutATemplateTheVisitorIsLedToAnErrorPage) {
    connection().execute("delete from TORVEX_PAGES_LIVE where title = 'topics'");
    EXPECT_EQ(topics("pageId=20&forumId=1"), "");
    EXPECT_EQ(location(host), "/error.asp?pageId=20&error=no_template");
}

}  // namespace
}  // namespace torvex::test
