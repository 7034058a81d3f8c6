#include <gmock/gmock.h>

#include "search/designs/PageIndex.h"
#include "support/MediaTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MediaMoveTest : public MediaTest {
  protected:
    void SetUp() override {
        MediaTest::SetUp();
        if (HasFatalFailure()) return;
        for (const auto* kind : {"IMAGES", "DOCUMENTS"}) folder(kind, "002", "Tulips");
        page("aa.en.01").id(12).title("Walks").insert();
    }
    std::string move(const std::string& path, const std::string& to, int advId = 0) {
        return registers().moveMedia("aa", "images", path, to, advId);
    }
    void text(const std::string& table, int bodyId, const std::string& html, PageId pageId = 12) {
        row("TORVEX_BODIES_" + table,
            {{"pageId", pageId}, {"bodyId", bodyId}, {"bodyType", 1}, {"bodyText", html}});
    }
    void index() { indexMissingPages(host.context(), connection()); }
    std::vector<std::string> texts(const std::string& table) {
        return rowsOf("select bodyId, bodyText from TORVEX_BODIES_" + table + " order by pageId, bodyId");
    }
    std::vector<std::string> links() {
        return rowsOf(
            "select linkTwin, bodyId, linkTarget from TORVEX_LINKS order by pageId, linkTwin, bodyId");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MediaMoveTest, bothEngines(), engineName);

TEST_P(MediaMoveTest, AFileComesIntoAnotherFolder) {
    image("rose.gif", "A rose");
    registers().saveMedia("aa", "images", "001/rose.gif", "A rose", "Red");
    EXPECT_EQ(registers().moveMedia(" AA ", "Images", " 001/rose.gif ", " 002 ", 111), "0");
    EXPECT_THAT(images(), ElementsAre("002|002/rose.gif|A rose|gif|13|320|200|Red"));
    EXPECT_EQ(contentOf("images/aa/002/rose.gif"), gif());
    EXPECT_EQ(host.files.bytes.size(), 1U) << "something was left behind";
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||111|save|Image \"001/rose.gif\" is now "
                                          "\"002/rose.gif\", in 0 pages too"));
}

TEST_P(MediaMoveTest, AFileComesOutOfAllFolders) {
    document("plan.pdf", "Plan");
    EXPECT_EQ(registers().moveMedia("aa", "documents", "001/plan.pdf", ""), "0");
    EXPECT_THAT(documents(), ElementsAre("|plan.pdf|Plan|pdf|5|0|0|-"));
    EXPECT_EQ(contentOf("documents/aa/plan.pdf"), "12345");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(MediaMoveTest, PagesFollowInDesignAndLive) {
    image("rose.gif", "A rose");
    text("DESIGN", 1, "<img src='/images/aa/001/rose.gif'> <b>x");
    text("DESIGN", 2, "<img src='/images/aa/001/other.gif'>");
    text("LIVE", 1, "<img src='/images/aa/001/rose.gif'>");
    index();
    EXPECT_EQ(move("001/rose.gif", "002", 111), "0");
    EXPECT_THAT(texts("DESIGN"), ElementsAre("1|<img src='/images/aa/002/rose.gif'> <b>x",
                                             "2|<img src='/images/aa/001/other.gif'>"));
    EXPECT_THAT(texts("LIVE"), ElementsAre("1|<img src='/images/aa/002/rose.gif'>"));
    EXPECT_THAT(links(), ElementsAre("D|1|002/rose.gif", "D|2|001/other.gif", "L|1|002/rose.gif"));
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||111|save|Image \"001/rose.gif\" is now "
                                          "\"002/rose.gif\", in 1 pages too"));
}

TEST_P(MediaMoveTest, MetaDataFollow) {
    image("rose.gif", "A rose");
    for (const auto* twin : {"DESIGN", "LIVE"}) {
        row(std::string("TORVEX_PAGES_METADATA_") + twin,
            {{"metaData_pageId", 12}, {"metaData_id", 3}, {"metaData_value", "/images/aa/001/rose.gif"}});
    }
    index();
    EXPECT_EQ(move("001/rose.gif", "002"), "0");
    for (const auto* twin : {"DESIGN", "LIVE"}) {
        EXPECT_THAT(rowsOf(std::string("select metaData_value from TORVEX_PAGES_METADATA_") + twin),
                    ElementsAre("/images/aa/002/rose.gif"));
    }
}

