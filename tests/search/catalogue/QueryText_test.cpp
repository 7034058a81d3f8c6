#include "search/catalogue/QueryText.h"

#include <gmock/gmock.h>

#include "search/catalogue/Catalogue.h"

namespace torvex::catalogue {
namespace {

using ::testing::HasSubstr;
using Kind = QueryNode::Kind;

/// A query as it was understood, in brackets: "(and contents:a all:b*)".
std::string shown(const QueryNode& node) {
    const auto parts = [&](std::string name) {
        for (const QueryNode& part : node.parts) name += " " + shown(part);
        return "(" + name + ")";
    };
    switch (node.kind) {
        case Kind::Nothing:
            return "nothing";
        case Kind::Word:
            return node.property + ":" + node.text;
        case Kind::Prefix:
            return node.property + ":" + node.text + "*";
        case Kind::Forms:
            return node.property + "~" + node.text;
        case Kind::Phrase:
            return node.property + ":\"" + node.text + "\"";
        case Kind::FileName:
            return "#" + node.text;
        case Kind::And:
            return parts("and");
        case Kind::Or:
            return parts("or");
        case Kind::Not:
            return parts("not");
    }
    return "?";
}

struct Accepted {
    const char* text;
    const char* meaning;
};
void PrintTo(const Accepted& accepted, std::ostream* out) {
    *out << accepted.text;
}

class AcceptedQuery : public testing::TestWithParam<Accepted> {};

TEST_P(AcceptedQuery, HasItsMeaning) {
    EXPECT_EQ(shown(parseQuery(GetParam().text)), GetParam().meaning);
}

INSTANTIATE_TEST_SUITE_P(
    All, AcceptedQuery,
    testing::Values(Accepted{"tax", "contents:tax"}, Accepted{"  tax\t", "contents:tax"},
                    Accepted{"@all tax", "all:tax"}, Accepted{"@ALL tax", "all:tax"},
                    Accepted{"@doctitle tax AND rates", "(and doctitle:tax doctitle:rates)"},
                    Accepted{"(@all tax AND rates)", "(and all:tax all:rates)"},
                    Accepted{"(@all a OR b)", "(or all:a all:b)"},
                    Accepted{"a or b And c", "(or contents:a (and contents:b contents:c))"},
                    Accepted{"(a OR b) AND c", "(and (or contents:a contents:b) contents:c)"},
                    Accepted{"a AND NOT b", "(and contents:a (not contents:b))"},
                    Accepted{"NOT a OR b", "(or (not contents:a) contents:b)"},
                    Accepted{"NOT NOT a", "(not (not contents:a))"},
                    Accepted{"((@all a*) OR (@filename a*))", "(or all:a* filename:a*)"},
                    Accepted{"@p a AND (b OR @q c) AND d", "(and p:a (or p:b q:c) p:d)"},
                    Accepted{"(@p a) AND b", "(and p:a contents:b)"},
                    Accepted{"@p (a AND b) OR c", "(or (and p:a p:b) p:c)"},
                    Accepted{"@all \"to be or not\"", "all:\"to be or not\""},
                    Accepted{"\"tax\"", "contents:tax"},
                    Accepted{"\"a\" AND \"b c\"", "(and contents:a contents:\"b c\")"},
                    Accepted{"$contents houses", "contents~houses"},
                    Accepted{"$contents houses gardens", "(or contents~houses contents~gardens)"},
                    Accepted{"$all houses AND gardens", "(and all~houses all~gardens)"},
                    Accepted{"$all houses \"two words\" ho*", "(or all~houses all:\"two words\" all:ho*)"},
                    Accepted{"($contents a) OR @contents a", "(or contents~a contents:a)"},
                    Accepted{"#filename=*.pdf", "#*.pdf"},
                    Accepted{"#FileName=AB.en.??.HTML", "#ab.en.??.html"},
                    Accepted{"((@all a) AND (#filename=x*.html OR NOT #filename=*.html))",
                             "(and all:a (or #x*.html (not #*.html)))"},
                    Accepted{"e-mail", "contents:\"e-mail\""}, Accepted{"don't", "contents:\"don't\""},
                    Accepted{"c++", "contents:c++"}, Accepted{"&", "nothing"},
                    Accepted{"a AND & AND b", "(and contents:a nothing contents:b)"},
                    Accepted{"\"\"", "nothing"}, Accepted{"a@b.com", "contents:\"a@b.com\""},
                    Accepted{"android", "contents:android"}, Accepted{"@all \"a*\"", "all:a*"},
                    Accepted{"@\xC3\xBC"
                             "ber a",
                             "\xC3\xBC"
                             "ber:a"}));

TEST(QueryText, AQuotedStarIsNoWildCard) {
    EXPECT_EQ(parseQuery("\"a*\"").kind, Kind::Word);
}

struct Refused {
    const char* text;
    const char* reason;
};
void PrintTo(const Refused& refused, std::ostream* out) {
    *out << refused.text;
}

class RefusedQuery : public testing::TestWithParam<Refused> {};

TEST_P(RefusedQuery, SaysWhatIsWrong) {
    try {
        parseQuery(GetParam().text);
        ADD_FAILURE() << "taken for a query";
    } catch (const QueryError& error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().reason));
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedQuery,
    testing::Values(Refused{"", "words are missing"}, Refused{"   ", "words are missing"},
                    Refused{"()", "word is missing"}, Refused{"(a", "\")\" is missing at character 3"},
                    Refused{"a)", "an operator is missing at character 2"},
                    Refused{"a b", "an operator is missing"}, Refused{"@all a b", "an operator is missing"},
                    Refused{"a NOT b", "an operator is missing"}, Refused{"a AND", "words are missing"},
                    Refused{"AND a", "an operator stands"}, Refused{"a AND OR b", "an operator stands"},
                    Refused{"NOT", "words are missing"}, Refused{"\"a", "a quotation has no end"},
                    Refused{"@", "the name of a property"}, Refused{"@ a", "the name of a property"},
                    Refused{"@all", "words are missing behind"},
                    Refused{"(@all)", "words are missing behind"},
                    Refused{"@all @all a", "a word is missing"}, Refused{"@size > 5", "comparisons"},
                    Refused{"@size=5 a", "the name of a property"}, Refused{"*", "\"*\" has no letters"},
                    Refused{"a*b", "only at the end"}, Refused{"**", "only at the end"},
                    Refused{"*a", "only at the end"}, Refused{"&*", "\"*\" has no letters"},
                    Refused{"#filename", "isn't followed by"},
                    Refused{"#filename=", "pattern of a file name is missing"},
                    Refused{"#size=5", "isn't followed by"}, Refused{"#", "isn't followed by"},
                    Refused{"(a)(b)", "an operator is missing"}, Refused{"\xFF", "no UTF-8"}));

TEST(QueryText, ANulIsRefused) {
    EXPECT_THROW(parseQuery(std::string_view("a\0b", 3)), QueryError);
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t n = 0; n < times; ++n) all += text;
    return all;
}

