#include "search/Search.h"

#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class SearchTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        connection().execute("update TORVEX_LANGUAGES set charset_id = -1");
        search_.connect(connection());
    }

    std::string initialize(const std::string& pageIdent = "") { return search_.initializePages(pageIdent); }
    static std::string ident(PageId pageId) { return std::to_string(static_cast<int>(pageId)); }
    static std::string path(const std::string& nodeId) {
        return "/install/search/html/" + nodeId.substr(3, 2) + "/" + nodeId.substr(0, 2) + "/" + nodeId +
               ".html";
    }
    /// The text of a page's snapshot; "none" without one.
    std::string snapshot(const std::string& nodeId) {
        return host.files.readText(path(nodeId), TextFormat::Unicode).value_or("none");
    }
    /// What a snapshot holds besides its head and its tags.
    std::string contentOf(const std::string& nodeId) {
        const std::string text = snapshot(nodeId);
        const std::size_t begin = text.find("<BODY>\r\n");
        const std::size_t end = text.rfind("</BODY>\r\n");
        if (begin == std::string::npos || end == std::string::npos) return "no body";
        return text.substr(begin + 8, end - begin - 8);
    }
    /// A live content page with this template.
    PageId pageWith(const std::string& nodeId, const std::string& source) {
        contentTemplate(5, "aa", "en", "page.html", source);
        return page(nodeId).contentTemplate(5).insert();
    }
    std::vector<std::string> snapshots() {
        std::vector<std::string> paths;
        for (const auto& [file, bytes] : host.files.bytes) {
            if (file.starts_with("/install/search/")) paths.push_back(file);
        }
        return paths;
    }

    Search search_{host.context()};
};
INSTANTIATE_TEST_SUITE_P(Engines, SearchTest, bothEngines(), engineName);

// ---- The text ----

TEST_P(SearchTest, APageIsWrittenLineByLine) {
    connection().execute("update TORVEX_LANGUAGES set charset_id = 901");
    connection().execute(
        "insert into TORVEX_CHARSETS (charset_id, charset_name, charset_label, charset_codepage) "
        "values (901, 'Unicode', 'utf-8', 65001)");
    const PageId pageId = pageWith("aa.en.01",
                                   "<p>head</p><!--!torvex_content_start!--><h1>One</h1>"
                                   "<!--!torvex_body_1!--><!--!torvex_content_end!--><p>foot</p>"
                                   "<!--!torvex_content_1_start!-->two<!--!torvex_content_1_end!-->"
                                   "<!--!torvex_content_2_start!-->three<!--!torvex_content_2_end!-->");
    body(pageId, 1, "<p>Été</p>");
    metaTag(1, "aa", "keywords");
    metaData(pageId, 1, "plants");
    EXPECT_EQ(initialize("aa.en.01"), "0");
    EXPECT_EQ(snapshot("aa.en.01"),
              "<HTML>\r\n"
              "<HEAD>\r\n"
              "<TITLE>aa.en.01</TITLE>\r\n"
              "<META NAME=\"MS.LOCALE\" CONTENT=\"EN\">\r\n"
              "<META HTTP-EQUIP=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n"
              "<META NAME=\"keywords\" LANG=\"en\" CONTENT=\"plants\">\r\n"
              "</HEAD>\r\n"
              "<BODY>\r\n"
              "<h1>One</h1><p>Été</p>\r\n"
              "two\r\n"
              "three\r\n"
              "</BODY>\r\n"
              "</HTML>\r\n");
}

TEST_P(SearchTest, TheFileIsInUtf16WithItsMark) {
    page("aa.en.01").title("é").insert();
    initialize("aa.en.01");
    const std::string& bytes = host.files.bytes[path("aa.en.01")];
    EXPECT_EQ(bytes.substr(0, 6), std::string("\xFF\xFE<\0H\0", 6));
    EXPECT_NE(bytes.find(std::string("\xE9\0", 2)), std::string::npos);
}

