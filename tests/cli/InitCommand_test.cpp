#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <regex>
#include <set>
#include <vector>

#include "accounts/StoredPassword.h"
#include "cli/ProgramFixture.h"
#include "platform/text/Charset.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

/// Every path below a folder.
std::set<std::string> pathsIn(const std::string& folder) {
    std::set<std::string> paths;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        // The streams of the program itself lie in the folder that it runs in.
        if (!entry.path().filename().string().starts_with(".run")) paths.insert(entry.path().string());
    }
    return paths;
}

fs::perms rightsOf(const std::string& path) {
    return fs::status(path).permissions();
}

class InitCommand : public ProgramDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(Engines, InitCommand, bothEngines(), engineName);

TEST_P(InitCommand, EmptyInstallationHasOnlyTheFixedRows) {
    init();
    EXPECT_EQ(sql("select loginId, username from TORVEX_LOGINS"), "{\"loginId\":1,\"username\":\"sa\"}\n");
    EXPECT_EQ(sql("select lang_id from TORVEX_INTERFACE_LANGUAGES order by id"),
              "{\"lang_id\":\"en\"}\n{\"lang_id\":\"de\"}\n");
    for (const auto* filled : {"TORVEX_USERGROUPS", "TORVEX_CHARSETS", "TORVEX_MIMETYPES", "TORVEX_ADVANCED",
                               "TORVEX_INTERFACE_VOCAB", "TORVEX_SETUP"}) {
        EXPECT_NE(sql(std::string("select count(*) as n from ") + filled), "{\"n\":0}\n") << filled;
    }
    for (const auto* empty :
         {"TORVEX_SITES", "TORVEX_LANGUAGES", "TORVEX_PAGES_DESIGN", "TORVEX_PAGES_LIVE"}) {
        EXPECT_EQ(sql(std::string("select count(*) as n from ") + empty), "{\"n\":0}\n") << empty;
    }
}

TEST_P(InitCommand, EachLanguageOfTheInterfaceHasItsTemplates) {
    init();
    const auto page = [&](const std::string& name) {
        return charset::decodeFile(content("site/torvex/templates/" + name));
    };
    for (const auto* name : {"shell.html", "login.html", "error.html", "statDetail.html"}) {
        EXPECT_THAT(page(std::string("gen/") + name), HasSubstr("<label-")) << name;
        for (const auto* language : {"en/", "de/"}) {
            EXPECT_THAT(page(std::string(language) + name), testing::Not(HasSubstr("<label-"))) << name;
        }
    }
    EXPECT_THAT(page("en/login.html"), HasSubstr("User&nbsp;name"));
    EXPECT_THAT(page("de/login.html"), HasSubstr("Benutzername"));
    EXPECT_TRUE(exists("site/wwwroot/torvex/interface.css"));
}

TEST_P(InitCommand, StarterSiteHasThreePublishedPages) {
    init({"--site", "sh", "--lang", "de", "--title", "Stadthaus & 'Söhne'", "--admin-password", "word"});
    EXPECT_EQ(sql("select nodeId from TORVEX_PAGES_LIVE order by nodeId"),
              "{\"nodeId\":\"sh.de\"}\n{\"nodeId\":\"sh.de.01\"}\n{\"nodeId\":\"sh.de.02\"}\n");
    EXPECT_EQ(sql("select title from TORVEX_SITES_LANGUAGES"), "{\"title\":\"Stadthaus & 'Söhne'\"}\n");
    EXPECT_EQ(sql("select bodyText from TORVEX_BODIES_LIVE where pageId = 1 and bodyId = 1"),
              "{\"bodyText\":\"Welcome to Stadthaus &amp; 'Söhne'\"}\n");
    EXPECT_EQ(sql("select lang, name from TORVEX_LANGUAGES"), "{\"lang\":\"de\",\"name\":\"Deutsch\"}\n");
    EXPECT_TRUE(exists("site/wwwroot/stylesheets/sh/de/site.css"));
    EXPECT_TRUE(exists("site/wwwroot/images/sh"));
    EXPECT_THAT(content("site/baseTemplates/sh/de/page.html"), HasSubstr("Stadthaus &amp; 'Söhne'"));
    EXPECT_THAT(content("site/contentTemplates/sh/de/home.html"), testing::Not(HasSubstr("{{")));
}

