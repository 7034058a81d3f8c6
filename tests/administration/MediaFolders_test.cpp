#include <gmock/gmock.h>
#include <thread>

#include "support/RecordsTest.h"

namespace torvex::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class MediaFoldersTest : public RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        host.files.madeFolders.insert("/install/wwwroot/images");
        host.files.madeFolders.insert("/install/wwwroot/documents");
    }

    void folder(const std::string& table, const std::string& id, const std::string& name,
                const std::string& site = "aa") {
        row("TORVEX_" + table + "_FOLDERS", {{"fld_site", site},
                                             {"fld_id", id},
                                             {"fld_name", name},
                                             {"fld_level", static_cast<int>(id.size() / 3)},
                                             {"fld_parent", id.substr(0, id.size() - 3)}});
    }
    void image(const std::string& folderId, const std::string& title, const std::string& site = "aa") {
        row("TORVEX_IMAGES", {{"img_site", site},
                              {"img_fldId", folderId},
                              {"img_title", title},
                              {"img_filename", title + ".gif"}});
    }
    void folderGroup(const std::string& type, const std::string& id, int groupId) {
        row("TORVEX_FOLDERS_GROUPS",
            {{"fld_type", type}, {"fld_site", "aa"}, {"fld_id", id}, {"groupId", groupId}});
    }

    std::vector<std::string> imageFolders() {
        return rowsOf(
            "select fld_site, fld_id, fld_name, fld_level, fld_parent from TORVEX_IMAGES_FOLDERS "
            "order by fld_site, fld_id");
    }
    std::vector<std::string> groups() {
        return rowsOf(
            "select fld_type, fld_site, fld_id, groupId from TORVEX_FOLDERS_GROUPS "
            "order by fld_type, fld_site, fld_id, groupId");
    }
    bool isDirectory(const std::string& path) { return host.files.folderExists("/install/wwwroot/" + path); }

    std::string add(const std::string& parent, const std::string& name, int advId = 0) {
        return manager().addFolder("aa", parent, name, "images", advId);
    }
    /// That the call answers "" (or false) and nothing has changed.
    template <typename Call>
    void expectNothing(Call call) {
        const auto folders = imageFolders();
        const auto before = groups();
        const auto directories = host.files.madeFolders;
        EXPECT_EQ(call(), decltype(call())());
        EXPECT_EQ(imageFolders(), folders);
        EXPECT_EQ(groups(), before);
        EXPECT_EQ(host.files.madeFolders, directories);
        EXPECT_THAT(auditTrail(), IsEmpty());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, MediaFoldersTest, bothEngines(), engineName);

TEST_P(MediaFoldersTest, AFolderIsBornAsNewFolderWhateverItsName) {
    EXPECT_EQ(add("", "Roses"), "001");
    EXPECT_THAT(imageFolders(), ElementsAre("aa|001|New folder|1|"));
}

TEST_P(MediaFoldersTest, ADocumentFolderHasATableAndADirectoryOfItsOwn) {
    EXPECT_EQ(manager().addFolder("aa", "", "Plans", "documents"), "001");
    EXPECT_THAT(imageFolders(), IsEmpty());
    EXPECT_EQ(rowsOf("select fld_id from TORVEX_DOCUMENTS_FOLDERS").size(), 1U);
    EXPECT_TRUE(isDirectory("documents/aa/001"));
    EXPECT_FALSE(isDirectory("images/aa"));
    EXPECT_THAT(groups(), ElementsAre("doc|aa|001|0"));
}

TEST_P(MediaFoldersTest, PicturesAreImages) {
    EXPECT_EQ(manager().addFolder("aa", "", "x", " Pictures "), "001");
    EXPECT_EQ(imageFolders().size(), 1U);
}

TEST_P(MediaFoldersTest, TheLowestFreeNumberIsTaken) {
    for (const auto* id : {"001", "001001", "001002", "001004"}) folder("IMAGES", id, std::string("f") + id);
    EXPECT_EQ(add("001", "new"), "001003");
}

TEST_P(MediaFoldersTest, After999ChildrenThereIsNoNumberLeft) {
    for (int i = 1; i <= 999; ++i)
        folder("IMAGES", ("00" + std::to_string(i)).substr(std::to_string(i).size() - 1), "f");
    expectNothing([&] { return add("", "one more"); });
}

TEST_P(MediaFoldersTest, AnIdIsAtMost250CharactersLong) {
    std::string parent;
    for (int level = 0; level < 83; ++level) parent += "001";
    folder("IMAGES", parent, "deep");
    expectNothing([&] { return add(parent, "deeper"); });
}