TEST_P(SearchTest, APageWithoutMetadataHasNoLineForThem) {
    page("aa.en.01").title("Title").insert();
    initialize("aa.en.01");
    EXPECT_EQ(snapshot("aa.en.01"),
              "<HTML>\r\n<HEAD>\r\n<TITLE>Title</TITLE>\r\n<META NAME=\"MS.LOCALE\" CONTENT=\"EN\">\r\n"
              "</HEAD>\r\n<BODY>\r\n</BODY>\r\n</HTML>\r\n");
}

TEST_P(SearchTest, TheTitleIsTheLiveOne) {
    const PageId pageId = page("aa.en.01").title("draft").insertInDesignOnly();
    page("aa.en.01").id(pageId).title("live").insertInLiveOnly();
    initialize("aa.en.01");
    EXPECT_THAT(snapshot("aa.en.01"), HasSubstr("<TITLE>live</TITLE>"));
}

TEST_P(SearchTest, AnUntitledPageHasTheWordForIt) {
    word(2597, "no title");
    page("aa.en.01").title("").insert();
    page("aa.en.02").set("title", Value()).insert();
    EXPECT_EQ(initialize(), "0");
    EXPECT_THAT(snapshot("aa.en.01"), HasSubstr("<TITLE>[no title]</TITLE>"));
    EXPECT_THAT(snapshot("aa.en.02"), HasSubstr("<TITLE>[no title]</TITLE>"));
}

TEST_P(SearchTest, OnlyTheBodiesOfTheLivePageAreRead) {
    const PageId pageId = pageWith(
        "aa.en.01", "<!--!torvex_content_start!--><!--!torvex_body_1!--><!--!torvex_content_end!-->");
    row("TORVEX_BODIES_DESIGN", {{"pageId", pageId}, {"bodyId", 1}, {"bodyText", "draft"}});
    body(pageId, 1, "live");
    initialize(ident(pageId));
    EXPECT_EQ(contentOf("aa.en.01"), "live\r\n");
}

TEST_P(SearchTest, WhatOnlyServesVisitorsIsLeftOut) {
    pageWith("aa.en.01",
             "<!--!torvex_content_start!-->a"
             "<!--!torvex_admin_start!-->X<!--!torvex_admin_end!-->b"
             "<!--!torvex_appFrame_start!-->X<!--!torvex_appFrame_end!-->"
             "<!--!torvex_appFrame_1_start!-->X<!--!torvex_appFrame_1_end!-->c"
             "<!--!torvex_navigation_start!-->X<!--!torvex_navigation_end!-->d"
             "<!--!torvex_userLoggedIn_start!-->X<!--!torvex_userLoggedIn_end!-->e"
             "<!--!torvex_noUserLoggedIn_start!-->X<!--!torvex_noUserLoggedIn_end!-->f"
             "<!--!torvex_loginError_start!-->X<!--!torvex_loginError_end!-->g"
             "<!--!torvex_other_start!-->h<!--!torvex_other_end!--><!--!any_tag!-->i"
             "<!--!torvex_content_end!-->");
    initialize("aa.en.01");
    EXPECT_EQ(contentOf("aa.en.01"), "abcdefghi\r\n");
}

TEST_P(SearchTest, ATemplateWithoutContentBlocksGivesNoContent) {
    pageWith("aa.en.01", "<p>all around</p>");
    EXPECT_EQ(initialize("aa.en.01"), "0");
    EXPECT_EQ(contentOf("aa.en.01"), "");
}

TEST_P(SearchTest, NumberedBlocksCountUpToTheFirstThatIsMissing) {
    pageWith("aa.en.01",
             "<!--!torvex_content_3_start!-->three<!--!torvex_content_3_end!-->"
             "<!--!torvex_content_1_start!-->one<!--!torvex_content_1_end!-->");
    initialize("aa.en.01");
    EXPECT_EQ(contentOf("aa.en.01"), "one\r\n");
}

