#include "records/PageIdentity.h"

#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class PageIdentityTest : public SiteTest {};
INSTANTIATE_TEST_SUITE_P(Engines, PageIdentityTest, bothEngines(), engineName);

TEST_P(PageIdentityTest, ANumberIsTheNumberAndTheNodeIsLookedUp) {
    page("aa.en.01").id(12).insert();
    const PageIdentity found = identify(connection(), "  12 ");
    EXPECT_EQ(found.pageId, 12);
    EXPECT_EQ(found.nodeId, "aa.en.01");
    EXPECT_TRUE(found.isValid());
}

TEST_P(PageIdentityTest, AnythingElseIsTheNodeAndTheNumberIsLookedUp) {
    page("aa.en.01").id(12).insert();
    const PageIdentity found = identify(connection(), " AA.EN.01 ");
    EXPECT_EQ(found.pageId, 12);
    EXPECT_EQ(found.nodeId, "aa.en.01");
}

TEST_P(PageIdentityTest, APageThatIsKnownByItsNumberGetsItsNode) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(identify(connection(), PageId{12}).pageId, 12);
    EXPECT_EQ(identify(connection(), PageId{12}).nodeId, "aa.en.01");
    EXPECT_EQ(nodeIdFrom(connection(), PageId{12}), "aa.en.01");
    EXPECT_FALSE(identify(connection(), PageId{13}).isValid());
    EXPECT_FALSE(identify(connection(), PageId{-1}).isValid());
}

TEST_P(PageIdentityTest, AChangeShowsAsSoonAsANewStateIsRead) {
    page("aa.en.01").id(12).insert();
    {
        const db::ReadScope scope(connection());
        EXPECT_EQ(nodeIdOf(connection(), 12), "aa.en.01");
    }
    connection().execute("update TORVEX_PAGES_DESIGN set nodeId = 'aa.en.02' where pageId = 12");
    EXPECT_EQ(nodeIdOf(connection(), 12), "aa.en.02");
    const db::ReadScope scope(connection());
    EXPECT_EQ(nodeIdOf(connection(), 12), "aa.en.02");
}

TEST_P(PageIdentityTest, WhatIsNoPageIsNotValid) {
    page("aa.en.01").id(12).insert();
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_FALSE(identify(connection(), bad).isValid()) << bad.substr(0, 40);
    }
}

TEST_P(PageIdentityTest, ANodeShorterThanARootIsNotValid) {
    page("aa").id(12).insert();
    EXPECT_FALSE(identify(connection(), "12").isValid());
}

TEST_P(PageIdentityTest, ATextThatIsTooLongForANodeIsNoPageAndIsNotWalked) {
    std::string deep = "aa.en";
    while (deep.size() <= PageIdentity::longestNode) deep += ".01";
    page(deep).id(12).insert();
    EXPECT_EQ(identify(connection(), deep).nodeId, "");
    EXPECT_EQ(nodeIdFrom(connection(), deep), "");
    EXPECT_EQ(pageIdFrom(connection(), deep), -1);
}

TEST_P(PageIdentityTest, ADeepNodeIsAPage) {
    std::string deep = "aa.en";
    while (deep.size() + PageIdentity::levelLength <= PageIdentity::longestNode) deep += ".01";
    page(deep).id(12).insert();
    EXPECT_TRUE(identify(connection(), deep).isValid());
}

TEST_P(PageIdentityTest, FailuresTellWhichNameWasLookedUp) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_TRUE(errorOf([&] { server().getPage("12"); }).starts_with(chain({"getPage!", "getNodeId !"})));
    EXPECT_TRUE(errorOf([&] { server().getPage("aa.en"); }).starts_with(chain({"getPage!", "getPageId !"})));
    EXPECT_TRUE(errorOf([&] { server().isPage("12"); }).starts_with(chain({"isPage !", "getNodeId !"})));
    EXPECT_TRUE(errorOf([&] {
                    server().fillBodies("aa.en", "");
                }).starts_with(chain({"fillBodies !", "getPageId !"})));
    EXPECT_TRUE(errorOf([&] {
                    server().getTemplateFile("aa.en");
                }).starts_with(chain({"getTemplateFile !", "getPageId !"})));
    EXPECT_TRUE(errorOf([&] { server().logPage("12"); }).starts_with(chain({"logPage!", "getNodeId !"})));
}

