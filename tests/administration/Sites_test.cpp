#include <atomic>
#include <gmock/gmock.h>
#include <thread>

#include "support/FailingDatabase.h"
#include "support/RegisterTest.h"

namespace torvex::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class SitesTest : public RegisterTest {
  protected:
    /// All sites as "site|name|description|lock", by code.
    std::vector<std::string> sites() {
        std::vector<std::string> lines;
        auto rows =
            connection().query("select site, name, description, lock from TORVEX_SITES order by site");
        while (rows.next()) {
            lines.push_back(rows.text("site") + "|" + rows.text("name") + "|" + rows.text("description") +
                            "|" + rows.text("lock"));
        }
        return lines;
    }
    std::vector<std::string> metaTags(const std::string& site) {
        std::vector<std::string> lines;
        auto rows = connection().query(
            "select metaData_name, metaData_description from TORVEX_METADATA where metaData_site = ? "
            "order by metaData_id",
            {site});
        while (rows.next()) {
            lines.push_back(rows.text("metaData_name") + "|" + rows.text("metaData_description"));
        }
        return lines;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SitesTest, bothEngines(), engineName);

TEST_P(SitesTest, ASiteIsAddedUnderItsTwoCharacters) {
    EXPECT_TRUE(manager().addSite(" BC ", " Gard\xC3\xA9n's ", " Of <plants> "));
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa||", "bc|Gard\xC3\xA9n's|Of <plants>|"));
}

TEST_P(SitesTest, OneCharacterGetsANaughtInFront) {
    EXPECT_TRUE(manager().addSite("A", "X", ""));
    EXPECT_THAT(sites(), ElementsAre("0a|X||", "aa|Site aa||"));
    EXPECT_TRUE(isFolder("baseTemplates/0a/en"));
}

TEST_P(SitesTest, ANewSiteHasSixMetaTagsInOrder) {
    row("TORVEX_METADATA", {{"metaData_site", "bb"}, {"metaData_name", "left from before"}});
    EXPECT_TRUE(manager().addSite("bb", "B", ""));
    EXPECT_THAT(metaTags("bb"), ElementsAre("author|Author", "comments|Comments", "company|Company",
                                            "keywords|The html keywords", "subject|The html subject",
                                            "description|The html description"));
    EXPECT_THAT(metaTags("aa"), IsEmpty());
}

TEST_P(SitesTest, TheFoldersOfEveryPairAreMade) {
    language("de");
    host.files.madeFolders.insert("/install/baseTemplates/aa");
    EXPECT_TRUE(manager().addSite("bb", "B", ""));
    for (const auto* site : {"aa", "bb"}) {
        const std::string code = site;
        for (const auto& path :
             {"baseTemplates/" + code, "contentTemplates/" + code, "wwwroot/documents/" + code,
              "wwwroot/images/" + code, "wwwroot/stylesheets/" + code}) {
            EXPECT_THAT(folders(), Contains(path));
        }
        for (const auto* lang : {"/de", "/en"}) {
            for (const auto& path :
                 {"baseTemplates/" + code, "contentTemplates/" + code, "wwwroot/stylesheets/" + code}) {
                EXPECT_THAT(folders(), Contains(path + lang));
            }
            EXPECT_FALSE(isFolder("wwwroot/images/" + code + lang));
            EXPECT_FALSE(isFolder("wwwroot/documents/" + code + lang));
        }
    }
}

TEST_P(SitesTest, MediaFoldersOfAnotherNameAreMadeBesideTheImages) {
    folder("wwwroot/pictures");
    folder("wwwroot/papers");
    host.application.set("torvex_image_dir", "/install/wwwroot/pictures/");
    host.application.set("torvex_doc_dir", "/install/wwwroot/papers/");
    EXPECT_TRUE(manager().addSite("bb", "B", ""));
    EXPECT_TRUE(isFolder("wwwroot/pictures/bb"));
    EXPECT_TRUE(isFolder("wwwroot/papers/bb"));
    EXPECT_TRUE(isFolder("wwwroot/images/bb"));
    EXPECT_FALSE(isFolder("wwwroot/documents/bb"));
}

TEST_P(SitesTest, TheSystemFilesAreCopiedOverThoseOfEveryPair) {
    auto& files = host.files.bytes;
    files["/install/wwwroot/admin.css"] = "css";
    files["/install/wwwroot/config.xml"] = "xml";
    files["/install/wwwroot/stylesheets/aa/en/admin.css"] = "changed";
    files["/install/wwwroot/stylesheets/aa/en/own.css"] = "own";
    EXPECT_TRUE(manager().addSite("bb", "B", ""));
    for (const auto* site : {"aa", "bb"}) {
        const std::string folder = "/install/wwwroot/stylesheets/" + std::string(site) + "/en/";
        EXPECT_EQ(files[folder + "admin.css"], "css");
        EXPECT_EQ(files[folder + "config.xml"], "xml");
    }
    EXPECT_EQ(files["/install/wwwroot/stylesheets/aa/en/own.css"], "own");
}

TEST_P(SitesTest, MissingSystemFilesAreNotCopied) {
    EXPECT_TRUE(manager().addSite("bb", "B", ""));
    EXPECT_THAT(host.files.bytes, IsEmpty());
}

TEST_P(SitesTest, OtherServersGetFoldersAndSystemFiles) {
    host.files.bytes["/install/wwwroot/admin.css"] = "css";
    host.files.madeFolders.insert("/mnt/b/www");
    host.files.bytes["/mnt/b/www/wwwroot/stylesheets/aa/en/admin.css"] = "old";
    host.application.set("torvex_loadBalancing_shareName", "www");
    host.application.set("torvex_replication_root", "/mnt");
    row("TORVEX_SERVERS", {{"serverName", "b"}});
    EXPECT_TRUE(manager().addSite("bb", "B", ""));
    EXPECT_TRUE(host.files.folderExists("/mnt/b/www/contentTemplates/bb/en"));
    EXPECT_EQ(host.files.bytes["/mnt/b/www/wwwroot/stylesheets/bb/en/admin.css"], "css");
    EXPECT_EQ(host.files.bytes["/mnt/b/www/wwwroot/stylesheets/aa/en/admin.css"], "css");
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_P(SitesTest, ANameThatIsTakenInAnyCaseAddsNothing) {
    const auto before = folders();
    for (const auto* name : {"Site aa", "  SITE AA "}) {
        EXPECT_FALSE(manager().addSite("bb", name, "", 11)) << name;
    }
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa||"));
    EXPECT_THAT(metaTags("bb"), IsEmpty());
    EXPECT_EQ(folders(), before);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(SitesTest, ACodeThatIsTakenAddsNothing) {
    const auto before = folders();
    EXPECT_FALSE(manager().addSite("AA", "Another", "", 11));
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa||"));
    EXPECT_EQ(folders(), before);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(SitesTest, WithoutANameOrTwoCharactersNothingIsAdded) {
    host.database.target = nullptr;
    for (const auto* code : {"", "   ", "abc", "\xC3\xA9\xC3\xA9\xC3\xA9"}) {
        EXPECT_FALSE(manager().addSite(code, "X", "")) << code;
    }
    for (const auto* name : {"", "   "}) EXPECT_FALSE(manager().addSite("bb", name, "")) << name;
}

TEST_P(SitesTest, ACodeThatLeadsOutOfAFolderIsNone) {
    host.database.target = nullptr;
    const auto before = folders();
    for (const std::string& code : {std::string(".."), std::string("."), std::string("a/"), std::string("/"),
                                    std::string("\\a"), std::string("a."), std::string("a\n"),
                                    std::string("a\0", 2), std::string("a\x7f"), std::string("a\xC3")}) {
        EXPECT_FALSE(manager().addSite(code, "X", "")) << code;
    }
    EXPECT_EQ(folders(), before);
}

TEST_P(SitesTest, OtherSignsMakeACode) {
    EXPECT_TRUE(manager().addSite("o'", "Quoted", ""));
    EXPECT_TRUE(manager().isSite("o'"));
    EXPECT_EQ(metaTags("o'").size(), 6U);
    EXPECT_TRUE(isFolder("baseTemplates/o'/en"));
}

TEST_P(SitesTest, AddingASiteLeavesALineForItsEntryOnly) {
    manager().addSite("b0", "One", "", 0);
    manager().addSite("b1", "Two", "", -1);
    EXPECT_THAT(auditTrail(), IsEmpty());
    manager().addSite("b2", " Three ", "", 11);
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||11|new|New site \"Three\""));
}

TEST_P(SitesTest, AFailureInTheMiddleHasChangedNothing) {
    const auto before = folders();
    drop("TORVEX_METADATA");
    EXPECT_FALSE(manager().addSite("bb", "B", "", 11));
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa||"));
    EXPECT_EQ(folders(), before);
    EXPECT_THAT(auditTrail(), IsEmpty());
    EXPECT_THAT(host.log.lines, ElementsAre(StartsWith("the site \"bb\" was not made: ")));
}

TEST_P(SitesTest, AFailureAtAnyStepHasChangedNothing) {
    const auto before = folders();
    FailingDatabase failing(database());
    host.database.target = &failing;
    failing.reset(1);
    EXPECT_THAT(errorOf([&] { manager().addSite("bb", "B", "", 11); }), StartsWith(chain({"addSite !"})));
    int step = 2;
    for (failing.reset(step); !manager().addSite("bb", "B", "", 11); failing.reset(++step)) {
        ASSERT_EQ(failing.steps, step) << "it failed without a failure";
        EXPECT_THAT(sites(), ElementsAre("aa|Site aa||")) << step;
        EXPECT_THAT(metaTags("bb"), IsEmpty()) << step;
        EXPECT_EQ(folders(), before) << step;
        EXPECT_THAT(auditTrail(), IsEmpty()) << step;
    }
    EXPECT_GT(step, 10);
    EXPECT_EQ(metaTags("bb").size(), 6U);
    EXPECT_EQ(host.log.lines.size(), static_cast<std::size_t>(step - 2));
}

TEST_P(SitesTest, AFolderThatCantBeMadeHasChangedNothing) {
    host.files.writeFailure = "disk full";
    EXPECT_FALSE(manager().addSite("bb", "B", "", 11));
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa||"));
    EXPECT_THAT(metaTags("bb"), IsEmpty());
    EXPECT_THAT(auditTrail(), IsEmpty());
    EXPECT_THAT(host.log.lines, ElementsAre(HasSubstr("disk full")));
}

TEST_P(SitesTest, FoldersOfASiteThatFailedAreTakenBack) {
    const auto before = folders();
    host.application.set("torvex_loadBalancing_shareName", "www");
    host.application.set("torvex_replication_root", "/mnt");
    drop("TORVEX_SERVERS");
    EXPECT_FALSE(manager().addSite("bb", "B", ""));
    EXPECT_EQ(folders(), before);
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa||"));
}

TEST_P(SitesTest, WithoutADatabaseOfItsOwnItIsAnError) {
    host.database.target = nullptr;
    EXPECT_THAT(errorOf([&] { manager().addSite("bb", "B", ""); }), StartsWith(chain({"addSite !"})));
}

TEST_P(SitesTest, OfTwoWhoAddTheSameNameAtOnceOneWins) {
    constexpr int rounds = 10;
    for (int round = 0; round < rounds; ++round) {
        const std::string name = "Twin " + std::to_string(round);
        std::atomic<int> ready = 0;
        std::atomic<int> added = 0;
        const auto add = [&](char code) {
            TestHost own;
            own.database.target = &database();
            for (const auto* key :
                 {"torvex_odbc", "torvex_install_path", "torvex_doc_dir", "torvex_image_dir"}) {
                own.application.set(key, host.application.get(key));
            }
            const db::Lease connection = openAnother();
            cManager author(own.context());
            author.connect(*connection);
            for (++ready; ready < 2;) std::this_thread::yield();
            if (author.addSite(std::string(1, code) + std::to_string(round), name, "")) ++added;
        };
        std::thread first([&] { add('x'); });
        std::thread second([&] { add('y'); });
        first.join();
        second.join();
        EXPECT_EQ(added, 1);
        EXPECT_EQ(cell("select count(*) from TORVEX_SITES where name = '" + name + "'"), "1");
    }
}

TEST_P(SitesTest, UpdatingWritesNameAndDescriptionAndFreesTheRecord) {
    connection().execute("update TORVEX_SITES set lock = 'somebody'");
    EXPECT_TRUE(manager().updateSite(" AA ", " New ", " Text "));
    EXPECT_THAT(sites(), ElementsAre("aa|New|Text|"));
    EXPECT_TRUE(manager().updateSite("aa", "New", "  "));
    EXPECT_THAT(sites(), ElementsAre("aa|New||"));
}

TEST_P(SitesTest, UpdatingWithAnEmptyNameKeepsTheName) {
    connection().execute("update TORVEX_SITES set lock = 'somebody'");
    EXPECT_TRUE(manager().updateSite("aa", "  ", "Text", 11));
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa|Text|"));
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||11|save|Site \"Site aa\" has been updated"));
}

