#include <gmock/gmock.h>

#include "platform/text/Charset.h"
#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class InterfacesTest : public RecordsTest {
  protected:
    /// English and German, as installed, and French, which is switched off; nobody else is logged in.
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_INTERFACE_LANGUAGES", {{"id", 3},
                                           {"lang_id", "fr"},
                                           {"lang_name",
                                            "Fran\xC3\xA7"
                                            "ais"},
                                           {"lang_enabled", 0}});
        row("TORVEX_INTERFACE_VOCAB", {{"lang_label", 9001},
                                       {"lang_vocab1", " Tom & Co "},
                                       {"lang_vocab2", "Tom & Kompanie"},
                                       {"lang_vocab3", ""}});
        row("TORVEX_INTERFACE_VOCAB",
            {{"lang_label", 9002}, {"lang_vocab1", "It's"}, {"lang_vocab3", "\xC3\xA9t\xC3\xA9"}});
        connection().execute("update TORVEX_LOGINS set sessionId = '' where loginId = 8");
    }

    static std::string path(const std::string& name) { return "/install/torvex/templates/" + name; }
    void master(const std::string& name, const std::string& text) {
        host.files.bytes[path("gen/" + name)] = text;
    }
    std::string made(const std::string& name) {
        const auto text = host.files.readText(path(name), TextFormat::SystemDefault);
        return text ? *text : "none";
    }
    std::string create(const std::string& langId) { return manager().createInterface(langId, 51); }
    std::string remove(const std::string& langId, int advId = 51) {
        return manager().deleteInterface(langId, advId);
    }
    std::string enabled(const std::string& langId) {
        return cell("select lang_enabled from TORVEX_INTERFACE_LANGUAGES where lang_id = '" + langId + "'");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, InterfacesTest, bothEngines(), engineName);

// ---- Reading ----

TEST_P(InterfacesTest, TheListIsByName) {
    const Value list = manager().getInterfaceLanguages();
    ASSERT_TRUE(list.isGrid());
    const ResultGrid& grid = list.grid();
    ASSERT_EQ(grid.rows(), 3U);
    EXPECT_EQ(grid.columns(), 5U);
    EXPECT_EQ(grid.at(0, 0), Value("de"));
    EXPECT_EQ(grid.at(1, 0), Value("Deutsch"));
    EXPECT_EQ(grid.at(0, 1), Value("en"));
    EXPECT_EQ(grid.at(2, 1), Value(1));
    EXPECT_EQ(grid.at(3, 1), Value(1));
    EXPECT_EQ(grid.at(0, 2), Value("fr"));
    EXPECT_EQ(grid.at(2, 2), Value(0));
    EXPECT_EQ(grid.at(3, 2), Value(0));
}

TEST_P(InterfacesTest, NamesAndCodesAreFoundByEachOther) {
    EXPECT_EQ(manager().getInterfaceName("DE"), "Deutsch");
    EXPECT_EQ(manager().getInterfaceName("xx"), "");
    EXPECT_EQ(manager().getInterfaceId("deutsch"), "de");
    EXPECT_EQ(manager().getInterfaceId("Klingon"), "");
}

// ---- createInterface ----