TEST_P(InitCommand, DemoHasItsSitesAndFiles) {
    init({"--demo", "--admin-password", "word"});
    EXPECT_EQ(sql("select count(*) as n from TORVEX_SITES"), "{\"n\":2}\n");
    EXPECT_TRUE(exists("site/contentTemplates/bg/en/home.html"));
    EXPECT_TRUE(exists("site/wwwroot/favicon.svg"));
    EXPECT_FALSE(exists("site/rows"));
    EXPECT_FALSE(exists("site/shared"));
    EXPECT_FALSE(exists("site/README.md"));
}

TEST_P(InitCommand, TemplatesThatTheDemosWebsitesShareAreLaidDownForEachWithItsTitle) {
    init({"--demo", "--admin-password", "word"});
    for (const auto& [website, title] :
         {std::pair{"bg/en", "Lindhaven Botanic Garden"}, std::pair{"bg/de", "Botanischer Garten Lindhaven"},
          std::pair{"ri/en", "Lindhaven Plant Institute"},
          std::pair{"ri/de", "Pflanzeninstitut Lindhaven"}}) {
        const std::string folder = fmt::format("site/contentTemplates/{}/", website);
        EXPECT_THAT(content(folder + "page.html"), HasSubstr(fmt::format("--> | {}</title>", title)));
        EXPECT_TRUE(exists(folder + "menu.html")) << website;
    }
}

/// The passwords of the team by the names of its logins, as init shows them.
std::map<std::string, std::string> teamIn(const std::string& said) {
    std::map<std::string, std::string> team;
    const std::regex line(R"(\n    ([a-z]+) +([a-z2-9]{4}(?:-[a-z2-9]{4}){3})  \w+ \w+, )");
    for (std::sregex_iterator found(said.begin(), said.end(), line), end; found != end; ++found) {
        team[(*found)[1]] = (*found)[2];
    }
    return team;
}

TEST_P(InitCommand, DemoShowsEachOfItsTeamAPasswordThatOpensTheLogin) {
    const auto team = teamIn(init({"--demo", "--admin-password", "word"}));
    std::set<std::string> passwords;
    for (const auto* name : {"iris", "basil", "heide", "reed", "clover"}) {
        ASSERT_TRUE(team.contains(name)) << name;
        passwords.insert(team.at(name));
        EXPECT_EQ(output({"call", "--install", site(), "cManager.login", std::string("username=") + name,
                          "password=" + team.at(name)}),
                  "0\n");
    }
    EXPECT_EQ(team.size(), 5U);
    EXPECT_EQ(passwords.size(), 5U);
}

TEST_P(InitCommand, NoKnownPasswordOpensTheDemo) {
    init({"--demo"});
    for (const auto* name : {"sa", "iris", "clover"}) {
        for (const auto* guess : {"", "locked", "sa", "word", "password"}) {
            EXPECT_EQ(output({"call", "--install", site(), "cManager.login", std::string("username=") + name,
                              std::string("password=") + guess}),
                      "1\n")
                << name << guess;
        }
    }
    const std::string passwords = sql("select password from TORVEX_LOGINS");
    EXPECT_THAT(passwords, testing::Not(HasSubstr("locked")));
    EXPECT_THAT(passwords, testing::Not(HasSubstr("\"\"")));
}

TEST_P(InitCommand, DemosTeamHasRightsWhereThereAreWebsitesAndPages) {
    init({"--demo", "--admin-password", "word"});
    EXPECT_EQ(sql("select count(*) as n from TORVEX_EDIT_RIGHTS a where not exists (select site from "
                  "TORVEX_SITES_LANGUAGES b where b.site = a.site and b.lang = a.lang)"),
              "{\"n\":0}\n");
    EXPECT_EQ(sql("select scope, title from TORVEX_EDIT_RIGHTS left outer join TORVEX_PAGES_DESIGN on "
                  "nodeId = scope where scope <> ''"),
              "{\"scope\":\"bg.en.03\",\"title\":\"What’s on\"}\n");
    EXPECT_EQ(sql("select count(*) as n from TORVEX_ADVANCED_RIGHTS where viewAccess = 0"), "{\"n\":0}\n");
    EXPECT_EQ(sql("select distinct loginId from TORVEX_SETUP where loginId > 1 order by loginId"),
              "{\"loginId\":2}\n{\"loginId\":3}\n{\"loginId\":4}\n{\"loginId\":5}\n{\"loginId\":6}\n");
}