TEST_P(SearchTest, AMissingBodyKeepsItsPlaceOpen) {
    pageWith("aa.en.01", "<!--!torvex_content_start!--><!--!torvex_body_1!--><!--!torvex_content_end!-->");
    initialize("aa.en.01");
    EXPECT_EQ(contentOf("aa.en.01"), "&nbsp;\r\n");
}

TEST_P(SearchTest, OnlyPagesWithATemplateOfTheirOwnHaveContent) {
    const std::string source = "<!--!torvex_content_start!-->text<!--!torvex_content_end!-->";
    pageWith("aa.en.01", source);
    page("aa.en.02").contentTemplate(0).insert();
    page("aa.en.03").type("A").contentTemplate(5).insert();
    page("aa.en.04").contentTemplate(77).insert();
    EXPECT_EQ(initialize(), "0");
    EXPECT_EQ(contentOf("aa.en.01"), "text\r\n");
    for (const auto* node : {"aa.en.02", "aa.en.03", "aa.en.04"}) EXPECT_EQ(contentOf(node), "") << node;
}

TEST_P(SearchTest, ATemplateFileThatIsGoneGivesNoContent) {
    pageWith("aa.en.01", "text");
    host.files.bytes.erase("/install/contentTemplates/aa/en/page.html");
    EXPECT_EQ(initialize("aa.en.01"), "0");
    EXPECT_EQ(contentOf("aa.en.01"), "");
}

TEST_P(SearchTest, InheritedMetadataAreThoseOfTheParent) {
    metaTag(1, "aa", "author");
    const PageId parent = page("aa.en.01").insert();
    const PageId child = page("aa.en.01.01").insert();
    metaData(parent, 1, "Anna");
    inheritedMetaData(child, 1);
    initialize(ident(child));
    EXPECT_THAT(snapshot("aa.en.01.01"),
                HasSubstr("<META NAME=\"author\" LANG=\"en\" CONTENT=\"Anna\">\r\n"));
}

TEST_P(SearchTest, AnOfflinePageHasASnapshotToo) {
    page("aa.en.01").offline().insert();
    initialize();
    EXPECT_NE(snapshot("aa.en.01"), "none");
}

// ---- One page ----

TEST_P(SearchTest, OnePageIsFoundByEitherName) {
    const PageId first = page("aa.en.01").insert();
    page("aa.en.02").insert();
    page("aa.en.03").insert();
    EXPECT_EQ(initialize(" " + ident(first) + " "), "0");
    EXPECT_EQ(initialize(" AA.en.02 "), "0");
    EXPECT_THAT(snapshots(), ElementsAre(path("aa.en.01"), path("aa.en.02")));
}

TEST_P(SearchTest, ANumberThatIsShorterThanANodeIsResolvedFirst) {
    row("TORVEX_PAGES_DESIGN", {{"pageId", 7}, {"nodeId", "aa.en.07"}});
    row("TORVEX_PAGES_LIVE", {{"pageId", 7}, {"nodeId", "aa.en.07"}, {"type", "P"}, {"title", "seven"}});
    EXPECT_EQ(initialize("7"), "0");
    EXPECT_THAT(snapshot("aa.en.07"), HasSubstr("<TITLE>seven</TITLE>"));
}

