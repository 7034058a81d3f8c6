#include <gmock/gmock.h>

#include "support/FailingDatabase.h"
#include "support/RegisterTest.h"

namespace torvex::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class LanguagesTest : public RegisterTest {
  protected:
    /// All languages as "lang|name|charset_id|lock", by code.
    std::vector<std::string> languages() {
        std::vector<std::string> lines;
        auto rows =
            connection().query("select lang, name, charset_id, lock from TORVEX_LANGUAGES order by lang");
        while (rows.next()) {
            lines.push_back(rows.text("lang") + "|" + rows.text("name") + "|" + rows.text("charset_id") +
                            "|" + rows.text("lock"));
        }
        return lines;
    }
    /// What is in force for all: "label|code page".
    std::string charset() {
        return host.application.text("torvex_charset") + "|" + host.application.text("torvex_codepage");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LanguagesTest, bothEngines(), engineName);

TEST_P(LanguagesTest, ALanguageIsAdded) {
    EXPECT_TRUE(manager().addLanguage(" FR ",
                                      " Fran\xC3\xA7"
                                      "ais's ",
                                      2));
    EXPECT_THAT(languages(), ElementsAre("en|Language en|1|",
                                         "fr|Fran\xC3\xA7"
                                         "ais's|2|"));
}

TEST_P(LanguagesTest, ItsFoldersAreMadeInEverySite) {
    site("bb");
    host.files.bytes["/install/wwwroot/admin.css"] = "css";
    EXPECT_TRUE(manager().addLanguage("fr", "French", 1));
    for (const auto* site : {"aa", "bb"}) {
        for (const auto* kind : {"baseTemplates/", "contentTemplates/", "wwwroot/stylesheets/"}) {
            EXPECT_THAT(folders(), Contains(std::string(kind) + site + "/fr"));
            EXPECT_THAT(folders(), Contains(std::string(kind) + site + "/en"));
        }
        EXPECT_EQ(host.files.bytes["/install/wwwroot/stylesheets/" + std::string(site) + "/fr/admin.css"],
                  "css");
    }
}

TEST_P(LanguagesTest, ACodeOfOneCharacterIsNotPadded) {
    EXPECT_FALSE(manager().addLanguage("f", "French", 1));
    EXPECT_THAT(languages(), ElementsAre("en|Language en|1|"));
}

TEST_P(LanguagesTest, WithoutACodeANameOrACharsetNothingIsAdded) {
    host.database.target = nullptr;
    host.application.set("torvex_charset", "as before");
    for (const auto* code : {"", "  ", "fra", "..", "a/", "\\a"}) {
        EXPECT_FALSE(manager().addLanguage(code, "French", 1, 12)) << code;
    }
    EXPECT_FALSE(manager().addLanguage("fr", "  ", 1, 12));
    for (const int charset : {0, -1}) EXPECT_FALSE(manager().addLanguage("fr", "French", charset, 12));
    EXPECT_THAT(languages(), ElementsAre("en|Language en|1|"));
    EXPECT_EQ(host.application.text("torvex_charset"), "as before");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LanguagesTest, ANameThatIsTakenAddsNothing) {
    const auto before = folders();
    EXPECT_FALSE(manager().addLanguage("fr", " LANGUAGE EN ", 1, 12));
    EXPECT_THAT(languages(), ElementsAre("en|Language en|1|"));
    EXPECT_EQ(folders(), before);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LanguagesTest, ACodeThatIsTakenAddsNothing) {
    const auto before = folders();
    const auto copies = host.files.bytes;
    const std::string charsetBefore = charset();
    for (const auto* code : {"en", " EN "}) {
        EXPECT_FALSE(manager().addLanguage(code, "English", 2, 12)) << code;
    }
    EXPECT_THAT(languages(), ElementsAre("en|Language en|1|"));
    EXPECT_EQ(folders(), before);
    EXPECT_EQ(host.files.bytes, copies);
    EXPECT_EQ(charset(), charsetBefore);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LanguagesTest, AFolderThatCantBeMadeIsAnErrorAndChangesNothing) {
    host.files.writeFailure = "disk full";
    EXPECT_EQ(errorOf([&] { manager().addLanguage("fr", "French", 1, 12); }),
              chain({"addLanguage !", "createSiteDirectories !", "createDirectory !"}) +
                  "/install/baseTemplates/aa: disk full");
    EXPECT_THAT(languages(), ElementsAre("en|Language en|1|"));
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LanguagesTest, AFailureAtAnyStepIsAnErrorAndChangesNothing) {
    const auto before = folders();
    FailingDatabase failing(database());
    host.database.target = &failing;
    constexpr int stepsToAdd = 7;  // open, begin, take turns, namesake, row, pairs, commit
    for (int step = 1; step <= stepsToAdd; ++step) {
        failing.reset(step);
        EXPECT_THAT(errorOf([&] { manager().addLanguage("fr", "French", 1, 12); }),
                    StartsWith(chain({"addLanguage !"})));
        EXPECT_THAT(languages(), ElementsAre("en|Language en|1|")) << step;
        EXPECT_EQ(folders(), before) << step;
        EXPECT_THAT(auditTrail(), IsEmpty()) << step;
    }
    failing.reset(stepsToAdd + 1);
    EXPECT_TRUE(manager().addLanguage("fr", "French", 1, 12));
}

TEST_P(LanguagesTest, AddingLeavesALineForItsEntryOnly) {
    manager().addLanguage("fr", "French", 1);
    EXPECT_THAT(auditTrail(), IsEmpty());
    manager().addLanguage("de", " German ", 1, 12);
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||12|new|New language \"German\""));
}

