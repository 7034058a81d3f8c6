#include <gmock/gmock.h>

#include "support/ForumTest.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

struct Given {
    int forumId = 1;
    std::string site = "aa";
    std::string lang = "en";
    std::string name = "Plants";
    bool sendEmail = false;
    std::string emailFrom = "";
    std::string emailTo = "";
    int askName = 2;
    int askEmail = 0;
    bool marked = false;
    int hotPeriod = 7;
    std::string description = "About";
};

class RegistersForumsTest : public WithRegisters<ForumTest> {
  protected:
    std::string save(const Given& given) {
        return registers().saveForum(given.forumId, given.site, given.lang, given.name, given.description,
                                     given.hotPeriod, true, 30, true, given.sendEmail, given.emailFrom,
                                     given.emailTo, "A post", 20, given.askName, given.askEmail, "rude, spam",
                                     given.marked, 243);
    }
    std::string rowOf(const std::string& id) {
        return rowsOf(
                   "select forum_site, forum_lang, forum_name, forum_desc, forum_hotPeriod, "
                   "forum_reactionsOnline, forum_archiveAfter, forum_archiveVisible, forum_sendEmail, "
                   "forum_emailFrom, forum_emailTo, forum_emailSubject, forum_pageSize, forum_askName, "
                   "forum_askEmail, forum_words, forum_deleted, forum_modified from TORVEX_FORUM_DESIGN "
                   "where forum_id = " +
                   id)
            .at(0);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersForumsTest, bothEngines(), engineName);

TEST_P(RegistersForumsTest, AForumIsListedWithWhatWasWrittenInIt) {
    define("TORVEX_FORUM_DESIGN", 2, "Birds", {{"forum_deleted", 1}});
    topic(2, "Hidden", "20260602", {{"topic_online", 0}});
    reaction(1, "01");
    reaction(2, "01.01", "Off", "20260602", 0);
    EXPECT_THAT(linesOf(registers().getForums(" AA ", "EN")),
                ElementsAre(StartsWith("2|Birds|"), StartsWith("1|Plants|")));
    const auto lines = linesOf(registers().getForums("aa", "en"));
    EXPECT_THAT(lines.at(0), testing::EndsWith("|1|0|0|0|0")) << "marked, not modified, not live, empty";
    EXPECT_THAT(lines.at(1), testing::EndsWith("|0|0|1|2|2")) << "live, two topics, two posts are hidden";
    EXPECT_THAT(linesOf(registers().getForums("aa", "de")), IsEmpty());
}

TEST_P(RegistersForumsTest, ANewForumIsAddedToTheDesignAlone) {
    const std::string id = save({.forumId = 0, .name = "  Birds ", .description = " Feathers "});
    EXPECT_EQ(rowOf(id), "aa|en|Birds|Feathers|7|1|30|1|0|||A post|20|2|0|rude, spam|0|1");
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_LIVE"), "1");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||243|new|New: Forum \"Birds\""));
}

TEST_P(RegistersForumsTest, AForumIsSavedInItsOwnWebsite) {
    EXPECT_EQ(save({.site = "zz",
                    .lang = "zz",
                    .name = "Herbs",
                    .sendEmail = true,
                    .emailFrom = "garden@example.org",
                    .emailTo = "a@example.org, b@example.org"}),
              "1");
    EXPECT_EQ(
        rowOf("1"),
        "aa|en|Herbs|About|7|1|30|1|1|garden@example.org|a@example.org, b@example.org|A post|20|2|0|rude, "
        "spam|0|1");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||243|save|Forum \"Herbs\" has been updated"));
}

TEST_P(RegistersForumsTest, WhatIsSavedGoesLiveWithThePublishing) {
    EXPECT_EQ(save({.name = "Herbs"}), "1");
    EXPECT_EQ(cell("select forum_name from TORVEX_FORUM_LIVE"), "Plants");
    EXPECT_EQ(forum().publish(1, "aa", "en"), "");
    EXPECT_EQ(cell("select forum_name from TORVEX_FORUM_LIVE"), "Herbs");
    EXPECT_EQ(cell("select forum_modified from TORVEX_FORUM_DESIGN"), "0");
}

TEST_P(RegistersForumsTest, AMarkedForumGoesWithThePublishing) {
    EXPECT_EQ(save({.marked = true}), "1");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||243|delete|Forum \"Plants\" has been marked for deletion"));
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_LIVE"), "1");
    EXPECT_EQ(forum().publish(1, "aa", "en"), "");
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_LIVE"), "0");
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_TOPICS"), "0");
}

TEST_P(RegistersForumsTest, AMarkIsTakenBack) {
    save({.marked = true});
    EXPECT_EQ(save({}), "1");
    EXPECT_EQ(cell("select forum_deleted from TORVEX_FORUM_DESIGN"), "0");
}

TEST_P(RegistersForumsTest, WhatIsTooMuchIsCut) {
    EXPECT_EQ(save({.name = std::string(150, 'x'), .hotPeriod = 100000}), "1");
    EXPECT_EQ(cell("select forum_name from TORVEX_FORUM_DESIGN"), std::string(100, 'x'));
    EXPECT_EQ(cell("select forum_hotPeriod from TORVEX_FORUM_DESIGN"), "32767");
    EXPECT_EQ(save({.hotPeriod = -3}), "1");
    EXPECT_EQ(cell("select forum_hotPeriod from TORVEX_FORUM_DESIGN"), "0");
}

TEST_P(RegistersForumsTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save({.forumId = 99}); });
    expectRefusal("-2", [&] { return save({.forumId = 0, .site = "zz"}); });
    expectRefusal("-3", [&] { return save({.name = "  "}); });
    expectRefusal("-4", [&] { return save({.askName = 3}); });
    expectRefusal("-4", [&] { return save({.askEmail = -1}); });
    expectRefusal("-6", [&] { return save({.emailFrom = "no address"}); });
    expectRefusal("-6", [&] { return save({.emailTo = "nobody"}); });
    expectRefusal("-6", [&] { return save({.sendEmail = true}); });
    actAsNobody();
    expectRefusal("-10", [&] { return save({}); });
}

TEST_P(RegistersForumsTest, AFailureAnywhereChangesNothing) {
    failEverywhere("1", "-99", [&] { return save({.name = "New"}); });
}

TEST_P(RegistersForumsTest, TheListSaysWhatFailed) {
    connection().execute("drop table TORVEX_FORUM_REACTIONS");
    EXPECT_THAT(errorOf([&] { registers().getForums("aa", "en"); }), StartsWith(chain({"getForums !"})));
}

}  // namespace
}  // namespace torvex::test