TEST_P(InitCommand, OtherInstallationsHaveNoTeam) {
    EXPECT_TRUE(teamIn(init({"--admin-password", "word"})).empty());
    EXPECT_EQ(sql("select username from TORVEX_LOGINS"), "{\"username\":\"sa\"}\n");
}

TEST_P(InitCommand, NewRowsGetKeysBehindThoseLaidDown) {
    init({"--admin-password", "word"});
    sql("insert into TORVEX_PAGES_DESIGN (nodeId, site, lang) values ('ws.en.03', 'ws', 'en')");
    EXPECT_EQ(sql("select pageId from TORVEX_PAGES_DESIGN where nodeId = 'ws.en.03'"), "{\"pageId\":4}\n");
}

TEST_P(InitCommand, GivenPasswordIsStoredEncodedAndNotShown) {
    const std::string said = init({"--empty", "--admin-password", "open sesame"});
    EXPECT_THAT(said, testing::Not(HasSubstr("open sesame")));
    EXPECT_EQ(sql("select password from TORVEX_LOGINS"),
              "{\"password\":\"" + encodePassword("open sesame") + "\"}\n");
}

// ---- The store of passwords ----

TEST_P(InitCommand, StarterAndDemoKeepPasswordsStronglyFromTheStart) {
    for (const Arguments& content : {Arguments{}, Arguments{"--demo"}}) {
        Arguments arguments = content;
        arguments.insert(arguments.end(), {"--admin-password", "open sesame"});
        const std::string said = init(arguments);
        EXPECT_THAT(said, HasSubstr("kept as strong hashes"));
        EXPECT_THAT(said, HasSubstr("--passwords given"));
        EXPECT_EQ(sql("select value from TORVEX_SETUP where parameter = 'torvex_password_store'"),
                  "{\"value\":\"strong\"}\n");
        for (const auto* table : {"TORVEX_LOGINS", "TORVEX_USERS"})
            EXPECT_EQ(
                sql(std::string("select username from ") + table + " where password not like 'strong:%'"),
                "");
        for (const auto& [password, code] : {std::pair{"Open Sesame ", "0\n"}, {"wrong", "1\n"}}) {
            EXPECT_EQ(output({"call", "--install", site(), "cManager.login", "username=sa",
                              std::string("password=") + password}),
                      code);
        }
        if (GetParam() != db::Engine::Sqlite) break;  // the second would need another database
        fs::remove_all(site());
    }
}

TEST_P(InitCommand, AnEmptyInstallationKeepsThemInTheGivenForm) {
    EXPECT_THAT(init({"--empty", "--admin-password", "x"}), HasSubstr("--passwords strong"));
    EXPECT_EQ(sql("select value from TORVEX_SETUP where parameter = 'torvex_password_store'"),
              "{\"value\":\"\"}\n");
    EXPECT_EQ(sql("select passwordHash from TORVEX_LOGINS"), "{\"passwordHash\":null}\n");
}

TEST_P(InitCommand, TheStoreCanBeChosen) {
    init({"--passwords", "given", "--admin-password", "open sesame"});
    EXPECT_EQ(sql("select password from TORVEX_LOGINS"),
              "{\"password\":\"" + encodePassword("open sesame") + "\"}\n");
    EXPECT_EQ(sql("select value from TORVEX_SETUP where parameter = 'torvex_password_store'"),
              "{\"value\":\"\"}\n");
}

TEST_P(InitCommand, AnEmptyInstallationMayHaveTheStrongStore) {
    init({"--empty", "--passwords", "strong"});
    EXPECT_THAT(sql("select password from TORVEX_LOGINS"), HasSubstr("strong:"));
}

TEST_P(InitCommand, MadePasswordIsShownOnceAndIsTheStoredOne) {
    const std::string said = init({"--empty"});
    std::smatch found;
    ASSERT_TRUE(std::regex_search(said, found, std::regex(R"(\n\s+([a-z2-9]{4}(-[a-z2-9]{4}){3})\n)")));
    EXPECT_EQ(sql("select password from TORVEX_LOGINS"),
              "{\"password\":\"" + encodePassword(found[1].str()) + "\"}\n");
}

