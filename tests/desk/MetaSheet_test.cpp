#include <gmock/gmock.h>

#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// Tags 1 "description" and 2 "keywords"; pages 10 "aa.en", 11 "aa.en.01", 12 "aa.en.01.01", 13 "aa.en.02".
class MetaSheetTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        metaTag(1, "aa", "description");
        metaTag(2, "aa", "keywords");
        page("aa.en").id(10).title("Home").insertInDesignOnly();
        page("aa.en.01").id(11).title("Roses").insertInDesignOnly();
        page("aa.en.01.01").id(12).title("Red").insertInDesignOnly();
        page("aa.en.02").id(13).title("Lilies").insertInDesignOnly();
    }
    void design(PageId pageId, int tag, const std::string& value, int inherited = 0) {
        row("TORVEX_PAGES_METADATA_DESIGN", {{"metaData_pageId", pageId},
                                             {"metaData_id", tag},
                                             {"metaData_value", value},
                                             {"metaData_inherited", inherited}});
    }
    std::vector<std::string> sheet(int tag = 0, double from = 0) {
        return linesOf(registers().getMetaSheet(" AA ", "EN", tag, from));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MetaSheetTest, bothEngines(), engineName);

TEST_P(MetaSheetTest, EachPageIsThereWithWhatItHas) {
    design(10, 1, "A garden");
    design(10, 2, "garden");
    design(12, 2, "red");
    EXPECT_THAT(sheet(), ElementsAre("10|aa.en|Home|1|A garden|0", "10|aa.en|Home|2|garden|0",
                                     "11|aa.en.01|Roses|0||0", "12|aa.en.01.01|Red|2|red|0",
                                     "13|aa.en.02|Lilies|0||0"));
}

TEST_P(MetaSheetTest, AnInheritedValueIsThatOfTheNearestAncestorWithOneOfItsOwn) {
    design(10, 1, "A garden");
    design(11, 1, "ignored", 1);
    design(12, 1, "", 1);
    design(13, 2, "", 1);
    EXPECT_THAT(sheet(), ElementsAre("10|aa.en|Home|1|A garden|0", "11|aa.en.01|Roses|1|A garden|1",
                                     "12|aa.en.01.01|Red|1|A garden|1", "13|aa.en.02|Lilies|2||1"));
    connection().execute(
        "update TORVEX_PAGES_METADATA_DESIGN set metaData_inherited = 0, metaData_value = 'Roses' "
        "where metaData_pageId = 11");
    EXPECT_THAT(sheet(), testing::Contains("12|aa.en.01.01|Red|1|Roses|1"));
}

TEST_P(MetaSheetTest, PagesWithoutAValueForTheTagComeFirst) {
    design(10, 1, "A garden");
    design(11, 1, "");
    design(12, 1, "", 1);
    design(13, 2, "lily");
    EXPECT_THAT(sheet(1), ElementsAre("11|aa.en.01|Roses|1||0", "13|aa.en.02|Lilies|2|lily|0",
                                      "10|aa.en|Home|1|A garden|0", "12|aa.en.01.01|Red|1||1"));
}

TEST_P(MetaSheetTest, TheSystemBranchAndOtherTreesAreLeftOut) {
    site("bb");
    page("aa.en.99").id(20).insertInDesignOnly();
    page("aa.en.99.01").id(21).insertInDesignOnly();
    page("bb.en").id(22).insertInDesignOnly();
    page("aa.en.03").id(23).insertInLiveOnly();
    EXPECT_EQ(sheet().size(), 4U);
}

TEST_P(MetaSheetTest, TwoHundredPagesComeAtATime) {
    for (int i = 0; i < 200; ++i)
        page("aa.en.03." + std::to_string(i + 100)).id(1000 + i).insertInDesignOnly();
    EXPECT_EQ(sheet().size(), 200U);
    EXPECT_EQ(sheet(0, 200).size(), 4U);
    EXPECT_THAT(sheet(0, 204), IsEmpty());
    for (const double from : {-1.0, 1e5, 1e300}) EXPECT_THAT(sheet(0, from), IsEmpty()) << from;
}

TEST_P(MetaSheetTest, AFailureIsRaised) {
    drop("TORVEX_PAGES_METADATA_DESIGN");
    EXPECT_THAT(errorOf([&] { sheet(); }), StartsWith(chain({"getMetaSheet !"})));
}

}  // namespace
}  // namespace torvex::test
