#include <gmock/gmock.h>
#include <thread>

#include "support/FailingDatabase.h"
#include "support/RegisterTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// Two full sites, "aa" that stays and "bb" that is to go.
class SiteRemovalTest : public RegisterTest {
  protected:
    void SetUp() override {
        RegisterTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_SITES", {{"site", "bb"}, {"name", "Bee's"}});
        fill("aa", "en", 10);
        fill("bb", "en", 20);
        for (const auto* path : {"baseTemplates/bb/en", "contentTemplates/bb", "wwwroot/documents/bb/001",
                                 "wwwroot/images/bb", "wwwroot/stylesheets/bb/en", "search/html/en/bb",
                                 "baseTemplates/aa/en", "search/html/en/aa", "wwwroot/stylesheets/shared"}) {
            folder(path);
        }
        host.files.bytes["/install/wwwroot/documents/bb/001/x.txt"] = "x";
        foldersBefore_ = folders();
    }

    void expectNothingChanged() {
        EXPECT_THAT(tablesWithSite("bb"), SizeIs(tablesWithSite("aa").size()));
        EXPECT_THAT(tablesWithSite("bb"), SizeIs(20));
        EXPECT_THAT(hangingRows(), ElementsAre("TORVEX_FORUM_TOPICS 2", "TORVEX_FORUM_REACTIONS 2",
                                               "TORVEX_NEWSFLASH_CATEGORIES_DESIGN 2",
                                               "TORVEX_NEWSFLASH_CATEGORIES_LIVE 2"));
        expectNothingElseChanged();
    }
    void expectNothingElseChanged() {
        EXPECT_TRUE(manager().isSite("bb"));
        EXPECT_EQ(folders(), foldersBefore_);
        EXPECT_THAT(host.files.bytes, SizeIs(1));
        EXPECT_THAT(auditTrail(), IsEmpty());
    }

    std::vector<std::string> foldersBefore_;
};
INSTANTIATE_TEST_SUITE_P(Engines, SiteRemovalTest, bothEngines(), engineName);

TEST_P(SiteRemovalTest, AllRowsOfTheSiteGoAndNoOthers) {
    EXPECT_EQ(manager().deleteSite(" BB "), "");
    EXPECT_FALSE(manager().isSite("bb"));
    EXPECT_THAT(tablesWithSite("bb"), IsEmpty());
    EXPECT_THAT(tablesWithSite("aa"), SizeIs(20));
    EXPECT_TRUE(manager().isSite("aa"));
    EXPECT_TRUE(manager().isLang("en"));
}

TEST_P(SiteRemovalTest, WhatHungOnItsForumsAndNewsflashesGoes) {
    EXPECT_EQ(manager().deleteSite("bb"), "");
    EXPECT_THAT(hangingRows(),
                ElementsAre("TORVEX_FORUM_TOPICS 1", "TORVEX_FORUM_REACTIONS 1",
                            "TORVEX_NEWSFLASH_CATEGORIES_DESIGN 1", "TORVEX_NEWSFLASH_CATEGORIES_LIVE 1"));
    EXPECT_EQ(cell("select topic_forumId from TORVEX_FORUM_TOPICS"), "10");
}

TEST_P(SiteRemovalTest, ANewsflashOfAnotherSiteLosesTheSitesCategories) {
    row("TORVEX_NEWSFLASH_CATEGORIES_DESIGN", {{"nf_Id", 10}, {"msgB_Id", 20}});
    row("TORVEX_NEWSFLASH_CATEGORIES_LIVE", {{"nf_Id", 10}, {"msgB_Id", 20}});
    EXPECT_EQ(manager().deleteSite("bb"), "");
    EXPECT_EQ(cell("select count(*) from TORVEX_NEWSFLASH_CATEGORIES_DESIGN"), "1");
    EXPECT_EQ(cell("select msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_LIVE"), "10");
}

TEST_P(SiteRemovalTest, ItsFoldersGoWithAllThatIsInThem) {
    language("de");
    folder("search/html/de/bb");
    EXPECT_EQ(manager().deleteSite("BB"), "");
    for (const auto* gone :
         {"baseTemplates/bb", "contentTemplates/bb", "wwwroot/documents/bb", "wwwroot/images/bb",
          "wwwroot/stylesheets/bb", "search/html/en/bb", "search/html/de/bb"}) {
        EXPECT_FALSE(isFolder(gone)) << gone;
    }
    EXPECT_THAT(host.files.bytes, IsEmpty());
    for (const auto* kept : {"baseTemplates/aa/en", "search/html/en/aa", "wwwroot/images"}) {
        EXPECT_TRUE(isFolder(kept)) << kept;
    }
}

TEST_P(SiteRemovalTest, RemovingLeavesALineForItsEntryOnly) {
    site("cc");
    EXPECT_EQ(manager().deleteSite("cc"), "");
    EXPECT_THAT(auditTrail(), IsEmpty());
    EXPECT_EQ(manager().deleteSite("bb", 11), "");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||11|delete|Site \"Bee's\" has been removed"));
}

TEST_P(SiteRemovalTest, NobodyMayRemoveASite) {
    otherLoginIn("bb.en");
    EXPECT_EQ(actAsNobody().deleteSite("bb", 11), "-10");
    actAs(anna, "anna", "Anna Author");
    expectNothingChanged();
}

TEST_P(SiteRemovalTest, ASiteInWhichAnotherWorksStays) {
    otherLoginIn("BB.en");
    page("bb.en.01").insertInDesignOnly();
    EXPECT_EQ(manager().deleteSite("bb", 11), "-2");
    expectNothingChanged();
}

