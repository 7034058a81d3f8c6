#include "delivery/LinkMarking.h"

#include "support/InterruptedConnection.h"
#include "support/MarkingTest.h"

namespace torvex::test {
namespace {

class LinkMarkingTest : public MarkingTest {};
INSTANTIATE_TEST_SUITE_P(Engines, LinkMarkingTest, bothEngines(), engineName);

// Good targets

TEST_P(LinkMarkingTest, APageOfTheSameTreeIsCalledInTheInterface) {
    EXPECT_EQ(link("page(12)"), good("javascript:top.page('12')"));
    EXPECT_EQ(link("page(aa.en.01)"), good("javascript:top.page('12')"));
    EXPECT_EQ(link("page( AA.EN.01 )"), good("javascript:top.page('12')"));
    EXPECT_EQ(link("page('12')"), good("javascript:top.page('12')"));
}

TEST_P(LinkMarkingTest, TheQuotesAreThoseOfTheAttribute) {
    EXPECT_EQ(
        tag("<a href='page(12)'>"),
        "<a href='javascript:top.page(\"12\")' onmouseover='window.status=top.torvex_empty;return true;'>");
}

TEST_P(LinkMarkingTest, InsideAScriptTheInnerQuotesAreEscaped) {
    EXPECT_EQ(tag("<a {href}=\"page(12)\">"), good("javascript:top.page(\\'12\\')"));
    EXPECT_EQ(tag("<a {href}='page(12)'>"),
              "<a href='javascript:top.page(\\\"12\\\")' onmouseover='window.status=top.torvex_empty;return "
              "true;'>");
    EXPECT_EQ(tag("<a {href}=\"http://x.test/\">"), good("javascript:top.viewLink(\\'http://x.test/\\')"));
}

TEST_P(LinkMarkingTest, APageOfAnotherSiteOrLanguageIsViewed) {
    EXPECT_EQ(link("page(20)"), good("javascript:top.viewLink('/tvx.asp?pageId=20')"));
    EXPECT_EQ(link("page(aa.de.01)"), good("javascript:top.viewLink('/tvx.asp?pageId=21')"));
    host.application.set("torvex_frames", true);
    EXPECT_EQ(link("page(20)"), good("javascript:top.viewLink('/frameset.asp?pageId=20')"));
    EXPECT_EQ(link("page(12)"), good("javascript:top.page('12')"));
}

TEST_P(LinkMarkingTest, AddressesOfPagesAreTakenAsTheNotation) {
    for (const char* script : {"/tvx.asp", "tvx.asp", "/frameset.asp", "frameset.asp"}) {
        EXPECT_EQ(link(std::string(script) + "?pageId=12"), good("javascript:top.page('12')"));
        EXPECT_EQ(link(std::string(script) + "?x=1&pageId=20&y=2"),
                  good("javascript:top.viewLink('/tvx.asp?pageId=20')"));
        EXPECT_EQ(link(std::string(script) + "?pageId=99"), missing(std::string(script) + "?pageId=99"));
        EXPECT_EQ(link(std::string(script) + "?pageId="), missing(std::string(script) + "?pageId="));
    }
}

TEST_P(LinkMarkingTest, AnAddressWithoutAPageIsTheDefaultPage) {
    EXPECT_EQ(link("/tvx.asp"), good("javascript:top.page('10')"));
    host.application.set("tvx_default_pageId", Value());
    EXPECT_EQ(link("/tvx.asp"), good("/tvx.asp"));
}

TEST_P(LinkMarkingTest, BlanksMayStandAroundTheEqualsSign) {
    EXPECT_EQ(tag("<a href = \"page(12)\">").find("top.page('12')") != std::string::npos, true);
    EXPECT_EQ(tag("<a href =\"page(99)\">").find("W670") != std::string::npos, true);
}

TEST_P(LinkMarkingTest, ALinkThatIsCalledLosesItsTarget) {
    const std::string plain = link("page(12)");
    for (const char* target : {"target=_top", "target=\"_blank\"", "target ='_parent'", "target= _self"}) {
        EXPECT_EQ(tag(std::string("<a ") + target + " href=\"page(12)\">"), plain);
    }
    EXPECT_EQ(tag("<a href=\"http://x.test/?target=1\" target=_blank>"),
              good("javascript:top.viewLink('http://x.test/?target=1')"));
}

TEST_P(LinkMarkingTest, AreasAreTakenAsAnchors) {
    EXPECT_EQ(build("<area href=\"page(12)\">"),
              "<area href=\"javascript:top.page('12')\" onmouseover=\"window.status=top.torvex_empty;return "
              "true;\">");
    EXPECT_EQ(build("<area href=\"page(99)\">"), "<area" + missing("page(99)").substr(2));
}

TEST_P(LinkMarkingTest, ATagWithAMouseTextKeepsIt) {
    EXPECT_EQ(tag("<a onMouseOver=\"x()\" href=\"page(12)\">"),
              "<a onMouseOver=\"x()\" href=\"javascript:top.page('12')\">");
}

TEST_P(LinkMarkingTest, AMarkerInTheNotationLeavesTheLinkAsItIs) {
    EXPECT_EQ(link("page(<!--!id!-->)"), good("page(<!--!id!-->)"));
    EXPECT_EQ(link("file(<!--!id!-->)"), good("file(<!--!id!-->)"));
}

// External addresses and others

TEST_P(LinkMarkingTest, ExternalAddressesAreViewed) {
    for (const char* address : {"http://x.test/a?b=1&amp;c", "https://x.test", "ftp://x.test", "file://x",
                                "gopher://x", "wais://x", "HTTP://X.test"}) {
        EXPECT_EQ(link(address), good("javascript:top.viewLink('" + std::string(address) + "')"));
    }
}

TEST_P(LinkMarkingTest, AnExternalAddressCannotEndTheCall) {
    EXPECT_EQ(link("http://x.test/');alert(1)//"),
              good("javascript:top.viewLink('http://x.test/\\');alert(1)//')"));
    EXPECT_EQ(link("http://x.test/%27);alert(1)//"),
              good("javascript:top.viewLink('http://x.test/%2527);alert(1)//')"));
    EXPECT_EQ(link("http://x.test/&#39;);alert(1)//"),
              good("javascript:top.viewLink('http://x.test/\\&#39;);alert(1)//')"));
}

TEST_P(LinkMarkingTest, OtherLinksOnlyGetTheStatus) {
    for (const char* address :
         {"mailto:a@b.test", "#top", "/other/", "javascript:x()", "", "page", "page12)"}) {
        EXPECT_EQ(link(address), good(address));
    }
    EXPECT_EQ(tag("<a name=\"x\">"),
              "<a name=\"x\" onmouseover='window.status=top.torvex_empty;return true;'>");
    EXPECT_EQ(tag("<a href=/x target=_parent>"),
              "<a href=/x target=_parent onmouseover='window.status=top.torvex_empty;return true;'>");
    EXPECT_EQ(tag("<a href=\"/x\" target=\"_parent\">"),
              "<a href=\"/x\" target=\"_top\" onmouseover=\"window.status=top.torvex_empty;return true;\">");
}

TEST_P(LinkMarkingTest, ANotationWithoutItsEndStays) {
    EXPECT_EQ(link("page(12"), good("page(12"));
    EXPECT_EQ(link("file(x"), good("file(x"));
    EXPECT_EQ(tag("<a href=\"page(12)>"),
              "<a href=\"page(12) onmouseover=\"window.status=top.torvex_empty;return true;\">");
}

TEST_P(LinkMarkingTest, LinksAheadOfTheBodyStay) {
    EXPECT_EQ(build("<a href=\"page(12)\">x</a><body>"), "<a href=\"page(12)\">x</a><body>");
}

TEST_P(LinkMarkingTest, EditFramesAreLeftAloneInTheDesign) {
    const std::string frame = "<a class=\"bodyLink\" href=\"javascript:top.link.editBody('aa.en.01',1)\">";
    EXPECT_EQ(tag(frame, "D"), frame);
    EXPECT_NE(tag(frame, "L"), frame);
}

// The whole page

TEST_P(LinkMarkingTest, DoingItAgainChangesNothing) {
    document("aa", "a.pdf");
    const std::string html =
        "<body><a href=\"page(12)\">1</a><a href='page(13)'>2</a><a href=\"page(99)\">3</a><a "
        "[href]=\"\">4</a>"
        "<a href=\"file(a.pdf)\">5</a><a href=\"file(b.pdf)\">6</a><a href=\"http://x.test\">7</a>"
        "<area href=\"page(20)\"></body>";
    const std::string once = build(html);
    EXPECT_EQ(build(once), once);
}

TEST_P(LinkMarkingTest, APageOfManyLinksCostsFewStatements) {
    page("aa.en.05").id(30).type("F").insert();
    page("aa.en.05.01").id(31).insert();
    std::string html;
    for (int i = 0; i < 30; ++i) {
        html +=
            "<a href=\"page(12)\">x</a><a href=\"page(99)\">x</a><a href=\"page(aa.en.02)\">x</a>"
            "<a href=\"page(30)\">x</a><a href=\"page(" +
            std::to_string(100 + i) + ")\">x</a>";
    }
    InterruptedConnection counted(connection());
    manager().connect(counted);
    const std::string built = build(html);
    EXPECT_NE(built.find("top.page('31')"), std::string::npos);
    // Numbers, two lists of them; nodes; children; the words, and their language.
    EXPECT_LE(counted.queries, 7);
}

TEST_P(LinkMarkingTest, UnbalancedPagesOfMegabytesComeToAnEnd) {
    std::string html = "<body>";
    while (html.size() < 2 * 1024 * 1024) html += "<a href=\"page(12)\">x</a><a <a href='page(99)<b>\"</a>";
    html += "<a href=\"page(12)\"";
    const std::string built = build(html);
    EXPECT_GT(built.size(), html.size());
}

TEST_P(LinkMarkingTest, AFailingDatabaseIsPassedOn) {
    drop("TORVEX_PAGES_LIVE");
    try {
        link("page(12)");
        FAIL();
    } catch (const Error& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(chain({"buildLinks !", "makeLink !"})))
            << error.what();
    }
}

}  // namespace
}  // namespace torvex::test
