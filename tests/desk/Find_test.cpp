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

class DeskFindTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        role(3);
        editRights(3, "aa", "en", {"approve"}, "aa.en.77");
        page("aa.en").title("Home").set("editStatus", "P").insert();
    }
    PageBuilder titled(const std::string& node, const std::string& title, const std::string& text = "") {
        PageBuilder builder = page(node);
        builder.title(title).id(++number_).set("editStatus", "M");
        if (!text.empty()) designBody(number_, 1, text);
        return builder;
    }
    void image(const std::string& site, const std::string& title, const std::string& file,
               const std::string& alt = "") {
        row("TORVEX_IMAGES", {{"img_site", site},
                              {"img_fldId", ""},
                              {"img_title", title},
                              {"img_filename", file},
                              {"img_alt", alt}});
    }
    Value find(const std::string& words, const std::string& kinds = "", const std::string& filters = "",
               const std::string& site = "", const std::string& lang = "", int from = 0) {
        indexMissingPages(host.context(), connection());
        return desk().find(words, kinds, site, lang, filters, from);
    }
    std::vector<std::string> titles(const std::string& words, const std::string& kinds = "",
                                    const std::string& filters = "", const std::string& site = "",
                                    const std::string& lang = "", int from = 0) {
        return columnOf(find(words, kinds, filters, site, lang, from), 5);
    }

    int number_ = 10;
};
INSTANTIATE_TEST_SUITE_P(Engines, DeskFindTest, bothEngines(), engineName);

TEST_P(DeskFindTest, ALineSaysWhereThePageIsAndWhatItSays) {
    titled("aa.en.01", "What's on").insert();
    titled("aa.en.01.02", "Autumn walks", "<p>We meet at the <b>palm</b> house.</p>").insert();
    EXPECT_THAT(
        linesOf(find("palm", "page")),
        ElementsAre("page|12|aa|en|aa.en.01.02|Autumn walks|Home / What's on|changed|True|We meet at the "
                    "palm house."));
}

TEST_P(DeskFindTest, TitlesStandBeforeBodiesBothByTitle) {
    titled("aa.en.01", "Zinnias of the garden").insertInDesignOnly();
    titled("aa.en.02", "Asters", "in our garden").insertInDesignOnly();
    titled("aa.en.03", "Garden visits").insertInDesignOnly();
    titled("aa.en.04", "Benches", "<i>Gardens</i>").insertInDesignOnly();
    titled("aa.en.05", "Shop").insertInDesignOnly();
    EXPECT_THAT(titles("garden"), ElementsAre("Garden visits", "Zinnias of the garden", "Asters", "Benches"));
}

TEST_P(DeskFindTest, EveryWordMustBeginWhatStandsSomewhere) {
    titled("aa.en.01", "Autumn walks", "We meet at ten").insertInDesignOnly();
    EXPECT_THAT(titles("aut wal"), SizeIs(1));
    EXPECT_THAT(titles("walks ten"), SizeIs(1));
    EXPECT_THAT(titles("WAL-ten"), SizeIs(1));
    EXPECT_THAT(titles("walks eleven"), IsEmpty());
    EXPECT_THAT(titles("alks"), IsEmpty());
    EXPECT_THAT(titles("w"), SizeIs(1));
}

TEST_P(DeskFindTest, CaseAndAccentsDontCount) {
    titled("aa.en.01",
           "Caf\xC3\xA9 \xCE\x94\xCE\xAD\xCE\xBD\xCF\x84\xCF\x81\xCE\xBF \xE6\xA4\x8D\xE7\x89\xA9")
        .insertInDesignOnly();
    EXPECT_THAT(titles("CAFE"), SizeIs(1));
    EXPECT_THAT(titles("\xCE\xB4\xCE\xB5\xCE\xBD"), SizeIs(1));
    EXPECT_THAT(titles("\xE7\x89\xA9"), SizeIs(1));
}

