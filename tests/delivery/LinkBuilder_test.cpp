#include "delivery/LinkBuilder.h"

#include "support/LinksTest.h"

namespace torvex::test {
namespace {

class LinkBuilderTest : public LinksTest {};
INSTANTIATE_TEST_SUITE_P(Engines, LinkBuilderTest, bothEngines(), engineName);

// Page notation.

TEST_P(LinkBuilderTest, APageNotationBecomesAnAddressWithoutFrames) {
    EXPECT_EQ(
        build("<a href=\"page(12)\">x</a>"),
        "<a href=\"/tvx.asp?pageId=12\" onmouseover=\"window.status=top.torvex_empty;return true;\" >x</a>");
}

TEST_P(LinkBuilderTest, ARequestWhoseTimeIsOverBuildsNoMoreLinks) {
    host.context().begin = Deadline::Clock::now() - std::chrono::seconds(91);
    EXPECT_EQ(errorOf([&] { server().buildLinks("<a href=\"page(12)\">x</a>", "aa"); }),
              chain({"buildLinks !", "makeLink !"}) + "the request took longer than it may");
}

TEST_P(LinkBuilderTest, ALinkToAPageThatIsOfflineLeavesItsWords) {
    EXPECT_EQ(build("1 <a href=\"page(13)\">the <i>words</i></a> 2"), "1 the <i>words</i> 2");
}

TEST_P(LinkBuilderTest, ALinkToAPageThatIsNotThereGoes) {
    EXPECT_EQ(anchor("href=\"page(4711)\""), "gone");
    EXPECT_EQ(anchor("href=\"page(aa.bb.77)\""), "gone");
    EXPECT_EQ(anchor("href=\"page()\""), "gone");
    EXPECT_EQ(anchor("href=\"page( )\""), "gone");
}

TEST_P(LinkBuilderTest, ALinkToAPageThatIsNotPublishedGoes) {
    page("aa.bb.03").id(14).insertInDesignOnly();
    EXPECT_EQ(anchor("href=\"page(14)\""), "gone");
}

TEST_P(LinkBuilderTest, DatesOfAPageCountBothDaysIn) {
    page("aa.bb.03").id(14).dates("20260615", "20260615").insert();
    page("aa.bb.04").id(15).dates("20260616", "").insert();
    page("aa.bb.05").id(16).dates("", "20260614").insert();
    page("aa.bb.06").id(17).dates("", "").insert();
    EXPECT_EQ(anchor("href=\"page(14)\""), "href=\"/tvx.asp?pageId=14\"");
    EXPECT_EQ(anchor("href=\"page(15)\""), "gone");
    EXPECT_EQ(anchor("href=\"page(16)\""), "gone");
    EXPECT_EQ(anchor("href=\"page(17)\""), "href=\"/tvx.asp?pageId=17\"");
}

TEST_P(LinkBuilderTest, ANodeBecomesThePagesNumber) {
    EXPECT_EQ(anchor("href=\"page(aa.bb.01)\""), "href=\"/tvx.asp?pageId=12\"");
    EXPECT_EQ(anchor("href=\"page(AA.BB.01)\""), "href=\"/tvx.asp?pageId=12\"");
}

TEST_P(LinkBuilderTest, SingleQuotesAreKeptForTheAttribute) {
    EXPECT_EQ(
        build("<a href='page(12)'>x</a>"),
        "<a href='/tvx.asp?pageId=12' onmouseover='window.status=top.torvex_empty;return true;' >x</a>");
}

TEST_P(LinkBuilderTest, TheArgumentMayItselfBeQuoted) {
    EXPECT_EQ(anchor("href='page(\"aa.bb.01\")'"), "href='/tvx.asp?pageId=12'");
    EXPECT_EQ(anchor("href=\"page('12')\""), "href=\"/tvx.asp?pageId=12\"");
}

TEST_P(LinkBuilderTest, QuotesThatDoNotMatchAreNotCut) {
    EXPECT_EQ(anchor("href='page(\"12)'"), "gone");
}

TEST_P(LinkBuilderTest, TheNotationIsFoundInAnyCase) {
    EXPECT_EQ(build("<A HREF=\"PAGE(12)\">x</A>").substr(0, 30), "<A HREF=\"/tvx.asp?pageId=12\" o");
}

TEST_P(LinkBuilderTest, AttributesAroundTheAddressStay) {
    EXPECT_EQ(anchor("class=c href=\"page(12)\" title=\"t\""),
              "class=c href=\"/tvx.asp?pageId=12\" title=\"t\"");
}

TEST_P(LinkBuilderTest, WhatFollowsTheNotationStaysBehindTheAddress) {
    EXPECT_EQ(anchor("href=\"page(12)#top\""), "href=\"/tvx.asp?pageId=12#top\"");
}

TEST_P(LinkBuilderTest, ANotationWithoutItsEndStaysButGetsTheStatus) {
    EXPECT_EQ(build("<a href=\"page(12\">x</a>"), "<a href=\"page(12\"" + std::string(status) + "x</a>");
}

TEST_P(LinkBuilderTest, WithChecksOffALinkToAMissingPageIsRewritten) {
    checks(false);
    EXPECT_EQ(anchor("href=\"page(4711)\""), "href=\"/tvx.asp?pageId=4711\"");
    EXPECT_EQ(anchor("href=\"page(13)\""), "href=\"/tvx.asp?pageId=13\"");
    EXPECT_EQ(anchor("href=\"page(aa.bb.77)\""), "href=\"/tvx.asp?pageId=-1\"");
}

TEST_P(LinkBuilderTest, AMarkerInTheIdentifierLeavesTheLinkAsItIs) {
    EXPECT_EQ(anchor("href=\"page(<!--!id-->)\""), "href=\"page(<!--!id-->)\"");
}

TEST_P(LinkBuilderTest, AMarkerElsewhereInTheTagStays) {
    EXPECT_EQ(anchor("href=\"page(12)\" title=\"<!--!t-->\""),
              "href=\"/tvx.asp?pageId=12\" title=\"<!--!t-->\"");
}

TEST_P(LinkBuilderTest, AFolderCountsAsItsFirstChild) {
    page("aa.bb.03").id(20).type("F").insert();
    page("aa.bb.03.01").id(21).order(2).offline().insert();
    page("aa.bb.03.02").id(22).order(1).insert();
    EXPECT_EQ(anchor("href=\"page(20)\""), "href=\"/tvx.asp?pageId=20\"");
    connection().execute("update TORVEX_PAGES_LIVE set orderId = 3 where pageId = 22");
    EXPECT_EQ(anchor("href=\"page(20)\""), "gone");
}

TEST_P(LinkBuilderTest, AFolderIsFollowedThroughFoldersWhateverItsOwnState) {
    page("aa.bb.03").id(20).type("f").offline().insert();
    page("aa.bb.03.01").id(21).type("F").offline().insert();
    page("aa.bb.03.01.01").id(22).insert();
    EXPECT_EQ(anchor("href=\"page(aa.bb.03)\""), "href=\"/tvx.asp?pageId=20\"");
}

TEST_P(LinkBuilderTest, AnEmptyFolderIsNoTarget) {
    page("aa.bb.03").id(20).type("F").insert();
    EXPECT_EQ(anchor("href=\"page(20)\""), "gone");
}

TEST_P(LinkBuilderTest, FoldersInACircleAreNoTarget) {
    page("aa.bb.03").id(20).type("F").set("parent", "aa.bb.04").insert();
    page("aa.bb.04").id(21).type("F").set("parent", "aa.bb.03").insert();
    EXPECT_EQ(anchor("href=\"page(20)\""), "gone");
}

TEST_P(LinkBuilderTest, GroupsOfAPageDoNotMatter) {
    host.application.set("torvex_extranet", true);
    EXPECT_EQ(anchor("href=\"page(12)\""), "href=\"/tvx.asp?pageId=12\"");
}

TEST_P(LinkBuilderTest, OneLinkAfterTheOtherIsJudgedForItself) {
    EXPECT_EQ(build("<a href=\"page(13)\">1</a><a href=\"page(12)\">2</a><a href='page(4711)'>3</a>"),
              "1<a href=\"/tvx.asp?pageId=12\"" + std::string(status) + "2</a>3");
}

// Page notation with frames.

TEST_P(LinkBuilderTest, WithFramesALinkCallsTheFrameSet) {
    frames(true);
    EXPECT_EQ(anchor("href=\"page(12)\""), "href=\"javascript:top.page('12','aa.bb.01')\"");
    EXPECT_EQ(anchor("href='page(12)'"), "href='javascript:top.page(\"12\",\"aa.bb.01\")'");
}

TEST_P(LinkBuilderTest, WithFramesANodeGivesBothNames) {
    frames(true);
    EXPECT_EQ(anchor("href=\"page(AA.bb.01)\""), "href=\"javascript:top.page('12','aa.bb.01')\"");
}

TEST_P(LinkBuilderTest, InAScriptsStringTheQuotesAreEscaped) {
    frames(true);
    EXPECT_EQ(anchor("{href}=\"page(12)\""), "href=\"javascript:top.page(\\'12\\',\\'aa.bb.01\\')\"");
    EXPECT_EQ(anchor("{href}='page(12)'"), "href='javascript:top.page(\\\"12\\\",\\\"aa.bb.01\\\")'");
}

TEST_P(LinkBuilderTest, InAScriptsStringAnAddressIsAsElsewhere) {
    EXPECT_EQ(anchor("{href}=\"page(12)\""), "href=\"/tvx.asp?pageId=12\"");
}

TEST_P(LinkBuilderTest, BracketsAroundTheAttributesNameGo) {
    EXPECT_EQ(anchor("[href]=\"page(12)\""), "href=\"/tvx.asp?pageId=12\"");
    EXPECT_EQ(anchor("[HREF]='page(12)'"), "href='/tvx.asp?pageId=12'");
}

TEST_P(LinkBuilderTest, ABlankBesideTheSignOfEqualityGoes) {
    EXPECT_EQ(anchor("href =\"page(12)\""), "href=\"/tvx.asp?pageId=12\"");
    EXPECT_EQ(anchor("href= \"page(12)\""), "href=\"/tvx.asp?pageId=12\"");
    EXPECT_EQ(anchor("[href] = 'page(12)'"), "href='/tvx.asp?pageId=12'");
}

TEST_P(LinkBuilderTest, WithFramesALinkThatLeavesTheFrameIsAnAddressOfTheFrameSet) {
    frames(true);
    EXPECT_EQ(anchor("href=\"page(12)\" target=_top"), "href=\"/frameset.asp?pageId=12\" target=_top");
    EXPECT_EQ(anchor("target=\"_blank\" href=\"page(12)\""),
              "target=\"_blank\" href=\"/frameset.asp?pageId=12\"");
}

TEST_P(LinkBuilderTest, TheParentFrameIsTheWholeWindow) {
    frames(true);
    EXPECT_EQ(anchor("href=\"page(12)\" target=_parent"), "href=\"/frameset.asp?pageId=12\" target=_top");
    EXPECT_EQ(anchor("href=\"page(12)\" target=\"_parent\""), "href=\"/frameset.asp?pageId=12\" target=_top");
    EXPECT_EQ(anchor("href=\"page(12)\" target='_parent'"), "href=\"/frameset.asp?pageId=12\" target=_top");
    frames(false);
    EXPECT_EQ(anchor("href=\"page(12)\" target='_parent'"), "href=\"/tvx.asp?pageId=12\" target=_top");
}

TEST_P(LinkBuilderTest, ALinkToTheSameFrameDoesNotLeaveIt) {
    frames(true);
    EXPECT_EQ(anchor("href=\"page(12)\" target=\"_self\""),
              "href=\"javascript:top.page('12','aa.bb.01')\" target=\"_self\"");
}

TEST_P(LinkBuilderTest, WithFramesDeadLinksGoAsWell) {
    frames(true);
    EXPECT_EQ(anchor("href=\"page(13)\""), "gone");
}

TEST_P(LinkBuilderTest, WithFramesAndWithoutChecksAnythingIsRewritten) {
    frames(true);
    checks(false);
    EXPECT_EQ(anchor("href=\"page(4711)\""), "href=\"javascript:top.page('4711','')\"");
    EXPECT_EQ(anchor("href=\"page(aa.bb.77)\""), "href=\"javascript:top.page('-1','aa.bb.77')\"");
}

TEST_P(LinkBuilderTest, AnIdentifierNeverLeavesItsStringInTheScript) {
    frames(true);
    checks(false);
    EXPECT_EQ(anchor("href=\"page(aa.bb'-alert`1`-')\""),
              "href=\"javascript:top.page('-1','aa.bb\\'-alert`1`-\\'')\"");
}

// Areas.

TEST_P(LinkBuilderTest, AnAreaIsRewrittenAsAnAnchorIs) {
    EXPECT_EQ(area("shape=rect href=\"page(12)\""), "shape=rect href=\"/tvx.asp?pageId=12\"");
}

TEST_P(LinkBuilderTest, AnAreaWithADeadLinkStaysWithoutAnAddress) {
    EXPECT_EQ(build("<area shape=rect href=\"page(13)\" alt=x>"),
              "<area shape=rect  alt=x" + std::string(status));
    EXPECT_EQ(build("<area href='page(13)' alt=x>"), "<area  alt=x" + std::string(singleStatus));
}

TEST_P(LinkBuilderTest, AnAreaWithADeadAddressStaysWithoutAnAddress) {
    EXPECT_EQ(area("href=\"/tvx.asp?pageId=13&n=1\" alt=x"), " alt=x");
    EXPECT_EQ(area("href='frameset.asp?pageId=13' alt=x"), " alt=x");
}

// The status bar.

TEST_P(LinkBuilderTest, ALinkThatHasAStatusOfItsOwnKeepsIt) {
    EXPECT_EQ(build("<a href=\"page(12)\" onMouseOver=\"f()\">x</a>"),
              "<a href=\"/tvx.asp?pageId=12\" onMouseOver=\"f()\">x</a>");
}

TEST_P(LinkBuilderTest, ALinkOutsideGetsAStatus) {
    EXPECT_EQ(build("<a href=\"http://other.test/\">x</a>"),
              "<a href=\"http://other.test/\"" + std::string(status) + "x</a>");
}

TEST_P(LinkBuilderTest, WithoutDoubleQuotesAtTheAddressTheStatusIsInSingleOnes) {
    EXPECT_EQ(build("<a href=http://other.test/>x</a>"),
              "<a href=http://other.test/" + std::string(singleStatus) + "x</a>");
    EXPECT_EQ(build("<a name=n>x</a>"), "<a name=n" + std::string(singleStatus) + "x</a>");
}

// Other links.

TEST_P(LinkBuilderTest, LinksOutsideAreLeftAsTheyAre) {
    for (const auto* prefix :
         {"http://", "https://", "ftp://", "file://", "gopher://", "wais://", "HTTP://"}) {
        for (const auto* quote : {"\"", "'"}) {
            const std::string attributes =
                std::string("href=").append(quote).append(prefix).append("x.test").append(quote) +
                " target=_parent";
            EXPECT_EQ(anchor(attributes), attributes);
        }
    }
}

TEST_P(LinkBuilderTest, AnyOtherLinkToTheParentFrameLeadsToTheWholeWindow) {
    EXPECT_EQ(anchor("href=\"other.asp\" target=\"_parent\""), "href=\"other.asp\" target=\"_top\"");
    EXPECT_EQ(anchor("href=\"mailto:a@b.test\" target=_self"), "href=\"mailto:a@b.test\" target=_self");
    EXPECT_EQ(anchor("href=http://x.test target=_parent"), "href=http://x.test target=_top");
}

TEST_P(LinkBuilderTest, AnchorsInThePageStay) {
    EXPECT_EQ(anchor("name=\"top\""), "name=\"top\"");
    EXPECT_EQ(anchor("href=\"#top\""), "href=\"#top\"");
}

// The scan as a whole.

TEST_P(LinkBuilderTest, TheHeadIsUntouched) {
    EXPECT_EQ(build("<head><a href=\"page(13)\">x</a></head><body><a href=\"page(13)\">y</a>"),
              "<head><a href=\"page(13)\">x</a></head><body>y");
}

TEST_P(LinkBuilderTest, ACommentAheadOfALinkDoesNotDisturb) {
    EXPECT_EQ(build("<!-- c --><a href=\"page(13)\">x</a><!--!m-->"), "<!-- c -->x<!--!m-->");
}

TEST_P(LinkBuilderTest, AnUnclosedAnchorEndsTheScanButAreasAreStillHandled) {
    EXPECT_EQ(build("<a href=\"page(12)\">x<area href=\"page(12)\">"),
              "<a href=\"page(12)\">x<area href=\"/tvx.asp?pageId=12\"" + std::string(status));
}

TEST_P(LinkBuilderTest, TextWithoutLinksNeedsNoConnection) {
    cServer unconnected(host.context());
    EXPECT_EQ(unconnected.buildLinks("<body>text", "aa"), "<body>text");
}

TEST_P(LinkBuilderTest, LanguageAndModeHaveNoEffect) {
    EXPECT_EQ(server().buildLinks("<a href=\"page(12)\">x</a>", "aa", "zz", "D"),
              server().buildLinks("<a href=\"page(12)\">x</a>", "aa"));
}

TEST_P(LinkBuilderTest, AThousandLinksAreAllBuilt) {
    std::string html;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        html +=
            i % 2 == 0 ? "<a href=\"page(12)\">x</a>" : "<a href=\"page(9" + std::to_string(i) + ")\">y</a>";
        expected += i % 2 == 0 ? "<a href=\"/tvx.asp?pageId=12\"" + std::string(status) + "x</a>" : "y";
    }
    EXPECT_EQ(build(html), expected);
}

// Failures.

TEST_P(LinkBuilderTest, AFailureBearsTheLinesOfTheWay) {
    drop("TORVEX_PAGES_LIVE");
    const std::string error = errorOf([&] { build("<a href=\"page(12)\">x</a>"); });
    EXPECT_TRUE(error.starts_with(chain({"buildLinks !", "makeLink !"}))) << error;
}

TEST_P(LinkBuilderTest, AFailureWithADocumentNamesTheLookup) {
    drop("TORVEX_DOCUMENTS");
    const std::string error = errorOf([&] { build("<a href=\"file(x)\">x</a>"); });
    EXPECT_TRUE(error.starts_with(chain({"buildLinks !", "makeLink !", "getDocFile !"}))) << error;
}

}  // namespace
}  // namespace torvex::test