TEST_P(PageIdentityTest, TheFailureOfANumberTellsSoAsWell) {
    drop("TORVEX_PAGES_DESIGN");
    for (const auto& error : {errorOf([&] { identify(connection(), PageId{12}); }),
                              errorOf([&] { nodeIdFrom(connection(), PageId{12}); })}) {
        EXPECT_TRUE(error.starts_with(chain({"getNodeId !"}))) << error;
    }
}

TEST(PageIdentity, AModeIsTheDesignOnlyByItsLetterButForBodies) {
    for (const char* mode : {"D", " d "}) {
        EXPECT_EQ(twinOf(mode), Twin::Design);
        EXPECT_EQ(twinOfBody(mode), Twin::Design);
    }
    for (const char* mode : {"L", " l "}) {
        EXPECT_EQ(twinOf(mode), Twin::Live);
        EXPECT_EQ(twinOfBody(mode), Twin::Live);
    }
    for (const char* mode : {"", "x", "DL"}) {
        EXPECT_EQ(twinOf(mode), Twin::Live);
        EXPECT_EQ(twinOfBody(mode), Twin::Design);
    }
}

TEST(PageIdentity, ANodeHasASiteALanguageAndAParent) {
    EXPECT_EQ(siteOf("aa.en.01.02"), "aa");
    EXPECT_EQ(langOf("aa.en.01.02"), "en");
    EXPECT_EQ(parentOf("aa.en.01.02"), "aa.en.01");
}

TEST(PageIdentity, AShortNodeHasWhatThereIs) {
    EXPECT_EQ(siteOf("a"), "a");
    EXPECT_EQ(siteOf(""), "");
    EXPECT_EQ(langOf("aa"), "");
    EXPECT_EQ(langOf("aa."), "");
    EXPECT_EQ(langOf("aa.e"), "e");
    EXPECT_EQ(parentOf("aa.en"), "aa");
    EXPECT_EQ(parentOf("aa"), "");
    EXPECT_EQ(parentOf(""), "");
}

TEST(PageIdentity, OnlyAModeOfDesignIsTheDesign) {
    EXPECT_EQ(twinOf("D"), Twin::Design);
    EXPECT_EQ(twinOf(" d "), Twin::Design);
    EXPECT_EQ(twinOf("L"), Twin::Live);
    EXPECT_EQ(twinOf(""), Twin::Live);
    EXPECT_EQ(twinOf("DESIGN"), Twin::Live);
}

TEST(PageIdentity, LevelsAreCountedFromTheRoot) {
    EXPECT_EQ(levelsOf("aa.en"), 1U);
    EXPECT_EQ(levelsOf("aa.en.01"), 2U);
    EXPECT_EQ(levelsOf("aa.en.01.02"), 3U);
    EXPECT_EQ(levelsOf(""), 0U);
}

TEST_P(PageIdentityTest, ARangeHoldsWhatBeginsWithAText) {
    for (const auto* node :
         {"aa.en", "aa.en.01", "aa.en.01.01", "aa.en.01.99", "aa.en.02", "aa.eo", "aa.ez.01"}) {
        page(node).insert();
    }
    const auto found = [this](const std::string& prefix) {
        std::string nodes;
        auto rows = connection().query(
            "select nodeId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ? order by nodeId",
            {prefix, endOfPrefix(prefix)});
        while (rows.next()) nodes += rows.text("nodeId") + " ";
        return nodes;
    };
    EXPECT_EQ(found("aa.en.01"), "aa.en.01 aa.en.01.01 aa.en.01.99 ");
    EXPECT_EQ(found("AA.EN"), "aa.en aa.en.01 aa.en.01.01 aa.en.01.99 aa.en.02 ");
    EXPECT_EQ(found("aa.ez"), "aa.ez.01 ");
    EXPECT_EQ(found("AA.EZ"), "aa.ez.01 ");
    EXPECT_EQ(found("aa.en.99"), "");
}

}  // namespace
}  // namespace torvex::test
