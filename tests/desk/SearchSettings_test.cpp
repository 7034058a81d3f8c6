#include <gmock/gmock.h>

#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

struct Given {
    PageId pageId = 11;
    std::string catalog = "torvex";
    int location = 0;
    std::string server = "";
    int pages = 4;
    int documents = 1;
    int types = 0;
    int order = 1;
    int maxResults = 100;
    int onPage = -1;
    int match = 2;
    int derivation = 3;
    int security = 1;
};

/// Pages 10 "aa.en" and 11 "aa.en.01".
class RegistersSearchTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).title("Garden").insert();
        page("aa.en.01").id(11).title("Search").insert();
    }
    std::string save(const Given& given) {
        return registers().saveSearch(
            given.pageId, given.catalog, given.location, given.server, "share", given.pages, given.documents,
            " aa.en.01++ , ,aa.en.02", "aa001+", given.types, "pdf, doc", "title,contents", given.order,
            given.maxResults, given.onPage, 3, given.match, given.derivation, given.security, 245);
    }
    std::vector<std::string> settings() {
        return rowsOf(
            "select search_pageId, search_catalogName, search_catalogLocation, search_serverName, "
            "search_webshare, search_includePages, search_includeDocuments, search_pageScopes, "
            "search_documentScopes, search_includeDocumentTypes, search_documentTypes, search_properties, "
            "search_sortOrder, search_maxResults, search_resultsPerPage, search_wordLength, search_match, "
            "search_derivation, search_security from TORVEX_SEARCH");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersSearchTest, bothEngines(), engineName);

TEST_P(RegistersSearchTest, APageBecomesASearchPage) {
    EXPECT_EQ(save({}), "0");
    EXPECT_THAT(settings(),
                ElementsAre("11|torvex|0||share|4|1|aa.en.01++,aa.en.02|aa001+|0|pdf,doc|title,contents|1|"
                            "100|-1|3|2|3|1"));
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||245|save|Search of the page \"Search\" has been updated"));
}

TEST_P(RegistersSearchTest, ASearchPageIsChanged) {
    save({});
    EXPECT_EQ(save({.catalog = " other ", .location = 1, .server = "far", .pages = 0, .onPage = 20}), "0");
    EXPECT_THAT(settings(),
                ElementsAre("11|other|1|far|share|0|1|aa.en.01++,aa.en.02|aa001+|0|pdf,doc|title,contents|"
                            "1|100|20|3|2|3|1"));
}

TEST_P(RegistersSearchTest, SearchPagesAreListedByTheirNodes) {
    save({});
    save({.pageId = 10});
    EXPECT_THAT(
        linesOf(registers().getSearches("AA", "en ")),
        ElementsAre(StartsWith("10|aa.en|Garden|torvex|0|"), StartsWith("11|aa.en.01|Search|torvex|0|")));
    EXPECT_THAT(linesOf(registers().getSearches("aa", "de")), IsEmpty());
}

TEST_P(RegistersSearchTest, WordsAreListedByHowOftenTheyWereSearched) {
    for (const auto& [word, count] : {std::pair{"moss", 2}, {"fern", 9}, {"bark", 2}})
        row("TORVEX_SEARCH_LOG", {{"search_pageId", 11}, {"search_word", word}, {"search_count", count}});
    EXPECT_THAT(linesOf(registers().getSearchWords(11)), ElementsAre("fern|9", "bark|2", "moss|2"));
    EXPECT_THAT(linesOf(registers().getSearchWords(10)), IsEmpty());
}

TEST_P(RegistersSearchTest, NumbersAreBounded) {
    EXPECT_EQ(save({.maxResults = 1'000'000, .onPage = -7}), "0");
    EXPECT_THAT(rowsOf("select search_maxResults, search_resultsPerPage from TORVEX_SEARCH"),
                ElementsAre("32767|-1"));
}

TEST_P(RegistersSearchTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save({.pageId = 99}); });
    expectRefusal("-3", [&] { return save({.catalog = " "}); });
    expectRefusal("-4", [&] { return save({.location = 2}); });
    expectRefusal("-4", [&] { return save({.pages = 5}); });
    expectRefusal("-4", [&] { return save({.documents = -1}); });
    expectRefusal("-4", [&] { return save({.types = 3}); });
    expectRefusal("-4", [&] { return save({.order = 3}); });
    expectRefusal("-4", [&] { return save({.match = 4}); });
    expectRefusal("-4", [&] { return save({.derivation = 4}); });
    expectRefusal("-4", [&] { return save({.security = 3}); });
    expectRefusal("-6", [&] { return save({.location = 1}); });
    actAsNobody();
    expectRefusal("-10", [&] { return save({}); });
}

TEST_P(RegistersSearchTest, AFailureAnywhereChangesNothing) {
    failEverywhere("0", "-99", [&] { return save({}); });
}

TEST_P(RegistersSearchTest, ListsSayWhatFailed) {
    connection().execute("drop table TORVEX_SEARCH");
    connection().execute("drop table TORVEX_SEARCH_LOG");
    EXPECT_THAT(errorOf([&] { registers().getSearches("aa", "en"); }), StartsWith(chain({"getSearches !"})));
    EXPECT_THAT(errorOf([&] { registers().getSearchWords(11); }), StartsWith(chain({"getSearchWords !"})));
}

}  // namespace
}  // namespace torvex::test
