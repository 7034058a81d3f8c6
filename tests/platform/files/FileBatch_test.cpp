#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "platform/Errors.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/DiskFileSystem.h"
#include "support/TestDatabase.h"

namespace torvex {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

/// Files that are written together, and what is left of files that weren't written to their end.
class FileBatchTest : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
    void put(const std::string& name, const std::string& bytes) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
    }
    std::string contentOf(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::vector<std::string> entries(const std::string& folder = "") const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path(folder))) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    test::TemporaryFolder folder_;
    DiskFileSystem disk_{std::vector<std::string>{folder_.path()}};
};

TEST_F(FileBatchTest, ManyTextsAreWrittenInTheirPlaces) {
    fs::create_directory(path("a"));
    fs::create_directory(path("b"));
    put("a/1.txt", "old");
    std::vector<TextFile> texts;
    for (int i = 0; i < 150; ++i) {
        texts.push_back({path((i % 2 == 0 ? "a/" : "b/") + std::to_string(i) + ".txt"), std::to_string(i)});
    }
    texts.push_back({path("a/1.txt"), "new"});
    disk_.writeTexts(texts, TextFormat::SystemDefault);
    for (int i = 0; i < 150; ++i) {
        EXPECT_EQ(contentOf((i % 2 == 0 ? "a/" : "b/") + std::to_string(i) + ".txt"), std::to_string(i));
    }
    EXPECT_EQ(contentOf("a/1.txt"), "new");
    EXPECT_EQ(entries("a").size(), 76U);
    EXPECT_EQ(entries("b").size(), 75U);
}

TEST_F(FileBatchTest, NoTextsAreNoWork) {
    disk_.writeTexts({}, TextFormat::Unicode);
    EXPECT_TRUE(entries().empty());
}

TEST_F(FileBatchTest, TheTextsHaveTheFormatThatIsAskedFor) {
    disk_.writeTexts({{path("a.txt"), "é"}}, TextFormat::Unicode);
    disk_.writeTexts({{path("b.txt"), "é"}}, TextFormat::Ansi);
    EXPECT_EQ(contentOf("a.txt"), "\xFF\xFE\xE9" + std::string(1, '\0'));
    EXPECT_EQ(contentOf("b.txt"), "é");
}

TEST_F(FileBatchTest, AFileKeepsItsPermissions) {
    put("a.txt", "old");
    fs::permissions(path("a.txt"), fs::perms::owner_read | fs::perms::owner_write);
    disk_.writeTexts({{path("a.txt"), "new"}}, TextFormat::SystemDefault);
    EXPECT_EQ(fs::status(path("a.txt")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(FileBatchTest, OneThatCantBeWrittenIsNamedAndLeavesNoTraceOfTheOthers) {
    put("a.txt", "old");
    try {
        disk_.writeTexts({{path("a.txt"), "new"}, {path("no/b.txt"), "new"}}, TextFormat::SystemDefault);
        FAIL() << "nothing was thrown";
    } catch (const Error& error) {
        EXPECT_THAT(error.what(), HasSubstr("no/b.txt"));
    }
    EXPECT_EQ(contentOf("a.txt"), "old");
    EXPECT_THAT(entries(), UnorderedElementsAre("a.txt"));
}

TEST_F(FileBatchTest, OnlyUnicodeFilesTakeATextThatIsntUtf8) {
    EXPECT_THROW(disk_.writeTexts({{path("a.txt"), "\xFF"}}, TextFormat::Ansi), Error);
    EXPECT_NO_THROW(disk_.writeTexts({{path("a.txt"), "\xFF"}}, TextFormat::Unicode));
}

TEST_F(FileBatchTest, NothingOutsideIsWritten) {
    EXPECT_THROW(disk_.writeTexts({{path("../torvex-outside.txt"), "x"}}, TextFormat::Ansi), Error);
    EXPECT_FALSE(fs::exists(path("../torvex-outside.txt")));
}

TEST_F(FileBatchTest, WhatAKilledWriterLeftIsRemoved) {
    put(".torvex-0123456789abcdef.tmp", "half a te");
    put("a.txt", "text");
    put(".hidden", "text");
    disk_.removeLeftovers(folder_.path());
    EXPECT_THAT(entries(), UnorderedElementsAre("a.txt", ".hidden"));
}

TEST_F(FileBatchTest, AFileThatIsBeingWrittenIsLeft) {
    const Descriptor open(::open(folder_.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    AtomicFile file(open.number(), "a.txt", {});
    file.write("text");
    disk_.removeLeftovers(folder_.path());
    EXPECT_EQ(entries().size(), 1U);
    file.commit();
    EXPECT_EQ(contentOf("a.txt"), "text");
    EXPECT_THAT(entries(), UnorderedElementsAre("a.txt"));
}

TEST_F(FileBatchTest, AFolderThatIsntThereHasNothingLeft) {
    EXPECT_NO_THROW(disk_.removeLeftovers(path("nowhere")));
}

}  // namespace
}  // namespace torvex
