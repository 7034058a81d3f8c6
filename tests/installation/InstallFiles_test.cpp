#include "installation/InstallFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "platform/Errors.h"
#include "support/SourceFolder.h"

namespace torvex {
namespace {

namespace fs = std::filesystem;

std::string content(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

TEST(InstallFiles, EveryFileOfTheFolderIsThereUnchanged) {
    const fs::path folder = fs::path(test::sourceFolder()) / "install";
    std::size_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        ++count;
        const std::string name = fs::relative(entry.path(), folder).generic_string();
        EXPECT_EQ(installFile(name), content(entry.path())) << name;
    }
    EXPECT_EQ(installFiles().size(), count);
}

TEST(InstallFiles, AreOrderedByName) {
    const auto files = installFiles();
    EXPECT_TRUE(std::is_sorted(files.begin(), files.end(),
                               [](const auto& a, const auto& b) { return a.name() < b.name(); }));
}

TEST(InstallFiles, AreFoundByPrefix) {
    const auto rows = installFiles("rows/");
    ASSERT_FALSE(rows.empty());
    for (const auto& file : rows) EXPECT_TRUE(file.name().starts_with("rows/"));
    EXPECT_TRUE(installFiles("no such folder/").empty());
    EXPECT_TRUE(installFiles("zzzz").empty());
    EXPECT_EQ(installFiles("").size(), installFiles().size());
}

TEST(InstallFiles, MissingOneIsNamed) {
    EXPECT_THROW(installFile("rows/none.sql"), Error);
    EXPECT_THROW(installFile("rows/"), Error);
}

}  // namespace
}  // namespace torvex