TEST_P(DeskFindTest, SignsOfAQueryAreNoQuery) {
    titled("aa.en.01", "Autumn walks").insertInDesignOnly();
    for (const auto* words :
         {"\"walks\"", "walks'", "(walks", "walks*", "walks & !", "walks:*", "-walks", "NOT walks"}) {
        EXPECT_NO_THROW(titles(words)) << words;
    }
    EXPECT_THAT(titles("\"walks' *("), SizeIs(1));
    EXPECT_THAT(titles(" *&' "), IsEmpty());
    EXPECT_THAT(titles(""), IsEmpty());
    EXPECT_THAT(titles(std::string(100'000, 'x')), IsEmpty());
}

TEST_P(DeskFindTest, APageIsFoundByItsNumberAndItsNodeFirst) {
    titled("aa.en.01", "Walks").id(12345).insertInDesignOnly();
    titled("aa.en.02", "A house of 12345 bricks").insertInDesignOnly();
    EXPECT_THAT(titles("12345"), ElementsAre("Walks", "A house of 12345 bricks"));
    EXPECT_THAT(titles("AA.en.01"), ElementsAre("Walks"));
}

TEST_P(DeskFindTest, OnlyTreesWhereTheCallerMayDoSomethingAreSearched) {
    titled("aa.en.01", "Walks in en").insertInDesignOnly();
    titled("aa.de", "Walks in de").id(501).insertInDesignOnly();
    titled("bb.en", "Walks in bb").insertInDesignOnly();
    EXPECT_THAT(titles("walks"), ElementsAre("Walks in en"));
    EXPECT_THAT(titles("501"), IsEmpty());
    EXPECT_THAT(titles("bb.en"), IsEmpty());
    actAsSa();
    EXPECT_THAT(titles("walks"), ElementsAre("Walks in bb", "Walks in de", "Walks in en"));
    connection().execute("delete from TORVEX_EDIT_RIGHTS");
    actAs(anna, "anna", "Anna Author");
    EXPECT_THAT(titles("walks"), IsEmpty());
    actAsNobody();
    EXPECT_THAT(titles("walks"), IsEmpty());
}

TEST_P(DeskFindTest, ASiteAndALanguageNarrowIt) {
    actAsSa();
    for (const auto* node : {"aa.en.01", "aa.de.01", "bb.en.01"}) {
        titled(node, std::string("Walks ") + node).insertInDesignOnly();
    }
    EXPECT_THAT(titles("walks", "", "", "AA"), ElementsAre("Walks aa.de.01", "Walks aa.en.01"));
    EXPECT_THAT(titles("walks", "", "", "", "en"), ElementsAre("Walks aa.en.01", "Walks bb.en.01"));
    EXPECT_THAT(titles("walks", "", "", "bb", "en"), ElementsAre("Walks bb.en.01"));
    EXPECT_THAT(titles("walks", "", "", "bb", "de"), IsEmpty());
}

TEST_P(DeskFindTest, FiltersNarrowIt) {
    titled("aa.en.01", "Walks changed").insert();
    titled("aa.en.01.01", "Walks new").set("editStatus", "N").insertInDesignOnly();
    titled("aa.en.02", "Walks approved").set("approveStatus", 1).insert();
    titled("aa.en.03", "Walks marked").set("deleteStatus", 1).set("approveStatus", 1).insert();
    titled("aa.en.04", "Walks live").set("editStatus", "P").type("F").insert();
    titled("aa.en.05", "Walks held").set("lockStatus", 1).insert();
    for (const auto* state : {"new", "approved", "marked", "live"}) {
        EXPECT_THAT(titles("walks", "", std::string("state:") + state),
                    ElementsAre(std::string("Walks ") + state));
    }
    EXPECT_THAT(titles("walks", "", "state:changed"), ElementsAre("Walks changed", "Walks held"));
    EXPECT_THAT(titles("walks", "", " State : held "), ElementsAre("Walks held"));
    EXPECT_THAT(titles("walks", "", "type:f"), ElementsAre("Walks live"));
    EXPECT_THAT(titles("walks", "", "below:aa.en.01"), ElementsAre("Walks changed", "Walks new"));
    EXPECT_THAT(titles("walks", "", "below:aa.en.01,state:new"), ElementsAre("Walks new"));
    EXPECT_THAT(titles("", "", "state:new"), ElementsAre("Walks new"));
    EXPECT_THAT(titles("walks", "", "colour:red"), IsEmpty());
    EXPECT_THAT(titles("walks", "", "state:odd"), IsEmpty());
}

TEST_P(DeskFindTest, ItSaysWhatVisitorsSeeToday) {
    titled("aa.en.01", "Walks a").insertInDesignOnly();
    titled("aa.en.02", "Walks b").offline().insert();
    titled("aa.en.03", "Walks c").dates("20260616", "99999999").insert();
    titled("aa.en.04", "Walks d").insert();
    titled("aa.en.05", "Walks e").type("F").offline().insert();
    EXPECT_THAT(columnOf(find("walks"), 8), ElementsAre("False", "False", "False", "True", "True"));
}

TEST_P(DeskFindTest, FilesAreFoundByAnyPartOfTheirNames) {
    image("aa", "Rose garden", "001/rosa.jpg");
    image("aa", "Map", "rose_map.gif");
    image("aa", "Bench", "bench.gif", "A bench among roses");
    image("bb", "Rose of bb", "rose.gif");
    document("aa", "Roses 100%", "list.pdf");
    EXPECT_THAT(linesOf(find("rose", "image")),
                ElementsAre("image|0|aa|||Bench|bench.gif||True|", "image|0|aa|||Map|rose_map.gif||True|",
                            "image|0|aa|||Rose garden|001/rosa.jpg||True|"));
    EXPECT_THAT(titles("ose gard", "image,document"), ElementsAre("Rose garden"));
    EXPECT_THAT(titles("rose", " Document "), ElementsAre("Roses 100%"));
    EXPECT_THAT(titles("rose", "image", "state:new"), IsEmpty());
    EXPECT_THAT(titles("%", "image"), IsEmpty());
}

TEST_P(DeskFindTest, WhoMayLookAtTheFilesOfASiteFindsThem) {
    image("aa", "Rose", "rose.gif");
    document("aa", "Rose list", "rose.pdf");
    connection().execute("delete from TORVEX_EDIT_RIGHTS");
    EXPECT_THAT(titles("rose"), IsEmpty());
    connection().execute("delete from TORVEX_ADVANCED where advId = 112");
    entry(112, 1, "01.12");
    advancedRight(3, 112, "aa", "", true, false);
    EXPECT_THAT(titles("rose"), ElementsAre("Rose list"));
}

TEST_P(DeskFindTest, ThirtyOfAKindComeAtATime) {
    db::Transaction many(connection());
    for (int i = 1; i <= 70; ++i)
        titled(fmt::format("aa.en.{:02}", i), fmt::format("Walk {:02}", i)).insertInDesignOnly();
    many.commit();
    EXPECT_THAT(titles("walk"), SizeIs(30));
    EXPECT_EQ(titles("walk", "", "", "", "", 60).front(), "Walk 61");
    EXPECT_THAT(titles("walk", "", "", "", "", 60), SizeIs(10));
    EXPECT_THAT(titles("walk", "", "", "", "", 70), IsEmpty());
    EXPECT_THAT(titles("walk", "", "", "", "", -1), IsEmpty());
}

TEST_P(DeskFindTest, WhatFailsIsRaised) {
    page("aa.en.01").insertInDesignOnly();
    indexMissingPages(host.context(), connection());
    drop("TORVEX_PAGES_LIVE");
    EXPECT_THAT(errorOf([&] { desk().find("walks"); }), StartsWith(chain({"find !"})));
}

}  // namespace
}  // namespace torvex::test
