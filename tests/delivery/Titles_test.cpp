#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class TitlesTest : public SiteTest {};
INSTANTIATE_TEST_SUITE_P(Engines, TitlesTest, bothEngines(), engineName);

TEST_P(TitlesTest, PageIdAndNodeIdConvertByTheDesignTables) {
    page("aa.en.01").id(12).insertInDesignOnly();
    EXPECT_EQ(server().getPageId("aa.en.01"), 12);
    EXPECT_EQ(server().getNodeId(12), "aa.en.01");
}

TEST_P(TitlesTest, APageThatIsOnlyLiveConvertsToNothing) {
    page("aa.en.01").id(12).insertInLiveOnly();
    EXPECT_EQ(server().getPageId("aa.en.01"), -1);
    EXPECT_EQ(server().getNodeId(12), "");
}

TEST_P(TitlesTest, GetPageIdTrimsItsArgument) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(server().getPageId("  aa.en.01 "), 12);
}

TEST_P(TitlesTest, GetPageIdIgnoresCase) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(server().getPageId("AA.EN.01"), 12);
}

TEST_P(TitlesTest, GetPageIdOfABlankTextIsNoPage) {
    page("").id(12).insert();
    EXPECT_EQ(server().getPageId(""), -1);
    EXPECT_EQ(server().getPageId("   "), -1);
}

TEST_P(TitlesTest, GetPageIdTakesAQuoteAsAnyOtherCharacter) {
    page("aa.en.01").id(12).insert();
    EXPECT_EQ(server().getPageId("aa.en.01' or '1'='1"), -1);
}

TEST_P(TitlesTest, TheTitleComesFromTheLivePage) {
    page("aa.en.01").id(12).title("Design").insertInDesignOnly();
    page("aa.en.01").id(12).title("Live").insertInLiveOnly();
    EXPECT_EQ(server().getPageTitle("12"), "Live");
    EXPECT_EQ(server().getPageTitle("aa.en.01"), "Live");
}

TEST_P(TitlesTest, AnIdentifierWithBlanksAroundItIsTheSamePage) {
    page("aa.en.01").id(12).title("Twelve").insert();
    EXPECT_EQ(server().getPageTitle("  12 "), "Twelve");
    EXPECT_EQ(server().getPageTitle(" AA.en.01  "), "Twelve");
}

TEST_P(TitlesTest, APageThatIsNotLiveHasNoTitle) {
    page("aa.en.01").id(12).title("Design").insertInDesignOnly();
    EXPECT_EQ(server().getPageTitle("12"), "");
}

TEST_P(TitlesTest, AnUntitledPageShowsABracketedWordInItsLanguage) {
    page("aa.en.01").id(12).title("").insert();
    EXPECT_EQ(server().getPageTitle("12"), "[no title]");
}

TEST_P(TitlesTest, AnUntitledPageTakesTheWordOfItsOwnLanguage) {
    row("TORVEX_INTERFACE_LANGUAGES", {{"id", 3}, {"lang_id", "nl"}, {"lang_name", "Nederlands"}});
    connection().execute(
        "update TORVEX_INTERFACE_VOCAB set lang_vocab3 = 'naamloos' where lang_label = 2597");
    page("aa.nl.01").id(12).title("").insert();
    EXPECT_EQ(server().getPageTitle("12"), "[naamloos]");
}

TEST_P(TitlesTest, AnUntitledPageInALanguageWithoutWordsShowsEmptyBrackets) {
    page("aa.xx.01").id(12).title("").insert();
    EXPECT_EQ(server().getPageTitle("12"), "[]");
}

TEST_P(TitlesTest, APageWithoutATitleAtAllShowsTheSameWord) {
    page("aa.en.01").id(12).set("title", {}).insert();
    EXPECT_EQ(server().getPageTitle("12"), "[no title]");
}

TEST_P(TitlesTest, ANodeShorterThanARootHasNoTitle) {
    page("aa").id(12).title("Short").insert();
    EXPECT_EQ(server().getPageTitle("12"), "");
    EXPECT_EQ(server().getPageTitle("aa"), "");
}

