#include "platform/files/WatchedFileSystem.h"

#include <gmock/gmock.h>

#include "platform/Errors.h"
#include "support/MemoryFileSystem.h"

namespace torvex::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WatchedFileSystemTest : public testing::Test {
  protected:
    WatchedFileSystemTest() { files_.createFolder("/a"); }

    std::vector<std::string> told() { return std::exchange(told_, {}); }

    MemoryFileSystem files_;
    std::vector<std::string> told_;
    WatchedFileSystem watched{files_, [this](const std::string& path) { told_.push_back(path); }};
};

TEST_F(WatchedFileSystemTest, TellsEachFileThatIsWritten) {
    watched.writeText("/a/1", "one", TextFormat::Ansi);
    watched.writeBytes("/a/2", "two");
    watched.writeTexts({{"/a/3", "three"}, {"/a/4", "four"}}, TextFormat::Ansi);
    EXPECT_THAT(told(), ElementsAre("/a/1", "/a/2", "/a/3", "/a/4"));
    EXPECT_EQ(files_.readBytes("/a/4"), "four");
}
TEST_F(WatchedFileSystemTest, TellsWhatIsCopiedMovedAndDeleted) {
    files_.writeBytes("/a/1", "one");
    watched.copyFile("/a/1", "/a/2");
    EXPECT_THAT(told(), ElementsAre("/a/2"));
    watched.moveFile("/a/2", "/a/3");
    EXPECT_THAT(told(), ElementsAre("/a/2", "/a/3"));
    watched.deleteFile("/a/3");
    watched.deleteFolder("/a");
    EXPECT_THAT(told(), ElementsAre("/a/3", "/a/"));
    EXPECT_FALSE(files_.fileExists("/a/1"));
}
TEST_F(WatchedFileSystemTest, TellsAlsoWhenItFailed) {
    EXPECT_THROW(watched.copyFile("/nowhere/1", "/nowhere/2"), Error);
    EXPECT_THAT(told(), ElementsAre("/nowhere/2"));
}
TEST_F(WatchedFileSystemTest, ReadingTellsNothing) {
    files_.writeBytes("/a/1", "one");
    EXPECT_EQ(watched.readBytes("/a/1"), "one");
    EXPECT_EQ(watched.readRange("/a/1", 1, 1), "n");
    EXPECT_EQ(watched.fileSize("/a/1"), 3);
    EXPECT_TRUE(watched.folderExists("/a"));
    EXPECT_THAT(watched.files("/a"), ElementsAre("1"));
    EXPECT_THAT(told(), IsEmpty());
}

}  // namespace
}  // namespace torvex::test