TEST_P(InterfacesTest, ALanguageGetsTheMastersWithItsWords) {
    master("a.html", "<b><label-html-9001></b>");
    master("sub/b.js", "'<label-js-9002>'");
    EXPECT_EQ(create(" DE "), "");
    EXPECT_EQ(made("de/a.html"), "<b>Tom&nbsp;&amp;&nbsp;Kompanie</b>");
    EXPECT_EQ(made("de/sub/b.js"), "'It\\'s'");
    EXPECT_EQ(host.files.bytes[path("de/a.html")].substr(0, 2), "\xFF\xFE") << "in Unicode";
    EXPECT_EQ(create("fr"), "");
    EXPECT_EQ(made("fr/a.html"), "<b>Tom&nbsp;&amp;&nbsp;Co</b>");
    EXPECT_EQ(made("fr/sub/b.js"), "'\xC3\xA9t\xC3\xA9'");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(InterfacesTest, FilesThatAreThereAreReplaced) {
    master("a.html", "new <label-html-9001>");
    host.files.bytes[path("de/a.html")] = "old";
    host.files.bytes[path("de/other.html")] = "stays";
    EXPECT_EQ(create("de"), "");
    EXPECT_EQ(made("de/a.html"), "new Tom&nbsp;&amp;&nbsp;Kompanie");
    EXPECT_EQ(made("de/other.html"), "stays");
}

TEST_P(InterfacesTest, FoldersDeeperDownAreNotVisited) {
    master("one/two/c.html", "x");
    master("one/b.html", "x");
    EXPECT_EQ(create("de"), "");
    EXPECT_EQ(made("de/one/b.html"), "x");
    EXPECT_EQ(made("de/one/two/c.html"), "none");
}

TEST_P(InterfacesTest, ATagWithLettersForDigitsLeavesItsFileUntranslated) {
    master("a.html", "<label-html-9001> <label-html-90x1>");
    master("b.html", "<label-html-9001>");
    EXPECT_EQ(create("de"), "");
    EXPECT_EQ(made("de/a.html"), "<label-html-9001> <label-html-90x1>");
    EXPECT_EQ(made("de/b.html"), "Tom&nbsp;&amp;&nbsp;Kompanie");
}

TEST_P(InterfacesTest, ALanguageWithoutARowIsMadeInEnglish) {
    master("a.html", "<label-html-9001>");
    EXPECT_EQ(create("xx"), "");
    EXPECT_EQ(made("xx/a.html"), "Tom&nbsp;&amp;&nbsp;Co");
}

TEST_P(InterfacesTest, WhatIsNoCodeIsRefused) {
    master("a.html", "x");
    for (const auto* code : {"", " ", "d", "deu", "..", "./", "a/", "\\a"}) {
        SCOPED_TRACE(code);
        expectRefusal("-99", [&] { return create(code); });
    }
}

TEST_P(InterfacesTest, ItMayTakeTheLongTimeAndTheNormalOneAfterwards) {
    host.session.set("torvex_scriptTimeout_normal", 77);
    host.application.set("torvex_scriptTimeout_normal", 88);
    master("a.html", "x");
    EXPECT_EQ(create("de"), "");
    EXPECT_EQ(host.context().scriptTimeout, 77);
    host.session.set("torvex_scriptTimeout_normal", Value());
    EXPECT_EQ(create("nothing"), "-99");
    EXPECT_EQ(host.context().scriptTimeout, 88) << "the installation's stands where the session has none";
}

TEST_P(InterfacesTest, ADiskThatIsFullLeavesWhatIsThere) {
    master("a.html", "x");
    host.files.bytes[path("de/a.html")] = "old";
    host.files.writeFailure = "no space left";
    expectRefusal("-99", [&] { return create("de"); });
    EXPECT_THAT(host.log.lines, ElementsAre(HasSubstr("no space left")));
    expectRefusal("-99", [&] { return create("fr"); });
    EXPECT_FALSE(host.files.folderExists(path("fr"))) << "a folder that was begun is taken back";
}

TEST_P(InterfacesTest, AMasterThatCantBeReadLeavesWhatIsThere) {
    master("a.html", "x");
    host.files.readFailure = "broken";
    const auto before = host.files.bytes;
    EXPECT_EQ(create("de"), "-99");
    EXPECT_EQ(host.files.bytes, before);
}

TEST_P(InterfacesTest, AMasterOfAnotherEncodingIsReadByItsMark) {
    master("a.html", charset::toUtf16File("\xC3\xA9<label-html-9001>"));
    EXPECT_EQ(create("de"), "");
    EXPECT_EQ(made("de/a.html"), "\xC3\xA9Tom&nbsp;&amp;&nbsp;Kompanie");
}

TEST_P(InterfacesTest, TheOtherServersGetTheFolderAndItsFiles) {
    host.files.madeFolders = {"/mnt/b/www"};
    host.application.set("torvex_loadBalancing_shareName", "www");
    host.application.set("torvex_replication_root", "/mnt");
    row("TORVEX_SERVERS", {{"serverId", 3}, {"serverName", "b"}});
    master("sub/a.html", "<label-html-9001>");
    host.files.bytes["/mnt/b/www/torvex/templates/de/sub/a.html"] = "old";
    EXPECT_EQ(create("de"), "");
    EXPECT_EQ(host.files.bytes["/mnt/b/www/torvex/templates/de/sub/a.html"],
              host.files.bytes[path("de/sub/a.html")]);
    EXPECT_TRUE(host.files.folderExists("/mnt/b/www/torvex/templates/de"));
}

// ---- setInterfaceOnOff ----

TEST_P(InterfacesTest, ALanguageIsSwitchedOnOnceItHasTemplates) {
    EXPECT_EQ(manager().setInterfaceOnOff("fr", 1, 51), -1);
    EXPECT_EQ(enabled("fr"), "0");
    EXPECT_THAT(auditTrail(), IsEmpty());
    master("a.html", "x");
    create("fr");
    EXPECT_EQ(manager().setInterfaceOnOff(" FR ", 1, 51), 1);
    EXPECT_EQ(enabled("fr"), "1");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||51|enable|Interface language \"Fran\xC3\xA7"
                                          "ais\" has "
                                          "been enabled"));
}