TEST_P(SiteRemovalTest, OnesOwnPlaceAndOthersElsewhereOrLoggedOutDontCount) {
    connection().execute("update TORVEX_LOGINS set currentSite = 'bb.en'");
    otherLoginIn("aa.bb");
    otherLoginIn("bb.en", "");
    otherLoginIn("");
    EXPECT_EQ(manager().deleteSite("bb"), "");
}

TEST_P(SiteRemovalTest, ASiteWithPagesStays) {
    page("bb.en.01").insertInDesignOnly();
    EXPECT_EQ(manager().deleteSite("bb", 11), "-3");
    expectNothingChanged();
}

TEST_P(SiteRemovalTest, PagesOfTheLiveTableAloneDontKeepIt) {
    page("bb.en.01").insertInLiveOnly();
    EXPECT_EQ(manager().deleteSite("bb"), "");
    EXPECT_EQ(cell("select count(*) from TORVEX_PAGES_LIVE"), "1");
}

TEST_P(SiteRemovalTest, PagesAreAskedForBeforeTheNumberOfSites) {
    connection().execute("delete from TORVEX_SITES where site = 'aa'");
    page("bb.en.01").insertInDesignOnly();
    EXPECT_EQ(manager().deleteSite("bb"), "-3");
}

TEST_P(SiteRemovalTest, TheLastSiteStays) {
    connection().execute("delete from TORVEX_SITES where site = 'aa'");
    EXPECT_EQ(manager().deleteSite("bb", 11), "-4");
    expectNothingChanged();
    EXPECT_EQ(manager().deleteSite("zz"), "-4") << "whatever site is named";
}

TEST_P(SiteRemovalTest, OfTwoWhoRemoveTheLastTwoAtOnceOneIsRefused) {
    const auto remove = [&](const std::string& code, std::string& answer) {
        TestHost own;
        own.database.target = &database();
        own.session.set("torvex_loginId", anna);
        for (const auto* key : {"torvex_odbc", "torvex_install_path", "torvex_doc_dir", "torvex_image_dir"}) {
            own.application.set(key, host.application.get(key));
        }
        const db::Lease connection = openAnother();
        cManager author(own.context());
        author.connect(*connection);
        answer = author.deleteSite(code);
    };
    std::string first;
    std::string second;
    std::thread one([&] { remove("aa", first); });
    std::thread other([&] { remove("bb", second); });
    one.join();
    other.join();
    EXPECT_THAT((std::vector<std::string>{std::min(first, second), std::max(first, second)}),
                ElementsAre("", "-4"));
    EXPECT_EQ(cell("select count(*) from TORVEX_SITES"), "1");
}

TEST_P(SiteRemovalTest, AFailureInTheMiddleHasChangedNothing) {
    drop("TORVEX_TEMPLATES");
    row("TORVEX_METADATA", {{"metaData_site", "bb"}});
    EXPECT_EQ(manager().deleteSite("bb", 11), "-99");
    expectNothingElseChanged();
    EXPECT_EQ(cell("select count(*) from TORVEX_METADATA where metaData_site = 'bb'"), "2");
    EXPECT_EQ(cell("select count(*) from TORVEX_ADVANCED_RIGHTS where site = 'bb'"), "1");
    EXPECT_EQ(cell("select count(*) from TORVEX_FORUM_TOPICS"), "2");
    EXPECT_THAT(host.log.lines, ElementsAre(StartsWith("the site \"bb\" was not removed: ")));
}

TEST_P(SiteRemovalTest, AFailureAtAnyStepHasChangedNothing) {
    // To open, to begin, to take turns, to ask who works there, for pages, for sites and for the name.
    constexpr int stepsBefore = 7;
    FailingDatabase failing(database());
    host.database.target = &failing;
    int step = 1;
    for (; step <= stepsBefore; ++step) {
        failing.reset(step);
        EXPECT_THAT(errorOf([&] { manager().deleteSite("bb", 11); }), StartsWith(chain({"deleteSite !"})));
        expectNothingChanged();
    }
    for (failing.reset(step); manager().deleteSite("bb") == "-99"; failing.reset(++step)) {
        ASSERT_EQ(failing.steps, step) << "it failed without a failure";
        expectNothingChanged();
    }
    EXPECT_GT(step, stepsBefore + 26);
    EXPECT_THAT(tablesWithSite("bb"), IsEmpty());
}

TEST_P(SiteRemovalTest, WhatIsNoCodeRemovesNoFolders) {
    site("cc");
    for (const auto* code : {"", "  ", "..", "./", "/", "shared", "\\", "b"}) {
        EXPECT_EQ(manager().deleteSite(code, 11), "-99") << code;
    }
    expectNothingChanged();
}

TEST_P(SiteRemovalTest, ASiteThatIsntThereIsRemovedAtOnce) {
    EXPECT_EQ(manager().deleteSite("zz", 11), "");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||11|delete|Site \"\" has been removed"));
    EXPECT_THAT(tablesWithSite("bb"), SizeIs(20));
}

TEST_P(SiteRemovalTest, AFolderThatCantBeRemovedIsAnErrorAfterTheRowsAreGone) {
    host.files.writeFailure = "in use";
    EXPECT_EQ(errorOf([&] { manager().deleteSite("bb", 11); }),
              chain({"addLanguage !", "deleteDirectory !"}) + "/install/baseTemplates/bb: in use");
    EXPECT_THAT(tablesWithSite("bb"), IsEmpty());
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(SiteRemovalTest, TestsThatCantBeMadeAreAnError) {
    drop("TORVEX_PAGES_DESIGN");
    EXPECT_THAT(errorOf([&] { manager().deleteSite("bb", 11); }), StartsWith(chain({"deleteSite !"})));
    expectNothingElseChanged();
}

}  // namespace
}  // namespace torvex::test