TEST_P(MediaFoldersTest, AFolderOfTheSameNameIsTakenAndItsDirectoriesAreMade) {
    folder("IMAGES", "001", "Roses");
    EXPECT_EQ(add("", " roses "), "001");
    EXPECT_EQ(imageFolders().size(), 1U);
    EXPECT_TRUE(isDirectory("images/aa/001"));
    EXPECT_THAT(groups(), IsEmpty());
}

TEST_P(MediaFoldersTest, AFolderThatIsTakenLeavesNoLine) {
    folder("IMAGES", "001", "Roses");
    add("", "Roses", 111);
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(MediaFoldersTest, OnlyTheFirst50CharactersOfANameCount) {
    std::string name;
    for (int i = 0; i < 50; ++i) name += "\xC3\xBC";
    folder("IMAGES", "001", name);
    EXPECT_EQ(add("", name + "x"), "001");
}

TEST_P(MediaFoldersTest, AParentMustBeThere) {
    expectNothing([&] { return add("007", "x"); });
}

TEST_P(MediaFoldersTest, ATextThatIsNoFolderIsNoParent) {
    for (const auto* parent : {"abc", "01", "../", "0 1", "00\xC3\xBC"}) {
        SCOPED_TRACE(parent);
        expectNothing([&] { return add(parent, "x"); });
    }
}

TEST_P(MediaFoldersTest, ASiteThatLeadsElsewhereHasNoFolders) {
    for (const auto* site : {"", "..", "a/", "/"}) {
        SCOPED_TRACE(site);
        expectNothing([&] { return manager().addFolder(site, "", "x", "images"); });
    }
}

TEST_P(MediaFoldersTest, NobodyAddsAFolder) {
    actAsNobody();
    expectNothing([&] { return add("", "x"); });
}

TEST_P(MediaFoldersTest, ANewFolderInheritsItsGroupsAndLosesThoseOfAFormerOne) {
    folderGroup("img", "001", 7);
    folderGroup("img", "001002", 7);
    folderGroup("img", "002", 7);
    folderGroup("doc", "001", 7);
    add("", "x");
    EXPECT_THAT(groups(), ElementsAre("doc|aa|001|7", "img|aa|001|0", "img|aa|002|7"));
}

TEST_P(MediaFoldersTest, FilesOfAFormerFolderGo) {
    host.files.bytes["/install/wwwroot/images/aa/001/old.gif"] = "x";
    EXPECT_EQ(add("", "x"), "001");
    EXPECT_EQ(host.files.bytes.count("/install/wwwroot/images/aa/001/old.gif"), 0U);
    EXPECT_TRUE(isDirectory("images/aa/001"));
}

TEST_P(MediaFoldersTest, EveryLevelGetsItsDirectory) {
    folder("IMAGES", "001", "a");
    folder("IMAGES", "001001", "b");
    EXPECT_EQ(add("001001", "c"), "001001001");
    EXPECT_TRUE(isDirectory("images/aa/001/001/001"));
}

TEST_P(MediaFoldersTest, AnEntryOfTheMenuLeavesALine) {
    add("", "x", 111);
    manager().addFolder("aa", "", "x", "documents", 112);
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||111|new|New image folder",
                                          "7|Anna Author|0||112|new|New document folder"));
}

TEST_P(MediaFoldersTest, AFailureAtAnyStepOfAddingChangesNothing) {
    folder("IMAGES", "001", "a");
    failEverywhere("001001", "", [&] {
        std::string result = add("001", "x");
        if (result.empty()) {
            EXPECT_THAT(host.log.lines, Contains(HasSubstr("got no new folder")));
        }
        return result;
    });
}

TEST_P(MediaFoldersTest, ADiskThatIsFullLeavesNoRow) {
    host.files.writeFailure = "no space left on device";
    expectNothing([&] { return add("", "x"); });
    EXPECT_THAT(host.log.lines, Contains(HasSubstr("no space left on device")));
}

TEST_P(MediaFoldersTest, TwoWhoAddAtOnceGetTwoNumbers) {
    bool other = false;
    failing().atStep = [&](int) {
        if (other) return;
        other = true;
        folder("IMAGES", "001", "by somebody else");
    };
    EXPECT_EQ(add("", "mine"), "002");
    EXPECT_EQ(imageFolders().size(), 2U);
}