TEST_P(InterfacesTest, ALanguageThatLostItsTemplatesIsSwitchedOffByTheTry) {
    EXPECT_EQ(manager().setInterfaceOnOff("de", 1), -1);
    EXPECT_EQ(enabled("de"), "0");
}

TEST_P(InterfacesTest, AnyOtherStateSwitchesOff) {
    for (const int state : {0, 2, -1}) {
        connection().execute("update TORVEX_INTERFACE_LANGUAGES set lang_enabled = 1");
        EXPECT_EQ(manager().setInterfaceOnOff("de", state), 0);
        EXPECT_EQ(enabled("de"), "0");
    }
    EXPECT_THAT(auditTrail(), IsEmpty());
    manager().setInterfaceOnOff("de", 0, 51);
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||51|disable|Interface language \"Deutsch\" has been "
                            "disabled"));
}

TEST_P(InterfacesTest, TheDefaultLanguageStaysOn) {
    const auto before = everything();
    EXPECT_EQ(manager().setInterfaceOnOff("en", 0, 51), 0);
    EXPECT_EQ(manager().setInterfaceOnOff("en", 7, 51), 7);
    EXPECT_TRUE(everything() == before);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(InterfacesTest, ALanguageThatIsNotThereGivesTheStateBack) {
    const auto before = everything();
    for (const int state : {1, 0, 5}) EXPECT_EQ(manager().setInterfaceOnOff("xx", state, 51), state);
    EXPECT_TRUE(everything() == before);
}

// ---- deleteInterface ----

TEST_P(InterfacesTest, ALanguageGoesWithItsWordsAndTemplates) {
    host.files.bytes[path("fr/a.html")] = "x";
    EXPECT_EQ(remove(" FR "), "");
    EXPECT_EQ(enabled("fr"), "");
    EXPECT_THAT(rowsOf("select lang_label from TORVEX_INTERFACE_VOCAB where lang_vocab3 <> ''"), IsEmpty());
    EXPECT_EQ(manager().getVocab("de", 9001), "Tom & Kompanie");
    EXPECT_FALSE(host.files.folderExists(path("fr")));
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||51|delete|Interface language \"Fran\xC3\xA7"
                                          "ais\" has "
                                          "been removed"));
}