TEST(QueryText, TenThousandWildCardsAreTooMany) {
    EXPECT_THROW(parseQuery(repeated("a* OR ", 10'000) + "a"), TooManyError);
    EXPECT_THROW(parseQuery("#filename=" + repeated("?", 10'000)), TooManyError);
}

TEST(QueryText, WhatIsTooDeepTooLongOrTooManyIsRefused) {
    EXPECT_THROW(parseQuery(repeated("(", 100'000)), TooManyError);
    EXPECT_THROW(parseQuery(repeated("NOT ", 10'000) + "a"), TooManyError);
    EXPECT_THROW(parseQuery(repeated("@a (", 10'000)), TooManyError);
    EXPECT_THROW(parseQuery(repeated("a OR ", 30'000) + "a"), TooManyError);
    EXPECT_THROW(parseQuery(repeated("a", 300'000)), TooManyError);
}

TEST(QueryText, TwoHundredAndFiftySignsOfAnyKindAreUnderstoodOrRefused) {
    for (const char* sign :
         {"(", ")", "\"", "*", "@", "$", "#", "<", ">", "'", "&", "|", "!", "?", "=", "-"}) {
        try {
            parseQuery(repeated(sign, 250));
        } catch (const QueryError& error) {
            EXPECT_STRNE(error.what(), "");
        }
    }
}

}  // namespace
}  // namespace torvex::catalogue
