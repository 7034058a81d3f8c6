#include "platform/files/DiskFileSystem.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

#include "platform/Errors.h"

namespace torvex {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::string messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.what();
    }
    return "nothing was thrown";
}

/// A folder "in" that the file system is bound to, beside a folder "out" that it is not.
class DiskFileSystemTest : public testing::TestWithParam<RootFolder::Lookup> {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "torvex-disk-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        top_ = name;
        fs::create_directories(top_ / "in" / "folder");
        fs::create_directories(top_ / "out");
        put("in/a.txt", "inside");
        put("in/folder/b.txt", "deeper");
        put("out/secret.txt", "secret");
        std::vector<RootFolder> roots;
        roots.emplace_back((top_ / "in").string(), GetParam());
        disk_ = std::make_unique<DiskFileSystem>(std::move(roots));
    }
    void TearDown() override { fs::remove_all(top_); }

    std::string path(const std::string& relative) const { return (top_ / relative).string(); }
    void put(const std::string& relative, const std::string& bytes) const {
        std::ofstream(path(relative), std::ios::binary) << bytes;
    }
    std::string contentOf(const std::string& relative) const {
        std::ifstream file(path(relative), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::size_t entriesIn(const std::string& relative) const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(path(relative)), fs::directory_iterator()));
    }

    fs::path top_;
    std::unique_ptr<DiskFileSystem> disk_;
};

INSTANTIATE_TEST_SUITE_P(Lookups, DiskFileSystemTest,
                         testing::Values(RootFolder::Lookup::Kernel, RootFolder::Lookup::Walk),
                         [](const auto& lookup) {
                             return lookup.param == RootFolder::Lookup::Kernel ? "Kernel" : "Walk";
                         });

TEST_P(DiskFileSystemTest, ReadsFilesInside) {
    EXPECT_EQ(disk_->readBytes(path("in/a.txt")), "inside");
    EXPECT_EQ(disk_->readText(path("in/folder/b.txt"), TextFormat::SystemDefault), "deeper");
    EXPECT_EQ(disk_->fileSize(path("in/a.txt")), 6U);
    EXPECT_TRUE(disk_->fileExists(path("in/a.txt")));
    EXPECT_TRUE(disk_->folderExists(path("in/folder")));
    EXPECT_TRUE(disk_->folderExists(path("in")));
}

TEST_P(DiskFileSystemTest, AMissingFileIsNothingAndNoFailure) {
    for (const char* name : {"in/none.txt", "in/none/none.txt", "in/a.txt/none"}) {
        EXPECT_EQ(disk_->readBytes(path(name)), std::nullopt) << name;
        EXPECT_EQ(disk_->readText(path(name), TextFormat::Ansi), std::nullopt) << name;
        EXPECT_EQ(disk_->fileSize(path(name)), std::nullopt) << name;
        EXPECT_FALSE(disk_->fileExists(path(name))) << name;
        EXPECT_FALSE(disk_->folderExists(path(name))) << name;
    }
}

TEST_P(DiskFileSystemTest, AFolderIsNoFileAndAFileIsNoFolder) {
    EXPECT_FALSE(disk_->fileExists(path("in/folder")));
    EXPECT_EQ(disk_->readBytes(path("in/folder")), std::nullopt);
    EXPECT_EQ(disk_->fileSize(path("in/folder")), std::nullopt);
    EXPECT_FALSE(disk_->folderExists(path("in/a.txt")));
}

