// Links that are written as addresses of the two page scripts.

#include "support/LinksTest.h"

namespace torvex::test {
namespace {

class LinkAddressesTest : public LinksTest {};
INSTANTIATE_TEST_SUITE_P(Engines, LinkAddressesTest, bothEngines(), engineName);

TEST_P(LinkAddressesTest, AnAddressOfAPageStays) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=12\""), "href=\"/tvx.asp?pageId=12\"");
    EXPECT_EQ(anchor("href='/tvx.asp?pageId=12'"), "href='/tvx.asp?pageId=12'");
}

TEST_P(LinkAddressesTest, ARelativeAddressGetsItsSlash) {
    EXPECT_EQ(anchor("href=\"tvx.asp?pageId=12\""), "href=\"/tvx.asp?pageId=12\"");
    EXPECT_EQ(anchor("href='tvx.asp?pageId=12'"), "href='/tvx.asp?pageId=12'");
    EXPECT_EQ(anchor("href='frameset.asp?pageId=12'"), "href='/tvx.asp?pageId=12'");
}

TEST_P(LinkAddressesTest, AnAddressWithoutAPageGetsTheDefaultPage) {
    EXPECT_EQ(anchor("href=\"/tvx.asp\""), "href=\"/tvx.asp?pageId=10\"");
    EXPECT_EQ(anchor("href='tvx.asp'"), "href='/tvx.asp?pageId=10'");
    EXPECT_EQ(anchor("href=\"/frameset.asp\""), "href=\"/tvx.asp?pageId=10\"");
}

TEST_P(LinkAddressesTest, TheDefaultPageStandsAheadOfTheOtherParameters) {
    EXPECT_EQ(anchor("href=\"tvx.asp?n=1\""), "href=\"/tvx.asp?pageId=10&n=1\"");
    frames(true);
    EXPECT_EQ(anchor("href=\"tvx.asp?n=1\""), "href=\"/frameset.asp?pageId=10&n=1\"");
    EXPECT_EQ(anchor("href=\"frameset.asp?n=1\""), "href=\"/frameset.asp?pageId=10&n=1\"");
}

TEST_P(LinkAddressesTest, AParameterThatOnlyEndsInTheNameNamesNoPage) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?mypageId=13\""), "href=\"/tvx.asp?pageId=10&mypageId=13\"");
}

TEST_P(LinkAddressesTest, TheDefaultPageIsCheckedAsWell) {
    host.application.set("tvx_default_pageId", 13);
    EXPECT_EQ(anchor("href=\"/tvx.asp\""), "gone");
    host.application.set("tvx_default_pageId", "");
    EXPECT_EQ(anchor("href=\"/tvx.asp\""), "gone");
}

TEST_P(LinkAddressesTest, ADefaultPageThatIsANodeBecomesItsNumber) {
    host.application.set("tvx_default_pageId", "aa.bb.01");
    EXPECT_EQ(anchor("href=\"/tvx.asp\""), "href=\"/tvx.asp?pageId=12\"");
}

TEST_P(LinkAddressesTest, AnotherAddressInTheTagDoesNotKeepTheDefaultPageAway) {
    EXPECT_EQ(anchor("href=\"/tvx.asp\" title=\"/tvx.asp?\"").substr(0, 27), "href=\"/tvx.asp?pageId=10\" t");
}

TEST_P(LinkAddressesTest, AnotherAddressInTheTagGetsTheDefaultPageWithTheFirst) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?n=1\" title=\"/tvx.asp?m=2\""),
              "href=\"/tvx.asp?pageId=10&n=1\" title=\"/tvx.asp?pageId=10&m=2\"");
}

TEST_P(LinkAddressesTest, ThePageMayStandAnywhereInTheQuery) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?n=1&pageId=12&m=2\""), "href=\"/tvx.asp?n=1&pageId=12&m=2\"");
    EXPECT_EQ(anchor("href=\"/tvx.asp?n=1&pageId=13&m=2\""), "gone");
}

TEST_P(LinkAddressesTest, DeadAddressesGo) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=13\""), "gone");
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=4711\""), "gone");
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=\""), "gone");
    EXPECT_EQ(anchor("href='frameset.asp?pageId=13'"), "gone");
}

