// What becomes of what is posted on the pages of the forum.

#include "support/ForumPagesTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class ForumPostsTest : public ForumPagesTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ForumPostsTest, bothEngines(), engineName);

TEST_P(ForumPostsTest, TheFormOfAPostHasAToken) {
    EXPECT_EQ(field(form("pageId=20&forumId=1"), "token").size(), 100U);
    EXPECT_THAT(host.response.body(),
                HasSubstr("action=\"/torvex_forum/reaction.asp?pageId=20&amp;forumId=1\""));
    EXPECT_THAT(form("pageId=20&forumId=1&topicId=1"), HasSubstr("answered=Topic of Plants;"));
}

TEST_P(ForumPostsTest, ATopicIsBegunAndLeadsToItself) {
    post("pageId=20&forumId=1", token(1, {}));
    EXPECT_EQ(host.response.status, 302);
    EXPECT_EQ(location(host), "/torvex_forum/reactions.asp?pageId=20&forumId=1&topicId=2");
    const std::string html = reactions("pageId=20&forumId=1&topicId=2");
    EXPECT_THAT(html, HasSubstr("TOPIC Moss <p>It grows.</p>"));
    EXPECT_THAT(html, HasSubstr("POSTED"));
    EXPECT_THAT(reactions("pageId=20&forumId=1&topicId=2"), Not(HasSubstr("POSTED")));
}

TEST_P(ForumPostsTest, AReactionLeadsToItsPlace) {
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    EXPECT_EQ(location(host),
              "/torvex_forum/reactions.asp?pageId=20&forumId=1&topicId=1&reactionId=1#reaction-1");
    post("pageId=20&forumId=1&topicId=1&reactionId=1", token(1, {1, 1}));
    EXPECT_EQ(cell("select reaction_reference from TORVEX_FORUM_REACTIONS where reaction_id = 2"), "01.01");
}

TEST_P(ForumPostsTest, WherePostsWaitTheVisitorIsTold) {
    post("pageId=20&forumId=2&topicId=1", token(2, {1, 0}));
    EXPECT_EQ(location(host), "/torvex_forum/reactions.asp?pageId=20&forumId=2&topicId=1");
    const std::string html = reactions("pageId=20&forumId=2&topicId=1");
    EXPECT_THAT(html, HasSubstr("WAITING"));
    EXPECT_THAT(html, Not(HasSubstr("[Moss")));
    post("pageId=20&forumId=2", token(2, {}));
    EXPECT_EQ(location(host), "/torvex_forum/topics.asp?pageId=20&forumId=2");
    EXPECT_THAT(topics("pageId=20&forumId=2"), HasSubstr("WAITING"));
    EXPECT_THAT(host.response.body(), Not(HasSubstr("[Moss")));
}

TEST_P(ForumPostsTest, ADoubleClickIsOnePost) {
    const std::string same = token(1, {1, 0});
    post("pageId=20&forumId=1&topicId=1", same);
    const std::string first = location(host);
    for (int i = 0; i < 5; ++i) {
        post("pageId=20&forumId=1&topicId=1", same);
        EXPECT_EQ(location(host), first);
    }
    EXPECT_EQ(rowsKept(), "3 topics, 1 reactions");
}

TEST_P(ForumPostsTest, APostThatIsRefusedComesBackWithItsWords) {
    const std::string query = "pageId=20&forumId=1&topicId=1";
    const std::string kept = "3 topics, 0 reactions";
    expectRefused(post(query, ""), "We could not tell that this form is ours.", kept);
    expectRefused(post(query, token(1, {})), "We could not tell that this form is ours.", kept);
    expectRefused(post(query, token(1, {1, 0}, {2026, 6, 15, 11, 59, 59})), "That was very quick.", kept);
    expectRefused(post(query, token(1, {1, 0}, {2026, 6, 14, 11, 0, 0})), "This page was open for very long.",
                  kept);
    expectRefused(post(query, token(1, {1, 0}), {.trap = "http://spam.example"}),
                  "The field that is to stay empty was filled in.", kept);
    expectRefused(post(query, token(1, {1, 0}), {.origin = "http://evil.test"}),
                  "We could not tell that this form is ours.", kept);
}

