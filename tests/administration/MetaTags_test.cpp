#include <gmock/gmock.h>

#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class MetaTagsTest : public RecordsTest {
  protected:
    /// Page 12 "aa.en.01", and the site "aa" with the tags 1 "author" and 2 "company".
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        site("bb");
        page("aa.en.01").id(12).insert();
        page("bb.en.01").id(22).insert();
        metaTag(1, "aa", "author");
        metaTag(2, "aa", "company");
        metaTag(3, "bb", "company");
    }

    std::string remove(const std::string& ident, int advId = 0, const std::string& site = "aa") {
        return manager().deleteMetaTag(site, ident, advId);
    }
    void searchPage(PageId pageId, const std::string& properties) {
        row("TORVEX_SEARCH", {{"search_pageId", pageId}, {"search_properties", properties}});
    }
    std::string propertiesOf(int pageId) {
        return cell("select search_properties from TORVEX_SEARCH where search_pageId = " +
                    std::to_string(pageId));
    }
    void values(PageId pageId, int id) {
        for (const auto* twin : {"DESIGN", "LIVE"}) {
            row(std::string("TORVEX_PAGES_METADATA_") + twin,
                {{"metaData_pageId", pageId}, {"metaData_id", id}, {"metaData_value", "x"}});
        }
    }
    std::vector<std::string> tags() {
        return rowsOf(
            "select metaData_site, metaData_name, metaData_description from TORVEX_METADATA order by "
            "metaData_id");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MetaTagsTest, bothEngines(), engineName);

// ---- Reading ----

TEST_P(MetaTagsTest, ANameIsTakenInItsSite) {
    EXPECT_EQ(manager().checkMetadata("aa", 0, "  COMPANY "), "1");
    EXPECT_EQ(manager().checkMetadata("aa", 2, "company"), "0");
    EXPECT_EQ(manager().checkMetadata("aa", 1, "company"), "1");
    EXPECT_EQ(manager().checkMetadata("aa", 0, "subject"), "0");
    EXPECT_EQ(manager().checkMetadata("cc", 0, "company"), "0");
}

TEST_P(MetaTagsTest, TheListHasTheTagsOfASiteByName) {
    metaTag(4, "aa", "Board");
    const Value list = manager().getMetaTags("aa");
    ASSERT_TRUE(list.isGrid());
    const ResultGrid& grid = list.grid();
    ASSERT_EQ(grid.rows(), 3U);
    ASSERT_EQ(grid.columns(), 4U);
    EXPECT_EQ(grid.at(0, 1), Value(4));
    EXPECT_EQ(grid.at(1, 1), Value("Board"));
    EXPECT_EQ(grid.at(2, 1), Value("Of Board"));
    EXPECT_TRUE(manager().getMetaTags("cc").isEmpty());
}

TEST_P(MetaTagsTest, ATagIsFoundByItsNameInItsSite) {
    EXPECT_EQ(manager().getMetaTagId("aa", "Company"), 2);
    EXPECT_EQ(manager().getMetaTagId("bb", "company"), 3);
    EXPECT_EQ(manager().getMetaTagId("bb", "author"), 0);
    EXPECT_EQ(manager().getMetaTagName(2), "company");
    EXPECT_EQ(manager().getMetaTagName(99), "");
}

// ---- saveMetaTag ----

TEST_P(MetaTagsTest, SavingANewNameAddsATag) {
    manager().saveMetaTag("aa", "O'Neil's \xC3\xA9tude", "Who");
    EXPECT_THAT(tags(), SizeIs(4));
    EXPECT_EQ(tags().back(), "aa|O'Neil's \xC3\xA9tude|Who");
}

TEST_P(MetaTagsTest, SavingAKnownNameDescribesTheTag) {
    manager().saveMetaTag("aa", "COMPANY", "The firm");
    EXPECT_THAT(tags(), ElementsAre("aa|author|Of author", "aa|company|The firm", "bb|company|Of company"));
}

TEST_P(MetaTagsTest, ASiteThatIsNotThereGetsNoTag) {
    const auto before = everything();
    for (const auto* site : {"cc", "", "a", "aaa"}) manager().saveMetaTag(site, "topic", "");
    EXPECT_TRUE(everything() == before);
}

TEST_P(MetaTagsTest, TwoSessionsThatAddATagAtOnceAddOne) {
    beforeTransaction([&] { manager().saveMetaTag("aa", "topic", "second"); });
    manager().saveMetaTag("aa", "topic", "first");
    EXPECT_THAT(rowsOf("select metaData_description from TORVEX_METADATA where metaData_name = 'topic'"),
                ElementsAre("first"));
}