TEST_P(LinkAddressesTest, ANodeInAnAddressBecomesThePagesNumber) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=aa.bb.01&n=1\""), "href=\"/tvx.asp?pageId=12&n=1\"");
    EXPECT_EQ(anchor("href=\"/frameset.asp?n=1&pageId=AA.BB.01\""), "href=\"/tvx.asp?n=1&pageId=12\"");
}

TEST_P(LinkAddressesTest, AMarkerInPlaceOfThePageIsNotChecked) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=<!--!id-->\""), "href=\"/tvx.asp?pageId=<!--!id-->\"");
    frames(true);
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=<!--!id-->\""), "href=\"/frameset.asp?pageId=<!--!id-->\"");
}

TEST_P(LinkAddressesTest, WithoutChecksNothingIsLookedUp) {
    checks(false);
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=13\""), "href=\"/tvx.asp?pageId=13\"");
    EXPECT_EQ(anchor("href=\"tvx.asp\""), "href=\"/tvx.asp\"");
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=aa.bb.01\""), "href=\"/tvx.asp?pageId=aa.bb.01\"");
}

TEST_P(LinkAddressesTest, AnAddressWithoutItsClosingQuoteIsNotLookedUp) {
    EXPECT_EQ(anchor("href=\"tvx.asp?pageId=13"), "href=\"/tvx.asp?pageId=13");
}

TEST_P(LinkAddressesTest, AddressesAreConvertedToTheModeOfTheSite) {
    EXPECT_EQ(anchor("href=\"/frameset.asp?pageId=12\""), "href=\"/tvx.asp?pageId=12\"");
    frames(true);
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=12\""), "href=\"/frameset.asp?pageId=12\"");
    EXPECT_EQ(anchor("href='/frameset.asp?pageId=12'"), "href='/frameset.asp?pageId=12'");
}

TEST_P(LinkAddressesTest, WithFramesAPageInTheFrameTakesTheWholeWindow) {
    frames(true);
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=12\" target=\"_self\""),
              "href=\"/frameset.asp?pageId=12\" target=\"_top\"");
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=12\" target=_parent"),
              "href=\"/frameset.asp?pageId=12\" target=_top");
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=12\" target=_blank"),
              "href=\"/frameset.asp?pageId=12\" target=_blank");
}

TEST_P(LinkAddressesTest, WithoutFramesTheTargetOfAPageStays) {
    EXPECT_EQ(anchor("href=\"/tvx.asp?pageId=12\" target=_parent"),
              "href=\"/tvx.asp?pageId=12\" target=_parent");
}

TEST_P(LinkAddressesTest, AnAddressOfTheFrameSetTakesTheWholeWindow) {
    EXPECT_EQ(anchor("href=\"/frameset.asp?pageId=12\" target=_self"),
              "href=\"/tvx.asp?pageId=12\" target=_top");
    EXPECT_EQ(anchor("href=\"/frameset.asp?pageId=12\" target='_parent'"),
              "href=\"/tvx.asp?pageId=12\" target='_top'");
}

TEST_P(LinkAddressesTest, ADeadAreaKeepsTheTargetOfAPage) {
    frames(true);
    EXPECT_EQ(area("href=\"/tvx.asp?pageId=13\" target=_self"), " target=_self");
}

TEST_P(LinkAddressesTest, ADeadAreaOfTheFrameSetTakesTheWholeWindow) {
    EXPECT_EQ(area("href=\"/frameset.asp?pageId=13\" target=_self"), " target=_top");
}

TEST_P(LinkAddressesTest, AnAddressInAScriptsStringIsAnAddress) {
    frames(true);
    EXPECT_EQ(anchor("{href}=\"tvx.asp?pageId=12\""), "href=\"/frameset.asp?pageId=12\"");
    EXPECT_EQ(anchor("[href]='tvx.asp?pageId=12'"), "href='/frameset.asp?pageId=12'");
}

TEST_P(LinkAddressesTest, OtherScriptsAreOtherLinks) {
    EXPECT_EQ(anchor("href=\"/sub/tvx.asp?pageId=13\""), "href=\"/sub/tvx.asp?pageId=13\"");
    EXPECT_EQ(anchor("href=\"http://x.test/tvx.asp?pageId=13\""), "href=\"http://x.test/tvx.asp?pageId=13\"");
}

}  // namespace
}  // namespace torvex::test
