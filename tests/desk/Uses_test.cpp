#include <fmt/format.h>
#include <gmock/gmock.h>

#include "search/designs/PageIndex.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class DeskUsesTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        role(3);
        editRights(3, "aa", "en", {"edit"}, "aa.en.77");
        page("aa.en").id(1).title("Home").insert();
        page("aa.en.01").id(12).title("Walks").insert();
    }
    /// "node twin body" of each.
    std::vector<std::string> uses(const std::string& kind, const std::string& id, int from = 0) {
        indexMissingPages(host.context(), connection());
        std::vector<std::string> lines;
        const Value list = desk().getUses(kind, id, from);
        for (std::size_t row = 0; list.isGrid() && row < list.grid().rows(); ++row) {
            const auto cell = [&](std::size_t column) { return list.grid().at(column, row).toText(); };
            lines.push_back(cell(3) + " " + cell(6) + " " + cell(5));
        }
        return lines;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskUsesTest, bothEngines(), engineName);

TEST_P(DeskUsesTest, ALineSaysWhichPageAndBody) {
    designBody(12, 3, R"~(<a href="page(1)">home</a>)~");
    indexMissingPages(host.context(), connection());
    EXPECT_THAT(linesOf(desk().getUses("page", "aa.en")), ElementsAre("12|aa|en|aa.en.01|Walks|3|D"));
}

TEST_P(DeskUsesTest, APageIsUsedByTextsOfBothTwinsByNumberOrNode) {
    designBody(12, 10, R"~(<a href="page(1)">a</a>)~");
    designBody(12, 2, R"~(<a href="page('AA.en')">a</a>)~");
    body(12, 2, R"~(<a href="tvx.asp?pageId=1">a</a>)~");
    body(12, 3, R"~(<a href="page(11)">a</a>)~");
    EXPECT_THAT(uses("page", "1"), ElementsAre("aa.en.01 D 2", "aa.en.01 D 10", "aa.en.01 L 2"));
}

TEST_P(DeskUsesTest, APageIsUsedByTheSetupOfOthers) {
    const auto with = [&](const std::string& node, const std::string& column) {
        page(node).set("navigation", "M").set(column, 12).insertInDesignOnly();
    };
    with("aa.en.02", "previous");
    with("aa.en.03", "next");
    with("aa.en.04", "up");
    with("aa.en.05", "loginPage");
    with("aa.en.06", "app_system_folder");
    page("aa.en.07").set("navigation", "A").set("next", 12).insert();
    page("aa.en.08").set("navigation", "M").set("next", 12).insert();
    EXPECT_THAT(uses("page", "12"),
                ElementsAre("aa.en.02 D 0", "aa.en.03 D 0", "aa.en.04 D 0", "aa.en.05 D 0", "aa.en.06 D 0",
                            "aa.en.08 D 0", "aa.en.08 L 0"));
}

TEST_P(DeskUsesTest, AnImageIsUsedWhereItIsShownAndInMetaData) {
    designBody(12, 1, R"~(<img src="/images/AA/001/rose.jpg"><img src="/images/bb/001/rose.jpg">)~");
    metaTag(5, "aa", "Picture");
    row("TORVEX_PAGES_METADATA_LIVE",
        {{"metaData_pageId", 1}, {"metaData_id", 5}, {"metaData_value", "/images/aa/001/rose.jpg"}});
    EXPECT_THAT(uses("image", "aa/001/ROSE.jpg"), ElementsAre("aa.en L 0", "aa.en.01 D 1"));
    EXPECT_THAT(uses("Image", "bb/001/rose.jpg"), ElementsAre("aa.en.01 D 1"));
    EXPECT_THAT(uses("image", "aa/001/rose.jp"), IsEmpty());
    EXPECT_THAT(uses("image", "aa/001/rose.jpg2"), IsEmpty());
    EXPECT_THAT(uses("document", "aa/001/rose.jpg"), IsEmpty());
}

TEST_P(DeskUsesTest, AFolderIsUsedByWhatUsesAnythingInIt) {
    designBody(12, 1, R"~(<img src="/images/aa/001/002/rose.jpg">)~");
    designBody(1, 1, R"~(<img src="/images/aa/0012/rose.jpg">)~");
    EXPECT_THAT(uses("image", "aa/001/"), ElementsAre("aa.en.01 D 1"));
    EXPECT_THAT(uses("image", "aa/002/"), IsEmpty());
}

