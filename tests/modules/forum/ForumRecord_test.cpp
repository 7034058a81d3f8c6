#include "modules/forum/ForumRecord.h"

#include <gmock/gmock.h>

#include "records/PageIdentity.h"
#include "support/ForumTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ForumRecordTest : public ForumTest {
  protected:
    void SetUp() override {
        ForumTest::SetUp();
        if (HasFatalFailure()) return;
        define("TORVEX_FORUM_LIVE", 2, "Animals");
        define("TORVEX_FORUM_LIVE", 3, "Guarded");
        row("TORVEX_FORUM_LIVE", {{"forum_id", 4}, {"forum_site", "aa"}, {"forum_lang", "de"}});
        externalApplication(4, "/torvex_forum/");
        externalApplication(5, "/elsewhere/");
        page("aa.en").id(10).insert();
        page("aa.en.01").id(11).type("A").application(4).insert();
    }
    PageIdentity forumPage() { return identify(connection(), PageId(11)); }
    std::vector<std::string> names(const std::string& parameters) {
        std::vector<std::string> all;
        for (const auto& forum : forumsOfPage(connection(), forumPage(), parameters))
            all.push_back(forum.record.name);
        return all;
    }
    bool isShown(int forumId, const std::string& parameters = "") {
        return forumOfPage(connection(), forumPage(), parameters, forumId).has_value();
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ForumRecordTest, bothEngines(), engineName);

TEST_P(ForumRecordTest, APageShowsTheLiveForumsOfItsSiteAndLanguageByName) {
    EXPECT_THAT(names(""), ElementsAre("Animals", "Guarded", "Plants"));
    EXPECT_TRUE(isShown(1));
    EXPECT_FALSE(isShown(4));
    EXPECT_FALSE(isShown(0));
    connection().execute("delete from TORVEX_FORUM_LIVE where forum_id = 2");
    EXPECT_FALSE(isShown(2));
}

TEST_P(ForumRecordTest, APageThatNamesForumsShowsThemAlone) {
    EXPECT_THAT(names("forumId=3"), ElementsAre("Guarded"));
    EXPECT_THAT(names("x=1, ForumID = 2 ,forumId=3"), ElementsAre("Animals", "Guarded"));
    EXPECT_THAT(names("forumId=4"), IsEmpty());
    EXPECT_FALSE(isShown(1, "forumId=3"));
}

TEST_P(ForumRecordTest, WhatAnotherPageNamesIsShownThereAlone) {
    page("aa.en.02").id(12).type("A").application(4).set("app_param_public", "forumId=3").insert();
    EXPECT_THAT(names(""), ElementsAre("Animals", "Plants"));
    EXPECT_FALSE(isShown(3));
    EXPECT_TRUE(isShown(3, "forumId=3"));
}

TEST_P(ForumRecordTest, APageThatIsOffLineKeepsItsForumsToItself) {
    page("aa.en.02").id(12).type("A").application(4).set("app_param_public", "forumId=3").offline().insert();
    EXPECT_FALSE(isShown(3));
}

TEST_P(ForumRecordTest, PagesOfOtherApplicationsNameNoForums) {
    page("aa.en.02").id(12).type("A").application(5).set("app_param_public", "forumId=3").insert();
    EXPECT_TRUE(isShown(3));
}

TEST_P(ForumRecordTest, TopicsThatAreShownAreCountedWithTheLastDay) {
    topic(2, "Hidden", "20260614", {{"topic_online", 0}});
    topic(3, "Later", "20260501", {{"topic_lastDate", "20260610"}});
    const auto forums = forumsOfPage(connection(), forumPage(), "");
    EXPECT_EQ(forums[2].topics, 2);
    EXPECT_EQ(forums[2].lastDay, "20260610");
    EXPECT_EQ(forums[0].topics, 0);
    EXPECT_EQ(forums[0].lastDay, "");
}

TEST_P(ForumRecordTest, WhatAForumSaysIsRead) {
    connection().execute(
        "update TORVEX_FORUM_LIVE set forum_desc = ' About ', forum_archiveAfter = 30, "
        "forum_archiveVisible = 1, forum_sendEmail = 1, forum_emailFrom = 'f@a.test', "
        "forum_emailTo = 't@a.test', forum_emailSubject = 'S', forum_askName = 1, forum_askEmail = 2, "
        "forum_words = 'bad' where forum_id = 1");
    const ForumRecord forum = *forumOfPage(connection(), forumPage(), "", 1);
    EXPECT_EQ(forum.description, "About");
    EXPECT_EQ(forum.hotPeriod, 7);
    EXPECT_TRUE(forum.showsAtOnce);
    EXPECT_EQ(forum.archiveAfter, 30);
    EXPECT_TRUE(forum.isArchiveVisible);
    EXPECT_TRUE(forum.sendsMail);
    EXPECT_EQ(forum.mailFrom, "f@a.test");
    EXPECT_EQ(forum.mailTo, "t@a.test");
    EXPECT_EQ(forum.mailSubject, "S");
    EXPECT_EQ(forum.pageSize, 10);
    EXPECT_EQ(forum.visitorName, Asked::MayBeGiven);
    EXPECT_EQ(forum.visitorEmail, Asked::MustBeGiven);
    EXPECT_EQ(forum.words, "bad");
}

TEST_P(ForumRecordTest, AForumThatSaysNothingAsksForANameAndNoAddress) {
    const ForumRecord forum = *forumOfPage(connection(), forumPage(), "", 2);
    EXPECT_EQ(forum.visitorName, Asked::MustBeGiven);
    EXPECT_EQ(forum.visitorEmail, Asked::No);
}

}  // namespace
}  // namespace torvex::test
