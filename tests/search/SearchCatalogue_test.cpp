// Searching in a real catalogue.

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <random>

#include "search/SearchQuery.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/QueryText.h"
#include "search/catalogue/Writer.h"
#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class SearchCatalogueTest : public SearchPageTest {
  protected:
    void SetUp() override {
        SearchPageTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_install_path", folder_.path() + "/");
        connection().execute("update TORVEX_SEARCH set search_security = 1");
        put("search/html/bb/aa/aa.bb.01.html", "One",
            "The gardens of Lindhaven open at nine. Gärtner wanted.");
        put("search/html/bb/aa/aa.bb.02.html", "Two", "Secret meetings in the orangery about Lindhaven.");
        put("wwwroot/documents/aa/plan.txt", "Plan", "A plan of all gardens and of the river.");
    }
    void put(const std::string& path, const std::string& title, const std::string& text) {
        const std::filesystem::path file = folder_.path() + "/" + path;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        catalogue::Writer writer(catalogue::databaseFolder(folder_.path()));
        writer.put({path, {text.size(), 0}, {text, "en", {{"doctitle", title}}}});
        writer.commit();
    }
    /// The titles found, with what is suggested.
    std::string found(NamedValues form) {
        const std::string layout =
            "<!--!torvex_application_start!--><!--!search_result_start!-->[<!--!search_title!-->]"
            "<!--!search_result_end!--><!--!search_empty_start!-->nothing<!--!search_empty_end!-->"
            "<!--!torvex_application_end!--><!--!search_suggestion_start!--> "
            "?<!--!search_suggestion!--><!--!search_suggestion_end!-->";
        ask("", std::move(form));
        return withoutMarkers(load(layout));
    }
    std::string found(const std::string& words) { return found({{"search_string", words}}); }
    std::string load(const std::string& html) {
        Search search(host.context());
        search.connect(connection());
        std::string filled = search.loadResults(searchPage, "", html);
        error = search.search_error();
        return filled;
    }

  private:
    TemporaryFolder folder_;
};
INSTANTIATE_TEST_SUITE_P(Engines, SearchCatalogueTest, bothEngines(), engineName);

TEST_P(SearchCatalogueTest, PagesAndDocumentsAreFoundByTheirWords) {
    EXPECT_EQ(found("gardens river"), "[Plan][One]");
    EXPECT_EQ(found({{"search_string", "gardens river"}, {"search_match", "all"}}), "[Plan]");
    EXPECT_EQ(found({{"search_string", "open at nine"}, {"search_match", "phrase"}}), "[One]");
    EXPECT_EQ(found("GARTNER"), "[One]");
    EXPECT_EQ(error, "");
}

TEST_P(SearchCatalogueTest, ByBeginningsFormsNamesAndTypes) {
    EXPECT_EQ(found({{"search_string", "gard"}}), "nothing");
    EXPECT_THAT(found({{"search_string", "gard"}, {"search_derivation", "prefix"}}), HasSubstr("[One]"));
    EXPECT_EQ(found("plan.txt"), "[Plan]");
    EXPECT_EQ(found({{"search_string", "gardens"}, {"search_documentTypes", "pdf"}}), "[One]");
    EXPECT_EQ(found({{"search_string", "gardens"}, {"search_documentScopes", "none"}}), "[One]");
    EXPECT_EQ(found({{"search_string", "gardens"}, {"search_pageScopes", "none"}}), "[Plan]");
    EXPECT_EQ(found({{"search_string", "gardens"}, {"search_pageScopes", "aa.bb.02++"}}), "[Plan]");
    EXPECT_EQ(error, "");
}

TEST_P(SearchCatalogueTest, WhatMayNotBeSeenIsntFound) {
    EXPECT_EQ(found("Lindhaven"), "[One]");
    EXPECT_EQ(found("orangery"), "nothing");
    logIn("ben");
    EXPECT_THAT(found("Lindhaven"), HasSubstr("[Two]"));
}

