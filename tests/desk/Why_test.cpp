#include <gmock/gmock.h>

#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class WhyTest : public DeskTest {
  protected:
    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        language("de");
        page("aa.en").id(10).title("Garden").insertInDesignOnly();
        page("aa.en.01").id(11).title("Events").insertInDesignOnly();
        page("aa.en.01.01").id(12).title("Walks").insertInDesignOnly();
        page("aa.en.02").id(13).title("Plants").insertInDesignOnly();
        addBert();
        role(3);
        actAsSa();
    }
    std::vector<std::string> why(const std::string& action, const std::string& ident, int loginId = anna) {
        return linesOf(desk().why(loginId, action, ident));
    }
    std::vector<std::string> whyEntry(const std::string& flag, int advId, const std::string& site = "",
                                      const std::string& lang = "", int loginId = anna) {
        return linesOf(desk().whyEntry(loginId, flag, advId, site, lang));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, WhyTest, bothEngines(), engineName);

TEST_P(WhyTest, ARoleGivesItAtANodeAbove) {
    editRights(3, "aa", "en", {"edit", "publish"}, "aa.en.02,aa.en.01");
    EXPECT_THAT(why(" PUBLISH ", " 12 "),
                ElementsAre("yes|0||aa.en.01.01|publish|Walks", "gives|3|Role 3|aa.en.01||Events"));
}

TEST_P(WhyTest, ARoleGivesItInTheWholeTree) {
    editRights(3, "aa", "en", {"onOff"});
    EXPECT_THAT(why("onoff", "AA.EN.02"),
                ElementsAre("yes|0||aa.en.02|onOff|Plants", "gives|3|Role 3|aa.en||Garden"));
}

TEST_P(WhyTest, EachRoleSaysWhatItHasToDoWithIt) {
    editRights(3, "aa", "en", {"edit"}, "aa.en.02");
    role(4);
    editRights(4, "aa", "de", {"edit"});
    role(5);
    editRights(5, "aa", "en", {"move", "publish"});
    role(6);
    EXPECT_THAT(why("edit", "12"),
                ElementsAre("no|0||aa.en.01.01|edit|Walks", "outside|3|Role 3|aa.en.02||Plants",
                            "elsewhere|4|Role 4|aa.de||", "otherRights|5|Role 5||move,publish|",
                            "nothing|6|Role 6|||", "needs|0||aa.en|edit|"));
}

TEST_P(WhyTest, WhatARoleGivesHereIsSaidBeforeWhatItGivesElsewhere) {
    editRights(3, "aa", "de", {"edit"});
    editRights(3, "aa", "en", {"edit"}, "aa.en.01");
    EXPECT_THAT(why("edit", "12"),
                ElementsAre("yes|0||aa.en.01.01|edit|Walks", "gives|3|Role 3|aa.en.01||Events"));
}

TEST_P(WhyTest, TheAdministratorNeedsNoRole) {
    EXPECT_THAT(why("edit", "12", sa), ElementsAre("yes|0||aa.en.01.01|edit|Walks", "administrator|0||||"));
    EXPECT_THAT(whyEntry("edit", 22, "", "", sa), ElementsAre("yes|0|||edit|", "administrator|0||||"));
}

TEST_P(WhyTest, WhoOrWhatIsntThereIsSaid) {
    EXPECT_THAT(why("edit", "99"), ElementsAre("no|0|||edit|", "noPage|0||||"));
    EXPECT_THAT(why("edit", ""), ElementsAre("no|0|||edit|", "noPage|0||||"));
    EXPECT_THAT(why("dance", "12"), ElementsAre("no|0||aa.en.01.01||Walks", "noTask|0||||"));
    EXPECT_THAT(why("edit", "12", 99), ElementsAre("no|0||aa.en.01.01|edit|Walks", "noLogin|0||||"));
    EXPECT_THAT(whyEntry("edit", 22, "", "", 99), ElementsAre("no|0|||edit|", "noLogin|0||||"));
    EXPECT_THAT(whyEntry("edit", 999), ElementsAre("no|0|||edit|", "notOffered|0||||"));
}

TEST_P(WhyTest, TitlesAreForWhoMayReadThem) {
    editRights(3, "aa", "en", {"edit"}, "aa.en.02");
    actAs(bert, "bert", "Bert Broker");
    EXPECT_THAT(why("edit", "12"), ElementsAre("no|0||aa.en.01.01|edit|", "outside|3|Role 3|aa.en.02||",
                                               "needs|0||aa.en|edit|"));
}

TEST_P(WhyTest, AnEntryIsGivenByARowForItsPlaceOrAll) {
    advancedRight(3, 221, "", "en", true, false);
    EXPECT_THAT(whyEntry("view", 221, " AA ", "EN"),
                ElementsAre("yes|0||aa.en|view|", "gives|3|Role 3|.en||"));
    EXPECT_THAT(whyEntry("", 221, "aa", "en"), ElementsAre("yes|0||aa.en||", "gives|3|Role 3|.en||"));
    EXPECT_THAT(whyEntry("edit", 221, "aa", "en"),
                ElementsAre("no|0||aa.en|edit|", "otherRights|3|Role 3||view|", "needs|0||aa.en|edit|"));
    EXPECT_THAT(whyEntry("view", 221, "aa", "de"),
                ElementsAre("no|0||aa.de|view|", "elsewhere|3|Role 3|.en||", "needs|0||aa.de|view|"));
}

TEST_P(WhyTest, ARowOfASiteDoesntOpenWhatIsForTheInstallation) {
    advancedRight(3, 22, "aa", "", true, true);
    EXPECT_THAT(whyEntry("view", 22, "aa", "en"),
                ElementsAre("no|0|||view|", "elsewhere|3|Role 3|aa||", "needs|0|||view|"));
}

TEST_P(WhyTest, WhatAnEntryDoesntOfferNoRoleGives) {
    advancedRight(3, 63, "", "", true, true);
    EXPECT_THAT(whyEntry("edit", 63), ElementsAre("no|0|||edit|", "notOffered|0||||"));
}

TEST_P(WhyTest, FailuresAreSaid) {
    connection().execute("drop table TORVEX_ROLES_LOGINS");
    EXPECT_THAT(errorOf([&] { why("edit", "12"); }), StartsWith(chain({"why !"})));
    EXPECT_THAT(errorOf([&] { whyEntry("edit", 22); }), StartsWith(chain({"whyEntry !"})));
}

}  // namespace
}  // namespace torvex::test
