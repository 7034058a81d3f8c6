#include "pages/authors/PageView.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string boxed(std::string_view html) {
    return forEditing(html, "Frame {address}");
}

TEST(PageView, AFrameIsABoxWithItsAddress) {
    for (const char* html :
         {"<p>a<iframe src=\"/x.html\" width=3>old</iframe>b</p>",
          "<p>a<IFRAME width='>' SRC='/x.html'></IFRAME>b</p>", "<p>a<iframe src=/x.html></iframe >b</p>",
          "<p>a<object data=\"/x.html\"><param name=a></object>b</p>", "<p>a<embed src=\"/x.html\">b</p>",
          "<p>a<frame src = \"/x.html\" />b</p>"}) {
        const std::string shown = boxed(html);
        EXPECT_THAT(shown, AllOf(testing::StartsWith("<p>a<span class=\"torvexFrame\""),
                                 testing::EndsWith("Frame /x.html</span>b</p>")))
            << html;
    }
}

TEST(PageView, AFrameWithoutEndOrAddressIsABoxToo) {
    EXPECT_THAT(boxed("a<iframe src=\"/x\">b"),
                AllOf(HasSubstr("Frame /x</span>b"), Not(HasSubstr("iframe"))));
    EXPECT_THAT(boxed("a<iframe srcdoc=\"<b>x</b>\"></iframe>b"),
                AllOf(HasSubstr("Frame </span>b"), Not(HasSubstr("<b>"))));
    EXPECT_THAT(boxed("a<iframe data-src=\"/y\" src=\"/x\"></iframe>"), HasSubstr("Frame /x<"));
    EXPECT_THAT(boxed("a<iframe"), testing::Eq("a<iframe"));
}

TEST(PageView, AnAddressCantBreakOutOfItsBox) {
    const std::string shown = boxed("<iframe src='\"><script>x</script>'></iframe>");
    EXPECT_THAT(shown, Not(HasSubstr("<script>")));
}

TEST(PageView, EverythingElseStaysByteForByte) {
    for (const char* html :
         {"", "a < b", "<p>x</p>", "<iframes>", "<framework a=1>", "<objective>",
          "<!-- <iframe src=x></iframe> --><p>a</p>", "<!-- open", "<textarea>\r\n&lt;iframe></textarea>"})
        EXPECT_EQ(boxed(html), html);
}

TEST(PageView, ScriptsAreGone) {
    EXPECT_EQ(boxed("a<script>x < 1; '</p>'</script>b<SCRIPT src=\"/x.js\"></SCRIPT >c"), "abc");
    EXPECT_EQ(boxed("a<script>open"), "a");
    EXPECT_EQ(boxed("<scripture>a</scripture>"), "<scripture>a</scripture>");
}

TEST(PageView, HandlersOfEventsStandInAttributesThatNobodyRuns) {
    EXPECT_EQ(boxed("<img src=a onclick=\"top.content.nodeId='x'\" id=b>"),
              "<img src=a data-onclick=\"top.content.nodeId='x'\" id=b>");
    EXPECT_EQ(boxed("<a ONLOAD='x>y' href=\"javascript:top.page('3')\">"),
              "<a data-ONLOAD='x>y' href=\"javascript:top.page('3')\">");
    EXPECT_EQ(boxed("<a\nonmouseover=x onmouseout = \"y\"onfocus=z/>"),
              "<a\ndata-onmouseover=x data-onmouseout = \"y\"data-onfocus=z/>");
    for (const char* html :
         {"<p title=\"onclick=x\">onclick=</p>", "<p data-onclick=x>", "</p onclick=x>", "<p",
          "<p title=\"open", "<p a=>", "< p onclick=x>", "<p on", "<option value=on>"})
        EXPECT_EQ(boxed(html), html);
}

TEST(PageView, TheScriptOfLinksStandsAheadOfEveryOther) {
    constexpr const char* script = "<script src=\"/torvex/tryview.js\"></script>";
    EXPECT_EQ(withLinkScript("<!DOCTYPE html><html><head lang=en><script>1</script></head>"),
              std::string("<!DOCTYPE html><html><head lang=en>") + script + "<script>1</script></head>");
    EXPECT_EQ(withLinkScript("<!DOCTYPE html><header>a</header>"),
              std::string("<!DOCTYPE html>") + script + "<header>a</header>");
    EXPECT_EQ(withLinkScript("text"), script + std::string("text"));
}

}  // namespace
}  // namespace torvex
