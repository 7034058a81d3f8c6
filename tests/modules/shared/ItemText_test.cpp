#include "modules/shared/ItemText.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(ItemText, IsEncodedButForAFewTags) {
    EXPECT_EQ(itemText("<b>Bold</b> <I>italic</I> <u>under</u><BR>a < b & \"c\"<em>no</em>", false),
              "<b>Bold</b> <i>italic</i> <u>under</u><br>a &lt; b &amp; &quot;c&quot;&lt;em&gt;no&lt;/em&gt;"
              "&nbsp;");
}

TEST(ItemText, TwoBlanksAndLineBreaksShow) {
    EXPECT_EQ(itemText("a  b\r\nc\nd", false), "a&nbsp; b<br>c\nd&nbsp;");
}

TEST(ItemText, WithHtmlAllowedOnlyLineBreaksAreTurned) {
    EXPECT_EQ(itemText("<em>a</em>  b\r\nc", true), "<em>a</em>  b<br>c&nbsp;");
}

TEST(ItemText, NothingStaysNothing) {
    EXPECT_EQ(itemText("", false), "");
    EXPECT_EQ(itemText("", true), "");
}

TEST(ItemText, IsNeverAMarker) {
    for (const bool isHtmlAllowed : {false, true}) {
        EXPECT_EQ(itemText("<!--!msgB_itemTitle!-->", isHtmlAllowed).find("<!--!"), std::string::npos);
        EXPECT_EQ(linkWords("<!--!torvex_body_1!-->", isHtmlAllowed).find("<!--!"), std::string::npos);
    }
}

TEST(ItemText, AScriptIsText) {
    EXPECT_EQ(itemText("<script>x</script><b onclick=\"x\">", false),
              "&lt;script&gt;x&lt;/script&gt;&lt;b onclick=&quot;x&quot;&gt;&nbsp;");
}

TEST(ItemText, HoldsALongWord) {
    const std::string word(100 * 1024, 'w');
    EXPECT_EQ(itemText(word, false), word + "&nbsp;");
    EXPECT_EQ(cutText(word, 10), word);
}

TEST(LinkWords, KeepLineBreaksAlone) {
    EXPECT_EQ(linkWords("a<BR><b>c</b>", false), "a<br>&lt;b&gt;c&lt;/b&gt;");
    EXPECT_EQ(linkWords("a<b>c</b>", true), "a<b>c</b>");
}

TEST(CutText, EndsAtTheFirstBlankAtOrBehindThePosition) {
    EXPECT_EQ(cutText("One two three four", 10), "One two three...");
    EXPECT_EQ(cutText("One two three four", 8), "One two...");
    EXPECT_EQ(cutText("One two three four", 4), "One...");
    EXPECT_EQ(cutText("One two three four", 1), "One...");
}

TEST(CutText, WithoutSuchABlankStaysWhole) {
    EXPECT_EQ(cutText("One two three", 9), "One two three");
    EXPECT_EQ(cutText("One two", 100), "One two");
}

TEST(CutText, ABlankAtTheEndIsCutAndTold) {
    EXPECT_EQ(cutText("One ", 4), "One...");
}

TEST(CutText, NothingAtZeroAndEverythingBelow) {
    EXPECT_EQ(cutText("One two", 0), "");
    EXPECT_EQ(cutText("One two", -1), "One two");
}

TEST(CutText, CountsCharacters) {
    EXPECT_EQ(cutText("Ärä öö üü", 7), "Ärä öö...");
}

TEST(LinkNotation, TellsPagesFilesAndAddressesApart) {
    EXPECT_EQ(linkNotationOf("12"), "page(12)");
    EXPECT_EQ(linkNotationOf("https://x.test/a?b=1&c=2"), "https://x.test/a?b=1&c=2");
    EXPECT_EQ(linkNotationOf("http"), "http");
    EXPECT_EQ(linkNotationOf("plan.pdf"), "file(plan.pdf)");
}

TEST(LinkNotation, StaysInItsAttribute) {
    EXPECT_EQ(linkNotationOf("http://x\" onclick=\"y<!--!z!-->"), "http://x%22 onclick=%22y%3C!--!z!--%3E");
}

}  // namespace
}  // namespace torvex