TEST_P(MetaTagsTest, ATagThatCantBeSavedIsAnError) {
    const auto before = everything();
    for (int step = 1;; ++step) {
        failing().reset(step);
        std::string error;
        try {
            manager().saveMetaTag("aa", "topic", "What");
        } catch (const Error& caught) {
            error = caught.what();
        }
        const bool failed = failing().steps >= step;
        failing().reset(0);
        if (!failed) break;
        EXPECT_THAT(error, StartsWith(chain({"saveMetaTag !"})));
        ASSERT_TRUE(everything() == before) << step;
    }
    EXPECT_EQ(tags().back(), "aa|topic|What");
}

// ---- deleteMetaTag ----

TEST_P(MetaTagsTest, ATagGoesWithItsValuesOfAllPages) {
    values(12, 1);
    values(12, 2);
    values(22, 3);
    EXPECT_EQ(remove("2", 120), "");
    EXPECT_THAT(tags(), ElementsAre("aa|author|Of author", "bb|company|Of company"));
    for (const auto* twin : {"DESIGN", "LIVE"}) {
        EXPECT_THAT(rowsOf(std::string("select metaData_id from TORVEX_PAGES_METADATA_") + twin +
                           " order by metaData_id"),
                    ElementsAre("1", "3"));
    }
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||120|delete|Metadata \"company\" has been removed"));
}

TEST_P(MetaTagsTest, ATagGoesByItsNameToo) {
    EXPECT_EQ(remove("  COMPANY ", 0, " AA "), "");
    EXPECT_THAT(tags(), ElementsAre("aa|author|Of author", "bb|company|Of company"));
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(MetaTagsTest, ItsNameLeavesTheSearchPagesOfItsSite) {
    page("aa.de.01").id(13).insert();
    searchPage(12, " topic,Company,author2 ");
    searchPage(13, "topic");
    searchPage(22, "company");
    searchPage(99, "company");
    EXPECT_EQ(remove("2"), "");
    EXPECT_EQ(propertiesOf(12), "topic,author2");
    EXPECT_EQ(propertiesOf(13), "topic");
    EXPECT_EQ(propertiesOf(22), "company") << "of another site";
    EXPECT_EQ(propertiesOf(99), "company") << "of no site";
}

TEST_P(MetaTagsTest, AReservedNameStaysInTheSearchPages) {
    metaTag(5, "aa", "Keywords");
    searchPage(12, "Keywords,topic");
    EXPECT_EQ(remove("keywords"), "");
    EXPECT_EQ(propertiesOf(12), "Keywords,topic");
    EXPECT_EQ(cell("select metaData_name from TORVEX_METADATA where metaData_id = 5"), "");
}

TEST_P(MetaTagsTest, ATagThatIsNotThereIsRefused) {
    searchPage(12, "nothing,,company");
    for (const auto* ident :
         {"", "  ", "nothing", "0", "-2", "99", "2.5", "3", "99999999999999999999", "' or 1=1 --"}) {
        SCOPED_TRACE(ident);
        expectRefusal("-1", [&] { return remove(ident, 120); });
    }
}

TEST_P(MetaTagsTest, ATagThatAnotherAuthorHasOpenStays) {
    searchPage(12, "company");
    hold("TORVEX_METADATA", "metaData_id", 2, bertsSession);
    expectRefusal("-3", [&] { return remove("company", 120); });
}

TEST_P(MetaTagsTest, AFailureOfARemovalChangesNothing) {
    values(12, 2);
    searchPage(12, "company,topic");
    failEverywhere("", "-99", [&] { return remove("company", 120); });
}

TEST_P(MetaTagsTest, TwoSessionsThatRemoveATagAtOnceRemoveItOnce) {
    std::string second;
    beforeTransaction([&] { second = remove("company"); });
    EXPECT_EQ(remove("company"), "-1");
    EXPECT_EQ(second, "");
}

TEST_P(MetaTagsTest, FailuresOfReadingHaveTheOperationsLine) {
    drop("TORVEX_METADATA");
    EXPECT_THAT(errorOf([&] { manager().checkMetadata("aa", 0, "x"); }),
                StartsWith(chain({"checkMetadata !"})));
    EXPECT_THAT(errorOf([&] { manager().getMetaTags("aa"); }), StartsWith(chain({"getMetaTags !"})));
    EXPECT_THAT(errorOf([&] { manager().getMetaTagId("aa", "x"); }), StartsWith(chain({"getMetaTagId !"})));
    EXPECT_THAT(errorOf([&] { manager().getMetaTagName(1); }), StartsWith(chain({"getMetaTagName !"})));
}

}  // namespace
}  // namespace torvex::test
