#include <gmock/gmock.h>

#include "desk/Export.h"
#include "support/ApiTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using testing::HasSubstr;

TEST(Csv, CellsAreQuotedWhereTheyMustBe) {
    EXPECT_EQ(csvLine({"a", "b c", "d,e", "f\"g", "h\ni", Value(), 12}),
              "a,b c,\"d,e\",\"f\"\"g\",\"h\ni\",,12\r\n");
    EXPECT_EQ(csvLine({Value(), "a"}), ",a\r\n");
}

TEST(Csv, WhatASpreadsheetWouldWorkOutIsMarkedAsAText) {
    EXPECT_EQ(csvLine({"=1+1", "+1", "-1", "@a", "\ta", Value(-1)}), "'=1+1,'+1,'-1,'@a,'\ta,-1\r\n");
}

class ApiExport : public test::ApiTest {
  protected:
    void SetUp() override {
        ApiTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).title("Garden, large").insertInDesignOnly();
        page("aa.en.01").id(12).title("=Roses").insertInDesignOnly();
        row("TORVEX_LOGGING",
            {{"nodeId", "aa.en.01"}, {"yyyymmdd", "20260614"}, {"hits", 3}, {"uniquehits", 2}});
        row("TORVEX_LOGGING", {{"nodeId", "bb.en.01"}, {"yyyymmdd", "20260614"}, {"hits", 9}});
        role(1);
        start();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiExport, test::bothEngines(), test::engineName);

TEST_P(ApiExport, AListIsAFile) {
    const auto reply = loggedIn("sa").get("export/sitemap.csv?site=aa&lang=en");
    EXPECT_EQ(reply.status(), 200);
    EXPECT_EQ(reply.raw.field("Content-Type"), "text/csv; charset=utf-8");
    EXPECT_EQ(reply.raw.field("Content-Disposition"), "attachment; filename=\"sitemap.csv\"");
    EXPECT_EQ(reply.raw.body.substr(0, 21), "nodeId,pageId,title,t");
    EXPECT_THAT(reply.raw.body, HasSubstr("\r\naa.en,10,\"Garden, large\","));
    EXPECT_THAT(reply.raw.body, HasSubstr("\r\naa.en.01,12,'=Roses,"));
}

TEST_P(ApiExport, DaysAndWebsitesLimitIt) {
    ApiClient browser = loggedIn("sa");
    const auto lines = [&](const std::string& query) {
        const std::string body = browser.get("export/statistics.csv?site=aa&lang=en" + query).raw.body;
        return std::count(body.begin(), body.end(), '\n') - 1;
    };
    EXPECT_EQ(lines(""), 1);
    EXPECT_EQ(lines("&from=20260614&to=20260614"), 1);
    EXPECT_EQ(lines("&from=20260615"), 0);
    EXPECT_EQ(lines("&to=20260613"), 0);
    EXPECT_EQ(browser.get("export/statistics.csv?from=tomorrow").status(), 422);
}

TEST_P(ApiExport, SearchedWordsAreThoseOfTheDays) {
    const auto add = [&](const char* word, const char* day, int searches, int without) {
        row("TORVEX_SEARCH_DAYS", {{"site", "aa"},
                                   {"lang", "en"},
                                   {"search_pageId", 20},
                                   {"search_word", word},
                                   {"yyyymmdd", day},
                                   {"searches", searches},
                                   {"withoutResult", without}});
    };
    add("=rose", "20260614", 3, 1);
    add("=rose", "20260615", 2, 0);
    add("fern", "20260615", 9, 0);
    ApiClient browser = loggedIn("sa");
    EXPECT_EQ(browser.get("export/searches.csv?site=aa&lang=en").raw.body,
              "word,searches,withoutResult\r\nfern,9,0\r\n'=rose,5,1\r\n");
    EXPECT_EQ(browser.get("export/searches.csv?site=AA&lang=en&from=20260614&to=20260614").raw.body,
              "word,searches,withoutResult\r\n'=rose,3,1\r\n");
    EXPECT_EQ(browser.get("export/searches.csv?site=aa&lang=de").raw.body, "word,searches,withoutResult\r\n");
}