TEST_P(SitesTest, UpdatingFindsTheSiteOfOneCharacter) {
    row("TORVEX_SITES", {{"site", "0b"}, {"name", "B"}});
    EXPECT_TRUE(manager().updateSite("B", "Bee", ""));
    EXPECT_EQ(manager().getSiteName("0b"), "Bee");
}

TEST_P(SitesTest, UpdatingASiteThatIsntThereIsFalse) {
    for (const auto* code : {"", "zz", "abc", "' or 1=1 --"}) {
        EXPECT_FALSE(manager().updateSite(code, "New", "Text", 11)) << code;
    }
    EXPECT_THAT(sites(), ElementsAre("aa|Site aa||"));
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(SitesTest, UpdatingLeavesALineForItsEntryOnly) {
    manager().updateSite("aa", "New", "", 0);
    EXPECT_THAT(auditTrail(), IsEmpty());
    manager().updateSite("aa", " New ", "", 11);
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||11|save|Site \"New\" has been updated"));
}

TEST_P(SitesTest, NamesDescriptionsAndCodesAreRead) {
    row("TORVEX_SITES", {{"site", "bb"}, {"name", "\xC3\x89t\xC3\xA9"}, {"description", "Text"}});
    EXPECT_EQ(manager().getSiteName("BB"), "\xC3\x89t\xC3\xA9");
    EXPECT_EQ(manager().getSiteDescription("bb"), "Text");
    EXPECT_EQ(manager().getSiteId("\xC3\xA9T\xC3\x89"), "bb");
    EXPECT_EQ(manager().getSiteDescription("aa"), "");
    for (const std::string& bad : badIdentifiers()) {
        EXPECT_EQ(manager().getSiteName(bad), "");
        EXPECT_EQ(manager().getSiteDescription(bad), "");
        EXPECT_EQ(manager().getSiteId(bad), "");
    }
}