TEST_P(InitCommand, SecondInitIsRefusedAndChangesNothing) {
    init();
    const auto before = pathsIn(folder());
    const std::string settings = content("site/torvex.toml");
    const ProgramResult again = run({"init", site(), "--demo", "--database", database});
    EXPECT_EQ(again.code, 1);
    EXPECT_THAT(again.err, HasSubstr("holds an installation already"));
    EXPECT_EQ(pathsIn(folder()), before);
    EXPECT_EQ(content("site/torvex.toml"), settings);
    EXPECT_EQ(sql("select count(*) as n from TORVEX_SITES"), "{\"n\":0}\n");
}

class InitFolder : public ProgramTest {
  protected:
    void expectRefused(const Arguments& arguments, int code, const std::string& reason) {
        const auto before = pathsIn(folder());
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.code, code) << result.err;
        EXPECT_THAT(result.err, HasSubstr(reason));
        EXPECT_EQ(pathsIn(folder()), before);
    }
};

TEST_F(InitFolder, HasEveryFolderAndTheSpacers) {
    output({"init", site(), "--empty", "--admin-password", "word"});
    for (const auto* name : {"data", "baseTemplates", "contentTemplates", "torvex/templates/gen",
                             "wwwroot/stylesheets", "wwwroot/images", "wwwroot/documents", "search/html"}) {
        EXPECT_TRUE(fs::is_directory(site() + '/' + name)) << name;
    }
    for (const auto* images : {"images", "torvex_dynMenu/images"}) {
        const std::string spacer = content(std::string("site/wwwroot/torvex/") + images + "/spacer.gif");
        EXPECT_EQ(spacer.substr(0, 10), std::string("GIF89a\x01\0\x01\0", 10)) << images;
    }
}

TEST_F(InitFolder, TreesOfTheForumHaveTheirPictures) {
    output({"init", site(), "--empty", "--admin-password", "word"});
    const auto expectPictures = [&](const std::string& place, const std::vector<std::string>& names) {
        for (const auto& name : names) {
            const std::string file = "site/wwwroot/" + place + "torvex_forum/images/" + name + ".gif";
            EXPECT_THAT(content(file), testing::StartsWith("GIF8")) << file;
        }
    };
    const std::vector<std::string> visitors = {"new", "tree_blank", "tree_vertline", "tree_node",
                                               "tree_lastnode"};
    expectPictures("", visitors);
    expectPictures("torvex/", visitors);
    expectPictures("torvex/", {"on", "off", "del0", "del1"});
    for (const auto* sign : {"tree_m", "tree_p"}) {
        for (const auto* place : {"node", "lastnode"}) {
            const std::string name = std::string(sign) + place;
            expectPictures("torvex/", {name, name + "_red"});
        }
    }
}

