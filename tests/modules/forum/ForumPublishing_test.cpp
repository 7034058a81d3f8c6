#include <gmock/gmock.h>

#include "support/ForumTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ForumPublishingTest : public ForumTest {
  protected:
    std::vector<std::string> live() {
        return rowsOf("select forum_id, forum_name from TORVEX_FORUM_LIVE order by forum_id");
    }
    std::vector<std::string> design() {
        return rowsOf(
            "select forum_id, forum_name, forum_modified from TORVEX_FORUM_DESIGN order by forum_id");
    }
    std::vector<std::string> topics() {
        return rowsOf(
            "select topic_forumId, topic_id from TORVEX_FORUM_TOPICS order by topic_forumId, topic_id");
    }
    std::vector<std::string> reactions() {
        return rowsOf(
            "select reaction_forumId, reaction_id from TORVEX_FORUM_REACTIONS "
            "order by reaction_forumId, reaction_id");
    }
    void change(int id, const std::string& what) {
        connection().execute("update TORVEX_FORUM_DESIGN set " + what + " where forum_id = ?", {id});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ForumPublishingTest, bothEngines(), engineName);

TEST_P(ForumPublishingTest, ANewForumBecomesLiveWithAllItsColumns) {
    row("TORVEX_FORUM_DESIGN", {{"forum_id", 7},
                                {"forum_site", "aa"},
                                {"forum_lang", "en"},
                                {"forum_reference", "ref"},
                                {"forum_name", "Ferns"},
                                {"forum_desc", "All about ferns"},
                                {"forum_hotPeriod", 3},
                                {"forum_reactionsOnline", 1},
                                {"forum_archiveAfter", 90},
                                {"forum_archiveVisible", 1},
                                {"forum_sendEmail", 1},
                                {"forum_emailFrom", "from@aa.test"},
                                {"forum_emailSubject", "News"},
                                {"forum_pageSize", 25},
                                {"forum_askName", 1},
                                {"forum_askEmail", 2},
                                {"forum_emailTo", "to@aa.test"},
                                {"forum_words", "casino"},
                                {"forum_modified", 1}});
    const std::string columns =
        "forum_id, forum_site, forum_lang, forum_reference, forum_name, forum_desc, forum_hotPeriod, "
        "forum_reactionsOnline, forum_archiveAfter, forum_archiveVisible, forum_sendEmail, forum_emailFrom, "
        "forum_emailSubject, forum_pageSize, forum_askName, forum_askEmail, forum_emailTo, forum_words";
    for (const int meant : {7, 0}) {
        connection().execute("delete from TORVEX_FORUM_LIVE");
        change(7, "forum_modified = 1");
        EXPECT_EQ(forum().publish(meant, "aa", "en"), "") << meant;
        EXPECT_THAT(rowsOf("select " + columns + " from TORVEX_FORUM_LIVE where forum_id = 7"),
                    ElementsAre("7|aa|en|ref|Ferns|All about ferns|3|1|90|1|1|from@aa.test|News|25|1|2|"
                                "to@aa.test|casino"))
            << meant;
        EXPECT_EQ(cell("select forum_modified from TORVEX_FORUM_DESIGN where forum_id = 7"), "0") << meant;
    }
}

TEST_P(ForumPublishingTest, AChangedForumTakesThePlaceOfItsLiveTwin) {
    change(1, "forum_name = 'Mosses', forum_desc = null, forum_modified = 1");
    reaction(1, "01");
    EXPECT_EQ(forum().publish(1, "aa", "en"), "");
    EXPECT_THAT(live(), ElementsAre("1|Mosses"));
    EXPECT_THAT(design(), ElementsAre("1|Mosses|0"));
    EXPECT_THAT(topics(), ElementsAre("1|1"));
    EXPECT_THAT(reactions(), ElementsAre("1|1"));
}

TEST_P(ForumPublishingTest, OnlyTheForumThatIsMeantIsPublished) {
    define("TORVEX_FORUM_DESIGN", 2, "Animals", {{"forum_modified", 1}});
    EXPECT_EQ(forum().publish(1, "", ""), "");
    EXPECT_THAT(live(), ElementsAre("1|Plants"));
    EXPECT_THAT(design(), ElementsAre("1|Plants|0", "2|Animals|1"));
}

