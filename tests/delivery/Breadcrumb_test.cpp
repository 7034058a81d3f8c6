#include "support/SiteTest.h"

namespace torvex::test {
namespace {

std::string crumbLink(const std::string& address, const std::string& title) {
    return "<a class=\"breadcrumb\" href=\"" + address + "\">" + title +
           "</a><span class=\"breadcrumb\">&nbsp;&gt; </span>";
}

/// The end of every trail: the page itself, with its last span left open.
std::string crumbHere(const std::string& title) {
    return "<span class=\"breadcrumbActive\">" + title + "</span><span class=\"breadcrumb\">";
}

class BreadcrumbTest : public SiteTest {
  protected:
    std::string trail(const std::string& ident) { return server().getBreadcrumb(ident); }
};
INSTANTIATE_TEST_SUITE_P(Engines, BreadcrumbTest, bothEngines(), engineName);

TEST_P(BreadcrumbTest, TheTrailOfARootIsItsOneCrumb) {
    page("aa.en").id(10).title("Home").insert();
    EXPECT_EQ(trail("10"), crumbHere("Home"));
}

TEST_P(BreadcrumbTest, TheTrailLeadsFromTheRootToThePage) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).title("Garden").insert();
    page("aa.en.01.02").id(12).title("Roses").insert();
    EXPECT_EQ(trail("12"), crumbLink("/tvx.asp?pageId=10", "Home") +
                               crumbLink("/tvx.asp?pageId=11", "Garden") + crumbHere("Roses"));
}

TEST_P(BreadcrumbTest, ThePageIsFoundByItsNodeInAnyCase) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).title("Garden").insert();
    EXPECT_EQ(trail(" AA.EN.01 "), crumbLink("/tvx.asp?pageId=10", "Home") + crumbHere("Garden"));
}

TEST_P(BreadcrumbTest, InAFrameSetTheLinksCallIt) {
    host.application.set("torvex_frames", true);
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).title("Garden").insert();
    EXPECT_EQ(trail("11"), crumbLink("javascript:top.page('10','aa.en')", "Home") + crumbHere("Garden"));
}

TEST_P(BreadcrumbTest, AnAncestorThatIsOfflineIsPlainText) {
    page("aa.en").id(10).title("Home").offline().insert();
    page("aa.en.01").id(11).title("Garden").insert();
    EXPECT_EQ(trail("11"), "<span class=\"breadcrumb\">Home&nbsp;&gt; </span>" + crumbHere("Garden"));
}

TEST_P(BreadcrumbTest, ThePageItselfIsActiveEvenWhenItIsOffline) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).title("Garden").offline().insert();
    EXPECT_EQ(trail("11"), crumbLink("/tvx.asp?pageId=10", "Home") + crumbHere("Garden"));
}

TEST_P(BreadcrumbTest, TheDatesOfAnAncestorAreNotLookedAt) {
    page("aa.en").id(10).title("Home").dates("20200101", "20200102").insert();
    page("aa.en.01").id(11).title("Garden").insert();
    EXPECT_EQ(trail("11"), crumbLink("/tvx.asp?pageId=10", "Home") + crumbHere("Garden"));
}

TEST_P(BreadcrumbTest, TheTitleOfAFolderStandsInFrontOfTheNextCrumb) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).type("F").title("Plants").set("breadcrumb", "1").insert();
    page("aa.en.01.01").id(12).title("Roses").insert();
    EXPECT_EQ(trail("12"), crumbLink("/tvx.asp?pageId=10", "Home") + crumbHere("Plants&nbsp;-&nbsp;Roses"));
}

TEST_P(BreadcrumbTest, TheTitlesOfFoldersGatherUntilTheNextCrumbAndAreThenGone) {
    page("aa.en").id(10).type("f").title("Site").set("breadcrumb", "1").insert();
    page("aa.en.01").id(11).type("F").title("Plants").set("breadcrumb", "1").insert();
    page("aa.en.01.01").id(12).title("Roses").insert();
    page("aa.en.01.01.01").id(13).title("Red").insert();
    EXPECT_EQ(trail("13"), crumbLink("/tvx.asp?pageId=12", "Site&nbsp;-&nbsp;Plants&nbsp;-&nbsp;Roses") +
                               crumbHere("Red"));
}

