#include "support/RightsTest.h"

namespace torvex::test {
namespace {

class AdvancedMapTest : public RightsTest {
  protected:
    void SetUp() override {
        RightsTest::SetUp();
        if (HasFatalFailure()) return;
        emptyMenu();
        role(3);
    }
    std::string map(int order = 0) { return manager().getAdvancedMap("aa", "en", order); }
    std::string currentSite(int loginId) {
        return cell("select currentSite from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }
    void lock(int loginId, const std::string& website) {
        connection().execute("update TORVEX_LOGINS set siteLock = ? where loginId = ?", {website, loginId});
    }
    /// The fields of the record of an entry; fails the test when there is none.
    std::vector<std::string> record(const std::string& map, int advId) {
        std::size_t from = 0;
        while (from < map.size()) {
            const std::size_t end = map.find("###", from);
            std::vector<std::string> fields{""};
            for (const char c : map.substr(from, end - from)) {
                if (c == '#') {
                    fields.emplace_back();
                } else {
                    fields.back() += c;
                }
            }
            if (fields.size() == 8 && fields[0] == std::to_string(advId)) return fields;
            from = end == std::string::npos ? map.size() : end + 3;
        }
        ADD_FAILURE() << "no entry " << advId << " in " << map;
        return std::vector<std::string>(8);
    }
    std::string program(int advId) { return record(map(), advId)[4]; }
};
INSTANTIATE_TEST_SUITE_P(Engines, AdvancedMapTest, bothEngines(), engineName);

TEST_P(AdvancedMapTest, WithoutEntriesOnlyTheClosingCountIsLeft) {
    EXPECT_EQ(map(), "1###");
}

TEST_P(AdvancedMapTest, ATreeOfTwoLevelsIsWrittenRecordByRecord) {
    entry(1, 0, "g1", false, false);
    entry(2, 0, "g1.01");
    entry(3, 0, "g1.02");
    entry(4, 0, "g2");
    actAsSa();
    EXPECT_EQ(map(),
              "1#00g1#Entry 1#icon1.gif# #1#1#0###"
              "2#00g101#Entry 2#icon2.gif#/torvex/2.asp#0#2#0###"
              "3#00g102#Entry 3#icon3.gif#/torvex/3.asp#0#2#0###"
              "4#00g2#Entry 4#icon4.gif#/torvex/4.asp#0#1#1###"
              "1###");
}

TEST_P(AdvancedMapTest, SeveralLevelsAreClosedAtOnceAndTheRestAtTheEnd) {
    entry(1, 0, "g1", false, false);
    entry(2, 0, "g1.01", false, false);
    entry(3, 0, "g1.01.01", false, false);
    entry(4, 0, "g1.01.01.01");
    entry(5, 0, "g2", false, false);
    entry(6, 0, "g2.01", false, false);
    entry(7, 0, "g2.01.01");
    actAsSa();
    const std::string text = map();
    EXPECT_EQ(record(text, 4)[6], "4");
    EXPECT_EQ(record(text, 4)[7], "0");
    EXPECT_EQ(record(text, 5)[7], "3");
    EXPECT_EQ(record(text, 6)[7], "0");
    EXPECT_TRUE(text.ends_with("###3###")) << text;
}

TEST_P(AdvancedMapTest, ADottedPathOfNumbersIsWrittenInTheSameWay) {
    entry(1, 1, "01", false, false);
    entry(2, 1, "01.01");
    actAsSa();
    EXPECT_EQ(map(),
              "1#0101#Entry 1#icon1.gif# #1#1#0###"
              "2#010101#Entry 2#icon2.gif#/torvex/2.asp#0#2#0###"
              "2###");
}

TEST_P(AdvancedMapTest, LevelsGoUpUnlessOrderIsOne) {
    entry(1, 0, "g1");
    entry(2, 1, "s1");
    entry(3, 2, "w1");
    actAsSa();
    EXPECT_LT(map().find("1#00g1#"), map().find("3#02w1#"));
    EXPECT_GT(map(1).find("1#00g1#"), map(1).find("3#02w1#"));
    for (const int order : {2, -1, 32767}) EXPECT_EQ(map(order), map());
}

TEST_P(AdvancedMapTest, ChildrenAreThoseOfTheSameLevelOnly) {
    entry(1, 0, "g1");
    entry(2, 1, "g1.01");
    actAsSa();
    EXPECT_EQ(record(map(), 1)[5], "0");
    EXPECT_EQ(program(1), "/torvex/1.asp");
}

TEST_P(AdvancedMapTest, ABranchHasNoProgramEvenForTheAdministrator) {
    entry(1, 0, "g1");
    entry(2, 0, "g1.01");
    actAsSa();
    EXPECT_EQ(program(1), " ");
    EXPECT_EQ(program(2), "/torvex/2.asp");
}

TEST_P(AdvancedMapTest, AnEntryWithoutARightStaysWithoutALink) {
    entry(1, 0, "g1");
    EXPECT_EQ(program(1), " ");
}

TEST_P(AdvancedMapTest, ALinkNeedsEitherRight) {
    entry(1, 0, "g1");
    entry(2, 0, "g2");
    advancedRight(3, 1, "", "", true, false);
    advancedRight(3, 2, "", "", false, true);
    EXPECT_EQ(program(1), "/torvex/1.asp");
    EXPECT_EQ(program(2), "/torvex/2.asp");
}

TEST_P(AdvancedMapTest, AnEntryThatOffersNoRightIsOpenToEverybody) {
    entry(1, 0, "g1", false, false);
    EXPECT_EQ(program(1), "/torvex/1.asp");
}

TEST_P(AdvancedMapTest, LinksAreGivenAsTheRightsTestWouldSay) {
    const std::vector<std::pair<std::string, std::string>> places{
        {"", ""}, {"aa", ""}, {"", "en"}, {"aa", "en"}, {"bb", ""}, {"", "de"}, {"bb", "en"}, {"aa", "de"}};
    int advId = 100;
    for (const int level : {0, 1, 2}) {
        for (const auto& [site, lang] : places) {
            ++advId;
            entry(advId, level, "k" + std::to_string(advId));
            advancedRight(3, advId, site, lang, advId % 2 == 0, advId % 2 == 1);
        }
    }
    const std::string text = map();
    int links = 0;
    for (int id = 101; id <= advId; ++id) {
        const int level = (id - 101) / 8;
        const bool may = manager().checkAdvRights("", id, level >= 1 ? "aa" : "", level == 2 ? "en" : "");
        EXPECT_EQ(record(text, id)[4] != " ", may) << id;
        links += may ? 1 : 0;
    }
    EXPECT_EQ(links, 1 + 2 + 4);
}

TEST_P(AdvancedMapTest, FieldsAreTrimmedAndEmptyOnesAreABlank) {
    entry(1, 0, "g1");
    connection().execute(
        "update TORVEX_ADVANCED set advIcon = '  ', advProgram = ' /x.asp ', advTitle = ' 9001 '");
    actAsSa();
    EXPECT_EQ(map(), "1#00g1#Entry 1# #/x.asp#0#1#0###1###");
    connection().execute("update TORVEX_ADVANCED set advIcon = null, advProgram = null");
    EXPECT_EQ(map(), "1#00g1#Entry 1# # #0#1#0###1###");
}

TEST_P(AdvancedMapTest, ATitleIsEncodedAndItsHashReplaced) {
    entry(1, 0, "g1");
    word(9001, "C# & \"<b>\" #1");
    EXPECT_EQ(record(map(), 1)[2], "C-@- &amp; &quot;&lt;b&gt;&quot; -@-1");
}

TEST_P(AdvancedMapTest, AnEntryWithoutATitleHasTheWordForIt) {
    entry(1, 0, "g1");
    word(9001, "  ");
    word(2597, "no <title>");
    EXPECT_EQ(record(map(), 1)[2], "[no &lt;title&gt;]");
}

// ---- The site ----

TEST_P(AdvancedMapTest, TheLoginEntersTheSite) {
    login(8, "ben", "Ben", "other-session");
    map();
    EXPECT_EQ(currentSite(anna), "aa.en");
    EXPECT_EQ(currentSite(8), "");
}

TEST_P(AdvancedMapTest, ALockedSiteIsNotEntered) {
    login(8, "ben", "Ben", "other-session");
    manager().getAdvancedMap("bb", "en");
    lock(8, "aa.en");
    EXPECT_EQ(map(), "-1");
    EXPECT_EQ(manager().getAdvancedMap("AA", "EN"), "-1");
    EXPECT_EQ(currentSite(anna), "bb.en");
}

TEST_P(AdvancedMapTest, TheAdministratorDoesNotEnterALockedSiteEither) {
    login(8, "ben", "Ben", "other-session");
    lock(8, "aa.en");
    actAsSa();
    EXPECT_EQ(map(), "-1");
    EXPECT_EQ(currentSite(sa), "");
}

TEST_P(AdvancedMapTest, ALockOfAnotherSiteOrOfALoginThatIsGoneDoesNotCount) {
    login(8, "ben", "Ben", "other-session");
    login(9, "eva", "Eva");
    lock(8, "aa.de");
    lock(9, "aa.en");
    EXPECT_EQ(map(), "1###");
    EXPECT_EQ(currentSite(anna), "aa.en");
}

TEST_P(AdvancedMapTest, NobodyEntersNoSite) {
    actAsNobody();
    EXPECT_EQ(map(), "1###");
    EXPECT_EQ(currentSite(anna), "");
    EXPECT_EQ(currentSite(sa), "");
}

// ---- Failures ----

TEST_P(AdvancedMapTest, ABrokenDatabaseIsAnErrorWithTwoBlanks) {
    entry(1, 0, "g1");
    drop("TORVEX_ADVANCED_RIGHTS");
    EXPECT_TRUE(errorOf([&] { map(); }).starts_with(chain({"getAdvancedMap  !", "checkAdvRights  !"})));
    drop("TORVEX_INTERFACE_VOCAB");
    EXPECT_TRUE(errorOf([&] { map(); }).starts_with(chain({"getAdvancedMap  !", "getVocab !"})));
}

}  // namespace
}  // namespace torvex::test