TEST_P(DeskUsesTest, ADocumentIsUsedByItsFileOrItsTitleAndTheSiteOfThePage) {
    document("aa", "Price list", "001/prices.pdf");
    document("bb", "Price list", "bb.pdf");
    designBody(12, 1, R"~(<a href="file(001/prices.pdf)">)~");
    designBody(12, 2, R"~(<a href="file(price list)">)~");
    designBody(12, 3, R"~(<a href="file(aa/001/prices.pdf)">)~");
    designBody(12, 4, R"~(<a href="/documents/aa/001/prices.pdf">)~");
    designBody(12, 5, R"~(<a href="file(bb/Price list)">)~");
    designBody(12, 6, R"~(<a href="file(other)">)~");
    EXPECT_THAT(uses("document", "aa/001/prices.pdf"),
                ElementsAre("aa.en.01 D 1", "aa.en.01 D 2", "aa.en.01 D 3", "aa.en.01 D 4"));
    EXPECT_THAT(uses("document", "aa/001/"), SizeIs(4));
    EXPECT_THAT(uses("document", "bb/bb.pdf"), ElementsAre("aa.en.01 D 5"));
}

TEST_P(DeskUsesTest, DesignAssetsFeedsAndGroupsAreUsedByTheirNumber) {
    page("aa.en.02").contentTemplate(5).baseTemplate(6).stylesheet(7).application(8).insert();
    designBody(12, 1, "", 2, 5);
    body(12, 2, "", 3, 5);
    row("TORVEX_PAGES_GROUPS_DESIGN", {{"pageId", 12}, {"groupId", 9}});
    pageGroup(12, 9);
    EXPECT_THAT(uses("template", "5"), ElementsAre("aa.en.02 D 0", "aa.en.02 L 0"));
    EXPECT_THAT(uses("baseTemplate", "6"), SizeIs(2));
    EXPECT_THAT(uses("stylesheet", "7"), SizeIs(2));
    EXPECT_THAT(uses("application", "8"), SizeIs(2));
    EXPECT_THAT(uses("htmlFeed", "5"), ElementsAre("aa.en.01 D 1"));
    EXPECT_THAT(uses("xmlfeed", "5"), ElementsAre("aa.en.01 L 2"));
    EXPECT_THAT(uses("group", "9"), ElementsAre("aa.en.01 D 0", "aa.en.01 L 0"));
}

TEST_P(DeskUsesTest, OnlyPagesWhoseDesignsIMayReadAreListed) {
    page("aa.de").set("loginPage", 12).insertInDesignOnly();
    EXPECT_THAT(uses("page", "12"), IsEmpty());
    actAsSa();
    EXPECT_THAT(uses("page", "12"), ElementsAre("aa.de D 0"));
    actAsNobody();
    EXPECT_THAT(uses("page", "12"), IsEmpty());
}

TEST_P(DeskUsesTest, WhatIsNothingIsUsedByNothing) {
    designBody(12, 1, R"~(<img src="/images/aa/r.jpg"><a href="page(1)">)~");
    for (const auto* id : {"", "aa", "aa/", "/r.jpg", "x"}) EXPECT_THAT(uses("image", id), IsEmpty()) << id;
    EXPECT_THAT(uses("template", "x"), IsEmpty());
    EXPECT_THAT(uses("", "1"), IsEmpty());
    EXPECT_THAT(uses("page", "1", -1), IsEmpty());
    for (const auto& bad : badIdentifiers()) EXPECT_THAT(uses("page", bad), IsEmpty()) << bad;
}

TEST_P(DeskUsesTest, LongListsComeInParts) {
    db::Transaction many(connection());
    for (int i = 0; i < 510; ++i)
        page(fmt::format("aa.en.{:02}.{:02}", i / 90 + 2, i % 90 + 1))
            .contentTemplate(5)
            .insertInDesignOnly();
    many.commit();
    EXPECT_THAT(uses("template", "5"), SizeIs(500));
    EXPECT_THAT(uses("template", "5", 500), SizeIs(10));
}

TEST_P(DeskUsesTest, WhatFailsIsRaised) {
    drop("TORVEX_LINKS");
    EXPECT_THAT(errorOf([&] { desk().getUses("page", "12"); }), StartsWith(chain({"getUses !"})));
}

}  // namespace
}  // namespace torvex::test
