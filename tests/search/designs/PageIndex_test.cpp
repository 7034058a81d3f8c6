#include "search/designs/PageIndex.h"

#include <gmock/gmock.h>

#include "support/PublishTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PageIndexTest : public PublishTest {
  protected:
    void SetUp() override {
        PublishTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.en.01").id(12).title("Walks").set("editStatus", "P").insert();
        indexMissingPages(host.context(), connection());
    }
    std::vector<std::string> rowsOf(const std::string& statement) {
        std::vector<std::string> lines;
        auto rows = connection().query(statement);
        while (rows.next()) {
            std::string line;
            for (std::size_t i = 0; i < rows.columns(); ++i) line += (i ? "|" : "") + rows.value(i).toText();
            lines.push_back(line);
        }
        return lines;
    }
    std::vector<std::string> links() {
        return rowsOf(
            "select pageId, linkTwin, bodyId, linkKind, linkPage, linkSite, linkTarget "
            "from TORVEX_LINKS order by pageId, linkTwin, bodyId, linkKind, linkPage, linkTarget");
    }
    std::vector<std::string> words() {
        return rowsOf("select pageId, words from TORVEX_PAGE_WORDS order by pageId");
    }
    std::string wordsOf(PageId pageId) {
        return cell("select words from TORVEX_PAGE_WORDS where pageId = " + ident(pageId));
    }
    /// The rows are those that would be made from all texts anew.
    void expectTrue() {
        const auto keptLinks = links();
        const auto keptWords = words();
        connection().execute("delete from TORVEX_LINKS");
        connection().execute("delete from TORVEX_PAGE_WORDS");
        indexMissingPages(host.context(), connection());
        EXPECT_EQ(links(), keptLinks);
        EXPECT_EQ(words(), keptWords);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, PageIndexTest, bothEngines(), engineName);

TEST_P(PageIndexTest, ASavedBodyIsFoundByItsWordsAndLinks) {
    EXPECT_EQ(
        manager().saveBody("12", 1, R"~(At <a href="page(aa.en)">ten</a> <img src="/images/aa/r.jpg">)~"),
        "0");
    EXPECT_THAT(links(), ElementsAre("12|D|1|image|0|aa|r.jpg", "12|D|1|page|0||aa.en"));
    EXPECT_EQ(wordsOf(12), "saaen twalks wat wten");
    EXPECT_EQ(manager().saveBody("12", 1, R"~(At eleven <a href="page(13)">x</a>)~"), "0");
    EXPECT_THAT(links(), ElementsAre("12|D|1|page|13||"));
    EXPECT_EQ(wordsOf(12), "saaen twalks wat weleven wx");
    expectTrue();
}

TEST_P(PageIndexTest, TheIndexOfTheEngineFollows) {
    const bool isSqlite = connection().engine() == db::Engine::Sqlite;
    const auto find = [&](const std::string& word) {
        return rowsOf(
            isSqlite ? "select rowid from TORVEX_PAGE_WORDS_INDEX where TORVEX_PAGE_WORDS_INDEX match '\"" +
                           word + "\"*'"
                     : "select pageId from TORVEX_PAGE_WORDS where array_to_tsvector(string_to_array("
                       "cast(words as text), ' ')) @@ '" +
                           word + ":*'");
    };
    manager().saveBody("12", 1, "ten");
    EXPECT_THAT(find("wte"), ElementsAre("12"));
    manager().saveBody("12", 1, "eleven");
    EXPECT_THAT(find("wte"), IsEmpty());
    EXPECT_THAT(find("wele"), ElementsAre("12"));
    connection().execute("delete from TORVEX_PAGE_WORDS where pageId = 12");
    EXPECT_THAT(find("wele"), IsEmpty());
}

TEST_P(PageIndexTest, OnlyAStoredTextLeadsSomewhere) {
    manager().saveBody("12", 1, R"~(<a href="page(13)">x</a>)~");
    EXPECT_EQ(manager().saveBodySetup("12", 1, 2, 5), "0");
    EXPECT_THAT(links(), IsEmpty());
    EXPECT_EQ(wordsOf(12), "saaen twalks");
    EXPECT_EQ(manager().saveBodySetup("12", 1, 1, 0), "0");
    EXPECT_THAT(links(), ElementsAre("12|D|1|page|13||"));
    expectTrue();
}

TEST_P(PageIndexTest, AClearedBodyLeadsNowhereAndAPastedOneAsItsSource) {
    const PageId other = page("aa.en.02").insert();
    manager().saveBody("12", 1, R"~(<a href="page(13)">x</a>)~");
    EXPECT_EQ(manager().pasteBody("12", ident(other), 1, 4, "D"), "0");
    EXPECT_EQ(manager().clearBody("12", 1), "0");
    EXPECT_THAT(links(), ElementsAre(ident(other) + "|D|4|page|13||"));
    expectTrue();
}

TEST_P(PageIndexTest, PublishingAndResettingCarryTheLinksOver) {
    manager().saveBody("12", 1, R"~(<a href="page(13)">old</a>)~");
    EXPECT_EQ(manager().approvePage("12", 1).front(), 'M');
    EXPECT_EQ(manager().publishPage("12"), "1");
    EXPECT_THAT(links(), ElementsAre("12|D|1|page|13||", "12|L|1|page|13||"));
    manager().saveBody("12", 1, R"~(<a href="page(14)">new</a>)~");
    EXPECT_THAT(links(), ElementsAre("12|D|1|page|14||", "12|L|1|page|13||"));
    expectTrue();
    manager().resetPage("12");
    EXPECT_THAT(links(), ElementsAre("12|D|1|page|13||", "12|L|1|page|13||"));
    EXPECT_EQ(wordsOf(12), "saaen twalks wold");
    expectTrue();
}

