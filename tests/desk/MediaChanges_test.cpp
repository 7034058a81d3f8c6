#include <gmock/gmock.h>

#include "support/MediaTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MediaChangesTest : public MediaTest {
  protected:
    std::string folderNames() {
        std::string names;
        for (const auto& line : linesOf(registers().getFolders("aa", "images"))) names += line + "\n";
        return names;
    }
    std::string rename(const std::string& id, const std::string& name, int advId = 0) {
        return registers().renameFolder("aa", "images", id, name, advId);
    }
    std::string save(const std::string& path, const std::string& title, const std::string& alt = "-1",
                     int advId = 0) {
        return registers().saveMedia("aa", "images", path, title, alt, advId);
    }
    std::string replace(const std::string& path, const std::string& by = "", int advId = 0) {
        return registers().replaceMedia("aa", "images", path, by, advId);
    }
    std::string remove(const std::string& path, int advId = 0) {
        return registers().deleteMedia("aa", "images", path, advId);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MediaChangesTest, bothEngines(), engineName);

TEST_P(MediaChangesTest, AFolderGetsAnotherName) {
    EXPECT_EQ(registers().renameFolder(" AA ", "Images", " 001 ", "  Tulips ", 111), "0");
    EXPECT_EQ(folderNames(), "001|Tulips||1|0\n");
    EXPECT_THAT(linesOf(registers().getFolders("aa", "documents")), ElementsAre("001|Roses||1|0"));
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||111|edit|Image folder \"Roses\" is now called "
                                          "\"Tulips\""));
}

TEST_P(MediaChangesTest, AFoldersNameIsCutToItsColumn) {
    EXPECT_EQ(rename("001", std::string(60, 'x')), "0");
    EXPECT_EQ(folderNames(), "001|" + std::string(50, 'x') + "||1|0\n");
}

TEST_P(MediaChangesTest, AFolderMayBeWrittenOtherwise) {
    EXPECT_EQ(rename("001", "ROSES"), "0");
    EXPECT_EQ(folderNames(), "001|ROSES||1|0\n");
}

TEST_P(MediaChangesTest, TwoFoldersSideBySideHaveTwoNames) {
    folder("IMAGES", "002", "Tulips");
    folder("IMAGES", "001001", "Tulips");
    expectRefusal("-2", [&] { return rename("001", "tulips", 111); });
    EXPECT_EQ(rename("001001", "Roses"), "0");
}

TEST_P(MediaChangesTest, AFolderNeedsAName) {
    expectRefusal("-3", [&] { return rename("001", "   ", 111); });
}

TEST_P(MediaChangesTest, OnlyAFolderThatIsThereIsRenamed) {
    for (const auto* id : {"002", "", "01", "../", "abc"}) {
        SCOPED_TRACE(id);
        expectRefusal("-1", [&] { return rename(id, "Tulips", 111); });
    }
    expectRefusal("-1", [&] { return registers().renameFolder("zz", "images", "001", "Tulips", 111); });
}

TEST_P(MediaChangesTest, AFileGetsATitleAndAnAlternativeText) {
    image("rose.gif", "A rose");
    EXPECT_EQ(save("001/rose.gif", " The rose ", " A red rose in the rain ", 111), "0");
    EXPECT_THAT(images(), ElementsAre("001|001/rose.gif|The rose|gif|13|320|200|A red rose in the rain"));
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||111|save|Image \"001/rose.gif\" has been updated"));
}

TEST_P(MediaChangesTest, AnAlternativeTextStaysUnlessItIsGiven) {
    image("rose.gif", "A rose");
    save("001/rose.gif", "A rose", "Red");
    EXPECT_EQ(save("001/rose.gif", "The rose"), "0");
    EXPECT_THAT(images(), ElementsAre("001|001/rose.gif|The rose|gif|13|320|200|Red"));
}

TEST_P(MediaChangesTest, AnEmptyAlternativeTextSaysThatItIsDecoration) {
    image("rose.gif", "A rose");
    EXPECT_EQ(save("001/rose.gif", "A rose", " "), "0");
    EXPECT_THAT(images(), ElementsAre("001|001/rose.gif|A rose|gif|13|320|200|"));
}