TEST_P(InterfacesTest, ARemovalByNoEntryWritesNoLine) {
    EXPECT_EQ(manager().deleteInterface("fr"), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(InterfacesTest, NobodyRemovesNoLanguage) {
    actAsNobody();
    expectRefusal("-10", [&] { return remove("fr"); });
    expectRefusal("-10", [&] { return remove("xx"); });
}

TEST_P(InterfacesTest, ALanguageStaysWhileSomebodyNeedsIt) {
    login(9, "cora", "Cora", "session-of-cora");
    host.session.set("torvex_current_interface", "xx");
    expectRefusal("-2", [&] { return remove("XX"); });
    host.session.set("torvex_current_interface", "de");
    expectRefusal("-2", [&] { return remove("de"); });
    expectRefusal("-1", [&] { return remove("yy"); });
    expectRefusal("-3", [&] { return remove("en"); });
    expectRefusal("-4", [&] { return remove("fr"); });
    connection().execute("delete from TORVEX_LOGINS where loginId = 9");
    EXPECT_EQ(remove("fr"), "");
}

TEST_P(InterfacesTest, AFailureOfARemovalChangesNothing) {
    host.files.bytes[path("fr/a.html")] = "x";
    failEverywhere("", "-99", [&] { return remove("fr"); });
}

TEST_P(InterfacesTest, TemplatesThatCantBeRemovedAreToldToOperators) {
    host.files.bytes[path("fr/a.html")] = "x";
    host.files.writeFailure = "read only";
    EXPECT_EQ(remove("fr"), "");
    EXPECT_THAT(host.log.lines, SizeIs(1));
    EXPECT_EQ(enabled("fr"), "");
}

// ---- saveVocab ----

TEST_P(InterfacesTest, AWordIsSavedTrimmedInItsLanguage) {
    EXPECT_EQ(manager().saveVocab("de", 9001, "  Tom's \xC3\xA9  ", 52), "");
    EXPECT_EQ(manager().getVocab("de", 9001), "Tom's \xC3\xA9");
    EXPECT_EQ(manager().getVocab("en", 9001), "Tom & Co");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||52|edit|Interface label 9001, language DE, has been updated"));
}

TEST_P(InterfacesTest, ALabelThatIsNotThereIsMade) {
    EXPECT_EQ(manager().saveVocab(" fr ", 9777, "neuf"), "");
    EXPECT_EQ(manager().getVocab("fr", 9777), "neuf");
    EXPECT_EQ(manager().getVocab("en", 9777), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(InterfacesTest, AnUnknownLanguageGetsNoWord) {
    expectRefusal("", [&] { return manager().saveVocab("xx", 9001, "x", 52); });
    expectRefusal("", [&] { return manager().saveVocab("", 9001, "x", 52); });
    expectRefusal("", [&] { return manager().saveVocab("2", 9001, "x", 52); });
}

TEST_P(InterfacesTest, AWordThatCantBeSavedIsRefused) {
    expectRefusal("-99", [&] { return manager().saveVocab("de", 9001.5, "x", 52); });
    row("TORVEX_INTERFACE_LANGUAGES", {{"id", 99}, {"lang_id", "yy"}});
    expectRefusal("-99", [&] { return manager().saveVocab("yy", 9001, "x", 52); });
}

TEST_P(InterfacesTest, BytesThatAreNoTextAreStoredAsReplacements) {
    EXPECT_EQ(manager().saveVocab("de", 9001,
                                  "Gr\xFC\xDF"
                                  "e"),
              "");
    EXPECT_EQ(manager().getVocab("de", 9001),
              "Gr\xEF\xBF\xBD\xEF\xBF\xBD"
              "e");
}

TEST_P(InterfacesTest, FailuresOfReadingHaveTheOperationsLine) {
    drop("TORVEX_INTERFACE_LANGUAGES");
    EXPECT_THAT(errorOf([&] { manager().getInterfaceLanguages(); }),
                StartsWith(chain({"getInterfaceLanguages !"})));
    EXPECT_THAT(errorOf([&] { manager().getInterfaceName("de"); }),
                StartsWith(chain({"getInterfaceName !"})));
    EXPECT_THAT(errorOf([&] { manager().getInterfaceId("x"); }), StartsWith(chain({"getInterfaceId !"})));
    EXPECT_THAT(errorOf([&] { manager().setInterfaceOnOff("de", 1); }),
                StartsWith(chain({"setInterfaceOnOff !"})));
    EXPECT_EQ(manager().createInterface("de"), "-99");
    EXPECT_EQ(manager().deleteInterface("fr"), "-99");
    EXPECT_EQ(manager().saveVocab("de", 9001, "x"), "-99");
}

}  // namespace
}  // namespace torvex::test