TEST_P(PageIndexTest, ABranchThatGoesLiveOrAwayTakesItsLinksAlong) {
    manager().saveBody("12", 1, R"~(<a href="page(13)">x</a>)~");
    manager().approvePage("12", 1);
    EXPECT_EQ(manager().publishPageCascading("aa.en.01"), "0");
    EXPECT_THAT(links(), ElementsAre("12|D|1|page|13||", "12|L|1|page|13||"));
    manager().deletePage("12", 1);
    manager().approvePage("12", 1);
    manager().publishPage("12");
    EXPECT_THAT(links(), IsEmpty());
    EXPECT_EQ(wordsOf(12), "");
}

TEST_P(PageIndexTest, ACopyLeadsWhereItsSourceLeads) {
    page("aa.en.01.01").insert();
    indexMissingPages(host.context(), connection());
    manager().saveBody("12", 1, R"~(<a href="page(13)">x</a>)~");
    manager().saveBody("aa.en.01.01", 2, R"~(below <a href="file(a.pdf)">x</a>)~");
    const std::string copy = manager().pastePage("D", "12", "aa.en", 1);
    ASSERT_FALSE(copy.starts_with('-')) << copy;
    EXPECT_EQ(links().size(), 4U);
    expectTrue();
}

TEST_P(PageIndexTest, ANewPageAndANewTitleAreFound) {
    manager().getPage("12", "D");
    manager().setPgOnlineFrom("");
    manager().setPgOnlineTo("");
    manager().setPgTitle("Night walks");
    EXPECT_EQ(manager().savePageSetup("12"), "0");
    EXPECT_EQ(wordsOf(12), "saaen tnight twalks");
    manager().setPgTitle("Seed swap");
    const std::string node = manager().saveNewPageSetup("aa", "en", "aa.en", "");
    ASSERT_FALSE(node.starts_with('-')) << node;
    EXPECT_EQ(
        cell("select words from TORVEX_PAGE_WORDS w inner join TORVEX_PAGES_DESIGN d on d.pageId = w.pageId "
             "where d.nodeId = '" +
             node + "'"),
        "saaen tseed tswap");
    expectTrue();
}

TEST_P(PageIndexTest, AMovedBranchIsFoundWhereItIs) {
    page("aa.en.02").insert();
    page("aa.en.02.01").title("Walks").insert();
    indexMissingPages(host.context(), connection());
    const std::string node = manager().movePage("12", "aa.en.02");
    ASSERT_FALSE(node.starts_with('-')) << node;
    expectTrue();
}

TEST_P(PageIndexTest, MetaDataLeadsSomewhereUntilItsTagGoes) {
    metaTag(5, "aa", "Picture");
    manager().saveMetaData("12", "Picture", "/images/aa/r.jpg", false);
    EXPECT_THAT(links(), ElementsAre("12|D|-5|image|0|aa|r.jpg"));
    expectTrue();
    manager().saveMetaData("12", "Picture", "", true);
    EXPECT_THAT(links(), IsEmpty());
    manager().saveMetaData("12", "Picture", "/images/aa/r.jpg", false);
    EXPECT_EQ(manager().deleteMetaTag("aa", "Picture"), "");
    EXPECT_THAT(links(), IsEmpty());
    expectTrue();
}

TEST_P(PageIndexTest, ARefusedSaveChangesNothing) {
    manager().saveBody("12", 1, R"~(<a href="page(13)">x</a>)~");
    manager().approvePage("12", 1);
    expectRefusal("-2", [&] { return manager().saveBody("12", 1, "other"); });
}

TEST_P(PageIndexTest, ASaveThatFailsAnywhereLeavesTheIndexAsItWas) {
    manager().saveBody("12", 1, R"~(<a href="page(13)">x</a>)~");
    failEverywhere(
        "0", [&] { return manager().saveBody("12", 1, R"~(<a href="page(14)">y</a>)~"); }, [] {});
    expectTrue();
}

TEST_P(PageIndexTest, WhatIsMissingIsFilledOnceWithBothTwins) {
    designBody(12, 1, R"~(<a href="page(13)">x</a>)~");
    body(12, 1, R"~(<a href="page(14)">x</a>)~");
    connection().execute("delete from TORVEX_PAGE_WORDS");
    EXPECT_EQ(indexMissingPages(host.context(), connection()), 2U);
    EXPECT_EQ(indexMissingPages(host.context(), connection()), 0U);
    EXPECT_THAT(links(), ElementsAre("12|D|1|page|13||", "12|L|1|page|14||"));
}

TEST_P(PageIndexTest, ManyPagesAndLinksAreTakenInWhole) {
    db::Transaction many(connection());
    for (int i = 0; i < 90; ++i) {
        const PageId pageId = page("aa.en.03." + std::to_string(10 + i)).insert();
        designBody(pageId, 1, R"~(<a href="page(13)"><a href="page(14)"><a href="page(15)">)~");
    }
    many.commit();
    EXPECT_EQ(indexMissingPages(host.context(), connection()), 90U);
    EXPECT_EQ(links().size(), 270U);
}

}  // namespace
}  // namespace torvex::test
