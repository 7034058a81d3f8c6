#include "platform/text/Text.h"

#include <chrono>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

#include "support/ThreadTime.h"

namespace torvex {
namespace {

constexpr const char* kelvin = "\xE2\x84\xAA";  // folds to "k"
constexpr const char* longS = "\xC5\xBF";       // folds to "s"

TEST(Text, EqualsIgnoresCase) {
    EXPECT_TRUE(text::equals("ABC", "abc"));
    EXPECT_TRUE(text::equals("É", "é"));
    EXPECT_TRUE(text::equals("ΣΑΣ", "σας"));
    EXPECT_TRUE(text::equals("ЖЩ", "жщ"));
    EXPECT_TRUE(text::equals("", ""));
    EXPECT_TRUE(text::equals(kelvin, "K"));
}

TEST(Text, EqualsTellsDifferentTextsApart) {
    EXPECT_FALSE(text::equals("abc", "abd"));
    EXPECT_FALSE(text::equals("abc", "ab"));
    EXPECT_FALSE(text::equals("ab", "abc"));
    EXPECT_FALSE(text::equals("", "a"));
    EXPECT_FALSE(text::equals("a", ""));
    EXPECT_FALSE(text::equals("é", "e"));
    EXPECT_FALSE(text::equals("ß", "ss"));
    EXPECT_FALSE(text::equals("[", "{"));
    EXPECT_FALSE(text::equals("@", "`"));
}

TEST(Text, EveryPlaceOfALongTextCounts) {
    const std::string alphabet = "abcdefghijklmnopqrstuvwxyz0123456789[]^_`{|}";
    for (std::size_t length = 1; length <= alphabet.size(); ++length) {
        const std::string text = alphabet.substr(0, length);
        EXPECT_TRUE(text::equals(text, text::upper(text)));
        for (std::size_t at = 0; at < length; ++at) {
            std::string other = text::upper(text);
            other[at] = '~';
            EXPECT_FALSE(text::equals(text, other)) << text << " at " << at;
            EXPECT_EQ(text::compare(text, other), -1) << text << " at " << at;
            EXPECT_EQ(text::compare(other, text), 1) << text << " at " << at;
            other.replace(at, 1, "é");
            EXPECT_FALSE(text::equals(text, other)) << text << " at " << at;
            EXPECT_EQ(text::compare(text, other), -1) << text << " at " << at;
        }
    }
}

TEST(Text, ALetterBeyondAsciiDoesNotEndTheComparison) {
    const std::string before = "0123456789";
    for (std::size_t length = 0; length <= before.size(); ++length) {
        const std::string start = before.substr(0, length);
        EXPECT_TRUE(text::equals(start + "kÉnd of text", start + kelvin + "éND OF TEXT"));
        EXPECT_FALSE(text::equals(start + "kÉnd of text", start + kelvin + "éND OF TEXTS"));
        EXPECT_EQ(text::compare(start + "éa", start + "ÉB"), -1);
    }
}

TEST(Text, MalformedBytesEqualOnlyThemselves) {
    EXPECT_TRUE(text::equals("\xFF", "\xFF"));
    EXPECT_FALSE(text::equals("\xC3", "\xE3"));
    EXPECT_FALSE(text::equals("\xC3", "\xC3\xA9"));
    EXPECT_FALSE(text::equals("\xC3\xA9", "\xC3"));
}

TEST(Text, CompareOrdersByFoldedCharacters) {
    EXPECT_EQ(text::compare("abc", "ABC"), 0);
    EXPECT_EQ(text::compare("a", "B"), -1);
    EXPECT_EQ(text::compare("B", "a"), 1);
    EXPECT_EQ(text::compare("ab", "abc"), -1);
    EXPECT_EQ(text::compare("abc", "ab"), 1);
    EXPECT_EQ(text::compare("", ""), 0);
    EXPECT_EQ(text::compare("É", "é"), 0);
    EXPECT_EQ(text::compare("z", "é"), -1);
    EXPECT_EQ(text::compare("_", "A"), -1);
    EXPECT_EQ(text::compare("\uFFFF", "\U00010000"), -1);
}

TEST(Text, CompareOfMalformedTextsIsAnOrder) {
    EXPECT_EQ(text::compare("\xFF", "\xFF"), 0);
    EXPECT_EQ(text::compare("\xFE", "\xFF"), -1);
    EXPECT_EQ(text::compare("\xFF", "\xFE"), 1);
    EXPECT_EQ(text::compare("z", "\xFF"), -1);
}

TEST(Text, StartsAndEndsWithIgnoreCase) {
    EXPECT_TRUE(text::startsWith("ÉTÉ à", "été"));
    EXPECT_TRUE(text::startsWith("abc", ""));
    EXPECT_FALSE(text::startsWith("abc", "abcd"));
    EXPECT_FALSE(text::startsWith("abc", "b"));
    EXPECT_TRUE(text::endsWith("caFÉ", "fé"));
    EXPECT_TRUE(text::endsWith("abc", ""));
    EXPECT_FALSE(text::endsWith("abc", "xabc"));
    EXPECT_FALSE(text::endsWith("abc", "b"));
    EXPECT_TRUE(text::endsWith(std::string("a") + kelvin, "K"));
}

TEST(Text, FindIgnoresCase) {
    EXPECT_EQ(text::find("xxABC", "abc"), 2U);
    EXPECT_EQ(text::find("xxabc", "ABC"), 2U);
    EXPECT_EQ(text::find("<!--!Name!-->", "<!--!name!-->"), 0U);
    EXPECT_EQ(text::find("aÉb", "é"), 1U);
    EXPECT_EQ(text::find("aéB", "ÉB"), 1U);
    EXPECT_EQ(text::find("nothing", "x"), text::npos);
    EXPECT_EQ(text::find("", "x"), text::npos);
}

TEST(Text, FindBeginsAtTheGivenPlace) {
    EXPECT_EQ(text::find("abab", "AB", 0), 0U);
    EXPECT_EQ(text::find("abab", "AB", 1), 2U);
    EXPECT_EQ(text::find("abab", "AB", 3), text::npos);
    EXPECT_EQ(text::find("abab", "AB", 4), text::npos);
    EXPECT_EQ(text::find("abab", "AB", 99), text::npos);
}

TEST(Text, AnEmptyNeedleIsFoundWhereTheSearchBegins) {
    EXPECT_EQ(text::find("abc", ""), 0U);
    EXPECT_EQ(text::find("abc", "", 2), 2U);
    EXPECT_EQ(text::find("abc", "", 3), 3U);
    EXPECT_EQ(text::find("abc", "", 4), text::npos);
}

TEST(Text, FindKnowsTheLettersOfAsciiThatHaveAThirdForm) {
    EXPECT_EQ(text::find(std::string("x") + kelvin + "y", "ky"), 1U);
    EXPECT_EQ(text::find("xKy", kelvin), 1U);
    EXPECT_EQ(text::find(std::string("x") + longS + "(", "S("), 1U);
    EXPECT_EQ(text::find("x" + std::string("a") + longS + "!", "as!"), 1U);
    EXPECT_EQ(text::find("xas!", std::string("A") + longS + "!"), 1U);
}

TEST(Text, FindDoesNotMatchInsideACharacter) {
    EXPECT_EQ(text::find("é", "\xA9"), text::npos);
    EXPECT_EQ(text::find("é", "\xC3"), text::npos);
    EXPECT_EQ(text::find("a\xA9", "\xA9"), 1U);
    EXPECT_EQ(text::find("\xC3!", "\xC3"), 0U);
}

/// Every needle against every text of a small alphabet, against the plainest of searches.
TEST(Text, FindAgreesWithASearchPlaceByPlace) {
    const std::vector<std::string> alphabet = {"a", "A", "k", kelvin, "s",   "<",
                                               "!", "é", "É", "\xC3", "\xA9"};
    const auto plainFind = [](std::string_view text, std::string_view needle) {
        for (std::size_t at = 0; at < text.size(); ++at) {
            const bool inside = at > 0 && text.substr(at - 1, 2) == "\xC3\xA9";
            const bool insideUpper = at > 0 && text.substr(at - 1, 2) == "\xC3\x89";
            const bool insideKelvin =
                (at > 0 && text.substr(at - 1, 3) == kelvin) || (at > 1 && text.substr(at - 2, 3) == kelvin);
            if (inside || insideUpper || insideKelvin) continue;
            if (text::matchLength(text, at, needle) > 0) return at;
        }
        return text::npos;
    };
    const auto size = alphabet.size();
    for (std::size_t t = 0; t < size * size * size; ++t) {
        const std::string text = alphabet[t % size] + alphabet[t / size % size] + alphabet[t / size / size];
        for (std::size_t n = 0; n < size * size; ++n) {
            const std::string needle = alphabet[n % size] + alphabet[n / size];
            ASSERT_EQ(text::find(text, needle), plainFind(text, needle)) << text << " " << needle;
        }
    }
}

TEST(Text, FindCrossesTheStretchesItSearchesBy) {
    for (std::size_t size = 500; size < 530; ++size) {
        const std::string text = std::string(size, '.') + "PAGE";
        EXPECT_EQ(text::find(text, "page"), size);
        EXPECT_EQ(text::find(text, "e"), size + 3);
    }
}

TEST(Text, MatchLengthIsThatOfTheTextAndNotOfTheNeedle) {
    EXPECT_EQ(text::matchLength("xABC", 1, "abc"), 3U);
    EXPECT_EQ(text::matchLength("xABC", 1, "abd"), 0U);
    EXPECT_EQ(text::matchLength("xAB", 1, "abc"), 0U);
    EXPECT_EQ(text::matchLength(kelvin, 0, "k"), 3U);
    EXPECT_EQ(text::matchLength("k", 0, kelvin), 1U);
    EXPECT_EQ(text::matchLength("abc", 3, "a"), 0U);
}

TEST(Text, ReplaceAllIgnoresCaseAndCountsFromTheStart) {
    EXPECT_EQ(text::replaceAll("aAbB", "a", "x"), "xxbB");
    EXPECT_EQ(text::replaceAll("aAbB", "a", "x", 1), "xAbB");
    EXPECT_EQ(text::replaceAll("aAbB", "a", "x", 0), "aAbB");
    EXPECT_EQ(text::replaceAll("aAbB", "a", "x", 5), "xxbB");
    EXPECT_EQ(text::replaceAll("aAbB", "c", "x"), "aAbB");
    EXPECT_EQ(text::replaceAll("éÉe", "é", "e"), "eee");
    EXPECT_EQ(text::replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(text::replaceAll("", "a", "x"), "");
}

TEST(Text, WhatReplaceAllPutsInIsNotSearchedAgain) {
    EXPECT_EQ(text::replaceAll("aa", "a", "aba"), "abaaba");
    EXPECT_EQ(text::replaceAll("aaa", "aa", "a"), "aa");
}

/// A letter whose other case never occurs must not make each search run to the end.
TEST(Text, ReplacingALetterThousandsOfTimesTakesNoSquareTime) {
    const std::string text(500'000, 'a');
    const auto taken = test::threadTimeOf([&] {
        EXPECT_EQ(text::replaceAll(text, "a", "b"), std::string(500'000, 'b'));
        EXPECT_EQ(text::replaceAll(text, "A", "b"), std::string(500'000, 'b'));
    });
    // A fraction of a second; in square time it would be minutes.
    EXPECT_LT(taken, std::chrono::seconds(20));
}

TEST(Text, LowerAndUpperChangeLettersBeyondAsciiToo) {
    EXPECT_EQ(text::lower("ABC ÀÉ Ж 1"), "abc àé ж 1");
    EXPECT_EQ(text::upper("abc àé ж ß 1"), "ABC ÀÉ Ж ß 1");
    EXPECT_EQ(text::lower("A\xFF"), "a\xFF");
    EXPECT_EQ(text::upper("a\xC3"), "A\xC3");
}

TEST(Text, TrimTakesBlanksOnly) {
    EXPECT_EQ(text::trim("  a b  "), "a b");
    EXPECT_EQ(text::trim("\ta\n"), "\ta\n");
    EXPECT_EQ(text::trim("   "), "");
    EXPECT_EQ(text::trim(""), "");
    EXPECT_EQ(text::lowerTrim(" ÀB "), "àb");
}

TEST(Text, NumericIsAPlainDecimalNumber) {
    for (const char* number :
         {"0", "12", " 12 ", "-3", "+3", "1.5", ".5", "5.", "007", "-.5", "123456789012345678901234567890"}) {
        EXPECT_TRUE(text::isNumeric(number)) << number;
    }
    for (const char* other : {"", " ", "a", "1a", "1 2", "1.2.3", ".", "-", "+", "--1", "1e3", "0x10",
                              "1,000", "$1", "1-", "١", "nan", "inf", "\t1"}) {
        EXPECT_FALSE(text::isNumeric(other)) << other;
    }
}

TEST(Text, ToNumberGivesTheValueOr0) {
    const std::vector<std::pair<const char*, double>> cases = {
        {"12", 12}, {" 12 ", 12}, {"-3", -3}, {"+3", 3}, {"1.5", 1.5}, {".5", 0.5},
        {"5.", 5},  {"007", 7},   {"", 0},    {"x", 0},  {"1e3", 0},   {"0", 0}};
    for (const auto& [number, value] : cases) EXPECT_EQ(text::toNumber(number), value) << number;
}

TEST(Text, ANumberBeyondAllBoundsIsTheLargestOrSmallest) {
    EXPECT_EQ(text::toNumber(std::string(400, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(text::toNumber("-" + std::string(400, '9')), std::numeric_limits<double>::lowest());
    EXPECT_EQ(text::toNumber("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(text::toNumber(std::string(400, '0') + "." + std::string(400, '0') + "1"), 0);
}

TEST(Text, FromNumberWritesNoNeedlessFractionAndNoExponent) {
    const std::vector<std::pair<double, const char*>> cases = {{0, "0"},
                                                               {-0.0, "0"},
                                                               {12, "12"},
                                                               {-12, "-12"},
                                                               {1.5, "1.5"},
                                                               {-0.25, "-0.25"},
                                                               {0.1 + 0.2, "0.3"},
                                                               {1e14, "100000000000000"},
                                                               {999999999999999, "999999999999999"},
                                                               {1e-7, "0.0000001"},
                                                               {1.0 / 3, "0.333333333333333"},
                                                               {4294967296.5, "4294967296.5"}};
    for (const auto& [number, text] : cases) EXPECT_EQ(text::fromNumber(number), text);
}

TEST(Text, LengthsAndCutsCountCharacters) {
    EXPECT_EQ(text::length(""), 0U);
    EXPECT_EQ(text::length("abc"), 3U);
    EXPECT_EQ(text::length("aé日😀"), 4U);
    EXPECT_EQ(text::length("a long ASCII text with é in it"), 30U);
    EXPECT_EQ(text::first("aé日😀", 3), "aé日");
    EXPECT_EQ(text::last("aé日😀", 3), "é日😀");
    EXPECT_EQ(text::first("aé", 9), "aé");
    EXPECT_EQ(text::last("aé", 9), "aé");
    EXPECT_EQ(text::first("aé", 0), "");
    EXPECT_EQ(text::last("aé", 0), "");
}

TEST(Text, AMalformedByteCountsAsACharacter) {
    EXPECT_EQ(text::length("\xFF\xC3"), 2U);
    EXPECT_EQ(text::first("\xFF"
                          "ab",
                          2),
              "\xFF"
              "a");
    EXPECT_EQ(text::last("a\xC3\xA9\xA9", 2), "\xC3\xA9\xA9");
    EXPECT_EQ(text::last("a\xA9\xA9\xA9\xA9\xA9", 2), "\xA9\xA9");
}

TEST(Text, HtmlEncodeEncodesTheFourAndNothingElse) {
    EXPECT_EQ(text::htmlEncode("<a href=\"x?a&b\">'é'</a>"),
              "&lt;a href=&quot;x?a&amp;b&quot;&gt;'é'&lt;/a&gt;");
    EXPECT_EQ(text::htmlEncode(""), "");
    EXPECT_EQ(text::htmlEncode("&amp;"), "&amp;amp;");
}

TEST(Text, UrlEncodeKeepsLettersAndDigits) {
    EXPECT_EQ(text::urlEncode("aZ09 é/-._~"), "aZ09+%C3%A9%2F%2D%2E%5F%7E");
    EXPECT_EQ(text::urlEncode(""), "");
}

TEST(Text, UrlDecodeUndoesEncodingAndLeavesBrokenEscapes) {
    EXPECT_EQ(text::urlDecode("a+%C3%a9%2F"), "a é/");
    EXPECT_EQ(text::urlDecode("100%"), "100%");
    EXPECT_EQ(text::urlDecode("%4"), "%4");
    EXPECT_EQ(text::urlDecode("%zz%%41"), "%zz%A");
    EXPECT_EQ(text::urlDecode("%00"), std::string(1, '\0'));
}

TEST(Text, UrlEncodingReadsBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    EXPECT_EQ(text::urlDecode(text::urlEncode(all)), all);
}

TEST(Text, ValidUtf8IsTold) {
    for (const char* good : {"", "abc", "é日😀", "\xF4\x8F\xBF\xBF"}) EXPECT_TRUE(text::isValidUtf8(good));
    for (const char* bad : {"\x80", "\xC3", "a long ASCII text \xFF", "\xC0\xAF", "\xED\xA0\x80",
                            "\xF4\x90\x80\x80", "\xE2\x82", "\xF8\x88\x80\x80\x80"}) {
        EXPECT_FALSE(text::isValidUtf8(bad)) << bad;
    }
}

TEST(Text, MalformedSequencesAreReplaced) {
    EXPECT_EQ(text::toValidUtf8("aé"), "aé");
    EXPECT_EQ(text::toValidUtf8("a\xFF"
                                "b"),
              "a\uFFFDb");
    EXPECT_EQ(text::toValidUtf8("\xE2\x82"), "\uFFFD");
    EXPECT_EQ(text::toValidUtf8("\xE2\x82"
                                "a"),
              "\uFFFDa");
    EXPECT_EQ(text::toValidUtf8("\xC3\xC3\xA9"), "\uFFFDé");
    EXPECT_TRUE(text::isValidUtf8(text::toValidUtf8("\xED\xA0\x80\xC0\xAF\xF4\x90\x80\x80")));
}

}  // namespace
}  // namespace torvex