TEST_P(SitesTest, SitesAreListedByCodeOrName) {
    row("TORVEX_SITES", {{"site", "zz"}, {"name", "alpha"}, {"description", "Text"}});
    const Value byCode = manager().getSites();
    EXPECT_EQ(byCode.grid().columns(), 4U);
    EXPECT_EQ(byCode.grid().at(0, 0), Value("aa"));
    EXPECT_EQ(byCode.grid().at(0, 1), Value("zz"));
    EXPECT_EQ(byCode.grid().at(1, 1), Value("alpha"));
    EXPECT_EQ(byCode.grid().at(2, 1), Value("Text"));
    EXPECT_TRUE(byCode.grid().at(3, 1).isEmpty());
    for (const int byName : {2, 0, 9}) EXPECT_EQ(manager().getSites(byName).grid().at(0, 0), Value("zz"));
    connection().execute("delete from TORVEX_SITES");
    EXPECT_TRUE(manager().getSites().isEmpty());
}

TEST_P(SitesTest, ABrokenDatabaseIsAnErrorOfEachReader) {
    drop("TORVEX_SITES");
    EXPECT_THAT(errorOf([&] { manager().getSiteName("aa"); }), StartsWith(chain({"getSiteName !"})));
    EXPECT_THAT(errorOf([&] { manager().getSiteDescription("aa"); }),
                StartsWith(chain({"getSiteDescription !"})));
    EXPECT_THAT(errorOf([&] { manager().getSiteId("aa"); }), StartsWith(chain({"getSiteId !"})));
    EXPECT_THAT(errorOf([&] { manager().getSites(); }), StartsWith(chain({"getSites !"})));
    EXPECT_THAT(errorOf([&] { manager().updateSite("aa", "x", ""); }), StartsWith(chain({"updateSite !"})));
    EXPECT_FALSE(manager().addSite("bb", "B", ""));
}

}  // namespace
}  // namespace torvex::test
