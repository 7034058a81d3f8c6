#include <gmock/gmock.h>

#include "support/BoardTest.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

struct Given {
    int nfId = 1;
    int number = 1;
    std::string title = "Latest";
    int itemOrder = 1;
    int itemLength = 50;
    std::string mode = "m";
    int templateId = 50;
    int imageAlignment = 4;
    bool marked = false;
    std::string site = "aa";
};

/// Newsflash 1, "Latest", and the categories 1 "News", which feeds it, and 2 "Events". Template 50 is for modules.
class RegistersNewsflashesTest : public WithRegisters<BoardTest> {
  protected:
    void SetUp() override {
        WithRegisters<BoardTest>::SetUp();
        if (HasFatalFailure()) return;
        contentTemplate(50, "aa", "en", "flash.html", "");
        contentTemplate(51, "aa", "en", "page.html", "");
        contentTemplate(52, "aa", "de", "german.html", "");
        connection().execute(
            "update TORVEX_TEMPLATES set tpl_system = case when tpl_id = 51 then 0 else 1 end");
        newsflashRow(1, 1, "Latest");
        category(1, "01", "News");
        category(2, "02", "Events");
        feed(1, 1);
    }
    std::string save(const Given& given) {
        return registers().saveNewsflash(given.nfId, given.site, "en", given.number, given.title,
                                         given.itemOrder, given.itemLength, 3, given.mode, given.templateId,
                                         given.imageAlignment, 100, 80, given.marked, 242);
    }
    std::string rowOf(const std::string& id) {
        return rowsOf(
                   "select site, lang, id, title, itemOrder, itemLength, numberOfItems, mode, templateId, "
                   "imageAlignment, imageWidth, imageHeight, deleted, modified from TORVEX_NEWSFLASH_DESIGN "
                   "where nf_Id = " +
                   id)
            .at(0);
    }
    std::string add(int nfId, int category, const std::string& site = "aa") {
        return registers().addCategory(nfId, site, "en", category, 242);
    }
    std::string remove(int nfId, int category, const std::string& site = "aa") {
        return registers().removeCategory(nfId, site, "en", category, 242);
    }
    std::vector<std::string> feeding() { return linesOf(registers().getNewsflashCategories("aa", "en")); }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersNewsflashesTest, bothEngines(), engineName);

TEST_P(RegistersNewsflashesTest, NewsflashesAreListedByNumber) {
    newsflashRow(2, 7, "Later", {{"deleted", 1}}, In::Design);
    const auto lines = linesOf(registers().getNewsflashes("AA", " en"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines.at(0), StartsWith("1|1|Latest|1|-1|5|A|50|"));
    EXPECT_THAT(lines.at(0), testing::EndsWith("|0|0|1"));
    EXPECT_THAT(lines.at(1), testing::EndsWith("|1|0|0")) << "marked, and not live";
}

TEST_P(RegistersNewsflashesTest, ANewsflashIsAddedToTheDesignAlone) {
    const std::string id = save({.nfId = 0, .number = 2, .title = " Short "});
    EXPECT_EQ(rowOf(id), "aa|en|2|Short|1|50|3|M|50|4|100|80|0|1");
    EXPECT_EQ(cell("select count(*) from TORVEX_NEWSFLASH_LIVE"), "1");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||242|new|New: Newsflash \"Short\""));
}

TEST_P(RegistersNewsflashesTest, ANewsflashKeepsItsNumberAndTitle) {
    EXPECT_EQ(save({.itemLength = -5, .mode = "A"}), "1");
    EXPECT_EQ(rowOf("1"), "aa|en|1|Latest|1|-1|3|A|50|4|100|80|0|1");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||242|save|Newsflash \"Latest\" has been updated"));
}

