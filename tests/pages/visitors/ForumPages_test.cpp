// The pages of the forum: what they show, to whom, and what becomes of what is posted.

#include <gmock/gmock.h>

#include "modules/forum/PostDesk.h"
#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "support/ExtranetTest.h"
#include "support/FailingDatabase.h"
#include "support/PageAnswer.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

/// The site of the extranet, with an open application page 20 and a page 21 of the members, which names forum
/// 3. Forums 1 "Plants" and 2 "Questions", whose posts wait, are open; forum 3 is the members'.
class ForumPagesTest : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        externalApplication(4, "/torvex_forum/");
        page("aa.bb.05").id(20).type("A").application(4).set("app_system_folder", 0).insert();
        page("aa.bb.06")
            .id(21)
            .type("A")
            .application(4)
            .set("app_system_folder", 30)
            .set("app_param_public", "forumId=3")
            .set("loginPage", 18)
            .insert();
        pageGroup(20, 1);
        pageGroup(21, 2);
        page("aa.bb.05.99").id(30).type("F").insert();
        makeTemplates();
        for (const auto& [id, name] : std::initializer_list<std::pair<int, const char*>>{
                 {1, "Plants"}, {2, "Questions"}, {3, "Members"}}) {
            row("TORVEX_FORUM_LIVE", {{"forum_id", id},
                                      {"forum_site", "aa"},
                                      {"forum_lang", "bb"},
                                      {"forum_name", name},
                                      {"forum_hotPeriod", 7},
                                      {"forum_reactionsOnline", id != 2},
                                      {"forum_pageSize", 2}});
            topic(id, 1, std::string("Topic of ") + name);
        }
        host.application.set("torvex_charset", "utf-8");
        failing_ = std::make_unique<FailingDatabase>(database());
        host.database.target = failing_.get();
    }
    void TearDown() override {
        host.database.target = nullptr;
        ExtranetTest::TearDown();
    }
    FailingDatabase& failing() { return *failing_; }

    void makeTemplates() {
        baseTemplate(1, "aa", "bb", "base.html",
                     "<html><head><!--!torvex_head!--></head><body><!--!torvex_content!--></body></html>");
        const std::string marks =
            "<!--!forum_gone_start!-->GONE<!--!forum_gone_end!-->"
            "<!--!forum_posted_start!-->POSTED<!--!forum_posted_end!-->"
            "<!--!forum_waiting_start!-->WAITING<!--!forum_waiting_end!-->";
        const std::vector<std::pair<std::string, std::string>> layouts{
            {"forums", "FORUMS " + marks +
                           "<!--!forum_row_start!-->[<!--!forum_name!-->|<!--!forum_topics!-->|"
                           "<!--!forum_URL!-->]<!--!forum_row_end!-->"},
            {"topics",
             "TOPICS <!--!forum_name!--> " + marks +
                 "<!--!topic_row_start!-->[<!--!topic_title!-->|<!--!topic_URL!-->]<!--!topic_row_end!-->"
                 "<!--!forum_paging_start!-->page <!--!forum_page!--> of <!--!forum_pages!-->"
                 "<!--!forum_paging_end!--><!--!forum_archive_start!-->ARCHIVE<!--!forum_archive_end!-->"
                 "<!--!forum_current_start!-->CURRENT<!--!forum_current_end!-->"},
            {"reactions", "TOPIC <!--!topic_title!--> <!--!topic_text!--> " + marks +
                              "<!--!reaction_row_start!-->[<!--!reaction_title!-->|<!--!reaction_author!-->|"
                              "<!--!reaction_text!-->]<!--!reaction_row_end!-->"},
            {"reaction",
             "FORM "
             "<!--!form_faults_start!--><!--!form_fault_start!-->(<!--!fault_text!-->)<!--!form_fault_end!-->"
             "<!--!form_faults_end!--><form action=\"<!--!form_action!-->\">token=<!--!form_token!-->;"
             "title=<!--!form_title!-->;text=<!--!form_text!-->;author=<!--!form_author!-->;"
             "email=<!--!form_email!-->;answered=<!--!answered_title!-->;</form>"}};
        int id = 31;
        for (const auto& [title, source] : layouts) {
            contentTemplate(id, "aa", "bb", title + ".html",
                            "<!--!torvex_content_start!-->" + source + "<!--!torvex_content_end!-->");
            page("aa.bb.05.99.0" + std::to_string(id - 30)).id(id).title(title).contentTemplate(id).insert();
            ++id;
        }
        connection().execute("update TORVEX_PAGES_LIVE set baseTemplate = 1");
    }
    std::string& templateOf(const std::string& title) {
        return host.files.bytes["/install/contentTemplates/aa/bb/" + title + ".html"];
    }
    /// The template without each of its blocks in turn, but for the one that makes it a template.
    static std::vector<std::string> withoutOneBlock(const std::string& layout) {
        const std::string opening = "<!--!";
        const std::string ending = "_start!-->";
        std::vector<std::string> all;
        for (auto at = layout.find(ending); at != std::string::npos; at = layout.find(ending, at + 1)) {
            const auto begin = layout.rfind(opening, at);
            const std::string name = layout.substr(begin, at - begin);
            if (name == opening + "torvex_content") continue;
            const std::string end = name + "_end!-->";
            all.push_back(layout.substr(0, begin) + layout.substr(layout.find(end) + end.size()));
        }
        return all;
    }
    void topic(int forumId, int id, const std::string& title) {
        row("TORVEX_FORUM_TOPICS", {{"topic_id", id},
                                    {"topic_forumId", forumId},
                                    {"topic_title", title},
                                    {"topic_dateCreation", "20260601"}});
    }

    using Page = std::function<void(HostContext&)>;
    const Page forumsPage_ = [this](HostContext& context) { forumsPage(context, reports); };
    const Page topicsPage_ = [this](HostContext& context) { forumTopicsPage(context, reports); };
    const Page reactionsPage_ = [this](HostContext& context) { forumReactionsPage(context, reports); };
    /// The body of the answer.
    std::string show(const Page& page, const std::string& query) {
        host.response = {};
        ask(query, {}, {{"request_method", "GET"}});
        page(host.context());
        return host.response.body();
    }
    std::string forums(const std::string& query) { return show(forumsPage_, query); }
    std::string topics(const std::string& query) { return show(topicsPage_, query); }
    std::string reactions(const std::string& query) { return show(reactionsPage_, query); }
    Page formPage() {
        return [this](HostContext& context) { forumReactionPage(context, reports, desk); };
    }
    std::string form(const std::string& query) { return show(formPage(), query); }

    /// What stands behind "name=" in a form that was shown.
    static std::string field(const std::string& html, const std::string& name) {
        const std::string mark = name + "=";
        const auto begin = html.find(mark) + mark.size();
        return html.substr(begin, html.find(';', begin) - begin);
    }
    /// The token of a form that was shown a minute ago.
    std::string token(int forumId, const PostTarget& target,
                      const DateTime& shown = {2026, 6, 15, 11, 59, 0}) {
        return desk.tokenFor(forumId, target, shown);
    }
    struct Sent {
        std::string title = "Moss";
        std::string text = "It grows.";
        std::string author = "Ann";
        std::string email = {};
        std::string trap = {};
        std::string remote = "192.0.2.1";
        std::string origin = {};
    };
    /// Posts the form; the body of the answer.
    std::string post(const std::string& query, const std::string& sentToken, const Sent& sent) {
        return post(query, sentToken, sent, desk);
    }
    std::string post(const std::string& query, const std::string& sentToken, const Sent& sent, PostDesk& at) {
        host.response = {};
        NamedValues variables{
            {"request_method", "POST"}, {"remote_addr", sent.remote}, {"http_host", "site.test"}};
        if (!sent.origin.empty()) variables.emplace_back("http_origin", sent.origin);
        ask(query,
            {{"forum_title", sent.title},
             {"forum_text", sent.text},
             {"forum_author", sent.author},
             {"forum_email", sent.email},
             {"forum_homepage", sent.trap},
             {"forum_token", sentToken}},
            std::move(variables));
        forumReactionPage(host.context(), reports, at);
        return host.response.body();
    }
    std::string post(const std::string& query, const std::string& sentToken) {
        return post(query, sentToken, Sent());
    }
    std::string rowsKept() {
        return cell("select count(*) from TORVEX_FORUM_TOPICS") + " topics, " +
               cell("select count(*) from TORVEX_FORUM_REACTIONS") + " reactions";
    }
    /// That the post came back with its words and this sentence, and that nothing was kept.
    void expectRefused(const std::string& html, const std::string& sentence, const std::string& kept) {
        EXPECT_THAT(html, StartsWith("<html>"));
        EXPECT_THAT(html, HasSubstr("(" + sentence));
        EXPECT_THAT(html, HasSubstr("title=Moss;text=It grows.;author=Ann;"));
        EXPECT_EQ(rowsKept(), kept);
    }

    PolicyReports reports;
    PostDesk desk{PostRates::Options{.window = std::chrono::seconds(600), .ofAddress = 4, .ofSession = 3}};

  private:
    std::unique_ptr<FailingDatabase> failing_;
};
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

