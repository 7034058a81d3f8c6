#include "modules/newsflash/newsflash.h"

#include "support/BoardTest.h"

namespace torvex::test {
namespace {

using Rows = std::vector<std::string>;

class NewsflashTest : public BoardTest {};
INSTANTIATE_TEST_SUITE_P(Engines, NewsflashTest, bothEngines(), engineName);

// The list

TEST_P(NewsflashTest, TheListIsByNumberOrByTitle) {
    newsflashRow(1, 2, "alpha", {{"modified", 1}});
    newsflashRow(2, 1, "Beta", {}, In::Design);
    newsflashRow(3, 1, "Elsewhere", {{"site", "bb"}});
    const Value live = flash().getNewsflashList(" aa ", " EN ");
    ASSERT_TRUE(live.isGrid());
    EXPECT_EQ(live.grid().columns(), 6);
    EXPECT_EQ(live.grid().rows(), 1);
    const Value byNumber = flash().getNewsflashList("aa", "en", 0, " d ");
    ASSERT_EQ(byNumber.grid().rows(), 2);
    EXPECT_EQ(byNumber.grid().at(2, 0).toText(), "Beta");
    const Value byTitle = flash().getNewsflashList("aa", "en", 1, "D");
    EXPECT_EQ(byTitle.grid().at(0, 0).toNumber(), 1);
    EXPECT_EQ(byTitle.grid().at(1, 0).toNumber(), 2);
    EXPECT_EQ(byTitle.grid().at(2, 0).toText(), "alpha");
    EXPECT_EQ(byTitle.grid().at(3, 0).toNumber(), 1);
    EXPECT_EQ(byTitle.grid().at(4, 0).toNumber(), 0);
    EXPECT_TRUE(byTitle.grid().at(5, 0).isEmpty());
}

TEST_P(NewsflashTest, WithoutAModeTheListIsLiveAndMayBeEmpty) {
    newsflashRow(2, 1, "Beta", {}, In::Design);
    EXPECT_TRUE(flash().getNewsflashList("aa", "en", 0, "").isEmpty());
    EXPECT_EQ(flash().getNewsflashList("aa", "en", 0, "").toText(), "");
}

// Checks

TEST_P(NewsflashTest, ANumberOrTitleOfAnotherOneIsTaken) {
    newsflashRow(1, 2, "Alpha", {}, In::Design);
    EXPECT_EQ(flash().isNewsflash("aa", "en", 0, 2, "New"), "1");
    EXPECT_EQ(flash().isNewsflash("aa", "en", 0, 2, "alpha"), "1");
    EXPECT_EQ(flash().isNewsflash("aa", "en", 0, 3, "ALPHA"), "2");
    EXPECT_EQ(flash().isNewsflash("aa", "en", 1, 2, "Alpha"), "");
    EXPECT_EQ(flash().isNewsflash("aa", "en", 0, 3, "New"), "");
    EXPECT_EQ(flash().isNewsflash("aa", "de", 0, 2, "Alpha"), "");
}

TEST_P(NewsflashTest, ACategoryIsAddedOnce) {
    flash().addCategory(9, 1);
    flash().addCategory(9, 1);
    flash().addCategory(9, 2);
    EXPECT_EQ(rowsOf("select nf_Id, msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_Id = 9 order by "
                     "msgB_Id"),
              (Rows{"9|1", "9|2"}));
    EXPECT_EQ(rowsOf("select nf_Id from TORVEX_NEWSFLASH_CATEGORIES_LIVE where nf_Id = 9"), Rows{});
}

// Publishing

TEST_P(NewsflashTest, PublishingMakesTheLiveTwinAnew) {
    newsflashRow(1, 1, "Old", {}, In::Live);
    newsflashRow(1, 1, "New", {{"modified", 1}, {"itemOrder", 3}, {"itemLength", 80}, {"imageWidth", 90}},
                 In::Design);
    newsflashRow(2, 2, "Gone", {{"deleted", 1}});
    newsflashRow(3, 3, "Orphan", {}, In::Live);
    newsflashRow(4, 1, "Elsewhere", {{"site", "bb"}, {"modified", 1}}, In::Design);
    feed(1, 1);
    feed(2, 1);
    flash().publish("aa", "en");
    EXPECT_EQ(rowsOf("select * from TORVEX_NEWSFLASH_LIVE"),
              rowsOf("select * from TORVEX_NEWSFLASH_DESIGN where "
                     "site = 'aa'"));
    EXPECT_EQ(rowsOf("select title, itemOrder, itemLength, imageWidth, modified from TORVEX_NEWSFLASH_LIVE"),
              Rows{"New|3|80|90|0"});
    EXPECT_EQ(rowsOf("select nf_Id, modified from TORVEX_NEWSFLASH_DESIGN where site = 'bb'"), Rows{"4|1"});
    for (const char* twin : {"DESIGN", "LIVE"}) {
        EXPECT_EQ(rowsOf("select nf_Id from TORVEX_NEWSFLASH_CATEGORIES_" + std::string(twin) +
                         " where nf_Id < 5 order by nf_Id"),
                  Rows{"1"});
    }
}

TEST_P(NewsflashTest, APublishingThatFailsChangesNothingAndSaysSo) {
    newsflashRow(1, 1, "New", {{"modified", 1}}, In::Design);
    newsflashRow(2, 2, "Gone", {{"deleted", 1}});
    feed(2, 1);
    const Tables before = everything();
    int step = 1;
    for (;; ++step) {
        ASSERT_LT(step, 50);
        failing().reset(step);
        try {
            flash().publish("aa", "en");
            failing().reset(0);
            break;
        } catch (const Error& error) {
            failing().reset(0);
            EXPECT_THAT(error.what(), testing::StartsWith(chain({"Publish (Newsflash module) !"})));
            ASSERT_TRUE(everything() == before) << step;
        }
    }
    EXPECT_GT(step, 7);
}

// Failures

TEST_P(NewsflashTest, FailuresHaveTheLineOfTheirOperation) {
    drop("TORVEX_NEWSFLASH_DESIGN");
    drop("TORVEX_NEWSFLASH_CATEGORIES_DESIGN");
    newsflash made = flash();
    const auto begins = [](const std::string& line) { return testing::StartsWith(chain({line + " !"})); };
    EXPECT_THAT(errorOf([&] { made.load("aa", "en", 3, "D"); }), begins("Load (newsflash)"));
    EXPECT_THAT(errorOf([&] { made.getNewsflashList("aa", "en", 0, "D"); }), begins("getNewsflashList"));
    EXPECT_THAT(errorOf([&] { made.isNewsflash("aa", "en", 0, 1, "x"); }), begins("isNewsflash"));
    EXPECT_THAT(errorOf([&] { made.addCategory(1, 1); }), begins("addCategory (Newsflash)"));
    EXPECT_THAT(errorOf([&] { made.publish("aa", "en"); }), begins("Publish (Newsflash module)"));
}

}  // namespace
}  // namespace torvex::test