TEST_P(BreadcrumbTest, AFolderStandsInFrontOfAnOfflineCrumbToo) {
    page("aa.en").id(10).type("F").title("Site").set("breadcrumb", "1").insert();
    page("aa.en.01").id(11).title("Garden").offline().insert();
    page("aa.en.01.01").id(12).title("Roses").insert();
    EXPECT_EQ(trail("12"),
              "<span class=\"breadcrumb\">Site&nbsp;-&nbsp;Garden&nbsp;&gt; </span>" + crumbHere("Roses"));
}

TEST_P(BreadcrumbTest, AFolderThatIsKeptOutAddsNothing) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).type("F").title("Plants").set("breadcrumb", "0").insert();
    page("aa.en.01.01").id(12).title("Roses").insert();
    EXPECT_EQ(trail("12"), crumbLink("/tvx.asp?pageId=10", "Home") + crumbHere("Roses"));
}

TEST_P(BreadcrumbTest, AFolderWhoseSettingIsNoNumberAddsNothing) {
    page("aa.en").id(10).type("F").title("Site").set("breadcrumb", "").insert();
    page("aa.en.01").id(11).type("F").title("Plants").set("breadcrumb", {}).insert();
    page("aa.en.01.01").id(12).type("F").title("Beds").set("breadcrumb", "yes").insert();
    page("aa.en.01.01.01").id(13).title("Roses").insert();
    EXPECT_EQ(trail("13"), crumbHere("Roses"));
}

TEST_P(BreadcrumbTest, TheSettingOfAPageThatIsNoFolderHasNoEffect) {
    page("aa.en").id(10).title("Home").set("breadcrumb", "0").insert();
    page("aa.en.01").id(11).title("Garden").set("breadcrumb", "0").insert();
    EXPECT_EQ(trail("11"), crumbLink("/tvx.asp?pageId=10", "Home") + crumbHere("Garden"));
}

TEST_P(BreadcrumbTest, AFolderItselfHasNoCrumbOfItsOwn) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).type("F").title("Plants").set("breadcrumb", "1").insert();
    EXPECT_EQ(trail("11"),
              "<a class=\"breadcrumb\" href=\"/tvx.asp?pageId=10\">Home</a>"
              "<span class=\"breadcrumb\">");
}

TEST_P(BreadcrumbTest, ATrailOfFoldersAloneIsEmpty) {
    page("aa.en").id(10).type("F").title("Site").set("breadcrumb", "1").insert();
    EXPECT_EQ(trail("10"), "");
}

TEST_P(BreadcrumbTest, TitlesAreEncoded) {
    page("aa.en").id(10).title("R&D <\"x\">").insert();
    page("aa.en.01").id(11).type("F").title("A&B").set("breadcrumb", "1").insert();
    page("aa.en.01.01").id(12).title("1 < 2").insert();
    EXPECT_EQ(trail("12"), crumbLink("/tvx.asp?pageId=10", "R&amp;D &lt;&quot;x&quot;&gt;") +
                               crumbHere("A&amp;B&nbsp;-&nbsp;1 &lt; 2"));
}

TEST_P(BreadcrumbTest, AnAncestorThatIsNotPublishedIsPassedOver) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).title("Garden").insertInDesignOnly();
    page("aa.en.01.01").id(12).title("Roses").insert();
    EXPECT_EQ(trail("12"), crumbLink("/tvx.asp?pageId=10", "Home") + crumbHere("Roses"));
}

TEST_P(BreadcrumbTest, APageThatIsNotPublishedHasTheTrailOfItsAncestors) {
    page("aa.en").id(10).title("Home").insert();
    page("aa.en.01").id(11).title("Garden").insertInDesignOnly();
    EXPECT_EQ(trail("11"),
              "<a class=\"breadcrumb\" href=\"/tvx.asp?pageId=10\">Home</a><span class=\"breadcrumb\">");
}

TEST_P(BreadcrumbTest, ANodeShorterThanARootHasNoTrail) {
    page("aa").id(10).title("Short").insert();
    EXPECT_EQ(trail("10"), "");
    EXPECT_EQ(trail("aa"), "");
}

TEST_P(BreadcrumbTest, BadIdentifiersHaveNoTrail) {
    page("aa.fr.01").id(10).title("Garden").insert();
    for (const std::string& bad : badIdentifiers()) EXPECT_EQ(trail(bad), "") << bad.substr(0, 40);
}

TEST_P(BreadcrumbTest, ADatabaseThatFailsIsAnErrorWithTheOperationInFront) {
    page("aa.en").id(10).insert();
    drop("TORVEX_PAGES_LIVE");
    EXPECT_TRUE(errorOf([&] { trail("10"); }).starts_with(chain({"getBreadcrumb !"})));
}

}  // namespace
}  // namespace torvex::test
