#include <gmock/gmock.h>

#include "records/Vocabulary.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class RegistersInterfacesTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        connection().execute("delete from TORVEX_INTERFACE_VOCAB");
        word(9001, "Save");
        word(9002, "Close");
    }
    std::string add(const std::string& code, const std::string& name) {
        return registers().addInterface(code, name, 51);
    }
    std::string save(const std::string& langId, const std::string& words) {
        return registers().saveWords(langId, words, 52);
    }
    std::string number(const std::string& code) {
        return cell("select id from TORVEX_INTERFACE_LANGUAGES where lang_id = '" + code + "'");
    }
    std::vector<std::string> words(const std::string& langId) {
        return linesOf(registers().getWords(langId));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersInterfacesTest, bothEngines(), engineName);

TEST_P(RegistersInterfacesTest, ALanguageIsAddedWithoutWordsAndSwitchedOff) {
    EXPECT_EQ(add(" FR ", "  Français "), "0");
    EXPECT_EQ(cell("select lang_name || '|' || lang_enabled || '|' || lang_default from "
                   "TORVEX_INTERFACE_LANGUAGES where lang_id = 'fr'"),
              "Français|0|0");
    EXPECT_THAT(words("fr"), ElementsAre("9001|Save|", "9002|Close|"));
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||51|new|New interface language \"Français\""));
}

TEST_P(RegistersInterfacesTest, ALanguageBeyondTheColumnsThatAreThereGetsOne) {
    row("TORVEX_INTERFACE_LANGUAGES", {{"id", 40}, {"lang_id", "nl"}, {"lang_name", "Nederlands"}});
    if (GetParam() == db::Engine::PostgreSql)
        connection().executeScript(
            "select setval(pg_get_serial_sequence('TORVEX_INTERFACE_LANGUAGES'::regclass::text, 'id'), 40)");
    EXPECT_EQ(add("fr", "Français"), "0");
    EXPECT_EQ(number("fr"), "41");
    EXPECT_EQ(save("fr", "9001,Enregistrer"), "1");
    EXPECT_EQ(vocabularyText(connection(), "fr", 9001), "Enregistrer");
    EXPECT_EQ(cell("select lang_label from TORVEX_INTERFACE_VOCAB where lang_vocab41 = 'ENREGISTRER'"),
              "9001")
        << "compared as every text is";
}

TEST_P(RegistersInterfacesTest, AColumnThatWasUsedBeforeIsEmpty) {
    connection().execute("update TORVEX_INTERFACE_VOCAB set lang_vocab3 = 'left over'");
    EXPECT_EQ(add("fr", "Français"), "0");
    ASSERT_EQ(number("fr"), "3");
    EXPECT_THAT(words("fr"), ElementsAre("9001|Save|", "9002|Close|"));
}

TEST_P(RegistersInterfacesTest, ALanguageThatCantBeAddedChangesNothing) {
    expectRefusal("-1", [&] { return add("fra", "Français"); });
    expectRefusal("-1", [&] { return add("", "Français"); });
    expectRefusal("-1", [&] { return add("..", "Français"); });
    expectRefusal("-2", [&] { return add("DE", "Français"); });
    expectRefusal("-3", [&] { return add("fr", "  "); });
    expectRefusal("-4", [&] { return add("fr", "DEUTSCH"); });
    actAsNobody();
    expectRefusal("-10", [&] { return add("fr", "Français"); });
}

TEST_P(RegistersInterfacesTest, AFailureWhileAddingChangesNothing) {
    failEverywhere("0", "-99", [&] { return add("fr", "Français"); });
}

TEST_P(RegistersInterfacesTest, WordsStandBesideTheEnglishOnes) {
    connection().execute(
        "update TORVEX_INTERFACE_VOCAB set lang_vocab2 = ' Speichern ' where lang_label = 9001");
    EXPECT_THAT(words(" de "), ElementsAre("9001|Save|Speichern", "9002|Close|"));
    EXPECT_THAT(words("xx"), IsEmpty());
    EXPECT_THAT(words("2"), IsEmpty());
}

TEST_P(RegistersInterfacesTest, ATableOfWordsIsSavedWithOneLineInTheTrail) {
    EXPECT_EQ(save("DE", "9001,Speichern\r\n9002,\"Zu, und \"\"fertig\"\"\nhier\"\r\n"), "2");
    EXPECT_THAT(words("de"), ElementsAre("9001|Save|Speichern", "9002|Close|Zu, und \"fertig\"\nhier"));
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||52|edit|2 interface labels, language DE, have been updated"));
}

TEST_P(RegistersInterfacesTest, WordsThatAreThereAlreadyChangeNothing) {
    EXPECT_EQ(save("de", "9001,Speichern\n9002,Zu"), "2");
    EXPECT_EQ(save("de", "9001, Speichern \n9002,Aus"), "1");
    EXPECT_EQ(save("de", "9001,Speichern"), "0");
    EXPECT_EQ(save("de", "9001,"), "1") << "a word can be taken away";
    EXPECT_EQ(auditTrail().size(), 3U);
}

TEST_P(RegistersInterfacesTest, ATableThatIsNoneSavesNothing) {
    expectRefusal("-1", [&] { return save("xx", "9001,Speichern"); });
    for (const auto* table : {"", "9001", "9001,a,b", "nine,a", "9001,\"a", "9001,a\n-1,b", "9001,a\n9002"})
        expectRefusal("-2", [&] { return save("de", table); });
    expectRefusal("-3", [&] { return save("de", "9001,Speichern\n9003,Neu"); });
    actAsNobody();
    expectRefusal("-10", [&] { return save("de", "9001,Speichern"); });
}

TEST_P(RegistersInterfacesTest, AFailureWhileSavingChangesNothing) {
    failEverywhere("2", "-99", [&] { return save("de", "9001,Speichern\n9002,Zu"); });
}

TEST_P(RegistersInterfacesTest, WhatFailsIsRaised) {
    drop("TORVEX_INTERFACE_VOCAB");
    EXPECT_THAT(errorOf([&] { registers().getWords("de"); }), StartsWith(chain({"getWords !"})));
}

}  // namespace
}  // namespace torvex::test
