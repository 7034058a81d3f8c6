#include "modules/forum/PlainText.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

std::string link(const std::string& address) {
    return "<a href=\"" + address + "\" rel=\"nofollow ugc noopener\">" + address + "</a>";
}

TEST(PlainText, ParagraphsAndLinesAreKept) {
    EXPECT_EQ(plainTextHtml("one\ntwo\n\n\n\nthree"), "<p>one<br>\ntwo</p>\n<p>three</p>\n");
    EXPECT_EQ(plainTextHtml(""), "");
    EXPECT_EQ(plainTextHtml("\n\n \n\n"), "");
}

TEST(PlainText, NothingIsMarkupOrAPlaceToFill) {
    EXPECT_EQ(
        plainTextHtml("<script>alert(\"x\")</script> & <!--!torvex_body_1!-->"),
        "<p>&lt;script&gt;alert(&quot;x&quot;)&lt;/script&gt; &amp; &lt;!--!torvex_body_1!--&gt;</p>\n");
}

TEST(PlainText, WebAddressesBecomeLinksThatTheSiteDoesNotVouchFor) {
    EXPECT_EQ(plainTextHtml("See https://a.example/x?y=1 now"),
              "<p>See " + link("https://a.example/x?y=1") + " now</p>\n");
    EXPECT_EQ(plainTextHtml("HTTP://A.example"), "<p>" + link("HTTP://A.example") + "</p>\n");
}

TEST(PlainText, AddressesAreEncoded) {
    EXPECT_EQ(plainTextHtml("http://a.example/?a=1&b=<i>"),
              "<p>" + link("http://a.example/?a=1&amp;b=") + "&lt;i&gt;</p>\n");
    EXPECT_EQ(plainTextHtml("http://a.example/\"onclick=x"),
              "<p>" + link("http://a.example/") + "&quot;onclick=x</p>\n");
}

TEST(PlainText, TheEndOfASentenceIsNotPartOfTheAddress) {
    EXPECT_EQ(plainTextHtml("(http://a.example/b), or http://a.example/c_(d)."),
              "<p>(" + link("http://a.example/b") + "), or " + link("http://a.example/c_(d)") + ".</p>\n");
}

TEST(PlainText, OtherSchemesAndHalfAddressesStayText) {
    for (const std::string text : {"javascript:alert(1)", "ftp://a.example", "xhttp://a.example", "http://",
                                   "https://?", "data:text/html,x", "//a.example", "www.a.example"}) {
        EXPECT_EQ(plainTextHtml(text), "<p>" + text + "</p>\n");
    }
}

TEST(PlainText, LinksAreCounted) {
    EXPECT_EQ(countLinks("http://a.example https://b.example/, x http://c.example"), 3U);
    EXPECT_EQ(countLinks("none here"), 0U);
}

TEST(PlainText, AHundredKilobytesWithoutABlankAreReadInOnePass) {
    const std::string word(100 * 1024, 'h');
    EXPECT_EQ(plainTextHtml(word), "<p>" + word + "</p>\n");
    const std::string address = "http://" + std::string(100 * 1024, 'a');
    EXPECT_EQ(countLinks(address), 1U);
    const std::string brackets = "http://a" + std::string(100 * 1024, ')');
    EXPECT_EQ(countLinks(brackets), 1U);
}

TEST(PlainText, CleaningDropsControlsAndEndsLinesAlike) {
    EXPECT_EQ(cleanText(" \r\na\r\nb\rc\td\x01\x7f\n\n "), "a\nb\nc d");
    EXPECT_EQ(cleanText(std::string("a\0b", 3)), "ab");
    EXPECT_EQ(cleanText("\xff"), "\xEF\xBF\xBD");
    EXPECT_EQ(cleanLine("a\r\nBcc: b@c.example"), "a Bcc: b@c.example");
    EXPECT_EQ(cleanLine("  "), "");
}

}  // namespace
}  // namespace torvex
