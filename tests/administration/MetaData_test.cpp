#include <gmock/gmock.h>

#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class PageMetaDataTest : public RecordsTest {
  protected:
    /// Root 10, page 11, page 12 below it; the tags 1 "author" and 2 "keywords" of their site.
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en").id(10).insert();
        page("aa.en.01").id(11).insert();
        page("aa.en.01.01").id(12).insert();
        page("aa.en.99.01").id(19).insert();
        metaTag(1, "aa", "author");
        metaTag(2, "aa", "keywords");
        metaTag(3, "bb", "author");
    }

    void save(const std::string& value, bool inherited = false, const std::string& tag = "author",
              const std::string& page = "12") {
        manager().saveMetaData(page, tag, value, inherited);
    }
    /// "page|tag|inherited|value" of the design.
    std::vector<std::string> saved() {
        return rowsOf(
            "select metaData_pageId, metaData_id, metaData_inherited, metaData_value from "
            "TORVEX_PAGES_METADATA_DESIGN order by metaData_pageId, metaData_id");
    }
    static std::string author(const std::string& value) {
        return "<META NAME=\"author\" LANG=\"en\" CONTENT=\"" + value + "\">\r\n";
    }
    std::string html(const std::string& ident = "12") { return manager().getMetaDataHTML(ident); }
    /// "tag|name|value|inherited" for each row.
    std::vector<std::string> read(const std::string& ident, const std::string& mode = "L") {
        const Value list = manager().getMetaData(ident, mode);
        std::vector<std::string> lines;
        if (list.isEmpty()) return lines;
        EXPECT_EQ(list.grid().columns(), 5U);
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            std::string line = list.grid().at(0, row).toText();
            for (std::size_t column = 1; column < 4; ++column) {
                line += '|' + list.grid().at(column, row).toText();
            }
            lines.push_back(line);
        }
        return lines;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PageMetaDataTest, bothEngines(), engineName);

// ---- saveMetaData ----

TEST_P(PageMetaDataTest, AValueIsSavedInTheDesign) {
    save("O'Neil \xC3\xA9");
    save("roses", false, " 2 ", "AA.en.01 ");
    EXPECT_THAT(saved(), ElementsAre("11|2|0|roses", "12|1|0|O'Neil \xC3\xA9"));
    EXPECT_EQ(rowsOf("select * from TORVEX_PAGES_METADATA_LIVE").size(), 0U);
}

TEST_P(PageMetaDataTest, ALaterValueReplacesTheOneThatIsThere) {
    save("first");
    save("second");
    EXPECT_THAT(saved(), ElementsAre("12|1|0|second"));
}

TEST_P(PageMetaDataTest, AnInheritingPageHasNoValueOfItsOwn) {
    save("own");
    save("this one doesn't count", true);
    EXPECT_THAT(saved(), ElementsAre("12|1|1|"));
    save("own again");
    EXPECT_THAT(saved(), ElementsAre("12|1|0|own again"));
}

TEST_P(PageMetaDataTest, AnEmptyValueTakesTheRowAway) {
    save("own");
    save("");
    EXPECT_THAT(saved(), IsEmpty());
    save("");
    EXPECT_THAT(saved(), IsEmpty());
}

TEST_P(PageMetaDataTest, ThreeSignsAreACarriageReturn) {
    save("a###b####c");
    EXPECT_THAT(saved(), ElementsAre("12|1|0|a\rb\r#c"));
}

TEST_P(PageMetaDataTest, AValueHasAThousandCharacters) {
    std::string given;
    for (int i = 0; i < 1010; ++i) given += "\xC3\xA9";
    save(given);
    EXPECT_EQ(cell("select length(metaData_value) from TORVEX_PAGES_METADATA_DESIGN"), "1000");
}

TEST_P(PageMetaDataTest, APageOfTheSystemBranchHasNoMetaData) {
    save("x", false, "author", "19");
    save("x", false, "author", "aa.en.99.01");
    EXPECT_THAT(saved(), IsEmpty());
}

TEST_P(PageMetaDataTest, WhatIsNoPageGetsNoValue) {
    for (const std::string& ident : badIdentifiers()) save("x", false, "author", ident);
    EXPECT_THAT(saved(), IsEmpty());
}

TEST_P(PageMetaDataTest, WhatIsNoTagOfTheSiteGetsNoValue) {
    for (const auto* tag : {"", "  ", "nothing", "3", "0", "-1", "1.5", "99999999999999999999"}) {
        save("x", false, tag);
    }
    EXPECT_THAT(saved(), IsEmpty());
}

TEST_P(PageMetaDataTest, AFailureOfSavingIsAnError) {
    drop("TORVEX_PAGES_METADATA_DESIGN");
    EXPECT_THAT(errorOf([&] { save("x"); }), StartsWith(chain({"saveMetaData !"})));
    drop("TORVEX_METADATA");
    EXPECT_THAT(errorOf([&] { save("x"); }), StartsWith(chain({"saveMetaData !", "getMetaTagId !"})));
}

// ---- getMetaData ----

TEST_P(PageMetaDataTest, AllTagsOfTheSiteAreListedWithThePagesValues) {
    metaData(12, 1, "Ann");
    EXPECT_THAT(read("12"), ElementsAre("1|author|Ann|0", "2|keywords||0"));
    EXPECT_THAT(read(" AA.en.01.01", "x"), ElementsAre("1|author|Ann|0", "2|keywords||0"));
}