TEST_P(LanguagesTest, ACharsetIsInForceForAllWhileAllAgree) {
    EXPECT_TRUE(manager().addLanguage("fr", "French", 1));
    EXPECT_EQ(charset(), "utf-8|65001");
    EXPECT_TRUE(manager().addLanguage("de", "German", 2));
    EXPECT_EQ(charset(), "|");
    EXPECT_EQ(manager().deleteLanguage("de"), "");
    EXPECT_EQ(charset(), "utf-8|65001");
}

TEST_P(LanguagesTest, TheLabelDecidesInAnyCaseAndWithoutBlanks) {
    connection().execute("update TORVEX_CHARSETS set charset_label = ' UTF-8 ' where charset_id = 2");
    EXPECT_TRUE(manager().addLanguage("zz", "Last", 2));
    EXPECT_EQ(charset(), "utf-8|65001");
}

TEST_P(LanguagesTest, ALanguageOfAnUnknownCharsetHasNoSay) {
    EXPECT_TRUE(manager().addLanguage("fr", "French", 999));
    EXPECT_EQ(charset(), "utf-8|65001");
}

TEST_P(LanguagesTest, UpdatingWritesNameAndCharsetAndFreesTheRecord) {
    connection().execute("update TORVEX_LANGUAGES set lock = 'somebody'");
    EXPECT_TRUE(manager().updateLanguage(" EN ", " English ", 2));
    EXPECT_THAT(languages(), ElementsAre("en|English|2|"));
    EXPECT_EQ(charset(), "iso-8859-1|28591");
}

TEST_P(LanguagesTest, UpdatingTheNameAloneLeavesTheCharsetInForce) {
    host.application.set("torvex_charset", "as before");
    EXPECT_TRUE(manager().updateLanguage("en", "English", 1));
    EXPECT_EQ(host.application.text("torvex_charset"), "as before");
}

TEST_P(LanguagesTest, UpdatingWhatIsntThereOrIsIncompleteIsFalse) {
    host.application.set("torvex_charset", "as before");
    for (const auto* code : {"", "e", "zz", "eng", "..", "' or 1=1 --"}) {
        EXPECT_FALSE(manager().updateLanguage(code, "New", 2, 12)) << code;
    }
    EXPECT_FALSE(manager().updateLanguage("en", " ", 2, 12));
    EXPECT_FALSE(manager().updateLanguage("en", "New", 0, 12));
    EXPECT_THAT(languages(), ElementsAre("en|Language en|1|"));
    EXPECT_EQ(host.application.text("torvex_charset"), "as before");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LanguagesTest, UpdatingLeavesALineForItsEntryOnly) {
    manager().updateLanguage("en", "English", 1);
    EXPECT_THAT(auditTrail(), IsEmpty());
    manager().updateLanguage("en", " English ", 1, 12);
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||12|save|Language \"English\" has been updated"));
}