TEST_P(MediaFoldersTest, AFolderGoesWithAllBelowIt) {
    for (const auto* id : {"001", "001002", "002"}) folder("IMAGES", id, std::string("f") + id);
    folder("IMAGES", "001", "of another site", "bb");
    image("001", "a");
    image("001002", "b");
    image("002", "c");
    image("001", "d", "bb");
    folderGroup("img", "001", 1);
    folderGroup("img", "001002", 5);
    folderGroup("img", "002", 5);
    folderGroup("doc", "001", 5);
    for (const auto* file : {"001/a.gif", "001/002/b.gif", "002/c.gif"}) {
        host.files.bytes[std::string("/install/wwwroot/images/aa/") + file] = "x";
    }
    EXPECT_TRUE(manager().deleteFolder("aa", "001", "images"));
    EXPECT_THAT(imageFolders(), ElementsAre("aa|002|f002|1|", "bb|001|of another site|1|"));
    EXPECT_THAT(rowsOf("select img_title from TORVEX_IMAGES order by img_title"), ElementsAre("c", "d"));
    EXPECT_THAT(groups(), ElementsAre("doc|aa|001|5", "img|aa|002|5"));
    EXPECT_FALSE(isDirectory("images/aa/001"));
    EXPECT_TRUE(isDirectory("images/aa/002"));
}

TEST_P(MediaFoldersTest, ARemovalByAnEntryOfTheMenuLeavesALine) {
    folder("IMAGES", "001", "Roses");
    folder("DOCUMENTS", "001", "Plans");
    manager().deleteFolder("aa", "001", "images", 111);
    manager().deleteFolder("aa", "001", "documents", 112);
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||111|delete|Image folder \"Roses\" has been removed",
                            "7|Anna Author|0||112|delete|Document folder \"Plans\" has been removed"));
}

TEST_P(MediaFoldersTest, NobodyRemovesAFolder) {
    folder("IMAGES", "001", "Roses");
    actAsNobody();
    expectNothing([&] { return manager().deleteFolder("aa", "001", "images"); });
}

TEST_P(MediaFoldersTest, ARemovalNeedsASiteAndAFolder) {
    folder("IMAGES", "001", "Roses");
    expectNothing([&] { return manager().deleteFolder("", "001", "images"); });
    expectNothing([&] { return manager().deleteFolder("aa", " ", "images"); });
}

TEST_P(MediaFoldersTest, TheBeginningOfAnIdRemovesNothing) {
    folder("IMAGES", "001", "Roses");
    for (const auto* id : {"0", "00", "0010", "%", "..", "../"}) {
        SCOPED_TRACE(id);
        expectNothing([&] { return manager().deleteFolder("aa", id, "images"); });
    }
}

TEST_P(MediaFoldersTest, AFailureAtAnyStepOfARemovalChangesNothing) {
    folder("IMAGES", "001", "Roses");
    image("001", "a");
    folderGroup("img", "001", 1);
    host.files.bytes["/install/wwwroot/images/aa/001/a.gif"] = "x";
    failEverywhere("gone", "there",
                   [&] { return manager().deleteFolder("aa", "001", "images") ? "gone" : "there"; });
}

TEST_P(MediaFoldersTest, ADirectoryThatCantBeRemovedDoesntChangeTheResult) {
    folder("IMAGES", "001", "Roses");
    host.files.madeFolders.insert("/install/wwwroot/images/aa/001");
    host.files.writeFailure = "read-only file system";
    EXPECT_TRUE(manager().deleteFolder("aa", "001", "images"));
    EXPECT_THAT(imageFolders(), IsEmpty());
    EXPECT_THAT(host.log.lines, Contains(HasSubstr("left its directory behind")));
}

TEST_P(MediaFoldersTest, AFolderHasAName) {
    folder("IMAGES", "001", "Roses");
    folder("DOCUMENTS", "001", "Plans");
    EXPECT_EQ(manager().getFolderName("images", "aa", "001"), "Roses");
    EXPECT_EQ(manager().getFolderName("documents", "aa", "001"), "Plans");
    EXPECT_EQ(manager().getFolderName("images", "bb", "001"), "");
}

TEST_P(MediaFoldersTest, GroupsAreListedByNameWithAMarkForThoseOfTheFolder) {
    group(5, "members");
    group(6, "friends");
    folderGroup("img", "001", 5);
    folderGroup("doc", "001", 6);
    const Value groups = manager().getFolderGroups("images", "aa", "001");
    std::vector<std::string> marked;
    for (std::size_t i = 0; i < groups.grid().rows(); ++i) {
        marked.push_back(groups.grid().at(0, i).toText() + "|" + groups.grid().at(1, i).toText() + "|" +
                         groups.grid().at(2, i).toText());
    }
    EXPECT_THAT(marked, ElementsAre("1|everybody|0", "6|friends|0", "0|inherited|0", "5|members|1"));
    EXPECT_EQ(groups.grid().columns(), 4U);
}

