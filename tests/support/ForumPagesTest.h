#pragma once

#include <functional>
#include <gmock/gmock.h>

#include "modules/forum/PostDesk.h"
#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "support/ExtranetTest.h"
#include "support/FailingDatabase.h"
#include "support/PageAnswer.h"

namespace torvex::test {

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
        EXPECT_THAT(html, ::testing::StartsWith("<html>"));
        EXPECT_THAT(html, ::testing::HasSubstr("(" + sentence));
        EXPECT_THAT(html, ::testing::HasSubstr("title=Moss;text=It grows.;author=Ann;"));
        EXPECT_EQ(rowsKept(), kept);
    }

    PolicyReports reports;
    PostDesk desk{PostRates::Options{.window = std::chrono::seconds(600), .ofAddress = 4, .ofSession = 3}};

  private:
    std::unique_ptr<FailingDatabase> failing_;
};

}  // namespace torvex::test