TEST_P(PageMetaDataTest, TheDesignHasValuesOfItsOwn) {
    metaData(12, 1, "Ann");
    save("Bob");
    EXPECT_THAT(read("12", "d"), ElementsAre("1|author|Bob|0", "2|keywords||0"));
}

TEST_P(PageMetaDataTest, AnInheritedValueIsNotShown) {
    row("TORVEX_PAGES_METADATA_LIVE",
        {{"metaData_pageId", 12}, {"metaData_id", 1}, {"metaData_inherited", 1}, {"metaData_value", "own"}});
    metaData(11, 1, "Ann");
    EXPECT_THAT(read("12"), ElementsAre("1|author||1", "2|keywords||0"));
}

TEST_P(PageMetaDataTest, APageOfTheSystemBranchHasTagsWithoutValues) {
    metaData(19, 1, "Ann");
    EXPECT_THAT(read("19"), ElementsAre("1|author||0", "2|keywords||0"));
}

TEST_P(PageMetaDataTest, ANodeThatIsNoPageHasTagsWithoutValues) {
    EXPECT_THAT(read("aa.en.77"), ElementsAre("1|author||0", "2|keywords||0"));
}

TEST_P(PageMetaDataTest, WithoutANodeOrTagsThereIsNothing) {
    for (const auto* ident : {"", "77", "aa", "cc.en"}) EXPECT_TRUE(manager().getMetaData(ident).isEmpty());
}

TEST_P(PageMetaDataTest, AFailureOfReadingIsAnError) {
    drop("TORVEX_PAGES_METADATA_LIVE");
    EXPECT_THAT(errorOf([&] { read("12"); }), StartsWith(chain({"getMetaData  !"})));
    EXPECT_THAT(errorOf([&] { html(); }), StartsWith(chain({"getMetaDataHTML  !"})));
}

// ---- getMetaDataHTML ----

TEST_P(PageMetaDataTest, TheCharsetOfTheLanguageComesFirst) {
    connection().execute("update TORVEX_LANGUAGES set charset_id = 3 where lang = 'en'");
    metaData(12, 1, "Ann");
    EXPECT_EQ(html(), "<META HTTP-EQUIP=\"Content-Type\" CONTENT=\"text/html; CHARSET=windows-1252\">\r\n" +
                          author("Ann"));
}

class MetaLinesTest : public PageMetaDataTest {
  protected:
    /// Without a line for the charset.
    void SetUp() override {
        PageMetaDataTest::SetUp();
        if (!HasFatalFailure()) connection().execute("delete from TORVEX_LANGUAGES");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MetaLinesTest, bothEngines(), engineName);

TEST_P(MetaLinesTest, EveryValueIsALine) {
    metaData(12, 1, "Ann");
    metaData(12, 2, "roses");
    EXPECT_EQ(html(), author("Ann") + "<META NAME=\"keywords\" LANG=\"en\" CONTENT=\"roses\">\r\n");
    EXPECT_EQ(html(" aa.EN.01.01 "), html());
}

TEST_P(MetaLinesTest, LineEndsBecomeBlanks) {
    metaData(12, 1, "a\r\nb\r\nc");
    EXPECT_EQ(html(), author("a b c"));
}

TEST_P(MetaLinesTest, AnInheritedValueComesFromTheNearestAncestorThatHasItsOwn) {
    inheritedMetaData(12, 1);
    inheritedMetaData(11, 1);
    metaData(10, 1, "Bob");
    EXPECT_EQ(html(), author("Bob"));
    connection().execute("delete from TORVEX_PAGES_METADATA_LIVE where metaData_pageId = 11");
    metaData(11, 1, "Ann");
    EXPECT_EQ(html(), author("Ann"));
}

TEST_P(MetaLinesTest, AnAncestorWithoutARowIsPassedOver) {
    inheritedMetaData(12, 1);
    metaData(10, 1, "Bob");
    EXPECT_EQ(html(), author("Bob"));
}

TEST_P(MetaLinesTest, AnInheritedValueThatNoAncestorHasIsNoLine) {
    inheritedMetaData(12, 1);
    EXPECT_EQ(html(), "");
    inheritedMetaData(11, 1);
    inheritedMetaData(10, 1);
    EXPECT_EQ(html(), "");
}

TEST_P(MetaLinesTest, AnEmptyValueOfAnAncestorIsTheValue) {
    inheritedMetaData(12, 1);
    metaData(11, 1, "");
    metaData(10, 1, "Bob");
    EXPECT_EQ(html(), "");
}

TEST_P(MetaLinesTest, OnlyAncestorsCount) {
    page("aa.en.02").id(13).insert();
    page("aa.de").id(14).insert();
    inheritedMetaData(12, 1);
    metaData(13, 1, "Bob");
    metaData(14, 1, "Bob");
    EXPECT_EQ(html(), "");
}

TEST_P(MetaLinesTest, APageOfTheSystemBranchHasNone) {
    metaData(19, 1, "Ann");
    EXPECT_EQ(html("19"), "");
}

TEST_P(MetaLinesTest, WhatIsNoPageHasNone) {
    for (const std::string& ident : badIdentifiers()) EXPECT_EQ(html(ident), "");
}

}  // namespace
}  // namespace torvex::test
