#include <gmock/gmock.h>

#include "support/FailingDatabase.h"
#include "support/RegisterTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// Two languages of one site, "en" that stays and "de" that is to go.
class LanguageRemovalTest : public RegisterTest {
  protected:
    void SetUp() override {
        RegisterTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_LANGUAGES", {{"lang", "de"}, {"name", "O'German"}, {"charset_id", 2}});
        fill("aa", "en", 10);
        fill("aa", "de", 20);
        for (const auto* path : {"baseTemplates/aa/de", "contentTemplates/aa/de", "wwwroot/stylesheets/aa/de",
                                 "search/html/de/aa", "baseTemplates/aa/en", "search/html/en/aa"}) {
            folder(path);
        }
        foldersBefore_ = folders();
        host.application.set("torvex_charset", "as before");
    }

    void expectNothingChanged() {
        EXPECT_THAT(tablesWithLanguage("de"), SizeIs(14));
        EXPECT_THAT(hangingRows(), ElementsAre("TORVEX_FORUM_TOPICS 2", "TORVEX_FORUM_REACTIONS 2",
                                               "TORVEX_NEWSFLASH_CATEGORIES_DESIGN 2",
                                               "TORVEX_NEWSFLASH_CATEGORIES_LIVE 2"));
        expectNothingElseChanged();
    }
    void expectNothingElseChanged() {
        EXPECT_TRUE(manager().isLang("de"));
        EXPECT_EQ(folders(), foldersBefore_);
        EXPECT_EQ(host.application.text("torvex_charset"), "as before");
        EXPECT_THAT(auditTrail(), IsEmpty());
    }

    std::vector<std::string> foldersBefore_;
};
INSTANTIATE_TEST_SUITE_P(Engines, LanguageRemovalTest, bothEngines(), engineName);

TEST_P(LanguageRemovalTest, AllRowsOfTheLanguageGoAndNoOthers) {
    EXPECT_EQ(manager().deleteLanguage(" DE "), "");
    EXPECT_FALSE(manager().isLang("de"));
    EXPECT_THAT(tablesWithLanguage("de"), IsEmpty());
    EXPECT_THAT(tablesWithLanguage("en"), SizeIs(14));
    EXPECT_EQ(cell("select count(*) from TORVEX_IMAGES where img_site = 'aa'"), "2");
    EXPECT_TRUE(manager().isSite("aa"));
    EXPECT_TRUE(manager().isLang("en"));
    EXPECT_THAT(hangingRows(),
                ElementsAre("TORVEX_FORUM_TOPICS 1", "TORVEX_FORUM_REACTIONS 1",
                            "TORVEX_NEWSFLASH_CATEGORIES_DESIGN 1", "TORVEX_NEWSFLASH_CATEGORIES_LIVE 1"));
}

TEST_P(LanguageRemovalTest, ItsFoldersGoInEverySite) {
    site("bb");
    folder("baseTemplates/bb/de");
    EXPECT_EQ(manager().deleteLanguage("DE"), "");
    for (const auto* gone : {"baseTemplates/aa/de", "contentTemplates/aa/de", "wwwroot/stylesheets/aa/de",
                             "baseTemplates/bb/de", "search/html/de"}) {
        EXPECT_FALSE(isFolder(gone)) << gone;
    }
    for (const auto* kept : {"baseTemplates/aa/en", "search/html/en/aa", "wwwroot/stylesheets"}) {
        EXPECT_TRUE(isFolder(kept)) << kept;
    }
}

TEST_P(LanguageRemovalTest, TheCharsetInForceIsThatOfTheRest) {
    EXPECT_EQ(manager().deleteLanguage("de"), "");
    EXPECT_EQ(host.application.text("torvex_charset"), "utf-8");
    EXPECT_EQ(host.application.text("torvex_codepage"), "65001");
}

TEST_P(LanguageRemovalTest, RemovingLeavesALineForItsEntryOnly) {
    language("fr");
    EXPECT_EQ(manager().deleteLanguage("fr"), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
    EXPECT_EQ(manager().deleteLanguage("de", 12), "");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||12|delete|Language \"O'German\" has been removed"));
}