TEST_P(SearchTest, WhatIsTooShortForANodeIsRefused) {
    page("aa.en.01").insert();
    for (const auto* identifier : {"a", "aa", "aa.e", "77", "-5", "0", "1.5", "99999999999999999999"}) {
        EXPECT_EQ(initialize(identifier), "-99") << identifier;
    }
    EXPECT_EQ(initialize(std::string(100 * 1024, 'a')), "-99");
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_P(SearchTest, ANodeThatNoLivePageHasIsDoneAtOnce) {
    page("aa.en.01").insertInDesignOnly();
    for (const auto* node : {"aa.en.01", "aa.en.02", "nonsense", "../../../etc", "aa.en.' or 1=1"}) {
        EXPECT_EQ(initialize(node), "0") << node;
    }
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_P(SearchTest, OnePageReplacesItsFileAndLeavesTheOthers) {
    host.files.bytes[path("aa.en.01")] = "old";
    host.files.bytes[path("aa.en.02")] = "other";
    page("aa.en.01").title("new").insert();
    initialize("aa.en.01");
    EXPECT_THAT(snapshot("aa.en.01"), HasSubstr("<TITLE>new</TITLE>"));
    EXPECT_EQ(host.files.bytes[path("aa.en.02")], "other");
}

TEST_P(SearchTest, AFolderLosesItsFile) {
    host.files.bytes[path("aa.en.01")] = "old";
    host.files.bytes[path("aa.en.01.01")] = "other";
    page("aa.en.01").type("F").insert();
    EXPECT_EQ(initialize("aa.en.01"), "0");
    EXPECT_THAT(snapshots(), ElementsAre(path("aa.en.01.01")));
}

TEST_P(SearchTest, APageOfASystemBranchHasNone) {
    page("aa.en.99").type("F").insert();
    const PageId pageId = page("aa.en.99.01").insert();
    EXPECT_EQ(initialize(ident(pageId)), "0");
    EXPECT_EQ(initialize(), "0");
    EXPECT_THAT(snapshots(), IsEmpty());
}

TEST_P(SearchTest, TheDigitsOfASystemBranchAloneMakeNone) {
    page("99.en").insert();
    EXPECT_EQ(initialize("99.en"), "0");
    EXPECT_NE(snapshot("99.en"), "none");
}

// ---- All pages ----

TEST_P(SearchTest, AllPagesOfAllSitesAndLanguagesAreWritten) {
    language("de");
    page("aa.en").insert();
    page("aa.en.01").insert();
    page("aa.de.01").insert();
    page("bb.en.01").insert();
    page("aa.en.02").insertInDesignOnly();
    page("aa.en.03").type("F").insert();
    EXPECT_EQ(initialize(), "0");
    EXPECT_THAT(snapshots(),
                ElementsAre(path("aa.de.01"), path("aa.en.01"), path("aa.en"), path("bb.en.01")));
}

TEST_P(SearchTest, BlanksAreAllPagesToo) {
    page("aa.en.01").insert();
    EXPECT_EQ(initialize("   "), "0");
    EXPECT_THAT(snapshots(), ElementsAre(path("aa.en.01")));
}

TEST_P(SearchTest, AllPagesBeginWithEmptyFoldersOfTheLanguages) {
    page("aa.en.01").insert();
    host.files.bytes[path("aa.en.07")] = "of a page that is gone";
    host.files.bytes["/install/search/html/en/zz/any.txt"] = "x";
    host.files.bytes["/install/search/html/fr/aa/aa.fr.html"] = "no language of this system";
    host.files.bytes["/install/search/other.txt"] = "not ours";
    initialize();
    EXPECT_THAT(snapshots(), ElementsAre(path("aa.en.01"), "/install/search/html/fr/aa/aa.fr.html",
                                         "/install/search/other.txt"));
}

TEST_P(SearchTest, ALanguageThatIsNoFolderNameRemovesNothing) {
    for (const auto* lang : {"", ".", "..", "a/"}) row("TORVEX_LANGUAGES", {{"lang", lang}});
    host.files.bytes["/install/search/html/fr/aa/aa.fr.html"] = "x";
    host.files.bytes["/install/torvex.toml"] = "x";
    EXPECT_EQ(initialize(), "0");
    EXPECT_TRUE(host.files.bytes.contains("/install/search/html/fr/aa/aa.fr.html"));
    EXPECT_TRUE(host.files.bytes.contains("/install/torvex.toml"));
}

TEST_P(SearchTest, MorePagesThanAreReadAtATimeAreAllWritten) {
    db::Transaction transaction(connection());
    for (int i = 0; i < 1203; ++i) {
        const std::string node = "aa.en." + std::to_string(10 + i / 80) + "." + std::to_string(10 + i % 80);
        row("TORVEX_PAGES_LIVE", {{"pageId", 5000 + i}, {"nodeId", node}, {"type", "P"}, {"title", node}});
    }
    transaction.commit();
    EXPECT_EQ(initialize(), "0");
    EXPECT_EQ(snapshots().size(), 1203U);
    EXPECT_THAT(snapshot("aa.en.25.12"), HasSubstr("aa.en.25.12"));
}

TEST_P(SearchTest, MakesTheFoldersThatAreMissing) {
    page("aa.en.01").insert();
    initialize("aa.en.01");
    for (const auto* folder : {"/install/search", "/install/search/html", "/install/search/html/en",
                               "/install/search/html/en/aa"}) {
        EXPECT_TRUE(host.files.madeFolders.contains(folder)) << folder;
    }
}

TEST_P(SearchTest, MakesItsFolderEvenWithoutAPage) {
    EXPECT_EQ(initialize(), "0");
    EXPECT_TRUE(host.files.madeFolders.contains("/install/search/html"));
}

// ---- The other servers ----

TEST_P(SearchTest, TheOtherServersGetTheFolderAndLoseWhatAFolderLoses) {
    host.application.set("torvex_loadBalancing_shareName", "tvx");
    host.application.set("torvex_replication_root", "/mnt");
    row("TORVEX_SERVERS", {{"serverName", "other"}});
    host.files.madeFolders.insert("/mnt/other/tvx");
    host.files.bytes["/mnt/other/tvx/search/html/en/aa/aa.en.01.html"] = "old";
    page("aa.en.01").type("F").insert();
    page("aa.en.02").insert();
    EXPECT_EQ(initialize(), "0");
    EXPECT_TRUE(host.files.folderExists("/mnt/other/tvx/search/html"));
    EXPECT_FALSE(host.files.fileExists("/mnt/other/tvx/search/html/en/aa/aa.en.01.html"));
}

// ---- Failures ----

TEST_P(SearchTest, AFileThatCantBeWrittenIsAFailureThatTheLogNames) {
    page("aa.en.01").insert();
    initialize("aa.en.01");
    host.files.writeFailure = "disk full";
    EXPECT_EQ(initialize("aa.en.01"), "-99");
    EXPECT_THAT(host.log.lines, Not(IsEmpty()));
    EXPECT_THAT(host.log.lines.back(), HasSubstr("disk full"));
    EXPECT_NE(snapshot("aa.en.01"), "none");
}

TEST_P(SearchTest, APageThatFailsKeepsItsFileAndTheOthersGoOn) {
    pageWith("aa.en.01", "x");
    page("aa.en.02").insert();
    host.files.bytes["/install/contentTemplates/aa/en/page.html"] = "\xFF broken";
    EXPECT_EQ(initialize(), "-99");
    EXPECT_THAT(snapshots(), ElementsAre(path("aa.en.02")));
    EXPECT_THAT(host.log.lines, ElementsAre(HasSubstr("snapshot of aa.en.01: ")));
}

TEST_P(SearchTest, ABrokenDatabaseIsAFailureAndNoError) {
    page("aa.en.01").insert();
    drop("TORVEX_PAGES_LIVE");
    EXPECT_EQ(initialize(), "-99");
    EXPECT_EQ(initialize("aa.en.01"), "-99");
    EXPECT_EQ(host.log.lines.size(), 2U);
}

TEST_P(SearchTest, WithoutADatabaseItFails) {
    Search unconnected(host.context());
    EXPECT_EQ(unconnected.initializePages(), "-99");
}

}  // namespace
}  // namespace torvex::test
