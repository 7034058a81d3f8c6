#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

class MediaFilesTest : public ManagerTest {
  protected:
    void file(const std::string& path, const std::string& content) {
        host.files.bytes["/install/wwwroot/" + path] = content;
    }
    static std::string gif() { return std::string("GIF89a\x40\x01\xC8\x00\xF7\x00\x00", 13); }

    /// Rows of a grid, their cells divided by "|".
    static std::vector<std::string> linesOf(const Value& list) {
        std::vector<std::string> lines;
        if (list.isEmpty()) return lines;
        for (std::size_t row = 0; row < list.grid().rows(); ++row) {
            std::string line = list.grid().at(0, row).toText();
            for (std::size_t column = 1; column < list.grid().columns(); ++column) {
                line += "|" + list.grid().at(column, row).toText();
            }
            lines.push_back(line);
        }
        return lines;
    }
    std::vector<std::string> images() { return linesOf(manager().getImageList("aa")); }
    std::vector<std::string> documents() { return linesOf(manager().getDocumentList("aa")); }
    std::string save(const std::string& name, const std::string& title, const std::string& folder = "001") {
        return manager().saveFile("aa", folder, "documents", name, title);
    }
    template <typename Call>
    void expectRefusal(Call call) {
        const auto before = documents();
        EXPECT_EQ(call(), "-99");
        EXPECT_EQ(documents(), before);
        EXPECT_THAT(images(), IsEmpty());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MediaFilesTest, bothEngines(), engineName);

TEST_P(MediaFilesTest, AnImageIsRegisteredWithItsSize) {
    file("images/aa/001/002/rose.gif", gif());
    EXPECT_EQ(manager().saveFile(" aa ", " 001002 ", "images", " Rose.GIF ", " A rose "), "rose.gif");
    EXPECT_THAT(images(), ElementsAre("001002|A rose|001/002/rose.gif|13|320|200|"));
}

TEST_P(MediaFilesTest, ADocumentIsRegisteredWithItsType) {
    file("documents/aa/001/plan.v2.pdf", "12345");
    EXPECT_EQ(save("Plan.v2.PDF", "Plan"), "plan.v2.pdf");
    EXPECT_THAT(documents(), ElementsAre("001|Plan|001/plan.v2.pdf|pdf|"));
    EXPECT_EQ(cell("select doc_size from TORVEX_DOCUMENTS"), "5");
}

TEST_P(MediaFilesTest, ADocumentWithoutAnEndHasNoType) {
    save("readme", "Read me");
    EXPECT_EQ(manager().getDocType("aa", "001/readme"), "");
}

TEST_P(MediaFilesTest, AFileOfTheSiteItselfHasNoFolder) {
    save("plan.pdf", "Plan", "");
    EXPECT_THAT(documents(), ElementsAre("|Plan|plan.pdf|pdf|"));
}

TEST_P(MediaFilesTest, AFileThatIsntThereHasNoSize) {
    EXPECT_EQ(manager().saveFile("aa", "001", "images", "rose.gif", "A rose"), "rose.gif");
    EXPECT_THAT(images(), ElementsAre("001|A rose|001/rose.gif|0|0|0|"));
}

TEST_P(MediaFilesTest, AFurtherFileOfTheSameTitleGetsANumber) {
    for (const auto* name : {"a.pdf", "b.pdf", "c.pdf"}) save(name, "Report");
    save("d.pdf", "Report", "002");
    EXPECT_THAT(documents(), ElementsAre("001|Report|001/a.pdf|pdf|", "001|Report(1)|001/b.pdf|pdf|",
                                         "001|Report(2)|001/c.pdf|pdf|", "002|Report|002/d.pdf|pdf|"));
}

TEST_P(MediaFilesTest, ALongTitleMakesRoomForItsNumber) {
    const std::string title(50, 'x');
    save("a.pdf", title);
    save("b.pdf", title);
    EXPECT_EQ(manager().getDocTitle("aa", "001/b.pdf"), std::string(47, 'x') + "(1)");
    for (int i = 2; i <= 10; ++i) save("c" + std::to_string(i) + ".pdf", title);
    EXPECT_EQ(manager().getDocTitle("aa", "001/c10.pdf"), std::string(46, 'x') + "(10)");
}

TEST_P(MediaFilesTest, ATitleIsCutByCharacters) {
    std::string title;
    for (int i = 0; i < 51; ++i) title += "\xC3\xBC";
    save("a.pdf", title);
    EXPECT_EQ(manager().getDocTitle("aa", "001/a.pdf"), title.substr(2));
}

TEST_P(MediaFilesTest, NobodyRegistersAFile) {
    actAsNobody();
    expectRefusal([&] { return save("a.pdf", "A"); });
}

TEST_P(MediaFilesTest, AFileNeedsAName) {
    expectRefusal([&] { return save("  ", "A"); });
}

TEST_P(MediaFilesTest, ANameThatLeadsElsewhereIsNone) {
    for (const auto* name : {"..", ".", "../a.pdf", "b/a.pdf", "b\\a.pdf"}) {
        SCOPED_TRACE(name);
        expectRefusal([&] { return save(name, "A"); });
    }
}

TEST_P(MediaFilesTest, ATextThatIsNoFolderHoldsNoFiles) {
    for (const auto* folder : {"01", "abc", "../", "0011"}) {
        SCOPED_TRACE(folder);
        expectRefusal([&] { return save("a.pdf", "A", folder); });
    }
}

TEST_P(MediaFilesTest, ADiskThatCantBeReadRegistersNothing) {
    file("images/aa/001/rose.gif", gif());
    drop("TORVEX_IMAGES");
    EXPECT_EQ(manager().saveFile("aa", "001", "images", "rose.gif", "A"), "-99");
    EXPECT_THAT(host.log.lines, Contains(HasSubstr("rose.gif")));
}

TEST_P(MediaFilesTest, ImagesAreListedByFolderAndTitle) {
    for (const auto& [folder, name] : {std::pair("002", "a"), {"001", "c"}, {"001", "b"}, {"001002", "d"}}) {
        manager().saveFile("aa", folder, "images", std::string(name) + ".gif", name);
    }
    manager().saveFile("bb", "001", "images", "z.gif", "z");
    EXPECT_THAT(images(), ElementsAre("001|b|001/b.gif|0|0|0|", "001|c|001/c.gif|0|0|0|",
                                      "001002|d|001/002/d.gif|0|0|0|", "002|a|002/a.gif|0|0|0|"));
    EXPECT_EQ(linesOf(manager().getImageList("aa", "001")).size(), 3U);
    EXPECT_EQ(linesOf(manager().getImageList("aa", "001002")).size(), 1U);
}

TEST_P(MediaFilesTest, OnlyANegativeSizeIsAny) {
    file("images/aa/001/rose.gif", gif());
    manager().saveFile("aa", "001", "images", "rose.gif", "with size");
    manager().saveFile("aa", "001", "images", "gone.gif", "without");
    EXPECT_EQ(linesOf(manager().getImageList("aa", "", -1, -1)).size(), 2U);
    EXPECT_THAT(linesOf(manager().getImageList("aa", "", 0)), ElementsAre(HasSubstr("without")));
    EXPECT_THAT(linesOf(manager().getImageList("aa", "", 320, 200)), ElementsAre(HasSubstr("with size")));
    EXPECT_THAT(linesOf(manager().getImageList("aa", "", -1, 201)), IsEmpty());
}

TEST_P(MediaFilesTest, DocumentsAreListedByType) {
    save("a.pdf", "A");
    save("b.txt", "B");
    EXPECT_THAT(linesOf(manager().getDocumentList("aa", "", "TXT")), ElementsAre("001|B|001/b.txt|txt|"));
    EXPECT_TRUE(manager().getDocumentList("aa", "002").isEmpty());
}

TEST_P(MediaFilesTest, ASignOfAPatternIsNone) {
    save("a.pdf", "A");
    EXPECT_TRUE(manager().getDocumentList("aa", "%").isEmpty());
    EXPECT_TRUE(manager().getDocumentList("aa", "0_1").isEmpty());
}

TEST_P(MediaFilesTest, AFileHasATitleAndAType) {
    save("a.pdf", "A");
    manager().saveFile("aa", "001", "images", "a.gif", "I");
    EXPECT_EQ(manager().getDocTitle("aa", "001/a.pdf"), "A");
    EXPECT_EQ(manager().getDocType("aa", "001/A.PDF"), "pdf");
    EXPECT_EQ(manager().getImageTitle("aa", "001/a.gif"), "I");
    EXPECT_EQ(manager().getImageTitle("aa", "001/b.gif"), "");
}

TEST_P(MediaFilesTest, ANameIsMadeSafeForTheWeb) {
    EXPECT_THAT(manager().encryptFilename("a#b c.PDF"), MatchesRegex("a[a-z0-9]b_c\\.PDF"));
    EXPECT_THAT(manager().encryptFilename("x\xE2\x82\xACy\x7Fz.gif"),
                MatchesRegex("x[a-z0-9]y[a-z0-9]z\\.gif"));
    EXPECT_EQ(manager().encryptFilename("gr\xC3\xBC\xC3\x9F.gif"), "gr\xC3\xBC\xC3\x9F.gif");
    EXPECT_EQ(manager().encryptFilename("no end"), "no_end");
    EXPECT_THAT(manager().encryptFilename("a.b#.c#"), MatchesRegex("a\\.b[a-z0-9]\\.c#"));
}

TEST_P(MediaFilesTest, ARandomNameKeepsItsEnd) {
    const std::string name = manager().encryptFilename("my plan.PDF", 1);
    EXPECT_THAT(name, MatchesRegex("[a-z0-9]+\\.PDF"));
    EXPECT_GE(name.size(), 14U);
    EXPECT_NE(name, manager().encryptFilename("my plan.PDF", 1));
}

TEST_P(MediaFilesTest, TheUploadTreeHoldsParentsBeforeChildren) {
    for (const auto& [id, name] :
         {std::pair("001002", "Sub \"folder\""), {"001", "New Folder"}, {"002", "<b> & 'x'"}}) {
        row("TORVEX_IMAGES_FOLDERS", {{"fld_site", "aa"},
                                      {"fld_id", id},
                                      {"fld_name", name},
                                      {"fld_level", static_cast<int>(std::string(id).size() / 3)},
                                      {"fld_parent", std::string(id).substr(0, std::string(id).size() - 3)}});
    }
    manager().saveFile("aa", "001002", "images", "a.gif", "a");
    manager().saveFile("aa", "", "images", "b.gif", "b");
    const std::string script = manager().getUploadFolders("aa", "new", "001002", "images");
    EXPECT_THAT(script, HasSubstr("var root = gFld(true, \"Site aa\", \"\", 2);"));
    EXPECT_THAT(script,
                HasSubstr("var F002 = item(root, gLnk(\"&lt;b&gt;&nbsp;&amp;&nbsp;\\'x\\'\", \"002\", 0));"));
    EXPECT_THAT(script, HasSubstr("var F001 = fld(root, gFld(false, \"<i>New folder</i>\", \"001\", 1));"));
    EXPECT_THAT(
        script,
        HasSubstr("var F001002 = item(F001, gLnk(\"Sub&nbsp;\\&quot;folder\\&quot;\", \"001002\", 1));"));
    EXPECT_LT(script.find("var F001 ="), script.find("var F001002 ="));
    EXPECT_THAT(script, HasSubstr("clickOnNode(F001.id);"));
    EXPECT_THAT(script, HasSubstr("var activeParent = \"001\";"));
    EXPECT_THAT(script, HasSubstr("var flag = \"new\";"));
    EXPECT_THAT(script, testing::Not(HasSubstr("<!--!")));
}

TEST_P(MediaFilesTest, TheUploadTreeOfNoFolderIsItsRoot) {
    const std::string script = manager().getUploadFolders("aa", "\"</script>", "no folder", "documents");
    EXPECT_THAT(script, HasSubstr("var activeFolder = \"\";"));
    EXPECT_THAT(script, HasSubstr("var activeParent = \"root\";"));
    EXPECT_THAT(script, testing::Not(HasSubstr("</script>")));
}

}  // namespace
}  // namespace torvex::test