TEST_F(InitFolder, SecretsAreForTheOwnerAlone) {
    output({"init", site(), "--empty", "--admin-password", "word"});
    EXPECT_EQ(rightsOf(site() + "/torvex.toml"), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(rightsOf(site() + "/data"), fs::perms::owner_all);
}

TEST_F(InitFolder, DatabaseElsewhereIsMadeThere) {
    output({"init", site(), "--empty", "--admin-password", "word", "--database",
            "sqlite:" + folder() + "/store"});
    EXPECT_TRUE(exists("store/content.db"));
    EXPECT_FALSE(exists("site/data"));
    EXPECT_EQ(output({"sql", "--install", site(), "--json", "select count(*) as n from TORVEX_LOGINS"}),
              "{\"n\":1}\n");
}

TEST_F(InitFolder, FolderWithFilesOfOthersIsTaken) {
    fs::create_directories(site());
    std::ofstream(site() + "/notes.txt") << "mine";
    output({"init", site(), "--empty", "--admin-password", "word"});
    EXPECT_EQ(content("site/notes.txt"), "mine");
}

TEST_F(InitFolder, FolderThatHoldsItsNamesIsRefused) {
    fs::create_directories(site() + "/wwwroot");
    expectRefused({"init", site(), "--empty"}, 1, "holds wwwroot already");
}

TEST_F(InitFolder, FileInPlaceOfTheFolderIsRefused) {
    std::ofstream(site()) << "x";
    expectRefused({"init", site(), "--empty"}, 1, "is a file");
}

TEST_F(InitFolder, WrongCodesAreRefused) {
    for (const auto* code : {"", "a", "abc", "A1", "é", "..", "a'"}) {
        expectRefused({"init", site(), "--site", code}, 2, "--site");
        expectRefused({"init", site(), "--lang", code}, 2, "--lang");
    }
}

TEST_F(InitFolder, ACommonPasswordIsTakenWithAWarning) {
    const ProgramResult result = run({"init", site(), "--empty", "--admin-password", " QwErTy "});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(
        result.err,
        HasSubstr("torvex: the password of \"sa\" is one of the 100,000 commonest: it would be guessed"));
    EXPECT_EQ(output({"sql", "--install", site(), "--json", "select password from TORVEX_LOGINS"}),
              "{\"password\":\"" + encodePassword("qwerty") + "\"}\n");
}

TEST_F(InitFolder, OthersAndMadeOnesArent) {
    const ProgramResult result = run({"init", site(), "--empty", "--admin-password", "fern and moss"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_THAT(result.err, testing::Not(HasSubstr("commonest")));
    EXPECT_THAT(run({"init", folder() + "/other", "--empty"}).err, testing::Not(HasSubstr("commonest")));
}

TEST_F(InitFolder, EmptyTitleAndPasswordAreRefused) {
    expectRefused({"init", site(), "--title", " "}, 2, "--title");
    expectRefused({"init", site(), "--admin-password", " "}, 2, "--admin-password");
    expectRefused({"init", site(), "--passwords", "plain"}, 2, "--passwords");
}

TEST_F(InitFolder, TextThatNamesNoDatabaseIsRefused) {
    expectRefused({"init", site(), "--database", "mysql:x"}, 1, "names no database");
}

TEST_F(InitFolder, ServerThatDoesNotAnswerIsRefused) {
    expectRefused({"init", site(), "--database", "host=" + folder() + " dbname=none"}, 1, "can't be opened");
}

TEST_F(InitFolder, StoreThatIsTakenIsRefused) {
    fs::create_directories(folder() + "/store");
    std::ofstream(folder() + "/store/content.db") << "x";
    expectRefused({"init", site(), "--database", "sqlite:" + folder() + "/store"}, 1, "not empty");
    EXPECT_EQ(content("store/content.db"), "x");
}

TEST_F(InitFolder, FailureOnTheWayLeavesNothing) {
    // The store's folder would have to be made below a file.
    std::ofstream(folder() + "/plain") << "x";
    expectRefused({"init", site() + "/deep/down", "--database", "sqlite:" + folder() + "/plain/store"}, 1,
                  "");
    EXPECT_FALSE(exists("site"));
}

class InitPostgres : public ProgramDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(Engines, InitPostgres, testing::Values(db::Engine::PostgreSql), engineName);

TEST_P(InitPostgres, DatabaseWithTablesIsRefusedAndLeftAlone) {
    init();
    const ProgramResult second = run({"init", folder() + "/second", "--empty", "--database", database});
    EXPECT_EQ(second.code, 1);
    EXPECT_THAT(second.err, HasSubstr("tables already"));
    EXPECT_FALSE(exists("second"));
    EXPECT_EQ(sql("select count(*) as n from TORVEX_LOGINS"), "{\"n\":1}\n");
}

TEST_P(InitPostgres, FailureAfterTheTablesTakesThemBack) {
    // Files are laid down behind the rows, and below a plain file there can be none.
    fs::create_directories(folder() + "/guarded");
    std::ofstream(folder() + "/guarded/site") << "x";
    const ProgramResult failed =
        run({"init", folder() + "/guarded/site/below", "--empty", "--database", database});
    EXPECT_EQ(failed.code, 1);
    EXPECT_THAT(failed.err, HasSubstr("can't be made"));
    init();
    EXPECT_EQ(sql("select count(*) as n from TORVEX_LOGINS"), "{\"n\":1}\n");
}

TEST_P(InitPostgres, PasswordComesFromTheEnvironmentAndIsNotStored) {
    RunningProgram program(folder(), {"init", site(), "--empty", "--database", database}, "",
                           {{"TORVEX_DATABASE_PASSWORD", "hush-hush"}});
    EXPECT_EQ(program.wait().code, 0) << program.err();
    EXPECT_THAT(content("site/torvex.toml"), testing::Not(HasSubstr("hush-hush")));
}

}  // namespace
}  // namespace torvex::test