TEST_P(ForumPublishingTest, AForumThatIsMarkedGoesWithAllThatWasWrittenInIt) {
    define("TORVEX_FORUM_DESIGN", 2, "Animals", {{"forum_deleted", 1}});
    define("TORVEX_FORUM_LIVE", 2, "Animals");
    topic(1, "Cats", "20260601", {}, 2);
    reaction(1, "01", "Re", "20260602", 1, 1, 2);
    reaction(2, "01");
    EXPECT_EQ(forum().publish(2, "aa", "en"), "");
    EXPECT_THAT(live(), ElementsAre("1|Plants"));
    EXPECT_THAT(design(), ElementsAre("1|Plants|0"));
    EXPECT_THAT(topics(), ElementsAre("1|1"));
    EXPECT_THAT(reactions(), ElementsAre("1|2"));
}

TEST_P(ForumPublishingTest, AForumThatIsNotThereIsRefused) {
    expectRefusal("-2", [&] { return forum().publish(4711, "aa", "en"); });
    expectRefusal("-2", [&] { return forum().publish(-1, "aa", "en"); });
}

TEST_P(ForumPublishingTest, NumberZeroPublishesAllOfTheSiteAndLanguage) {
    change(1, "forum_name = 'Mosses', forum_modified = 1");
    define("TORVEX_FORUM_DESIGN", 2, "Animals", {{"forum_modified", 1}});
    define("TORVEX_FORUM_DESIGN", 3, "Gone", {{"forum_deleted", 1}});
    define("TORVEX_FORUM_LIVE", 3, "Gone");
    topic(1, "Old", "20260601", {}, 3);
    reaction(1, "01", "Re", "20260602", 1, 1, 3);
    EXPECT_EQ(forum().publish(0, "AA", "EN"), "");
    EXPECT_THAT(live(), ElementsAre("1|Mosses", "2|Animals"));
    EXPECT_THAT(design(), ElementsAre("1|Mosses|0", "2|Animals|0"));
    EXPECT_THAT(topics(), ElementsAre("1|1"));
    EXPECT_THAT(reactions(), IsEmpty());
}

TEST_P(ForumPublishingTest, NumberZeroLeavesOtherSitesAndLanguagesAlone) {
    for (const auto& [id, site, lang] : {std::tuple{2, "aa", "de"}, std::tuple{3, "bb", "en"}}) {
        row("TORVEX_FORUM_DESIGN", {{"forum_id", id},
                                    {"forum_site", site},
                                    {"forum_lang", lang},
                                    {"forum_deleted", 1},
                                    {"forum_modified", 1}});
        row("TORVEX_FORUM_LIVE", {{"forum_id", id}, {"forum_site", site}, {"forum_lang", lang}});
        topic(1, "Kept", "20260601", {}, id);
        reaction(1, "01", "Kept", "20260602", 1, 1, id);
    }
    EXPECT_EQ(forum().publish(0, "aa", "en"), "");
    EXPECT_THAT(live(), ElementsAre("1|Plants", "2|-", "3|-"));
    EXPECT_THAT(topics(), ElementsAre("1|1", "2|1", "3|1"));
    EXPECT_THAT(reactions(), ElementsAre("2|1", "3|1"));
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_DESIGN where forum_modified = 1"), "2");
}

TEST_P(ForumPublishingTest, NumberZeroWithoutForumsIsDone) {
    expectRefusal("", [&] { return forum().publish(0, "zz", "zz"); });
}

TEST_P(ForumPublishingTest, OneThatFailsHalfWayChangesNothing) {
    change(1, "forum_name = 'Mosses', forum_modified = 1");
    failEverywhere("", "-99", [&] { return forum().publish(1, "aa", "en"); });
}

TEST_P(ForumPublishingTest, ARemovalThatFailsHalfWayChangesNothing) {
    change(1, "forum_deleted = 1");
    reaction(1, "01");
    failEverywhere("", "-99", [&] { return forum().publish(1, "aa", "en"); });
}

TEST_P(ForumPublishingTest, APublishingOfAllThatFailsHalfWayChangesNothing) {
    change(1, "forum_name = 'Mosses', forum_modified = 1");
    define("TORVEX_FORUM_DESIGN", 2, "Gone", {{"forum_deleted", 1}});
    define("TORVEX_FORUM_LIVE", 2, "Gone");
    topic(1, "Old", "20260601", {}, 2);
    reaction(1, "01", "Re", "20260602", 1, 1, 2);
    failEverywhere("", "-99", [&] { return forum().publish(0, "aa", "en"); });
}

}  // namespace
}  // namespace torvex::test