TEST_P(ForumPostsTest, TheFormThatComesBackCanBeSentAfterAMoment) {
    const std::string html = post("pageId=20&forumId=1&topicId=1", "");
    host.response = {};
    const std::string fresh = field(html, "token");
    FixedClock afterwards({2026, 6, 15, 12, 0, 5});
    HostContext late{host.services().with(afterwards), host.request, host.response, host.session};
    ask("pageId=20&forumId=1&topicId=1",
        {{"forum_title", "Moss"}, {"forum_text", "x"}, {"forum_author", "Ann"}, {"forum_token", fresh}},
        {{"request_method", "POST"}, {"remote_addr", "192.0.2.1"}});
    forumReactionPage(late, reports, desk);
    EXPECT_EQ(rowsKept(), "3 topics, 1 reactions");
}

TEST_P(ForumPostsTest, EveryMissingFieldIsTold) {
    const std::string html =
        post("pageId=20&forumId=1", token(1, {}), {.title = " ", .text = "\r\n", .author = ""});
    EXPECT_THAT(html,
                HasSubstr("(Please give your post a title.)(Please write something.)(Please tell your name"));
    EXPECT_EQ(rowsKept(), "3 topics, 0 reactions");
}

TEST_P(ForumPostsTest, SentencesAreInTheLanguageOfThePageOrInEnglish) {
    EXPECT_THAT(post("pageId=20&forumId=1", ""), HasSubstr("We could not tell"));
    connection().execute("update TORVEX_INTERFACE_LANGUAGES set lang_id = 'bb' where lang_id = 'de'");
    EXPECT_THAT(post("pageId=20&forumId=1", ""), HasSubstr("Wir konnten nicht erkennen"));
}

TEST_P(ForumPostsTest, AHundredKilobytesWithoutABlankComeBackWhole) {
    const std::string word(100 * 1024, 'x');
    const std::string html = post("pageId=20&forumId=1", token(1, {}), {.text = word});
    EXPECT_THAT(html, HasSubstr("(The text is too long"));
    EXPECT_THAT(html, HasSubstr("text=" + word + ";"));
    EXPECT_EQ(rowsKept(), "3 topics, 0 reactions");
}

TEST_P(ForumPostsTest, NothingOfAPostIsReadAsMarkupOrAsAPlaceToFill) {
    const std::string evil = "<script>x</script><!--!form_token!--><!--!forum_name!-->\" href=\"page(11)";
    const std::string back = post("pageId=20&forumId=1", "", {.title = evil, .text = evil, .author = evil});
    EXPECT_THAT(back, Not(HasSubstr("<script")));
    EXPECT_THAT(back, Not(HasSubstr("<!--!form_token")));
    EXPECT_THAT(back,
                HasSubstr("text=&lt;script&gt;x&lt;/script&gt;&lt;!--!form_token!--&gt;&lt;!--!forum_name!--"
                          "&gt;&quot; href=&quot;page(11)"));
    post("pageId=20&forumId=1", token(1, {}), {.title = evil.substr(0, 100), .text = evil, .author = "A<b>"});
    const std::string html = reactions("pageId=20&forumId=1&topicId=2");
    EXPECT_THAT(html, Not(HasSubstr("<script")));
    EXPECT_THAT(html, Not(HasSubstr("<!--!f")));
    EXPECT_THAT(html, HasSubstr("&lt;!--!forum_name!--&gt;&quot; href=&quot;page(11)"));
}

TEST_P(ForumPostsTest, AReactionToATopicThatWasRemovedMeanwhileBecomesANewTopic) {
    const std::string sent = token(1, {1, 0});
    connection().execute("delete from TORVEX_FORUM_TOPICS where topic_forumId = 1");
    const std::string html = post("pageId=20&forumId=1&topicId=1", sent);
    expectRefused(html, "This topic has been removed meanwhile.", "2 topics, 0 reactions");
    EXPECT_THAT(html, HasSubstr("action=\"/torvex_forum/reaction.asp?pageId=20&amp;forumId=1\""));
}