TEST_P(MediaChangesTest, TitlesAndAlternativeTextsAreCutByCharacters) {
    image("rose.gif", "A rose");
    std::string title;
    std::string alt;
    for (int i = 0; i < 51; ++i) title += "\xC3\xBC";
    for (int i = 0; i < 501; ++i) alt += "\xC3\xBC";
    EXPECT_EQ(save("001/rose.gif", title, alt), "0");
    EXPECT_THAT(images(),
                ElementsAre("001|001/rose.gif|" + title.substr(2) + "|gif|13|320|200|" + alt.substr(2)));
}

TEST_P(MediaChangesTest, OfAFileThatIsRegisteredTwiceTheFirstTitleChanges) {
    image("rose.gif", "A rose");
    image("rose.gif", "A rose");
    EXPECT_EQ(save("001/rose.gif", "The rose", "Red"), "0");
    EXPECT_THAT(images(), ElementsAre("001|001/rose.gif|A rose(1)|gif|13|320|200|Red",
                                      "001|001/rose.gif|The rose|gif|13|320|200|Red"));
}

TEST_P(MediaChangesTest, ATitleIsGivenOnceInAFolder) {
    image("a.gif", "A");
    image("b.gif", "B");
    expectRefusal("-2", [&] { return save("001/b.gif", "a", "x", 111); });
}

TEST_P(MediaChangesTest, AFileNeedsATitle) {
    image("a.gif", "A");
    expectRefusal("-3", [&] { return save("001/a.gif", "  ", "x", 111); });
}

TEST_P(MediaChangesTest, OnlyAFileThatIsRegisteredChanges) {
    file("images/aa/001/lost.gif", gif());
    image("a.gif", "A");
    for (const auto* path :
         {"001/lost.gif", "001/b.gif", "a.gif", "", "001/", "../001/a.gif", "001/../001/a.gif"}) {
        SCOPED_TRACE(path);
        expectRefusal("-1", [&] { return save(path, "T", "x", 111); });
        expectRefusal("-1", [&] { return remove(path, 111); });
        expectRefusal("-1", [&] { return replace(path, "001/a.gif", 111); });
        expectRefusal("-1", [&] { return replace("001/a.gif", *path ? path : "002/x.gif", 111); });
    }
}

TEST_P(MediaChangesTest, AnotherFileTakesThePlaceOfAFile) {
    image("rose.gif", "A rose");
    image("new.gif", "New", gif('\x41'));
    save("001/rose.gif", "A rose", "Red");
    EXPECT_EQ(replace("001/rose.gif", "001/new.gif", 111), "0");
    EXPECT_THAT(images(), ElementsAre("001|001/rose.gif|A rose|gif|13|321|200|Red"));
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif('\x41'));
    EXPECT_EQ(contentOf("images/aa/001/new.gif"), "");
    EXPECT_EQ(host.files.bytes.size(), 1U) << "something was left beside it";
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||111|save|Image \"001/rose.gif\" has a new content"));
}

TEST_P(MediaChangesTest, AnotherTypeCantTakeThePlaceOfAFile) {
    document("plan.pdf", "Plan");
    document("plan.txt", "Text");
    expectRefusal("-2", [&] {
        return registers().replaceMedia("aa", "documents", "001/plan.pdf", "001/plan.txt", 112);
    });
}

TEST_P(MediaChangesTest, BothSuffixesOfAFormatAreOneType) {
    document("a.jpg", "A", "first");
    document("b.jpeg", "B", "other");
    EXPECT_EQ(registers().replaceMedia("aa", "documents", "001/a.jpg", "001/b.jpeg"), "0");
    EXPECT_EQ(contentOf("documents/aa/001/a.jpg"), "other");
}

TEST_P(MediaChangesTest, AFileCantTakeItsOwnPlace) {
    image("rose.gif", "A rose");
    expectRefusal("-1", [&] { return replace("001/rose.gif", "001/rose.gif", 111); });
}

TEST_P(MediaChangesTest, AFileThatIsGoneFromTheDiskTakesNoPlace) {
    image("rose.gif", "A rose");
    image("new.gif", "New");
    host.files.bytes.erase(diskPath("images/aa/001/new.gif"));
    expectRefusal("-1", [&] { return replace("001/rose.gif", "001/new.gif", 111); });
}