// ---- Posting ----

TEST_P(ForumPagesTest, TheFormOfAPostHasAToken) {
    EXPECT_EQ(field(form("pageId=20&forumId=1"), "token").size(), 100U);
    EXPECT_THAT(host.response.body(),
                HasSubstr("action=\"/torvex_forum/reaction.asp?pageId=20&amp;forumId=1\""));
    EXPECT_THAT(form("pageId=20&forumId=1&topicId=1"), HasSubstr("answered=Topic of Plants;"));
}

TEST_P(ForumPagesTest, ATopicIsBegunAndLeadsToItself) {
    post("pageId=20&forumId=1", token(1, {}));
    EXPECT_EQ(host.response.status, 302);
    EXPECT_EQ(location(host), "/torvex_forum/reactions.asp?pageId=20&forumId=1&topicId=2");
    const std::string html = reactions("pageId=20&forumId=1&topicId=2");
    EXPECT_THAT(html, HasSubstr("TOPIC Moss <p>It grows.</p>"));
    EXPECT_THAT(html, HasSubstr("POSTED"));
    EXPECT_THAT(reactions("pageId=20&forumId=1&topicId=2"), Not(HasSubstr("POSTED")));
}

TEST_P(ForumPagesTest, AReactionLeadsToItsPlace) {
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    EXPECT_EQ(location(host),
              "/torvex_forum/reactions.asp?pageId=20&forumId=1&topicId=1&reactionId=1#reaction-1");
    post("pageId=20&forumId=1&topicId=1&reactionId=1", token(1, {1, 1}));
    EXPECT_EQ(cell("select reaction_reference from TORVEX_FORUM_REACTIONS where reaction_id = 2"), "01.01");
}