TEST_P(ApiExport, TheTrailIsNarrowedAsItsScreenIs) {
    const auto add = [&](int loginId, const char* day, const char* action) {
        row("TORVEX_AUDIT_TRAIL", {{"loginId", loginId},
                                   {"loginName", "=Anna"},
                                   {"action", action},
                                   {"Date", day},
                                   {"time", "09:00:00"}});
    };
    ApiClient browser = loggedIn("sa");
    add(77, "20260102", "second");
    add(77, "20260101", "first");
    add(78, "20260102", "other");
    const auto bodyOf = [&](const std::string& query) {
        return browser.get("export/audit.csv?" + query).raw.body;
    };
    EXPECT_EQ(bodyOf("filters=login:77"),
              "date,time,login,pageId,page,nodeId,entry,action,description\r\n"
              "20260101,09:00:00,'=Anna,0,,,0,first,\r\n"
              "20260102,09:00:00,'=Anna,0,,,0,second,\r\n");
    EXPECT_THAT(bodyOf("filters=login:77&from=20260102"), testing::Not(HasSubstr("first")));
    EXPECT_EQ(bodyOf("filters=colour:red"), bodyOf("from=20990101"));
}

TEST_P(ApiExport, WordsStandBesideTheEnglishOnes) {
    connection().execute("delete from TORVEX_INTERFACE_VOCAB");
    row("TORVEX_INTERFACE_VOCAB",
        {{"lang_label", 5}, {"lang_vocab1", "Save"}, {"lang_vocab2", "=Speichern"}});
    row("TORVEX_INTERFACE_VOCAB", {{"lang_label", 6}, {"lang_vocab1", "New, \"now\""}});
    ApiClient browser = loggedIn("sa");
    EXPECT_EQ(browser.get("export/words.csv?lang=de").raw.body,
              "label,english,text\r\n5,Save,'=Speichern\r\n6,\"New, \"\"now\"\"\",\r\n");
    EXPECT_EQ(browser.get("export/words.csv").raw.body, "label,english,text\r\n");
}

TEST_P(ApiExport, EachHasTheRightOfItsScreen) {
    const std::vector<std::pair<std::string, int>> entries{
        {"audit", 63}, {"users", 32}, {"words", 52}, {"statistics", 213}, {"searches", 213}};
    ApiClient author = loggedIn();
    for (const auto& [name, advId] : entries) {
        const std::string path = "export/" + name + ".csv?site=aa&lang=en";
        EXPECT_EQ(visitor().get(path).status(), 401) << name;
        EXPECT_EQ(author.get(path).status(), 403) << name;
        advancedRight(1, advId, "", "", true, false);
        EXPECT_EQ(author.get(path).status(), 200) << name;
        connection().execute("delete from TORVEX_ADVANCED_RIGHTS");
    }
    EXPECT_EQ(author.get("export/sitemap.csv?site=aa&lang=en").status(), 403);
    editRights(1, "aa", "en", {"edit"});
    EXPECT_EQ(author.get("export/sitemap.csv?site=aa&lang=en").status(), 200);
}

TEST_P(ApiExport, PasswordsAreInNone) {
    user(1, "visitor", "secret", {});
    EXPECT_THAT(loggedIn("sa").get("export/users.csv").raw.body, HasSubstr("visitor"));
    for (const Export& one : exports())
        for (const auto column : one.columns) EXPECT_NE(column, "password");
}

TEST_P(ApiExport, ThereIsNoOther) {
    ApiClient browser = loggedIn("sa");
    EXPECT_EQ(browser.get("export/logins.csv").status(), 404);
    EXPECT_EQ(browser.get("export/audit").status(), 404);
    EXPECT_EQ(browser.post("export/audit.csv").raw.field("Allow"), "GET, HEAD");
}

}  // namespace
}  // namespace torvex