TEST_P(MediaChangesTest, AContentThatHasChangedIsMeasuredAnew) {
    image("rose.gif", "A rose");
    file("images/aa/001/rose.gif", gif('\x42') + "more");
    EXPECT_EQ(replace("001/rose.gif"), "0");
    EXPECT_THAT(images(), ElementsAre("001|001/rose.gif|A rose|gif|17|322|200|-"));
}

TEST_P(MediaChangesTest, AContentThatIsGoneIsntMeasured) {
    image("rose.gif", "A rose");
    host.files.bytes.clear();
    expectRefusal("-1", [&] { return replace("001/rose.gif"); });
}

TEST_P(MediaChangesTest, AFileIsRemoved) {
    image("rose.gif", "A rose");
    image("rose.gif", "Again");
    image("b.gif", "B");
    EXPECT_EQ(remove("001/rose.gif", 111), "0");
    EXPECT_THAT(images(), ElementsAre("001|001/b.gif|B|gif|13|320|200|-"));
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), "");
    EXPECT_EQ(contentOf("images/aa/001/b.gif"), gif());
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||111|delete|Image \"001/rose.gif\" has been removed"));
}

TEST_P(MediaChangesTest, ADocumentIsRemovedFromItsOwnRegister) {
    image("a.gif", "A");
    document("a.gif", "A");
    EXPECT_EQ(registers().deleteMedia("aa", "documents", "001/a.gif"), "0");
    EXPECT_THAT(documents(), IsEmpty());
    EXPECT_EQ(images().size(), 1U);
    EXPECT_EQ(contentOf("images/aa/001/a.gif"), gif());
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(MediaChangesTest, NobodyChangesAnything) {
    image("a.gif", "A");
    image("b.gif", "B");
    actAsNobody();
    expectRefusal("-10", [&] { return rename("001", "Tulips", 111); });
    expectRefusal("-10", [&] { return save("001/a.gif", "T", "x", 111); });
    expectRefusal("-10", [&] { return replace("001/a.gif", "001/b.gif", 111); });
    expectRefusal("-10", [&] { return remove("001/a.gif", 111); });
}

TEST_P(MediaChangesTest, WhatFailsHalfwayHasChangedNothing) {
    image("a.gif", "A");
    image("b.gif", "B", gif('\x41'));
    failEverywhere("0", "-99", [&] { return rename("001", "Tulips"); });
    failEverywhere("0", "-99", [&] { return save("001/a.gif", "T", "x"); });
    failEverywhere("0", "-99", [&] { return replace("001/a.gif", "001/b.gif"); });
    failEverywhere("0", "-99", [&] { return remove("001/a.gif"); });
}

TEST_P(MediaChangesTest, ADiskThatCantWriteReplacesNothing) {
    image("a.gif", "A");
    image("b.gif", "B", gif('\x41'));
    host.files.writeFailure = "disk full";
    expectRefusal("-99", [&] { return replace("001/a.gif", "001/b.gif", 111); });
}

TEST_P(MediaChangesTest, TheOtherServersFollow) {
    host.application.set("torvex_loadBalancing_shareName", "www");
    host.application.set("torvex_replication_root", "/mnt");
    row("TORVEX_SERVERS", {{"serverName", "other"}});
    host.files.madeFolders.insert("/mnt/other/www/wwwroot/images/aa/001");
    const std::string there = "/mnt/other/www/wwwroot/images/aa/001/";
    image("a.gif", "A");
    image("b.gif", "B", gif('\x41'));
    for (const auto* name : {"a.gif", "b.gif"}) host.files.bytes[there + name] = "old";
    EXPECT_EQ(replace("001/a.gif", "001/b.gif"), "0");
    EXPECT_EQ(host.files.bytes[there + "a.gif"], gif('\x41'));
    EXPECT_FALSE(host.files.fileExists(there + "b.gif"));
    EXPECT_EQ(remove("001/a.gif"), "0");
    EXPECT_FALSE(host.files.fileExists(there + "a.gif"));
}

}  // namespace
}  // namespace torvex::test
