#include "search/WordMarks.h"

#include <gtest/gtest.h>

namespace torvex::test {
namespace {

std::string marked(const std::string& words, const std::string& text,
                   SearchDerivation derivation = SearchDerivation::None, const std::string& lang = "en") {
    return WordMarks(words, derivation, lang).marked(text);
}

TEST(WordMarks, WordsAreMarkedWithoutRegardToCaseAndAccents) {
    EXPECT_EQ(marked("été tax", "L'ETE: Tax, taxes, ete"),
              "L'<mark>ETE</mark>: <mark>Tax</mark>, taxes, <mark>ete</mark>");
    EXPECT_EQ(marked("tax", ""), "");
    EXPECT_EQ(marked("", "tax"), "tax");
}

TEST(WordMarks, EverythingIsEncoded) {
    EXPECT_EQ(marked("tax", "<b>tax</b> & \"x\""), "&lt;b&gt;<mark>tax</mark>&lt;/b&gt; &amp; &quot;x&quot;");
    EXPECT_EQ(marked("<script>", "<script>"), "&lt;<mark>script</mark>&gt;");
}

TEST(WordMarks, BeginningsAndFormsAreMarkedAsTheyAreFound) {
    EXPECT_EQ(marked("tax", "taxes syntax", SearchDerivation::Prefix), "<mark>taxes</mark> syntax");
    EXPECT_EQ(marked("gardens", "The gardening gardener", SearchDerivation::Stemming),
              "The <mark>gardening</mark> <mark>gardener</mark>");
    EXPECT_EQ(marked("Gärten", "Der Garten", SearchDerivation::Stemming, "de"), "Der <mark>Garten</mark>");
    EXPECT_EQ(marked("gardens", "garden gardens", SearchDerivation::Stemming, "xx"),
              "garden <mark>gardens</mark>");
}

TEST(WordMarks, BrokenTextStaysEncodedText) {
    EXPECT_EQ(marked("tax", "a\xFFtax<"), "a\xFF<mark>tax</mark>&lt;");
}

}  // namespace
}  // namespace torvex::test
