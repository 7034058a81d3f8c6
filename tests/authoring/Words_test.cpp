#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

class WordsTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        row("TORVEX_INTERFACE_LANGUAGES", {{"id", 3}, {"lang_id", "nl"}, {"lang_name", "Nederlands"}});
        row("TORVEX_INTERFACE_VOCAB",
            {{"lang_label", 90001}, {"lang_vocab1", " House "}, {"lang_vocab3", " Huis "}});
        row("TORVEX_INTERFACE_VOCAB", {{"lang_label", 90002},
                                       {"lang_vocab1", "Tree"},
                                       {"lang_vocab3", "  "},
                                       {"lang_vocab12", "Baum"}});
        row("TORVEX_INTERFACE_VOCAB", {{"lang_label", 90003}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, WordsTest, bothEngines(), engineName);

TEST_P(WordsTest, AWordIsFoundByTheLanguagesCodeOrNumber) {
    EXPECT_EQ(manager().getVocab("nl", 90001), "Huis");
    EXPECT_EQ(manager().getVocab("NL", 90001), "Huis");
    EXPECT_EQ(manager().getVocab("3", 90001), "Huis");
    EXPECT_EQ(manager().getVocab("en", 90001), "House");
}

TEST_P(WordsTest, AWordWithoutTranslationIsEnglish) {
    EXPECT_EQ(manager().getVocab("nl", 90002), "Tree");
    EXPECT_EQ(manager().getVocab("nl", 90002, 1), "Tree");
    EXPECT_EQ(manager().getVocab("3", 90002), "Tree");
}

TEST_P(WordsTest, WithoutTheFlagItIsEmpty) {
    EXPECT_EQ(manager().getVocab("nl", 90002, 0), "");
    EXPECT_EQ(manager().getVocab("nl", 90002, 2), "");
    EXPECT_EQ(manager().getVocab("nl", 90001, 0), "Huis");
}

TEST_P(WordsTest, AnUnknownLanguageIsEnglishOrEmpty) {
    EXPECT_EQ(manager().getVocab("xx", 90001), "House");
    EXPECT_EQ(manager().getVocab("xx", 90001, 0), "");
    EXPECT_EQ(manager().getVocab("", 90001), "House");
    EXPECT_EQ(manager().getVocab("' or '1'='1", 90001, 0), "");
}

TEST_P(WordsTest, AColumnNeedsNoLanguage) {
    EXPECT_EQ(manager().getVocab("12", 90002), "Baum");
    EXPECT_EQ(manager().getVocab("12", 90001, 0), "");
    EXPECT_EQ(manager().getVocab("12", 90001), "House");
}

TEST_P(WordsTest, ALabelThatIsNotThereIsEmpty) {
    EXPECT_EQ(manager().getVocab("en", 90003), "");
    EXPECT_EQ(manager().getVocab("en", 99999), "");
    EXPECT_EQ(manager().getVocab("en", -1), "");
    EXPECT_EQ(manager().getVocab("en", 1.5), "");
}

TEST_P(WordsTest, WithoutEnglishThereIsNoFallback) {
    connection().execute("delete from TORVEX_INTERFACE_LANGUAGES where lang_id = 'en'");
    EXPECT_EQ(manager().getVocab("nl", 90002), "");
    EXPECT_EQ(manager().getVocab("1", 90001), "House");
}

TEST_P(WordsTest, ANumberWithoutAColumnIsAnError) {
    for (const auto* number : {"99", "0", "-1", "1.5"}) {
        EXPECT_TRUE(errorOf([&] { manager().getVocab(number, 90001); }).starts_with(chain({"getVocab !"})))
            << number;
    }
}

TEST_P(WordsTest, ALoginHasItsFullName) {
    EXPECT_EQ(manager().getLoginName(anna), "Anna Author");
}

TEST_P(WordsTest, ALoginThatIsGoneOrHasNoNameIsAWordOfTheInterface) {
    login(8, "ben", "   ");
    login(9, "cor", "");
    connection().execute("update TORVEX_LOGINS set name = null where loginId = 9");
    EXPECT_EQ(manager().getLoginName(8), "[unknown]");
    EXPECT_EQ(manager().getLoginName(9), "[unknown]");
    EXPECT_EQ(manager().getLoginName(77), "[unknown]");
    EXPECT_EQ(manager().getLoginName(0), "[unknown]");
    EXPECT_EQ(manager().getLoginName(-1), "[unknown]");
}

TEST_P(WordsTest, TheWordIsInTheLanguageOfTheInterface) {
    connection().execute(
        "update TORVEX_INTERFACE_VOCAB set lang_vocab3 = 'onbekend' where lang_label = 2560");
    host.session.set("torvex_current_interface", "nl");
    EXPECT_EQ(manager().getLoginName(77), "[onbekend]");
    host.session.set("torvex_current_interface", "xx");
    EXPECT_EQ(manager().getLoginName(77), "[unknown]");
    host.session.set("torvex_current_interface", Value());
    EXPECT_EQ(manager().getLoginName(77), "[unknown]");
}

TEST_P(WordsTest, ALoginIsFoundByItsUsername) {
    login(8, "ben", "Ben");
    EXPECT_EQ(manager().getLoginId("BEN"), 8);
    EXPECT_EQ(manager().getLoginId("nobody"), -1);
    EXPECT_EQ(manager().getLoginId("' or 1=1 --"), -1);
    EXPECT_EQ(manager().getLoginId(), anna);
    EXPECT_EQ(actAsNobody().getLoginId(), 0);
}

TEST_P(WordsTest, AFailureNamesTheOperation) {
    drop("TORVEX_LOGINS");
    EXPECT_TRUE(errorOf([&] { manager().getLoginName(anna); }).starts_with(chain({"getLoginName !"})));
    EXPECT_TRUE(errorOf([&] { manager().getLoginId("anna"); }).starts_with(chain({"getLoginId !"})));
    drop("TORVEX_INTERFACE_VOCAB");
    EXPECT_TRUE(errorOf([&] { manager().getVocab("en", 1); }).starts_with(chain({"getVocab !"})));
}

}  // namespace
}  // namespace torvex::test
