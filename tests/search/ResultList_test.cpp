#include "search/ResultList.h"

#include <gmock/gmock.h>

#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

using ::testing::HasSubstr;

class ResultListTest : public SearchPageTest {
  protected:
    /// The links that a search shows, in their order.
    std::string links(const std::string& mode = "") {
        const std::string layout =
            "<!--!torvex_application_start!--><!--!search_result_start!--><!--!search_link!-->"
            "<!--!search_spacer_start!--> <!--!search_spacer_end!--><!--!search_result_end!-->"
            "<!--!search_empty_start!-->nothing<!--!search_empty_end!-->"
            "<!--!search_paging_start!--> more<!--!search_paging_end!--><!--!torvex_application_end!-->";
        return withoutMarkers(search({{"search_string", "tax"}}, layout, mode));
    }
    void folderGroup(const std::string& site, const std::string& id, int group) {
        row("TORVEX_FOLDERS_GROUPS",
            {{"fld_type", "doc"}, {"fld_site", site}, {"fld_id", id}, {"groupId", group}});
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ResultListTest, bothEngines(), engineName);

// ---- What a row stands for ----

TEST_P(ResultListTest, PathsTellPagesFromDocuments) {
    const auto kindOf = [this](const std::string& path) {
        const FoundFile file = foundFile(host.context(), "\\install\\", path);
        if (file.isPage()) return "page " + file.page.nodeId;
        return file.kind == FoundFile::Kind::Document ? "document " + file.document : "other";
    };
    EXPECT_EQ(kindOf("\\Install\\Search\\HTML\\bb\\aa\\AA.bb.01.html"), "page aa.bb.01");
    EXPECT_EQ(kindOf("\\install\\search\\html\\bb\\aa\\aa.bb.01.02.html"), "page aa.bb.01.02");
    EXPECT_EQ(kindOf("\\install\\wwwroot\\documents\\aa\\001\\x.y.pdf"), "document aa/001/x.y.pdf");
    for (const auto* path :
         {"", "\\install\\search\\html\\", "\\install\\search\\html\\bb\\aa\\", "\\install\\secret.txt",
          "\\other\\search\\html\\bb\\aa\\aa.bb.01.html", "\\install\\wwwroot\\images\\x.gif"})
        EXPECT_EQ(kindOf(path), "other") << path;
}

TEST_P(ResultListTest, AFileThatIsNeitherIsPassedOver) {
    catalogue::Row other;
    other.path = "\\install\\torvex.toml";
    fake.rows = {other, documentRow("aa/1.pdf")};
    EXPECT_EQ(links(), "file(aa/1.pdf)");
}

// ---- Pages that don't show ----

TEST_P(ResultListTest, APageThatWentOffLineIsPassedOverUncounted) {
    page("aa.bb.11").id(31).offline().insert();
    page("aa.bb.12").id(32).dates("20270101", "").insert();
    page("aa.bb.13").id(33).insertInDesignOnly();
    page("aa.bb.14").id(34).insert();
    for (const int id : {31, 32, 33, 34}) pageGroup(id, 1);
    prescribe("search_resultsPerPage", 2);
    fake.rows = {pageRow("aa.bb.11"), pageRow("aa.bb.12"), pageRow("aa.bb.13"),
                 pageRow("aa.bb.77"), pageRow("aa.bb.14"), pageRow("aa.bb.01")};
    EXPECT_EQ(links(), "page(34) page(11)");
}

TEST_P(ResultListTest, AnAuthorsPreviewShowsWhatIsOffLine) {
    page("aa.bb.11").id(31).offline().insert();
    page("aa.bb.13").id(33).insertInDesignOnly();
    fake.rows = {pageRow("aa.bb.11"), pageRow("aa.bb.13"), pageRow("aa.bb.02")};
    EXPECT_EQ(links("D"), "page(31) page(12)");
    EXPECT_EQ(links("  "), "nothing");
}

// ---- Rights ----

TEST_P(ResultListTest, PagesOfGroupsAreForTheirMembers) {
    fake.rows = {pageRow("aa.bb.02"), pageRow("aa.bb.02.01"), pageRow("aa.bb.03"), pageRow("aa.bb.04"),
                 pageRow("aa.bb.01")};
    EXPECT_EQ(links(), "page(11)");
    logIn("ben");
    EXPECT_EQ(links(), "page(12) page(13) page(11)");
    logIn("ann");
    EXPECT_EQ(links(), "page(12) page(13) page(14) page(11)");
}

TEST_P(ResultListTest, WithoutTestsAllAreShown) {
    prescribe("search_security", 2);
    fake.rows = {pageRow("aa.bb.02"), pageRow("aa.bb.04")};
    EXPECT_EQ(links(), "page(12) page(15)");
}

TEST_P(ResultListTest, DocumentsOfGuardedFoldersAreForTheirMembers) {
    host.application.set("torvex_doc_security", true);
    folderGroup("aa", "", 1);
    folderGroup("aa", "001", 2);
    folderGroup("aa", "001002", 0);
    fake.rows = {documentRow("aa/001/a.pdf"), documentRow("aa/001/002/b.pdf"), documentRow("aa/c.pdf"),
                 documentRow("aa/009/d.pdf"), documentRow("e.pdf")};
    EXPECT_EQ(links(), "file(aa/c.pdf)");
    logIn("ben");
    EXPECT_EQ(links(), "file(aa/001/a.pdf) file(aa/001/002/b.pdf) file(aa/c.pdf)");
}

TEST_P(ResultListTest, WhatMayNotBeSeenLeavesNoTrace) {
    prescribe("search_resultsPerPage", 2);
    const std::string nothing = links();
    fake.rows = {pageRow("aa.bb.02"), pageRow("aa.bb.03"), pageRow("aa.bb.04")};
    EXPECT_EQ(links(), nothing);
    EXPECT_TRUE(host.session.get("torvex_search_bookmark1").isEmpty());
    EXPECT_EQ(fake.rowsRead, 0) << "an abstract was made of a page that may not be seen";
}

TEST_P(ResultListTest, ThereIsNoFurtherPageForWhatMayNotBeSeen) {
    prescribe("search_resultsPerPage", 1);
    fake.rows = {pageRow("aa.bb.01"), pageRow("aa.bb.02"), pageRow("aa.bb.03")};
    EXPECT_EQ(links(), "page(11)");
    logIn("ben");
    EXPECT_EQ(links(), "page(11) more");
}

TEST_P(ResultListTest, TheBestRankIsThatOfTheFirstOneShown) {
    fake.rows = {pageRow("aa.bb.02", "", 1000), pageRow("aa.bb.01", "", 300)};
    links();
    EXPECT_EQ(host.session.text("torvex_search_rankBase"), "300");
}

TEST_P(ResultListTest, ResultsAreTestedAgainOnEachPage) {
    prescribe("search_resultsPerPage", 1);
    fake.rows = {pageRow("aa.bb.01"), pageRow("aa.bb.02"), pageRow("aa.bb.03")};
    logIn("ann");
    EXPECT_EQ(links(), "page(11) more");
    logIn("cleo");
    EXPECT_EQ(withoutMarkers(turnTo("2")), "nothing {&lt;1}");
    connection().execute("update TORVEX_PAGES_LIVE set online = 0 where pageId = 11");
    EXPECT_EQ(withoutMarkers(turnTo("1")), "nothing");
}

TEST_P(ResultListTest, GroupsThatCameMeanwhileCount) {
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 1");
    prescribe("search_resultsPerPage", 1);
    fake.rows = {pageRow("aa.bb.01"), pageRow("aa.bb.02"), pageRow("aa.bb.03")};
    EXPECT_EQ(links(), "page(11) more");
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 3 where pageId = 12");
    EXPECT_THAT(withoutMarkers(turnTo("2")), HasSubstr("2-2: [page(14)|]"));
}

// ---- How much it costs ----

TEST_P(ResultListTest, ThousandsOfResultsAreTestedInBatches) {
    constexpr int many = 2000;
    const int levels = 98;
    for (int i = 0; i < many; ++i) {
        char node[32];
        std::snprintf(node, sizeof node, "aa.bb.02.%02d.%02d", i / levels + 10, i % levels + 1);
        page(node).id(5000 + i).insert();
        pageGroup(5000 + i, 0);
        fake.rows.push_back(pageRow(node));
    }
    for (int i = 10; i <= many / levels + 10; ++i) {
        page("aa.bb.02." + std::to_string(i)).id(4000 + i).insert();
        pageGroup(4000 + i, 0);
    }
    fake.rows.push_back(pageRow("aa.bb.01"));
    counted().queries = 0;
    EXPECT_EQ(links(), "page(11)");
    EXPECT_LT(counted().queries, many / 6);
    EXPECT_EQ(fake.rowsRead, 1);
    counted().queries = 0;
    logIn("ben");
    EXPECT_THAT(links(), HasSubstr("page(5000) page(5001) "));
    EXPECT_LT(counted().queries, 60) << "a page of twenty results";
}

TEST_P(ResultListTest, AsAreDocumentsInHundredsOfFolders) {
    host.application.set("torvex_doc_security", true);
    constexpr int many = 800;
    folderGroup("aa", "", 2);
    for (int i = 0; i < many; ++i) {
        const std::string id = std::to_string(100 + i);
        folderGroup("aa", id, 0);
        fake.rows.push_back(documentRow("aa/" + id + "/a.pdf"));
    }
    fake.rows.push_back(pageRow("aa.bb.01"));
    counted().queries = 0;
    EXPECT_EQ(links(), "page(11)");
    EXPECT_LT(counted().queries, many / 6);
}

TEST_P(ResultListTest, ASearchEndsWithItsTime) {
    for (int i = 0; i < 400; ++i) fake.rows.push_back(pageRow("aa.bb.02"));
    host.context().begin = Deadline::Clock::now() - std::chrono::hours(1);
    searchFor("tax");
    EXPECT_EQ(error, "Error in function fillResults (Search module) !");
    host.context().begin.reset();
}

}  // namespace
}  // namespace torvex::test
