// Links to documents.

#include "support/LinksTest.h"

namespace torvex::test {
namespace {

class LinkFilesTest : public LinksTest {};
INSTANTIATE_TEST_SUITE_P(Engines, LinkFilesTest, bothEngines(), engineName);

TEST_P(LinkFilesTest, ADocumentOpensInAWindowOfItsOwn) {
    document("aa", "plan.pdf");
    EXPECT_EQ(build("<a href=\"file(plan.pdf)\">x</a>"),
              "<a href=\"javascript:top.popup('aa','plan.pdf')\"" + std::string(status) + "x</a>");
    EXPECT_EQ(build("<a href='file(plan.pdf)'>x</a>"),
              "<a href='javascript:top.popup(\"aa\",\"plan.pdf\")'" + std::string(singleStatus) + "x</a>");
}

TEST_P(LinkFilesTest, TheWindowDoesNotDependOnFrames) {
    document("aa", "plan.pdf");
    frames(true);
    EXPECT_EQ(anchor("href=\"file(plan.pdf)\""), "href=\"javascript:top.popup('aa','plan.pdf')\"");
}

TEST_P(LinkFilesTest, InAScriptsStringTheQuotesAreEscaped) {
    document("aa", "plan.pdf");
    EXPECT_EQ(anchor("{href}=\"file(plan.pdf)\""), "href=\"javascript:top.popup(\\'aa\\',\\'plan.pdf\\')\"");
    EXPECT_EQ(anchor("{href}='file(plan.pdf)'"), "href='javascript:top.popup(\\\"aa\\\",\\\"plan.pdf\\\")'");
}

TEST_P(LinkFilesTest, ADocumentInAFrameIsAnAddress) {
    document("aa", "plan.pdf");
    EXPECT_EQ(anchor("href=\"file(plan.pdf)\" target=_self"), "href=\"/documents/aa/plan.pdf\" target=_self");
    EXPECT_EQ(anchor("href='file(plan.pdf)' target=\"_top\""),
              "href='/documents/aa/plan.pdf' target=\"_top\"");
    EXPECT_EQ(anchor("href=\"file(plan.pdf)\" target=_parent"),
              "href=\"/documents/aa/plan.pdf\" target=_top");
}

TEST_P(LinkFilesTest, ANewWindowNeedsNoTarget) {
    document("aa", "plan.pdf");
    for (const auto* target : {"target=_blank", "target=\"_blank\"", "target='_blank'"}) {
        EXPECT_EQ(anchor("href=\"file(plan.pdf)\" " + std::string(target)),
                  "href=\"javascript:top.popup('aa','plan.pdf')\" ");
    }
}

TEST_P(LinkFilesTest, AnotherSitesDocumentNamesTheSite) {
    document("zz", "plan.pdf");
    EXPECT_EQ(anchor("href=\"file(zz/plan.pdf)\""), "href=\"javascript:top.popup('zz','plan.pdf')\"");
    EXPECT_EQ(anchor("href=\"file(zz\\plan.pdf)\" target=_self"),
              "href=\"/documents/zz/plan.pdf\" target=_self");
    EXPECT_EQ(anchor("href=\"file(plan.pdf)\""), "gone");
}

TEST_P(LinkFilesTest, ADocumentIsFoundByItsTitle) {
    document("aa", "plan.pdf", "The great plan");
    EXPECT_EQ(anchor("href=\"file(The great plan)\""), "href=\"javascript:top.popup('aa','plan.pdf')\"");
    EXPECT_EQ(anchor("href=\"file(the GREAT plan)\" target=_self"),
              "href=\"/documents/aa/plan.pdf\" target=_self");
}

TEST_P(LinkFilesTest, AnotherSitesDocumentIsFoundByItsTitle) {
    document("zz", "plan.pdf", "Plan");
    EXPECT_EQ(anchor("href=\"file(ZZ/Plan)\" target=_self"), "href=\"/documents/zz/plan.pdf\" target=_self");
}

TEST_P(LinkFilesTest, ATitleBeyondAsciiIsFound) {
    document("aa", "plan.pdf", "Übersicht");
    EXPECT_EQ(anchor("href=\"file(übersicht)\" target=_self"),
              "href=\"/documents/aa/plan.pdf\" target=_self");
}

TEST_P(LinkFilesTest, BlanksAreEncodedInTheAddress) {
    document("aa", "my plan.pdf");
    EXPECT_EQ(anchor("href=\"file(my plan.pdf)\" target=_self"),
              "href=\"/documents/aa/my%20plan.pdf\" target=_self");
    EXPECT_EQ(anchor("href=\"file(my plan.pdf)\""), "href=\"javascript:top.popup('aa','my%20plan.pdf')\"");
}

TEST_P(LinkFilesTest, BlanksAroundAndMatchingQuotesAreCut) {
    document("aa", "plan.pdf");
    EXPECT_EQ(anchor("href=\"file( plan.pdf )\""), "href=\"javascript:top.popup('aa','plan.pdf')\"");
    EXPECT_EQ(anchor("href=\"file( 'plan.pdf' )\""), "href=\"javascript:top.popup('aa','plan.pdf')\"");
    EXPECT_EQ(anchor("href='file(\"plan.pdf\")' target=_self"), "href='/documents/aa/plan.pdf' target=_self");
}

TEST_P(LinkFilesTest, WhatFollowsStays) {
    document("aa", "plan.pdf");
    EXPECT_EQ(anchor("class=c href=\"file(plan.pdf)#page=2\" target=_self"),
              "class=c href=\"/documents/aa/plan.pdf#page=2\" target=_self");
}

TEST_P(LinkFilesTest, ADocumentThatCanNotBeFoundGoesWithAndWithoutChecks) {
    for (const bool on : {true, false}) {
        checks(on);
        EXPECT_EQ(anchor("href=\"file(missing.pdf)\""), "gone");
        EXPECT_EQ(anchor("href=\"file()\""), "gone");
    }
}

TEST_P(LinkFilesTest, OnlyChecksNoticeThatATitlesFileIsMissing) {
    documentTitle("aa", "lost.pdf", "Lost");
    EXPECT_EQ(anchor("href=\"file(Lost)\" target=_self"), "gone");
    checks(false);
    EXPECT_EQ(anchor("href=\"file(Lost)\" target=_self"), "href=\"/documents/aa/lost.pdf\" target=_self");
}

TEST_P(LinkFilesTest, AnAreaWithoutItsDocumentStays) {
    EXPECT_EQ(area("href=\"file(missing.pdf)\" alt=x"), " alt=x");
}

TEST_P(LinkFilesTest, AMarkerInTheNameLeavesTheLink) {
    EXPECT_EQ(anchor("href=\"file(<!--!name-->)\""), "href=\"file(<!--!name-->)\"");
}

TEST_P(LinkFilesTest, ANotationWithoutItsEndStays) {
    EXPECT_EQ(anchor("href=\"file(plan.pdf\""), "href=\"file(plan.pdf\"");
}

TEST_P(LinkFilesTest, QuotesInANameAreEscapedForTheScript) {
    document("aa", "it's.pdf");
    EXPECT_EQ(anchor("href=\"file(it's.pdf)\""), "href=\"javascript:top.popup('aa','it\\'s.pdf')\"");
}

TEST_P(LinkFilesTest, AQuoteInATitleIsAnyOtherCharacter) {
    document("aa", "plan.pdf", "Ann's plan");
    EXPECT_EQ(anchor("href=\"file(Ann's plan)\" target=_self"),
              "href=\"/documents/aa/plan.pdf\" target=_self");
}

TEST_P(LinkFilesTest, ALinkThatNamesAPageIsNoDocument) {
    document("aa", "plan.pdf");
    EXPECT_EQ(anchor("href=\"page(12)\" title=\"file(plan.pdf)\""),
              "href=\"/tvx.asp?pageId=12\" title=\"file(plan.pdf)\"");
}

}  // namespace
}  // namespace torvex::test