TEST_P(LanguagesTest, NamesCodesAndCharsetsAreRead) {
    row("TORVEX_LANGUAGES", {{"lang", "fr"}, {"name", "French"}, {"charset_id", 2}});
    EXPECT_EQ(manager().getLanguageName("FR"), "French");
    EXPECT_EQ(manager().getLanguageId("FRENCH"), "fr");
    EXPECT_EQ(manager().getCharsetID("Fr"), 2);
    EXPECT_EQ(manager().getCharsetName("fr"), "Western European (ISO)");
    EXPECT_EQ(manager().getCharsetLabel(" FR "), "iso-8859-1");
    EXPECT_EQ(manager().getCharsetCodepage("fr"), "28591");
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().getLanguageName(bad), "");
        EXPECT_EQ(manager().getLanguageId(bad), "");
        EXPECT_EQ(manager().getCharsetID(bad), 0);
        EXPECT_EQ(manager().getCharsetName(bad), "");
        EXPECT_EQ(manager().getCharsetLabel(bad), "");
        EXPECT_EQ(manager().getCharsetCodepage(bad), "");
    }
}

TEST_P(LanguagesTest, LanguagesAreListedWithTheirCharsets) {
    row("TORVEX_LANGUAGES", {{"lang", "zz"}, {"name", "alpha"}, {"charset_id", 2}});
    row("TORVEX_LANGUAGES", {{"lang", "xx"}, {"name", "Without"}, {"charset_id", 999}});
    const Value byCode = manager().getLanguages();
    const ResultGrid& grid = byCode.grid();
    EXPECT_EQ(grid.columns(), 6U);
    ASSERT_EQ(grid.rows(), 2U);
    EXPECT_EQ(grid.at(0, 0), Value("en"));
    EXPECT_EQ(grid.at(0, 1), Value("zz"));
    EXPECT_EQ(grid.at(1, 1), Value("alpha"));
    EXPECT_EQ(grid.at(2, 1), Value("Western European (ISO)"));
    EXPECT_EQ(grid.at(3, 1), Value("iso-8859-1"));
    EXPECT_EQ(grid.at(4, 1), Value(28591));
    EXPECT_TRUE(grid.at(5, 1).isEmpty());
    EXPECT_EQ(manager().getLanguages(2).grid().at(0, 0), Value("zz"));
}

TEST_P(LanguagesTest, CharsetsAreListedByTheColumnAskedFor) {
    connection().execute("delete from TORVEX_CHARSETS where charset_id > 2");
    connection().execute(
        "insert into TORVEX_CHARSETS (charset_id, charset_name, charset_label, charset_codepage) values "
        "(3, 'a', 'z', 70000), (4, 'z', 'a', 65002), (5, 'y', 'y', 1)");
    const auto first = [&](int sortId) { return manager().getCharsets(sortId).grid().at(0, 0).toText(); };
    EXPECT_EQ(first(1), "1");
    EXPECT_EQ(first(2), "3");
    EXPECT_EQ(first(3), "4");
    EXPECT_EQ(first(4), "5");
    const Value list = manager().getCharsets();
    EXPECT_EQ(list.grid().columns(), 5U);
    EXPECT_EQ(list.grid().at(1, 0), Value("Unicode (UTF-8)"));
    EXPECT_EQ(list.grid().at(2, 0), Value("utf-8"));
    EXPECT_EQ(list.grid().at(3, 0), Value(65001));
}

TEST_P(LanguagesTest, ABrokenDatabaseIsAnErrorOfEach) {
    drop("TORVEX_LANGUAGES");
    drop("TORVEX_CHARSETS");
    EXPECT_THAT(errorOf([&] { manager().getLanguageName("en"); }), StartsWith(chain({"getLanguageName !"})));
    EXPECT_THAT(errorOf([&] { manager().getLanguageId("en"); }), StartsWith(chain({"getLanguageId !"})));
    EXPECT_THAT(errorOf([&] { manager().getLanguages(); }), StartsWith(chain({"getLanguages !"})));
    EXPECT_THAT(errorOf([&] { manager().getCharsets(); }), StartsWith(chain({"getCharsets !"})));
    EXPECT_THAT(errorOf([&] { manager().getCharsetID("en"); }), StartsWith(chain({"getCharsetID !"})));
    EXPECT_THAT(errorOf([&] { manager().getCharsetName("en"); }), StartsWith(chain({"getCharsetName !"})));
    EXPECT_THAT(errorOf([&] { manager().getCharsetLabel("en"); }), StartsWith(chain({"getCharsetLabel !"})));
    EXPECT_THAT(errorOf([&] { manager().getCharsetCodepage("en"); }),
                StartsWith(chain({"getCharsetCodepage !"})));
    EXPECT_THAT(errorOf([&] { manager().addLanguage("fr", "French", 1); }),
                StartsWith(chain({"addLanguage !"})));
    EXPECT_THAT(errorOf([&] { manager().updateLanguage("en", "French", 1); }),
                StartsWith(chain({"updateLanguage !"})));
}

}  // namespace
}  // namespace torvex::test