TEST_P(DiskFileSystemTest, ANamedPipeIsNoFileAndDoesNotBlock) {
    ASSERT_EQ(::mkfifo(path("in/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(disk_->fileExists(path("in/pipe")));
    EXPECT_EQ(disk_->readBytes(path("in/pipe")), std::nullopt);
}

TEST_P(DiskFileSystemTest, BothDividersAndNeedlessPartsAreUnderstood) {
    std::string windows = path("in\\folder\\b.txt");
    std::replace(windows.begin(), windows.end(), '/', '\\');
    EXPECT_EQ(disk_->readBytes(windows), "deeper");
    EXPECT_EQ(disk_->readBytes(path("in/./folder//../folder/b.txt")), "deeper");
    EXPECT_EQ(disk_->readBytes(path("out/../in/a.txt")), "inside");
}

TEST_P(DiskFileSystemTest, WhatLiesOutsideIsNotThere) {
    for (const std::string& name :
         {path("out/secret.txt"), path("in/../out/secret.txt"), path("in/..\\out/secret.txt"),
          path("in/folder/../../out/secret.txt"), "/etc/passwd"s, "a.txt"s, ""s}) {
        EXPECT_EQ(disk_->readBytes(name), std::nullopt) << name;
        EXPECT_FALSE(disk_->fileExists(name)) << name;
    }
    EXPECT_FALSE(disk_->folderExists(path("out")));
}

TEST_P(DiskFileSystemTest, AFolderWhoseNameOnlyBeginsLikeTheRootIsOutside) {
    fs::create_directories(top_ / "inner");
    put("inner/x.txt", "x");
    EXPECT_EQ(disk_->readBytes(path("inner/x.txt")), std::nullopt);
}

TEST_P(DiskFileSystemTest, APathWithANulIsNotThere) {
    EXPECT_EQ(disk_->readBytes(path("in/a.txt") + "\0.gif"s), std::nullopt);
    EXPECT_FALSE(disk_->fileExists(path("in/a.txt") + '\0'));
    EXPECT_THROW(disk_->writeBytes(path("in/new.txt") + "\0.gif"s, "x"), Error);
    EXPECT_FALSE(fs::exists(top_ / "in/new.txt"));
}

TEST_P(DiskFileSystemTest, ALinkOutIsNotThere) {
    fs::create_symlink(top_ / "out/secret.txt", top_ / "in/file-link");
    fs::create_symlink("../out/secret.txt", top_ / "in/relative-link");
    fs::create_symlink(top_ / "out", top_ / "in/folder-link");
    fs::create_symlink("/proc/self/root", top_ / "in/root-link");
    for (const std::string& name : {path("in/file-link"), path("in/relative-link"),
                                    path("in/folder-link/secret.txt"), path("in/root-link/etc/passwd")}) {
        EXPECT_EQ(disk_->readBytes(name), std::nullopt) << name;
        EXPECT_FALSE(disk_->fileExists(name)) << name;
    }
    EXPECT_FALSE(disk_->folderExists(path("in/folder-link")));
    EXPECT_THROW(disk_->files(path("in/folder-link")), Error);
}

TEST_P(DiskFileSystemTest, ALinkToAPlaceInsideIsFollowed) {
    fs::create_symlink("folder/b.txt", top_ / "in/relative-link");
    fs::create_symlink(top_ / "in/folder/b.txt", top_ / "in/absolute-link");
    fs::create_symlink(top_ / "in/folder", top_ / "in/folder-link");
    EXPECT_EQ(disk_->readBytes(path("in/relative-link")), "deeper");
    EXPECT_EQ(disk_->readBytes(path("in/absolute-link")), "deeper");
    EXPECT_EQ(disk_->readBytes(path("in/folder-link/b.txt")), "deeper");
    EXPECT_TRUE(disk_->folderExists(path("in/folder-link")));
}

TEST_P(DiskFileSystemTest, ALoopOfLinksIsNotThere) {
    fs::create_symlink("two", top_ / "in/one");
    fs::create_symlink("one", top_ / "in/two");
    EXPECT_EQ(disk_->readBytes(path("in/one")), std::nullopt);
}

TEST_P(DiskFileSystemTest, ARootMayBeReachedThroughALink) {
    fs::create_symlink(top_ / "in", top_ / "alias");
    fs::create_symlink(top_ / "in/a.txt", top_ / "in/absolute-link");
    std::vector<RootFolder> roots;
    roots.emplace_back(path("alias"), GetParam());
    const DiskFileSystem disk(std::move(roots));
    EXPECT_EQ(disk.readBytes(path("alias/a.txt")), "inside");
    EXPECT_EQ(disk.readBytes(path("alias/absolute-link")), "inside");
}

TEST_P(DiskFileSystemTest, SeveralRootsAreOneSpace) {
    std::vector<RootFolder> roots;
    roots.emplace_back(path("in"), GetParam());
    roots.emplace_back(path("out"), GetParam());
    DiskFileSystem disk(std::move(roots));
    fs::create_symlink(top_ / "out/secret.txt", top_ / "in/link");
    EXPECT_EQ(disk.readBytes(path("in/link")), "secret");
    disk.copyFile(path("in/a.txt"), path("out/copy.txt"));
    EXPECT_EQ(contentOf("out/copy.txt"), "inside");
}

TEST_P(DiskFileSystemTest, AMissingRootIsRefusedByName) {
    EXPECT_THAT(messageOf([&] { RootFolder(path("none"), GetParam()); }), HasSubstr(path("none")));
}

TEST_P(DiskFileSystemTest, WritesNewFilesAndReplacesOldOnes) {
    disk_->writeBytes(path("in/new.txt"), "new\0bytes"s);
    EXPECT_EQ(contentOf("in/new.txt"), "new\0bytes"s);
    disk_->writeText(path("in/a.txt"), "é", TextFormat::SystemDefault);
    EXPECT_EQ(contentOf("in/a.txt"), "é");
    EXPECT_EQ(entriesIn("in"), 3U);
}

TEST_P(DiskFileSystemTest, AnEmptyFileIsReadAndWritten) {
    disk_->writeBytes(path("in/empty"), "");
    EXPECT_EQ(disk_->readBytes(path("in/empty")), "");
    EXPECT_EQ(disk_->fileSize(path("in/empty")), 0U);
}

TEST_P(DiskFileSystemTest, ATextInUnicodeIsWrittenAsUtf16AndReadBackByItsMark) {
    disk_->writeText(path("in/u.txt"), "é", TextFormat::Unicode);
    EXPECT_EQ(contentOf("in/u.txt"), "\xFF\xFE\xE9\0"s);
    EXPECT_EQ(disk_->readText(path("in/u.txt"), TextFormat::SystemDefault), "é");
}

TEST_P(DiskFileSystemTest, ATextThatIsNotInItsEncodingIsRefusedWithPathAndOffset) {
    put("in/latin.txt", "caf\xE9 noir");
    const std::string message =
        messageOf([&] { disk_->readText(path("in/latin.txt"), TextFormat::SystemDefault); });
    EXPECT_THAT(message, HasSubstr(path("in/latin.txt")));
    EXPECT_THAT(message, HasSubstr("offset 3"));
}

TEST_P(DiskFileSystemTest, ATextThatCouldNotBeReadAgainIsNotWritten) {
    EXPECT_THROW(disk_->writeText(path("in/a.txt"), "caf\xE9", TextFormat::Ansi), Error);
    EXPECT_EQ(contentOf("in/a.txt"), "inside");
}

TEST_P(DiskFileSystemTest, AReplacedFileKeepsItsPermissions) {
    fs::permissions(top_ / "in/a.txt", fs::perms::owner_read | fs::perms::owner_write);
    disk_->writeBytes(path("in/a.txt"), "changed");
    EXPECT_EQ(fs::status(top_ / "in/a.txt").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_P(DiskFileSystemTest, WritingOutsideIsRefusedAndChangesNothing) {
    fs::create_symlink(top_ / "out/secret.txt", top_ / "in/link");
    fs::create_symlink(top_ / "out", top_ / "in/folder-link");
    fs::create_symlink(top_ / "out/missing.txt", top_ / "in/dangling");
    for (const char* name : {"out/secret.txt", "in/link", "in/folder-link/secret.txt", "in/dangling"}) {
        EXPECT_THROW(disk_->writeBytes(path(name), "changed"), Error) << name;
        EXPECT_THROW(disk_->copyFile(path("in/a.txt"), path(name)), Error) << name;
        EXPECT_THROW(disk_->deleteFile(path(name)), Error) << name;
    }
    EXPECT_THROW(disk_->createFolder(path("in/folder-link/new")), Error);
    EXPECT_THROW(disk_->createFolder(path("out/new")), Error);
    EXPECT_THROW(disk_->deleteFolder(path("in/folder-link")), Error);
    EXPECT_THROW(disk_->deleteFolder(path("out")), Error);
    EXPECT_EQ(contentOf("out/secret.txt"), "secret");
    EXPECT_EQ(entriesIn("out"), 1U);
    EXPECT_TRUE(fs::is_symlink(top_ / "in/link"));
}

TEST_P(DiskFileSystemTest, WritingToALinkInsideWritesToItsTarget) {
    fs::create_symlink(top_ / "in/folder/b.txt", top_ / "in/link");
    disk_->writeBytes(path("in/link"), "changed");
    EXPECT_TRUE(fs::is_symlink(top_ / "in/link"));
    EXPECT_EQ(contentOf("in/folder/b.txt"), "changed");
}

TEST_P(DiskFileSystemTest, AMissingFolderIsNamedWithPathAndReason) {
    const std::string message = messageOf([&] { disk_->writeBytes(path("in/none/x.txt"), "x"); });
    EXPECT_THAT(message, HasSubstr(path("in/none/x.txt")));
    EXPECT_THAT(message, HasSubstr("No such file or directory"));
}

TEST_P(DiskFileSystemTest, AFullDiskLeavesTheOldFileAndNothingElse) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{4096, before.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string message =
        messageOf([&] { disk_->writeBytes(path("in/a.txt"), std::string(100000, 'x')); });
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_THAT(message, HasSubstr(path("in/a.txt")));
    EXPECT_THAT(message, HasSubstr("File too large"));
    EXPECT_EQ(contentOf("in/a.txt"), "inside");
    EXPECT_EQ(entriesIn("in"), 2U);
}

TEST_P(DiskFileSystemTest, AReaderNeverSeesHalfAFile) {
    const std::string one(200000, '1');
    const std::string two(300000, '2');
    disk_->writeBytes(path("in/big"), one);
    bool broken = false;
    std::thread reader([&] {
        for (int i = 0; i < 200; ++i) {
            const auto seen = disk_->readBytes(path("in/big"));
            broken = broken || (seen != one && seen != two);
        }
    });
    for (int i = 0; i < 10; ++i) disk_->writeBytes(path("in/big"), i % 2 == 0 ? two : one);
    reader.join();
    EXPECT_FALSE(broken);
}

TEST_P(DiskFileSystemTest, CopiesWholeFilesAndOverwrites) {
    const std::string big(700001, 'b');
    put("in/big", big);
    disk_->copyFile(path("in/big"), path("in/folder/b.txt"));
    EXPECT_EQ(contentOf("in/folder/b.txt"), big);
    EXPECT_EQ(contentOf("in/big"), big);
}

TEST_P(DiskFileSystemTest, CopyingOrDeletingWhatIsNotThereThrows) {
    EXPECT_THAT(messageOf([&] { disk_->copyFile(path("in/none"), path("in/copy")); }),
                HasSubstr(path("in/none")));
    EXPECT_FALSE(fs::exists(top_ / "in/copy"));
    EXPECT_THROW(disk_->deleteFile(path("in/none")), Error);
    EXPECT_THROW(disk_->deleteFile(path("in/folder")), Error);
    EXPECT_THROW(disk_->deleteFolder(path("in/none")), Error);
    EXPECT_THROW(disk_->deleteFolder(path("in/a.txt")), Error);
    EXPECT_TRUE(fs::exists(top_ / "in/folder/b.txt"));
}

TEST_P(DiskFileSystemTest, CreatesFoldersAndTakesThoseThatAreThere) {
    disk_->createFolder(path("in/new"));
    disk_->createFolder(path("in/new/"));
    disk_->createFolder(path("in"));
    EXPECT_TRUE(fs::is_directory(top_ / "in/new"));
}

TEST_P(DiskFileSystemTest, CreatingAFolderNeedsItsParentAndAFreeName) {
    EXPECT_THROW(disk_->createFolder(path("in/x/y")), Error);
    EXPECT_FALSE(fs::exists(top_ / "in/x"));
    EXPECT_THROW(disk_->createFolder(path("in/a.txt")), Error);
    EXPECT_EQ(contentOf("in/a.txt"), "inside");
}

TEST_P(DiskFileSystemTest, DeletesFilesAndWholeFoldersButNothingBehindLinks) {
    fs::create_directories(top_ / "in/folder/deep/er");
    put("in/folder/deep/er/c.txt", "c");
    fs::create_symlink(top_ / "out", top_ / "in/folder/deep/link");
    disk_->deleteFile(path("in/a.txt"));
    EXPECT_FALSE(fs::exists(top_ / "in/a.txt"));
    disk_->deleteFolder(path("in/folder"));
    EXPECT_FALSE(fs::exists(top_ / "in/folder"));
    EXPECT_EQ(contentOf("out/secret.txt"), "secret");
}

TEST_P(DiskFileSystemTest, TheRootItselfIsNeverDeleted) {
    EXPECT_THROW(disk_->deleteFolder(path("in")), Error);
    EXPECT_THROW(disk_->deleteFolder(path("in/folder/..")), Error);
    EXPECT_EQ(contentOf("in/folder/b.txt"), "deeper");
}

TEST_P(DiskFileSystemTest, ListsNamesByKind) {
    put("in/é.html", "");
    put("in/.torvex-0123456789abcdef.tmp", "left by a crash");
    fs::create_symlink("a.txt", top_ / "in/link");
    fs::create_symlink(top_ / "out/secret.txt", top_ / "in/link-out");
    fs::create_symlink("folder", top_ / "in/folder-link");
    EXPECT_THAT(disk_->files(path("in")), UnorderedElementsAre("a.txt", "é.html", "link"));
    EXPECT_THAT(disk_->subfolders(path("in")), UnorderedElementsAre("folder", "folder-link"));
    EXPECT_THAT(disk_->subfolders(path("in/folder")), IsEmpty());
    EXPECT_THROW(disk_->files(path("in/none")), Error);
    EXPECT_THROW(disk_->files(path("in/a.txt")), Error);
}

TEST(NormalPath, TakesOutWhatSaysNothing) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"/a/b", "/a/b"},         {"/a//b/", "/a/b"}, {"/a/./b", "/a/b"},   {"/a/x/../b", "/a/b"},
        {"\\a\\b", "/a/b"},       {"/", ""},          {"//", ""},           {"/..", ""},
        {"/../../a", "/a"},       {"/a/..", ""},      {"/a/...", "/a/..."}, {"/a /b", "/a /b"},
        {"/.hidden", "/.hidden"},
    };
    for (const auto& [path, expected] : cases) EXPECT_EQ(normalPath(path), expected) << path;
}

TEST(NormalPath, IsNothingForRelativeAndBrokenPaths) {
    for (const std::string& path : {""s, "a"s, "./a"s, "../a"s, "/a\0b"s}) {
        EXPECT_EQ(normalPath(path), std::nullopt) << path;
    }
}

}  // namespace
}  // namespace torvex