TEST_P(RegistersNewsflashesTest, AMarkedNewsflashGoesWithThePublishing) {
    EXPECT_EQ(save({.marked = true}), "1");
    EXPECT_EQ(cell("select count(*) from TORVEX_NEWSFLASH_LIVE"), "1");
    flash().publish("aa", "en");
    EXPECT_EQ(cell("select count(*) from TORVEX_NEWSFLASH_DESIGN"), "0");
    EXPECT_EQ(cell("select count(*) from TORVEX_NEWSFLASH_LIVE"), "0");
}

TEST_P(RegistersNewsflashesTest, WhatFeedsItGoesLiveWithTheBoard) {
    EXPECT_THAT(feeding(), ElementsAre("1|1|News|1|1"));
    EXPECT_EQ(add(1, 2), "0");
    EXPECT_EQ(remove(1, 1), "0");
    EXPECT_THAT(feeding(), ElementsAre("1|2|Events|1|0", "1|1|News|0|1"));
    EXPECT_EQ(cell("select count(*) from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_modified = 1"), "2");
    EXPECT_EQ(board().publish("aa", "en", "", true, false), "");
    EXPECT_THAT(feeding(), ElementsAre("1|2|Events|1|1"));
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||242|save|Category 2 feeds newsflash 1",
                            "7|Anna Author|0||242|save|Category 1 no longer feeds newsflash 1"));
}

TEST_P(RegistersNewsflashesTest, ACategoryFeedsItOnce) {
    EXPECT_EQ(add(1, 1), "0");
    EXPECT_EQ(remove(1, 2), "0");
    EXPECT_THAT(feeding(), ElementsAre("1|1|News|1|1"));
    EXPECT_EQ(cell("select count(*) from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_modified = 1"), "0");
}

TEST_P(RegistersNewsflashesTest, RefusalsChangeNothing) {
    newsflashRow(2, 7, "Later");
    expectRefusal("-1", [&] { return save({.nfId = 99}); });
    expectRefusal("-1", [&] { return save({.site = "bb"}); });
    expectRefusal("-2", [&] { return save({.nfId = 0, .site = "zz"}); });
    expectRefusal("-3", [&] { return save({.title = " "}); });
    expectRefusal("-4", [&] { return save({.number = 0}); });
    expectRefusal("-4", [&] { return save({.number = 40000}); });
    expectRefusal("-4", [&] { return save({.itemOrder = 0}); });
    expectRefusal("-4", [&] { return save({.mode = "x"}); });
    expectRefusal("-4", [&] { return save({.imageAlignment = 7}); });
    expectRefusal("-5", [&] { return save({.templateId = 51}); });
    expectRefusal("-5", [&] { return save({.templateId = 52}); });
    expectRefusal("-7", [&] { return save({.number = 7}); });
    expectRefusal("-8", [&] { return save({.title = "LATER"}); });
    expectRefusal("-1", [&] { return add(99, 1); });
    expectRefusal("-1", [&] { return remove(1, 1, "bb"); });
    expectRefusal("-2", [&] { return add(1, 99); });
    expectRefusal("-2", [&] { return remove(1, 99); });
    actAsNobody();
    expectRefusal("-10", [&] { return save({}); });
    expectRefusal("-10", [&] { return add(1, 2); });
    expectRefusal("-10", [&] { return remove(1, 1); });
}

TEST_P(RegistersNewsflashesTest, AFailureAnywhereChangesNothing) {
    failEverywhere("1", "-99", [&] { return save({.title = "New"}); });
    failEverywhere("0", "-99", [&] { return add(1, 2); });
}

TEST_P(RegistersNewsflashesTest, ListsSayWhatFailed) {
    connection().execute("drop table TORVEX_NEWSFLASH_LIVE");
    connection().execute("drop table TORVEX_NEWSFLASH_CATEGORIES_LIVE");
    EXPECT_THAT(errorOf([&] { registers().getNewsflashes("aa", "en"); }),
                StartsWith(chain({"getNewsflashes !"})));
    EXPECT_THAT(errorOf([&] { registers().getNewsflashCategories("aa", "en"); }),
                StartsWith(chain({"getNewsflashCategories !"})));
}

}  // namespace
}  // namespace torvex::test
