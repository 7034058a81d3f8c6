#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "cli/ProgramFixture.h"
#include "platform/net/CurlHttpClient.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;
namespace json = boost::json;
using ::testing::HasSubstr;
using ::testing::Not;

/// A page's way to the public and away again, as an author goes it: every step is a run of the program beside
/// a server that visitors ask all the time.
class RoundTrip : public ProgramDatabaseTest {
  protected:
    void SetUp() override {
        init();
        result("addSite", {{"siteId", "rt"}, {"siteName", "Round trip"}, {"siteDescription", ""}});
        result("addLanguage", {{"langId", "en"}, {"langName", "English"}, {"charsetID", 1}});
        file("baseTemplates/rt/en/base.html",
             "<html><head><title>t</title></head><body><!--!torvex_content!--></body></html>");
        file("contentTemplates/rt/en/page.html",
             "<!--!torvex_content_start!--><p><!--!torvex_body_1!--></p><p><!--!torvex_body_2!--></p>"
             "<!--!torvex_content_end!-->");
        file("wwwroot/stylesheets/rt/en/site.css", "p { color: green }");
        sql("insert into TORVEX_BASETEMPLATES (btpl_id, btpl_site, btpl_lang, btpl_name, btpl_filename) "
            "values (1, 'rt', 'en', 'base', 'base.html')");
        sql("insert into TORVEX_TEMPLATES (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_filename) "
            "values (1, 'rt', 'en', 'page', 'page.html')");
        sql("insert into TORVEX_STYLESHEETS (ss_id, ss_site, ss_lang, ss_name, ss_filename) "
            "values (1, 'rt', 'en', 'site', 'site.css')");
        sql("update TORVEX_SETUP set value = '1' where parameter = 'torvex_hyperlink_check' and loginId = 0");
        startServer();
    }

    void TearDown() override {
        server_->signal(SIGTERM);
        EXPECT_EQ(server_->wait().code, 0);
    }

    // ---- Authors ----

    /// What the calls give, one after the other on one object, in the name of "sa".
    json::array results(const json::array& calls) {
        const json::object request{{"login", "sa"}, {"calls", calls}};
        const auto answer =
            json::parse(output({"call", "--install", site(), "--batch"}, json::serialize(request) + "\n"))
                .as_object();
        EXPECT_FALSE(answer.contains("error")) << json::serialize(answer);
        return answer.at("results").as_array();
    }
    static json::object call(const char* operation, const json::object& arguments) {
        return {{"on", "cManager"}, {"do", operation}, {"with", arguments}};
    }
    std::string result(const char* operation, const json::object& arguments) {
        const json::value given = results({call(operation, arguments)}).at(0);
        return given.is_string() ? std::string(given.as_string()) : json::serialize(given);
    }

    /// A page with its two bodies and its own way through the workflow; gives its number.
    std::string newPage(const std::string& parent, const std::string& title, const json::object& properties) {
        json::array calls;
        json::object all{{"pgTitle", title},      {"pgType", "P"},       {"pgTemplateId", 1},
                         {"pgBaseTemplateId", 1}, {"pgStylesheetId", 1}, {"pgGroups", "1"}};
        for (const auto& [name, value] : properties) all[name] = value;
        for (const auto& [name, value] : all) {
            calls.push_back(json::object{{"on", "cManager"}, {"set", name}, {"to", value}});
        }
        calls.push_back(call("saveNewPageSetup", {{"site", "rt"}, {"lang", "en"}, {"parentIdent", parent}}));
        calls.push_back(json::object{{"on", "cManager"}, {"get", "pgPageId"}});
        const json::array given = results(calls);
        EXPECT_TRUE(given.at(given.size() - 2).as_string().starts_with("rt.en")) << json::serialize(given);
        return json::serialize(given.back());
    }
    void write(const std::string& page, int bodyId, const std::string& text) {
        EXPECT_EQ(result("saveBody", {{"pageIdent", page}, {"bodyId", bodyId}, {"bodyContent", text}}), "0");
    }
    void publish(const std::string& page) {
        EXPECT_EQ(result("checkOut", {{"pageIdent", page}}), "M100");
        EXPECT_EQ(result("checkIn", {{"pageIdent", page}}), "M000");
        EXPECT_EQ(result("approvePage", {{"pageIdent", page}, {"state", 1}}), "M001");
        EXPECT_EQ(result("publishPage", {{"pageIdent", page}}), "1");
    }
    std::string preview(const std::string& page, const std::string& mode) {
        const json::array given = results({call("getPage", {{"pageIdent", page}, {"mode", mode}}),
                                           call("torvex_preparePage", {{"mode", mode}})});
        return std::string(given.at(1).as_string());
    }
    std::string linked(const std::string& html, const std::string& mode) {
        return result("buildLinks", {{"html", html}, {"site", "rt"}, {"lang", "en"}, {"mode", mode}});
    }

    // ---- Visitors ----

    HttpClient::Answer visit(const std::string& page) {
        return http_.get(address_ + "tvx.asp?pageId=" + page);
    }

    // ---- What is left ----

    std::string count(const std::string& table, const std::string& condition) {
        const std::string row = sql("select count(*) as n from " + table + " where " + condition);
        return row.substr(row.find(':') + 1, row.find('}') - row.find(':') - 1);
    }
    bool hasSnapshot(const std::string& node) const {
        return exists("site/search/html/en/rt/" + node + ".html");
    }