TEST_P(ForumPostsTest, AReactionToOneThatWasRemovedMeanwhileAnswersTheTopic) {
    const std::string html = post("pageId=20&forumId=1&topicId=1&reactionId=9", token(1, {1, 9}));
    expectRefused(html, "The post that you answer has been removed meanwhile.", "3 topics, 0 reactions");
    EXPECT_THAT(html, HasSubstr("&amp;topicId=1\""));
}

TEST_P(ForumPostsTest, WhenTheDatabaseFailsTheWordsComeBack) {
    for (int step = 1;; ++step) {
        ASSERT_LT(step, 50);
        const auto fresh = std::make_unique<PostDesk>();
        const std::string sent = fresh->tokenFor(1, {1, 0}, {2026, 6, 15, 11, 59, 0});
        failing().reset(step);
        const std::string html = post("pageId=20&forumId=1&topicId=1", sent, Sent(), *fresh);
        const bool hasFailed = failing().steps >= step;
        failing().reset(0);
        if (!hasFailed) {
            EXPECT_GT(step, 5) << "hardly anything was tried";
            break;
        }
        expectRefused(html, "Your post could not be kept.", "3 topics, 0 reactions");
    }
    EXPECT_EQ(rowsKept(), "3 topics, 1 reactions");
}

TEST_P(ForumPostsTest, OneSessionAndOneAddressPostOnlySoOften) {
    const std::string query = "pageId=20&forumId=1&topicId=1";
    for (int i = 0; i < 3; ++i) post(query, token(1, {1, 0}));
    expectRefused(post(query, token(1, {1, 0})), "There were many posts from here", "3 topics, 3 reactions");
    post(query, token(1, {1, 0}), {.remote = "192.0.2.77"});
    EXPECT_EQ(rowsKept(), "3 topics, 3 reactions");
}

TEST_P(ForumPostsTest, ANoticeIsQueuedForEachModerator) {
    connection().execute(
        "update TORVEX_FORUM_LIVE set forum_sendEmail = 1, forum_emailFrom = 'forum@aa.example', "
        "forum_emailTo = 'a@aa.example, nonsense, b@aa.example', forum_emailSubject = 'News' where forum_id "
        "= 2");
    post("pageId=20&forumId=2&topicId=1", token(2, {1, 0}));
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "2");
    EXPECT_EQ(cell("select mail_to from TORVEX_MAIL_QUEUE order by mail_id"), "a@aa.example");
    EXPECT_EQ(cell("select mail_from from TORVEX_MAIL_QUEUE"), "forum@aa.example");
    EXPECT_EQ(cell("select mail_subject from TORVEX_MAIL_QUEUE"), "News");
    const std::string text = cell("select mail_text from TORVEX_MAIL_QUEUE");
    EXPECT_THAT(text, HasSubstr("Questions\n\nMoss\nAnn\n\nIt grows.\n"));
    EXPECT_THAT(text,
                HasSubstr("New post: It waits for a moderator.\n/torvex_forum/reactions.asp?pageId=20"));
}

TEST_P(ForumPostsTest, AtMostTwentyModeratorsAreTold) {
    std::string crowd;
    for (int i = 1; i <= 25; ++i) crowd += "m" + std::to_string(i) + "@aa.example,";
    connection().execute("update TORVEX_FORUM_LIVE set forum_sendEmail = 1, forum_emailTo = ?", {crowd});
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "20");
}

TEST_P(ForumPostsTest, AForumWithoutNoticesQueuesNone) {
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    connection().execute("update TORVEX_FORUM_LIVE set forum_sendEmail = 1");
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "0");
    EXPECT_EQ(rowsKept(), "3 topics, 2 reactions");
}

TEST_P(ForumPostsTest, ADoubleClickQueuesOneNotice) {
    connection().execute(
        "update TORVEX_FORUM_LIVE set forum_sendEmail = 1, forum_emailFrom = 'forum@aa.example'");
    const std::string same = token(1, {1, 0});
    post("pageId=20&forumId=1&topicId=1", same);
    post("pageId=20&forumId=1&topicId=1", same);
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "1");
}

}  // namespace
}  // namespace torvex::test
