#include <gmock/gmock.h>

#include "support/MediaTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class MediaListTest : public MediaTest {};
INSTANTIATE_TEST_SUITE_P(Engines, MediaListTest, bothEngines(), engineName);

TEST_P(MediaListTest, FoldersAreListedWithTheirFiles) {
    folder("IMAGES", "001002", "Old roses");
    image("a.gif", "A");
    image("b.gif", "B");
    EXPECT_THAT(linesOf(registers().getFolders(" AA ", "images")),
                ElementsAre("001|Roses||1|2", "001002|Old roses|001|2|0"));
    EXPECT_THAT(linesOf(registers().getFolders("aa", "documents")), ElementsAre("001|Roses||1|0"));
    EXPECT_THAT(linesOf(registers().getFolders("zz", "images")), IsEmpty());
}

TEST_P(MediaListTest, FilesAreListedWithWhatTheRegisterKnowsOfThem) {
    image("rose.gif", "A rose");
    document("plan.pdf", "Plan");
    EXPECT_THAT(images(), ElementsAre("001|001/rose.gif|A rose|gif|13|320|200|-"));
    EXPECT_THAT(documents(), ElementsAre("001|001/plan.pdf|Plan|pdf|5|0|0|-"));
}

TEST_P(MediaListTest, AFolderHoldsThoseBelowItToo) {
    folder("IMAGES", "001002", "Old roses");
    folder("IMAGES", "002", "Tulips");
    image("b.gif", "B");
    for (const auto* id : {"001002", "002"}) manager().saveFile("aa", id, "images", "c.gif", "C");
    EXPECT_THAT(images("001"), ElementsAre(StartsWith("001|001/b.gif"), StartsWith("001002|001/002/c.gif")));
    EXPECT_THAT(images("002"), ElementsAre(StartsWith("002|002/c.gif")));
    EXPECT_THAT(images(), SizeIs(3));
}

TEST_P(MediaListTest, WordsAreLookedForInTitlePathAndAlternativeText) {
    image("a.gif", "A red Rose");
    image("rose.gif", "B");
    image("c.gif", "C");
    image("d.gif", "D");
    registers().saveMedia("aa", "images", "001/c.gif", "C", "Two roses in a vase");
    EXPECT_THAT(images("", " ROSE "), SizeIs(3));
    EXPECT_THAT(images("", "100%"), IsEmpty());
}

TEST_P(MediaListTest, ALongListComesInPieces) {
    for (int i = 1000; i < 1503; ++i) {
        row("TORVEX_IMAGES", {{"img_site", "aa"},
                              {"img_fldId", "001"},
                              {"img_title", "T" + std::to_string(i)},
                              {"img_filename", "001/" + std::to_string(i) + ".gif"}});
    }
    EXPECT_THAT(images(), SizeIs(500));
    const auto rest = linesOf(registers().getMedia("aa", "images", "", "", 500));
    EXPECT_THAT(rest, ElementsAre(StartsWith("001|001/1500.gif"), StartsWith("001|001/1501.gif"),
                                  StartsWith("001|001/1502.gif")));
    EXPECT_THAT(linesOf(registers().getMedia("aa", "images", "", "", -5)), SizeIs(500));
}

TEST_P(MediaListTest, AFileMayComeIntoAFolderUnderAFreeName) {
    EXPECT_EQ(registers().checkUpload("aa", "images", "001", "new.gif"), "0");
    EXPECT_EQ(registers().checkUpload("aa", "images", "", "new.gif"), "0");
}

TEST_P(MediaListTest, AFileCantComeIntoAFolderThatIsntThere) {
    for (const auto* id : {"002", "001001", "../", "01", "x"}) {
        SCOPED_TRACE(id);
        EXPECT_EQ(registers().checkUpload("aa", "images", id, "new.gif"), "-1");
    }
    for (const auto* site : {"../", "zz", ""}) {
        EXPECT_EQ(registers().checkUpload(site, "images", "001", "new.gif"), "-1") << site;
        EXPECT_EQ(registers().checkUpload(site, "images", "", "new.gif"), "-1") << site;
    }
}

TEST_P(MediaListTest, ANameThatLeadsElsewhereIsNone) {
    folder("IMAGES", "001002", "Old roses");
    for (const auto* name : {"", ".", "..", "../x.gif", "002/x.gif", "a\\b.gif"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(registers().checkUpload("aa", "images", "001", name), "-1");
    }
}

TEST_P(MediaListTest, ANameIsTakenOnTheDiskOrInTheRegister) {
    file("images/aa/001/lost.gif", gif());
    manager().saveFile("aa", "001", "images", "row.gif", "Row");
    EXPECT_EQ(registers().checkUpload("aa", "images", "001", "lost.gif"), "exists");
    EXPECT_EQ(registers().checkUpload("aa", "images", "001", "row.gif"), "exists");
    EXPECT_EQ(registers().checkUpload("aa", "documents", "001", "row.gif"), "0");
}

TEST_P(MediaListTest, FailuresSayWhatFailed) {
    drop("TORVEX_IMAGES");
    EXPECT_THAT(errorOf([&] { registers().getFolders("aa", "images"); }),
                StartsWith(chain({"getFolders !"})));
    EXPECT_THAT(errorOf([&] { registers().getMedia("aa", "images"); }), StartsWith(chain({"getMedia !"})));
    EXPECT_THAT(errorOf([&] { registers().checkUpload("aa", "images", "001", "a.gif"); }),
                StartsWith(chain({"checkUpload !"})));
}

}  // namespace
}  // namespace torvex::test
