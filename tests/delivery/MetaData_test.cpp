#include "support/SiteTest.h"

namespace torvex::test {
namespace {

class MetaDataTest : public SiteTest {
  protected:
    /// Root 10, page 11, page 12 below it, and the tag 1 "author".
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).insert();
        page("aa.en.01").id(11).insert();
        page("aa.en.01.01").id(12).insert();
        metaTag(1, "aa", "author");
    }

    static std::string author(const std::string& value) {
        return "<META NAME=\"author\" LANG=\"en\" CONTENT=\"" + value + "\">\r\n";
    }
    std::string html(const std::string& ident = "12") { return server().getMetaDataHTML(ident); }
};
INSTANTIATE_TEST_SUITE_P(Engines, MetaDataTest, bothEngines(), engineName);

TEST_P(MetaDataTest, AValueIsATagInTheLanguageOfThePage) {
    metaData(12, 1, "Ann");
    EXPECT_EQ(html(), author("Ann"));
    EXPECT_EQ(html(" AA.en.01.01"), author("Ann"));
}

TEST_P(MetaDataTest, TheCharsetOfTheLanguageComesFirst) {
    language("en", 3);
    metaData(12, 1, "Ann");
    EXPECT_EQ(html(), "<META HTTP-EQUIP=\"Content-Type\" content=\"text/html; charset=windows-1252\">\r\n" +
                          author("Ann"));
}

TEST_P(MetaDataTest, WithoutAnyValueTheCharsetStandsAlone) {
    language("en", 1);
    EXPECT_EQ(html(), "<META HTTP-EQUIP=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n");
}

TEST_P(MetaDataTest, APageWithoutMetaDataOrCharsetHasNoText) {
    EXPECT_EQ(html(), "");
}

TEST_P(MetaDataTest, EveryValueOfThePageIsATag) {
    metaTag(2, "aa", "keywords");
    metaData(12, 1, "Ann");
    metaData(12, 2, "roses");
    EXPECT_EQ(html(), author("Ann") + "<META NAME=\"keywords\" LANG=\"en\" CONTENT=\"roses\">\r\n");
}

TEST_P(MetaDataTest, AnEmptyValueIsNoTag) {
    metaData(12, 1, "");
    EXPECT_EQ(html(), "");
}

TEST_P(MetaDataTest, CarriageReturnsBecomeBlanks) {
    metaData(12, 1, "a\r\nb\rc");
    EXPECT_EQ(html(), author("a \nb c"));
}

TEST_P(MetaDataTest, AnInheritedValueComesFromTheParent) {
    inheritedMetaData(12, 1);
    metaData(11, 1, "Ann");
    metaData(10, 1, "Bob");
    EXPECT_EQ(html(), author("Ann"));
}

TEST_P(MetaDataTest, AnInheritedValueComesFromTheNearestAncestorThatHasItsOwn) {
    inheritedMetaData(12, 1);
    inheritedMetaData(11, 1);
    metaData(10, 1, "Bob");
    EXPECT_EQ(html(), author("Bob"));
}

TEST_P(MetaDataTest, AnEmptyValueOfAnAncestorEndsTheWay) {
    inheritedMetaData(12, 1);
    metaData(11, 1, "");
    metaData(10, 1, "Bob");
    EXPECT_EQ(html(), "");
}

TEST_P(MetaDataTest, AnAncestorWithoutTheTagEndsTheWay) {
    inheritedMetaData(12, 1);
    metaData(10, 1, "Bob");
    EXPECT_EQ(html(), "");
}

TEST_P(MetaDataTest, AnInheritedValueThatNobodyHasIsNoTag) {
    inheritedMetaData(12, 1);
    inheritedMetaData(11, 1);
    inheritedMetaData(10, 1);
    EXPECT_EQ(html(), "");
}

TEST_P(MetaDataTest, AnAncestorThatIsNoPageEndsTheWay) {
    page("aa.en.02.01").id(13).insert();
    inheritedMetaData(13, 1);
    metaData(10, 1, "Bob");
    EXPECT_EQ(html("13"), "");
}

TEST_P(MetaDataTest, TheOwnValueOfAnInheritingPageIsNotShown) {
    row("TORVEX_PAGES_METADATA_LIVE",
        {{"metaData_pageId", 12}, {"metaData_id", 1}, {"metaData_inherited", 1}, {"metaData_value", "own"}});
    metaData(11, 1, "Ann");
    EXPECT_EQ(html(), author("Ann"));
}

TEST_P(MetaDataTest, APageOfTheSystemBranchHasNoMetaData) {
    language("en", 1);
    page("aa.en.99").id(20).insert();
    page("aa.en.01.99.01").id(21).insert();
    metaData(20, 1, "Ann");
    metaData(21, 1, "Ann");
    EXPECT_EQ(html("20"), "");
    EXPECT_EQ(html("21"), "");
}

TEST_P(MetaDataTest, BadIdentifiersHaveNoMetaData) {
    language("en", 1);
    for (const std::string& bad : badIdentifiers()) EXPECT_EQ(html(bad), "") << bad.substr(0, 40);
}

TEST_P(MetaDataTest, ADatabaseThatFailsIsAnErrorWithTheOperationInFront) {
    drop("TORVEX_PAGES_METADATA_LIVE");
    EXPECT_TRUE(errorOf([&] { html(); }).starts_with(chain({"getMetaDataHTML  !"})));
}

TEST_P(MetaDataTest, TheCharsetsFailureTellsBothLevels) {
    drop("TORVEX_LANGUAGES");
    EXPECT_TRUE(errorOf([&] { html(); }).starts_with(chain({"getMetaDataHTML  !", "getCharsetLabel !"})));
}

// The tags of a site

TEST_P(MetaDataTest, TheTagsOfASiteComeByName) {
    metaTag(2, "aa", "Zeal");
    metaTag(3, "aa", "abstract");
    metaTag(4, "bb", "other");
    const Value tags = server().getMetaTags("AA");
    ASSERT_TRUE(tags.isGrid());
    ASSERT_EQ(tags.grid().columns(), 3);
    ASSERT_EQ(tags.grid().rows(), 3);
    EXPECT_EQ(tags.grid().at(0, 0), Value(3));
    EXPECT_EQ(tags.grid().at(1, 0), Value("abstract"));
    EXPECT_EQ(tags.grid().at(2, 0), Value("Of abstract"));
    EXPECT_EQ(tags.grid().at(1, 1), Value("author"));
    EXPECT_EQ(tags.grid().at(1, 2), Value("Zeal"));
}

TEST_P(MetaDataTest, ASiteWithoutTagsGivesNothing) {
    EXPECT_TRUE(server().getMetaTags("bb").isEmpty());
    EXPECT_TRUE(server().getMetaTags("aa' or '1'='1").isEmpty());
    EXPECT_TRUE(server().getMetaTags("").isEmpty());
}

TEST_P(MetaDataTest, ADatabaseThatFailsIsAnErrorOfTheTags) {
    cServer unconnected(host.context());
    EXPECT_TRUE(errorOf([&] { unconnected.getMetaTags("aa"); }).starts_with(chain({"getMetaTags  !"})));
}

}  // namespace
}  // namespace torvex::test