TEST_P(ForumPagesTest, WherePostsWaitTheVisitorIsTold) {
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

TEST_P(ForumPagesTest, ADoubleClickIsOnePost) {
    const std::string same = token(1, {1, 0});
    post("pageId=20&forumId=1&topicId=1", same);
    const std::string first = location(host);
    for (int i = 0; i < 5; ++i) {
        post("pageId=20&forumId=1&topicId=1", same);
        EXPECT_EQ(location(host), first);
    }
    EXPECT_EQ(rowsKept(), "3 topics, 1 reactions");
}

TEST_P(ForumPagesTest, APostThatIsRefusedComesBackWithItsWords) {
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

TEST_P(ForumPagesTest, TheFormThatComesBackCanBeSentAfterAMoment) {
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

TEST_P(ForumPagesTest, EveryMissingFieldIsTold) {
    const std::string html =
        post("pageId=20&forumId=1", token(1, {}), {.title = " ", .text = "\r\n", .author = ""});
    EXPECT_THAT(html,
                HasSubstr("(Please give your post a title.)(Please write something.)(Please tell your name"));
    EXPECT_EQ(rowsKept(), "3 topics, 0 reactions");
}

TEST_P(ForumPagesTest, SentencesAreInTheLanguageOfThePageOrInEnglish) {
    EXPECT_THAT(post("pageId=20&forumId=1", ""), HasSubstr("We could not tell"));
    connection().execute("update TORVEX_INTERFACE_LANGUAGES set lang_id = 'bb' where lang_id = 'de'");
    EXPECT_THAT(post("pageId=20&forumId=1", ""), HasSubstr("Wir konnten nicht erkennen"));
}

TEST_P(ForumPagesTest, AHundredKilobytesWithoutABlankComeBackWhole) {
    const std::string word(100 * 1024, 'x');
    const std::string html = post("pageId=20&forumId=1", token(1, {}), {.text = word});
    EXPECT_THAT(html, HasSubstr("(The text is too long"));
    EXPECT_THAT(html, HasSubstr("text=" + word + ";"));
    EXPECT_EQ(rowsKept(), "3 topics, 0 reactions");
}

TEST_P(ForumPagesTest, NothingOfAPostIsReadAsMarkupOrAsAPlaceToFill) {
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

TEST_P(ForumPagesTest, AReactionToATopicThatWasRemovedMeanwhileBecomesANewTopic) {
    const std::string sent = token(1, {1, 0});
    connection().execute("delete from TORVEX_FORUM_TOPICS where topic_forumId = 1");
    const std::string html = post("pageId=20&forumId=1&topicId=1", sent);
    expectRefused(html, "This topic has been removed meanwhile.", "2 topics, 0 reactions");
    EXPECT_THAT(html, HasSubstr("action=\"/torvex_forum/reaction.asp?pageId=20&amp;forumId=1\""));
}

TEST_P(ForumPagesTest, AReactionToOneThatWasRemovedMeanwhileAnswersTheTopic) {
    const std::string html = post("pageId=20&forumId=1&topicId=1&reactionId=9", token(1, {1, 9}));
    expectRefused(html, "The post that you answer has been removed meanwhile.", "3 topics, 0 reactions");
    EXPECT_THAT(html, HasSubstr("&amp;topicId=1\""));
}

TEST_P(ForumPagesTest, WhenTheDatabaseFailsTheWordsComeBack) {
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

TEST_P(ForumPagesTest, OneSessionAndOneAddressPostOnlySoOften) {
    const std::string query = "pageId=20&forumId=1&topicId=1";
    for (int i = 0; i < 3; ++i) post(query, token(1, {1, 0}));
    expectRefused(post(query, token(1, {1, 0})), "There were many posts from here", "3 topics, 3 reactions");
    post(query, token(1, {1, 0}), {.remote = "192.0.2.77"});
    EXPECT_EQ(rowsKept(), "3 topics, 3 reactions");
}

TEST_P(ForumPagesTest, ANoticeIsQueuedForEachModerator) {
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

TEST_P(ForumPagesTest, AtMostTwentyModeratorsAreTold) {
    std::string crowd;
    for (int i = 1; i <= 25; ++i) crowd += "m" + std::to_string(i) + "@aa.example,";
    connection().execute("update TORVEX_FORUM_LIVE set forum_sendEmail = 1, forum_emailTo = ?", {crowd});
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "20");
}

TEST_P(ForumPagesTest, AForumWithoutNoticesQueuesNone) {
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    connection().execute("update TORVEX_FORUM_LIVE set forum_sendEmail = 1");
    post("pageId=20&forumId=1&topicId=1", token(1, {1, 0}));
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "0");
    EXPECT_EQ(rowsKept(), "3 topics, 2 reactions");
}

TEST_P(ForumPagesTest, ADoubleClickQueuesOneNotice) {
    connection().execute(
        "update TORVEX_FORUM_LIVE set forum_sendEmail = 1, forum_emailFrom = 'forum@aa.example'");
    const std::string same = token(1, {1, 0});
    post("pageId=20&forumId=1&topicId=1", same);
    post("pageId=20&forumId=1&topicId=1", same);
    EXPECT_EQ(cell("select count(*) from TORVEX_MAIL_QUEUE"), "1");
}

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