TEST_P(LanguageRemovalTest, NobodyMayRemoveALanguage) {
    otherLoginIn("aa.de");
    EXPECT_EQ(actAsNobody().deleteLanguage("de", 12), "-10");
    actAs(anna, "anna", "Anna Author");
    expectNothingChanged();
}

TEST_P(LanguageRemovalTest, ALanguageInWhichAnotherWorksStays) {
    otherLoginIn("bb.DE");
    page("aa.de.01").insertInDesignOnly();
    EXPECT_EQ(manager().deleteLanguage("de", 12), "-2");
    expectNothingChanged();
}

TEST_P(LanguageRemovalTest, OnesOwnPlaceAndOthersElsewhereOrLoggedOutDontCount) {
    connection().execute("update TORVEX_LOGINS set currentSite = 'aa.de'");
    otherLoginIn("de.en");
    otherLoginIn("aa.de", "");
    EXPECT_EQ(manager().deleteLanguage("de"), "");
}

TEST_P(LanguageRemovalTest, ALanguageWithPagesStays) {
    page("aa.de.01").insertInDesignOnly();
    EXPECT_EQ(manager().deleteLanguage("de", 12), "-3");
    expectNothingChanged();
}

TEST_P(LanguageRemovalTest, PagesOfTheLiveTableAloneDontKeepIt) {
    page("aa.de.01").insertInLiveOnly();
    EXPECT_EQ(manager().deleteLanguage("de"), "");
}

TEST_P(LanguageRemovalTest, TheLastLanguageStays) {
    connection().execute("delete from TORVEX_LANGUAGES where lang = 'en'");
    EXPECT_EQ(manager().deleteLanguage("de", 12), "-4");
    expectNothingChanged();
}

TEST_P(LanguageRemovalTest, AFailureInTheMiddleHasChangedNothing) {
    drop("TORVEX_TEMPLATES");
    EXPECT_EQ(manager().deleteLanguage("de", 12), "-99");
    expectNothingElseChanged();
    EXPECT_EQ(cell("select count(*) from TORVEX_ADVANCED_RIGHTS where lang = 'de'"), "1");
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_TOPICS"), "2");
    EXPECT_THAT(host.log.lines, ElementsAre(StartsWith("the language \"de\" was not removed: ")));
}

TEST_P(LanguageRemovalTest, AFailureAtAnyStepHasChangedNothing) {
    // To open, to begin, to take turns, to ask who works there, for pages, for languages and for the name.
    constexpr int stepsBefore = 7;
    FailingDatabase failing(database());
    host.database.target = &failing;
    int step = 1;
    for (; step <= stepsBefore; ++step) {
        failing.reset(step);
        EXPECT_THAT(errorOf([&] { manager().deleteLanguage("de", 12); }),
                    StartsWith(chain({"deleteLanguage !"})));
        expectNothingChanged();
    }
    for (failing.reset(step); manager().deleteLanguage("de") == "-99"; failing.reset(++step)) {
        ASSERT_EQ(failing.steps, step) << "it failed without a failure";
        expectNothingChanged();
    }
    EXPECT_GT(step, stepsBefore + 20);
    EXPECT_THAT(tablesWithLanguage("de"), IsEmpty());
}

TEST_P(LanguageRemovalTest, WhatIsNoCodeRemovesNoFolders) {
    for (const auto* code : {"", "  ", "..", "/", "d", "deu"}) {
        EXPECT_EQ(manager().deleteLanguage(code, 12), "-99") << code;
    }
    expectNothingChanged();
}

TEST_P(LanguageRemovalTest, AFolderThatCantBeRemovedIsAnErrorAfterTheRowsAreGone) {
    host.files.writeFailure = "in use";
    EXPECT_EQ(errorOf([&] { manager().deleteLanguage("de", 12); }),
              chain({"addLanguage !", "deleteDirectory !"}) + "/install/search/html/de: in use");
    EXPECT_THAT(tablesWithLanguage("de"), IsEmpty());
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(LanguageRemovalTest, TestsThatCantBeMadeAreAnError) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT(errorOf([&] { manager().deleteLanguage("de", 12); }),
                StartsWith(chain({"deleteLanguage !"})));
    expectNothingElseChanged();
}

}  // namespace
}  // namespace torvex::test
