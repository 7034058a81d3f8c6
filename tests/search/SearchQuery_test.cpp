#include "search/SearchQuery.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "platform/text/Text.h"
#include "search/SearchTexts.h"

namespace torvex::test {
namespace {

SearchParameters searchFor(const std::string& words, SearchMatch match = SearchMatch::SomeWords,
                           SearchDerivation derivation = SearchDerivation::None) {
    SearchParameters search;
    search.words = words;
    search.match = match;
    search.derivation = derivation;
    search.wordLength = "1";
    search.properties = "contents";
    search.pageScopes = "allsites";
    search.documentScopes = "allsites";
    search.documentTypes = "alltypes";
    return search;
}

std::string queryOf(const SearchParameters& search) {
    return searchQuery(search, soughtWords(search));
}

/// The filter that a search adds to its words.
std::string filterOf(const std::string& pageScopes, const std::string& types) {
    SearchParameters search = searchFor("tax");
    search.pageScopes = pageScopes;
    search.documentTypes = types;
    const std::string query = queryOf(search);
    const std::string words = "((@contents tax))";
    if (!query.starts_with(words)) return "no words: " + query;
    return query == words ? "" : query.substr(words.size());
}

// ---- Words ----

TEST(SearchQuery, OperatorsOfAVisitorAreDropped) {
    const auto all = SearchMatch::AllWords;
    EXPECT_EQ(soughtWords(searchFor("tax and rates", all)), "tax rates");
    EXPECT_EQ(soughtWords(searchFor("Tax AND NOT Rates OR near And", all)), "tax rates");
    EXPECT_EQ(soughtWords(searchFor("and and and or or not near", all)), "");
    EXPECT_EQ(soughtWords(searchFor("sand oregano nothing nearly", all)), "sand oregano nothing nearly");
}

TEST(SearchQuery, APhraseKeepsThem) {
    EXPECT_EQ(soughtWords(searchFor("Salt  and pepper", SearchMatch::Phrase)), "salt and pepper");
    EXPECT_EQ(queryOf(searchFor("salt and pepper", SearchMatch::Phrase)),
              "((@contents \"salt and pepper\"))");
}

TEST(SearchQuery, AnOperatorBetweenSignsIsDroppedToo) {
    EXPECT_EQ(soughtWords(searchFor("tax (and) rates")), "tax rates");
    EXPECT_EQ(soughtWords(searchFor("tax \u00A0or\u00A0rates *not*")), "tax rates");
}

TEST(SearchQuery, WhatHoldsNeitherLettersNorDigitsIsNoWord) {
    EXPECT_EQ(soughtWords(searchFor("tax - & rates ++ c++ 日")), "tax rates c++ 日");
    EXPECT_EQ(soughtWords(searchFor("- \\ ?")), "");
}

TEST(SearchQuery, ShortWordsAreDropped) {
    SearchParameters search = searchFor("the tax rates of 2026 für Öle");
    search.wordLength = "4";
    EXPECT_EQ(soughtWords(search), "rates 2026");
    search.wordLength = "3";
    EXPECT_EQ(soughtWords(search), "the tax rates 2026 für öle");
    search.wordLength = "9";
    EXPECT_EQ(soughtWords(search), "");
    search.match = SearchMatch::Phrase;
    EXPECT_EQ(soughtWords(search), "the tax rates of 2026 für öle");
}

TEST(SearchQuery, WordsWithoutALengthAreAllKept) {
    SearchParameters search = searchFor("a b");
    search.wordLength = "long";
    EXPECT_EQ(soughtWords(search), "a b");
}

// ---- Expressions ----

TEST(SearchQuery, EachMatchAndDerivationHasItsExpression) {
    struct Case {
        SearchMatch match;
        SearchDerivation derivation;
        const char* expression;
    };
    using M = SearchMatch;
    using D = SearchDerivation;
    for (const auto& [match, derivation, expression] :
         {Case{M::Phrase, D::None, "@contents \"tax rates\""},
          Case{M::Phrase, D::Prefix, "@contents \"tax rates\""},
          Case{M::Phrase, D::Stemming, "@contents \"tax rates\""},
          Case{M::AllWords, D::Prefix, "@contents tax* AND rates*"},
          Case{M::AllWords, D::Stemming, "$contents tax AND rates"},
          Case{M::AllWords, D::None, "@contents tax AND rates"},
          Case{M::SomeWords, D::Prefix, "@contents tax* OR rates*"},
          Case{M::SomeWords, D::Stemming, "$contents tax rates"},
          Case{M::SomeWords, D::None, "@contents tax OR rates"}}) {
        EXPECT_EQ(queryOf(searchFor("tax rates", match, derivation)), std::string("((") + expression + "))");
    }
}

TEST(SearchQuery, EveryPropertyIsAskedFor) {
    SearchParameters search = searchFor("tax");
    search.properties = " All ,,FileName";
    EXPECT_EQ(queryOf(search), "((@all tax) OR (@filename tax))");
}

TEST(SearchQuery, WithoutAPropertyTheFilterIsTheQuery) {
    SearchParameters search = searchFor("tax");
    search.properties = ",";
    EXPECT_EQ(queryOf(search), "");
    search.documentTypes = "pdf";
    EXPECT_EQ(queryOf(search), "((#filename=*.pdf) OR #filename=*.html)");
}

// ---- Filters ----

TEST(SearchQuery, AWholeBranchIsFoundByItsNode) {
    EXPECT_EQ(filterOf("AA.bb.01++", "alltypes"),
              " AND ((#filename=aa.bb.01*.html) OR NOT #filename=*.html)");
}

TEST(SearchQuery, ANodeWithItsChildrenByALastLevelOfTwoCharacters) {
    EXPECT_EQ(filterOf("aa.bb.01+", "alltypes"),
              " AND ((#filename=aa.bb.01.html OR #filename=aa.bb.01.??.html) OR NOT #filename=*.html)");
}

TEST(SearchQuery, ANodeAloneByItsFile) {
    EXPECT_EQ(filterOf(" aa.bb.01 , ,aa.bb.02", "alltypes"),
              " AND ((#filename=aa.bb.01.html OR #filename=aa.bb.02.html) OR NOT #filename=*.html)");
}

TEST(SearchQuery, FiltersOfPagesAndTypesAreCombined) {
    EXPECT_EQ(filterOf("none", "alltypes"), "");
    EXPECT_EQ(filterOf("none", "pdf, Doc"), " AND (#filename=*.pdf OR #filename=*.doc)");
    for (const auto* scopes : {"", "allsites", "currentsite", ","}) {
        EXPECT_EQ(filterOf(scopes, "alltypes"), "") << scopes;
        EXPECT_EQ(filterOf(scopes, ""), "") << scopes;
        EXPECT_EQ(filterOf(scopes, "pdf"), " AND ((#filename=*.pdf) OR #filename=*.html)") << scopes;
    }
    EXPECT_EQ(filterOf("aa.bb", "pdf"),
              " AND ((#filename=aa.bb.html) OR ((#filename=*.pdf) AND NOT #filename=*.html))");
}

TEST(SearchQuery, TwoWordsBelowANodeAsAWhole) {
    SearchParameters search = searchFor("tax rates", SearchMatch::AllWords);
    search.pageScopes = "aa.bb.01++";
    EXPECT_EQ(queryOf(search),
              "((@contents tax AND rates)) AND ((#filename=aa.bb.01*.html) OR NOT #filename=*.html)");
}

// ---- Whatever a visitor types ----

/// Texts of words, operators, signs, blanks and bytes that are no text.
std::string randomWords(std::mt19937& random) {
    static const std::vector<std::string> parts = {"tax",  "and",  "OR",   "Not",    "near",
                                                   " ",    "  ",   "\t",   "\"",     "(",
                                                   ")",    "*",    "@all", "$",      "#filename=",
                                                   "<",    ">",    "'",    ",",      "é",
                                                   "日本", "\xFF", "\xC3", "\u00A0", std::string(1, '\0'),
                                                   "!",    "&",    "|",    "~",      "=",
                                                   "{",    "]",    "\\",   "%00",    "<script>",
                                                   "OR(",  "and*", "ſ",    "ANDand", "?"};
    std::uniform_int_distribution<std::size_t> part(0, parts.size() - 1);
    std::uniform_int_distribution<int> length(0, 40);
    std::string words;
    for (int i = length(random); i > 0; --i) words += parts[part(random)];
    return words;
}

TEST(SearchQuery, WhateverIsTypedIsWordsAndNothingElse) {
    std::mt19937 random(20260615);
    const std::set<std::string> operators = {"and", "or", "not", "near"};
    int withWords = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string typed = randomWords(random);
        SCOPED_TRACE(testing::PrintToString(typed));
        const std::string sought = soughtWords(searchFor(typed));
        EXPECT_EQ(sought.find_first_of(std::string_view("\"()*@$#<>'\t\0", 11)), std::string::npos);
        EXPECT_TRUE(text::isValidUtf8(sought));
        EXPECT_EQ(sought, text::lower(sought));
        for (const std::string& word : splitWords(sought)) EXPECT_FALSE(operators.contains(word)) << word;
        EXPECT_EQ(plainWords(sought), sought);
        // Doing it again changes nothing: no operator comes to be by the dropping of another.
        EXPECT_EQ(soughtWords(searchFor(sought)), sought);
        if (sought.empty()) continue;
        ++withWords;
        // The words stand between the composer's own parentheses, and there are no others.
        const std::string query = queryOf(searchFor(typed));
        EXPECT_EQ(std::count(query.begin(), query.end(), '('), 2);
        EXPECT_EQ(std::count(query.begin(), query.end(), ')'), 2);
        EXPECT_EQ(std::count(query.begin(), query.end(), '@'), 1);
        const std::string phrase = queryOf(searchFor(typed, SearchMatch::Phrase));
        EXPECT_EQ(std::count(phrase.begin(), phrase.end(), '"'), 2);
    }
    EXPECT_GT(withWords, 10000);
}

}  // namespace
}  // namespace torvex::test
