#include "installation/Undo.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "support/TestDatabase.h"

namespace torvex {
namespace {

TEST(Undo, RunsItsStepsLastFirst) {
    std::string order;
    {
        Undo undo;
        undo.add([&] { order += 'a'; });
        undo.add([] { throw std::runtime_error("fails"); });
        undo.add([&] { order += 'b'; });
    }
    EXPECT_EQ(order, "ba");
}

TEST(Undo, KeptWorkIsLeftAlone) {
    bool ran = false;
    {
        Undo undo;
        undo.add([&] { ran = true; });
        undo.keep();
    }
    EXPECT_FALSE(ran);
}

TEST(Undo, RemovesAlsoParentsThatWereMade) {
    const test::TemporaryFolder folder;
    {
        Undo undo;
        undo.removeWhatIsMade(folder.path() + "/a/b/c");
        std::filesystem::create_directories(folder.path() + "/a/b/c/d");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(Undo, LeavesWhatWasThereBefore) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() + "/a");
    {
        Undo undo;
        undo.removeWhatIsMade(folder.path() + "/a");
        undo.removeWhatIsMade(folder.path() + "/a/b");
        std::filesystem::create_directories(folder.path() + "/a/b");
    }
    EXPECT_TRUE(std::filesystem::exists(folder.path() + "/a"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() + "/a/b"));
}

}  // namespace
}  // namespace torvex