TEST_P(TitlesTest, TheWebsiteTitleIsTrimmed) {
    siteLanguage("aa", "en", "  Our site ");
    EXPECT_EQ(server().getWebsiteTitle("aa", "en"), "Our site");
}

TEST_P(TitlesTest, TheWebsiteTitleIsFoundInAnyCaseAndWithBlanks) {
    siteLanguage("aa", "en", "Our site");
    EXPECT_EQ(server().getWebsiteTitle(" AA ", "En "), "Our site");
}

TEST_P(TitlesTest, AnUnknownSiteOrLanguageHasNoWebsiteTitle) {
    siteLanguage("aa", "en", "Our site");
    EXPECT_EQ(server().getWebsiteTitle("aa", "de"), "");
    EXPECT_EQ(server().getWebsiteTitle("bb", "en"), "");
    EXPECT_EQ(server().getWebsiteTitle("aa'", "en"), "");
}

TEST_P(TitlesTest, AWebsiteWithoutATitleHasAnEmptyOne) {
    row("TORVEX_SITES_LANGUAGES", {{"site", "aa"}, {"lang", "en"}});
    EXPECT_EQ(server().getWebsiteTitle("aa", "en"), "");
}

TEST_P(TitlesTest, AWordIsFoundByTheCodeOfItsLanguage) {
    word(9001, "Word");
    EXPECT_EQ(server().getVocab("en", 9001), "Word");
    EXPECT_EQ(server().getVocab("EN", 9001), "Word");
}

TEST_P(TitlesTest, AWordIsFoundByTheNumberOfItsColumn) {
    word(9001, "Word");
    connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab7 = 'Seven' where lang_label = 9001");
    EXPECT_EQ(server().getVocab("1", 9001), "Word");
    EXPECT_EQ(server().getVocab("7", 9001), "Seven");
}

TEST_P(TitlesTest, AWordIsTrimmed) {
    word(9001, "  Word ");
    EXPECT_EQ(server().getVocab("en", 9001), "Word");
}

TEST_P(TitlesTest, AnUnknownLanguageHasNoWords) {
    word(9001, "Word");
    EXPECT_EQ(server().getVocab("xx", 9001), "");
    EXPECT_EQ(server().getVocab("", 9001), "");
    EXPECT_EQ(server().getVocab("en'", 9001), "");
}

TEST_P(TitlesTest, AnUnknownLabelIsAnEmptyWord) {
    EXPECT_EQ(server().getVocab("en", 987654), "");
}

TEST_P(TitlesTest, AWordThatIsMissingInALanguageIsEmpty) {
    word(9001, "Word");
    EXPECT_EQ(server().getVocab("3", 9001), "");
}

TEST_P(TitlesTest, ANumberWithoutAColumnIsAnError) {
    for (const auto* number : {"99", "-5", "1.5", "99999999999999999999"}) {
        EXPECT_TRUE(errorOf([&] { server().getVocab(number, 1); }).starts_with(chain({"getVocab !"})))
            << number;
    }
}

TEST_P(TitlesTest, BadIdentifiersHaveNoTitle) {
    page("aa.en.01").id(12).title("Twelve").insert();
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(server().getPageTitle(bad), "") << bad.substr(0, 40);
        EXPECT_EQ(server().getPageId(bad), -1) << bad.substr(0, 40);
    }
    for (const double bad : {-5.0, 0.0, 1.5, 1e20, -1e300}) EXPECT_EQ(server().getNodeId(bad), "") << bad;
}

TEST_P(TitlesTest, AnObjectThatWasNeverConnectedFailsWithTheOperationInFront) {
    cServer unconnected(host.context());
    EXPECT_TRUE(errorOf([&] { unconnected.getPageId("aa.en"); }).starts_with(chain({"getPageId !"})));
    EXPECT_TRUE(errorOf([&] { unconnected.getNodeId(1); }).starts_with(chain({"getNodeId !"})));
    EXPECT_TRUE(errorOf([&] { unconnected.getPageTitle("1"); }).starts_with(chain({"getPageTitle !"})));
    EXPECT_TRUE(errorOf([&] { unconnected.getVocab("en", 1); }).starts_with(chain({"getVocab !"})));
}

}  // namespace
}  // namespace torvex::test