  private:
    void file(const std::string& name, const std::string& text) const {
        const fs::path path = fs::path(site()) / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
    void startServer() {
        server_ = serve();
        address_ = addressOf(*server_);
    }

    std::unique_ptr<RunningProgram> server_;
    std::string address_;
    CurlHttpClient http_;
};
INSTANTIATE_TEST_SUITE_P(Engines, RoundTrip, bothEngines(), engineName);

TEST_P(RoundTrip, APageIsMadeLinkedPublishedChangedResetSwitchedAndRemoved) {
    // A root, a page with computed navigation, and one whose neighbours are set by hand.
    const std::string root = newPage("", "Home", {{"pgNavigation", "A"}});
    const std::string first = newPage(root, "First", {{"pgNavigation", "A"}});
    const std::string second =
        newPage(root, "Second", {{"pgNavigation", "M"}, {"pgPrevious", json::parse(first)}});
    const std::string below = newPage(first, "Below", {{"pgNavigation", "A"}});
    write(root, 1, "Welcome");
    write(first, 1, "First text, on to <a href=\"page(" + second + ")\">the second</a>");
    write(first, 2, "Second body");
    write(second, 1, "The other page");
    write(below, 1, "Deep down");

    // The link is good in the design and bad in the live data, and visitors see nothing of it all.
    const std::string link = "<body><a href=\"page(" + second + ")\">x</a></body>";
    EXPECT_THAT(linked(link, "D"), HasSubstr("top.page('" + second + "')"));
    EXPECT_THAT(linked(link, "L"), HasSubstr("badLink"));
    EXPECT_EQ(visit(first).status, 404);
    EXPECT_THAT(preview(first, "D"), HasSubstr("First text"));
    EXPECT_EQ(result("publishPage", {{"pageIdent", first}}), "-2");

    // Published from the top down.
    publish(root);
    publish(first);
    EXPECT_THAT(visit(first).body, HasSubstr("First text, on to the second"));
    publish(second);
    publish(below);
    EXPECT_THAT(linked(link, "L"), Not(HasSubstr("badLink")));
    const auto served = visit(first);
    EXPECT_EQ(served.status, 200);
    EXPECT_THAT(served.body, HasSubstr("/tvx.asp?pageId=" + second));
    EXPECT_THAT(served.body, HasSubstr("Second body"));
    for (const auto* node : {"rt.en", "rt.en.01", "rt.en.02", "rt.en.01.01"})
        EXPECT_TRUE(hasSnapshot(node)) << node;

    // Changed: visitors keep what was published; reset: so do authors.
    EXPECT_EQ(result("checkOut", {{"pageIdent", first}}), "P100");
    write(first, 1, "A draft");
    EXPECT_THAT(visit(first).body, HasSubstr("First text"));
    EXPECT_THAT(preview(first, "D"), HasSubstr("A draft"));
    EXPECT_EQ(result("resetPage", {{"pageIdent", first}}), "PP100");
    EXPECT_THAT(preview(first, "D"), HasSubstr("First text"));
    EXPECT_EQ(result("checkIn", {{"pageIdent", first}}), "P000");

    // Switched off and on again.
    EXPECT_EQ(result("setOnOff", {{"pageIdent", first}, {"onOff", "off"}, {"cascading", true}}), "true");
    EXPECT_EQ(visit(first).status, 404);
    EXPECT_EQ(visit(below).status, 404);
    EXPECT_EQ(result("setOnOff", {{"pageIdent", first}, {"onOff", "on"}, {"cascading", true}}), "true");
    EXPECT_EQ(visit(below).status, 200);

    // Marked and removed, with all below it and every reference to it.
    sql("insert into TORVEX_LOGGING (nodeId, yyyymmdd, hits) values ('rt.en.01.01', '20260101', 3)");
    sql("insert into TORVEX_SEARCH (search_pageId) values (" + below + ")");
    sql("insert into TORVEX_USERGROUPS (groupId, name, entryPage, exitPage) values (9, 'readers', " + first +
        ", " + below + ")");
    EXPECT_EQ(result("deletePage", {{"pageIdent", first}, {"state", 1}}), "P010");
    EXPECT_EQ(result("approvePage", {{"pageIdent", first}, {"state", 1}}), "P011");
    EXPECT_EQ(result("publishPage", {{"pageIdent", first}}), "0");
    EXPECT_EQ(visit(first).status, 404);
    EXPECT_EQ(visit(below).status, 404);
    EXPECT_EQ(visit(second).status, 200);
    const std::string gone = "(" + first + ", " + below + ")";
    for (const auto* twin : {"DESIGN", "LIVE"}) {
        EXPECT_EQ(count(std::string("TORVEX_PAGES_") + twin, "pageId in " + gone), "0");
        EXPECT_EQ(count(std::string("TORVEX_BODIES_") + twin, "pageId in " + gone), "0");
        EXPECT_EQ(count(std::string("TORVEX_PAGES_GROUPS_") + twin, "pageId in " + gone), "0");
        EXPECT_EQ(count(std::string("TORVEX_PAGES_") + twin, "pageId = " + second + " and previous = -1"),
                  "1");
    }
    EXPECT_EQ(count("TORVEX_LOGGING", "nodeId like 'rt.en.01%' and yyyymmdd = '20260101'"), "0");
    EXPECT_EQ(count("TORVEX_SEARCH", "search_pageId = " + below), "0");
    EXPECT_EQ(count("TORVEX_USERGROUPS", "groupId = 9 and entryPage = -1 and exitPage = -1"), "1");
    EXPECT_FALSE(hasSnapshot("rt.en.01"));
    EXPECT_FALSE(hasSnapshot("rt.en.01.01"));
    EXPECT_TRUE(hasSnapshot("rt.en.02"));
    EXPECT_EQ(count("TORVEX_AUDIT_TRAIL", "action = 'publish (delete)' and pageId = " + first), "1");
}

}  // namespace
}  // namespace torvex::test