TEST_P(SearchCatalogueTest, OtherWordsAreSuggested) {
    EXPECT_EQ(found("gardems"), "nothing ?gardens");
    EXPECT_THAT(found("gardens"), Not(HasSubstr("?")));
}

TEST_P(SearchCatalogueTest, ButNoneOfWhatMayNotBeSeen) {
    EXPECT_EQ(found("orangary"), "nothing");
    EXPECT_THAT(found("orangary river"), Not(HasSubstr("orangery")));
    logIn("ben");
    EXPECT_EQ(found("orangary"), "nothing ?orangery");
}

TEST_P(SearchCatalogueTest, FoundWordsAreMarked) {
    const std::string layout =
        "<!--!torvex_application_start!--><!--!search_result_start!--><!--!search_abstractMarked!-->"
        "<!--!search_result_end!--><!--!torvex_application_end!-->";
    ask("", {{"search_string", "gartner"}});
    EXPECT_THAT(load(layout), HasSubstr("<mark>Gärtner</mark> wanted."));
}

TEST_P(SearchCatalogueTest, WhateverIsTypedIsAnswered) {
    for (const auto* words : {"-", "& | ! ~ =", "don't", "c++", "a.b@c.de", "[x] {y}", "\\", "%", "日本 語",
                              "&#39;", "*", "?", "x:y", "near", "\"", "AND OR NOT"}) {
        for (const auto* match : {"some", "all", "phrase"}) {
            for (const auto* derivation : {"none", "prefix", "stemming"}) {
                found({{"search_string", words}, {"search_match", match}, {"search_derivation", derivation}});
                EXPECT_TRUE(error.empty() || error == "Empty query string !") << words << ": " << error;
            }
        }
    }
}

TEST_P(SearchCatalogueTest, APropertyThatNobodyHasFindsNothing) {
    prescribe("search_properties", "comments,nonsense");
    EXPECT_EQ(found("gardens"), "nothing");
    EXPECT_EQ(error, "");
}

TEST_P(SearchCatalogueTest, WithoutACatalogueTheSearchIsRefused) {
    host.application.set("torvex_install_path", "/nowhere/");
    found("gardens");
    EXPECT_EQ(error, "Error initializing query object (catalog) !");
}

// ---- The composed query is always a query ----

TEST(SearchQueryText, WhateverIsTypedParses) {
    static const std::vector<std::string> parts = {
        "tax",  "and", "OR",         "Not", "near", " ", "  ", "\t", "\"",   "(",   ")", "*",
        "@all", "$",   "#filename=", "<",   ">",    "'", ",",  "é",  "日本", "-",   "+", "!",
        "&",    "|",   "~",          "=",   "{",    "]", "\\", "?",  ".",    ";",   ":", "/",
        "%",    "^",   "`",          "_",   "ſ",    "İ", "ß",  "1",  "\xFF", "\xC3"};
    std::mt19937 random(26);
    std::uniform_int_distribution<std::size_t> part(0, parts.size() - 1);
    std::uniform_int_distribution<int> length(1, 30);
    SearchParameters search;
    search.properties = "all,filename,petals";
    search.pageScopes = "aa.bb++,aa.bb.01+";
    search.documentTypes = "pdf,txt";
    int parsed = 0;
    for (int i = 0; i < 6000; ++i) {
        search.words.clear();
        for (int n = length(random); n > 0; --n) search.words += parts[part(random)];
        for (const auto match : {SearchMatch::SomeWords, SearchMatch::AllWords, SearchMatch::Phrase}) {
            for (const auto derivation :
                 {SearchDerivation::None, SearchDerivation::Prefix, SearchDerivation::Stemming}) {
                search.match = match;
                search.derivation = derivation;
                const std::string words = soughtWords(search);
                if (words.empty()) continue;
                ++parsed;
                EXPECT_NO_THROW(catalogue::parseQuery(searchQuery(search, words)))
                    << testing::PrintToString(search.words) << " became " << searchQuery(search, words);
            }
        }
    }
    EXPECT_GT(parsed, 20000);
}

}  // namespace
}  // namespace torvex::test