TEST_P(MediaMoveTest, ADocumentWithoutASiteIsOfThePagesOwn) {
    document("plan.pdf", "Plan");
    page("bb.en.01").id(50).insert();
    const std::string link = R"~(<a href="file(001/plan.pdf)">)~";
    text("DESIGN", 1, link);
    text("DESIGN", 2, link, 50);
    text("LIVE", 2, link, 50);
    text("DESIGN", 3, R"~(<a href="file(aa/001/plan.pdf)">)~", 50);
    index();
    EXPECT_EQ(registers().moveMedia("aa", "documents", "001/plan.pdf", "002"), "0");
    EXPECT_THAT(texts("DESIGN"), ElementsAre(R"~(1|<a href="file(002/plan.pdf)">)~", "2|" + link,
                                             R"~(3|<a href="file(aa/002/plan.pdf)">)~"));
    EXPECT_THAT(links(),
                ElementsAre("D|1|002/plan.pdf", "D|2|001/plan.pdf", "D|3|002/plan.pdf", "L|2|001/plan.pdf"));
}

TEST_P(MediaMoveTest, AFileThatStaysWhereItIsHasChangedNothing) {
    image("rose.gif", "A rose");
    expectRefusal("0", [&] { return move("001/rose.gif", "001", 111); });
}

TEST_P(MediaMoveTest, OnlyAFileThatIsThereMovesIntoAFolderThatIsThere) {
    image("rose.gif", "A rose");
    for (const auto* path : {"001/lost.gif", "rose.gif", "", "../001/rose.gif"}) {
        SCOPED_TRACE(path);
        expectRefusal("-1", [&] { return move(path, "002", 111); });
    }
    for (const auto* to : {"003", "..", "002/", "abc"}) {
        SCOPED_TRACE(to);
        expectRefusal("-1", [&] { return move("001/rose.gif", to, 111); });
    }
    host.files.bytes.clear();
    expectRefusal("-1", [&] { return move("001/rose.gif", "002", 111); });
}

TEST_P(MediaMoveTest, AFileOfItsNameIsNotWrittenOver) {
    image("rose.gif", "A rose");
    file("images/aa/002/rose.gif", "on the disk alone");
    expectRefusal("exists", [&] { return move("001/rose.gif", "002", 111); });
}

TEST_P(MediaMoveTest, ATitleIsGivenOnceInAFolder) {
    image("rose.gif", "A rose");
    file("images/aa/002/other.gif", gif());
    EXPECT_EQ(manager().saveFile("aa", "002", "images", "other.gif", "a ROSE"), "other.gif");
    expectRefusal("-2", [&] { return move("001/rose.gif", "002", 111); });
}

TEST_P(MediaMoveTest, NobodyMovesAnything) {
    image("rose.gif", "A rose");
    actAsNobody();
    expectRefusal("-10", [&] { return move("001/rose.gif", "002", 111); });
}

TEST_P(MediaMoveTest, WhatFailsHalfwayHasChangedNothing) {
    image("rose.gif", "A rose");
    text("DESIGN", 1, "<img src='/images/aa/001/rose.gif'>");
    text("LIVE", 1, "<img src='/images/aa/001/rose.gif'>");
    index();
    failEverywhere("0", "-99", [&] { return move("001/rose.gif", "002"); });
}

TEST_P(MediaMoveTest, ADiskThatCantWriteMovesNothing) {
    image("rose.gif", "A rose");
    host.files.writeFailure = "disk full";
    expectRefusal("-99", [&] { return move("001/rose.gif", "002", 111); });
}

TEST_P(MediaMoveTest, TheOtherServersFollow) {
    host.application.set("torvex_loadBalancing_shareName", "www");
    host.application.set("torvex_replication_root", "/mnt");
    row("TORVEX_SERVERS", {{"serverName", "other"}});
    const std::string there = "/mnt/other/www/wwwroot/images/aa/";
    for (const auto* name : {"001", "002"}) host.files.madeFolders.insert(there + name);
    image("rose.gif", "A rose");
    host.files.bytes[there + "001/rose.gif"] = gif();
    EXPECT_EQ(move("001/rose.gif", "002"), "0");
    EXPECT_EQ(host.files.bytes[there + "002/rose.gif"], gif());
    EXPECT_FALSE(host.files.fileExists(there + "001/rose.gif"));
}

}  // namespace
}  // namespace torvex::test