TEST_P(MediaFoldersTest, WithoutASiteOrAFolderThereAreNoGroups) {
    EXPECT_EQ(manager().getFolderGroups("images", "", "001"), Value(""));
    EXPECT_EQ(manager().getFolderGroups("images", "aa", " "), Value(""));
}

TEST_P(MediaFoldersTest, ARealGroupTakesThePlaceOfTheGeneralOnes) {
    folder("IMAGES", "001", "Roses");
    folderGroup("img", "001", 0);
    folderGroup("img", "001", 1);
    folderGroup("img", "001", 6);
    manager().setFolderGroup("images", "aa", "001", 5, true);
    EXPECT_THAT(groups(), ElementsAre("img|aa|001|5", "img|aa|001|6"));
}

TEST_P(MediaFoldersTest, AGeneralGroupTakesThePlaceOfAllOthers) {
    folder("IMAGES", "001", "Roses");
    for (const int general : {0, 1}) {
        folderGroup("img", "001", 5);
        manager().setFolderGroup("images", "aa", "001", general, true);
        EXPECT_THAT(groups(), ElementsAre("img|aa|001|" + std::to_string(general)));
    }
}

TEST_P(MediaFoldersTest, AGroupIsAddedOnce) {
    folder("IMAGES", "001", "Roses");
    manager().setFolderGroup("images", "aa", "001", 5, true);
    manager().setFolderGroup("images", " AA ", "001", 5, true);
    EXPECT_THAT(groups(), ElementsAre("img|aa|001|5"));
}

TEST_P(MediaFoldersTest, AGroupIsTakenAway) {
    folder("IMAGES", "001", "Roses");
    folderGroup("img", "001", 5);
    folderGroup("img", "001", 6);
    manager().setFolderGroup("images", "aa", "001", 5, false);
    EXPECT_THAT(groups(), ElementsAre("img|aa|001|6"));
}

TEST_P(MediaFoldersTest, GroupsOfAFolderThatIsGoneAreCleanedUp) {
    folderGroup("img", "001", 5);
    folderGroup("img", "001002", 5);
    folderGroup("img", "002", 5);
    manager().setFolderGroup("images", "aa", "001", 6, true);
    EXPECT_THAT(groups(), ElementsAre("img|aa|002|5"));
}

TEST_P(MediaFoldersTest, TheBeginningOfAnIdCleansNothingUp) {
    folderGroup("img", "001", 5);
    manager().setFolderGroup("images", "aa", "0", 6, true);
    EXPECT_THAT(groups(), ElementsAre("img|aa|001|5"));
}

TEST_P(MediaFoldersTest, AFailureAtAnyStepKeepsTheGroups) {
    folder("IMAGES", "001", "Roses");
    folderGroup("img", "001", 0);
    failEverywhere("", "", [&] {
        manager().setFolderGroup("images", "aa", "001", 5, true);
        return std::string();
    });
    EXPECT_THAT(groups(), ElementsAre("img|aa|001|5"));
}

TEST_P(MediaFoldersTest, SystemFoldersLieBelowTheSystemBranch) {
    page("aa.en.99").id(10).type("F").insertInDesignOnly();
    page("aa.en.99.01").id(11).type("F").title("b").set("parent", "aa.en.99").insertInDesignOnly();
    page("aa.en.99.02").id(12).type("F").title("a").set("parent", "aa.en.99").insertInDesignOnly();
    page("aa.en.99.03").id(13).type("P").title("c").set("parent", "aa.en.99").insertInDesignOnly();
    const Value folders = manager().getSystemFolders("aa", "en");
    ASSERT_EQ(folders.grid().rows(), 2U);
    EXPECT_EQ(folders.grid().at(0, 0).toText(), "12");
    EXPECT_EQ(folders.grid().at(1, 0).toText(), "aa.en.99.02");
    EXPECT_EQ(folders.grid().at(2, 1).toText(), "b");
}

TEST_P(MediaFoldersTest, WithoutSystemFoldersTheListIsEmpty) {
    EXPECT_TRUE(manager().getSystemFolders("aa", "en").isEmpty());
}

}  // namespace
}  // namespace torvex::test
