#include <gmock/gmock.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// With the share of a server "b" beside the installation.
class InstallationFilesTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        host.files.madeFolders = {"/install", "/install/wwwroot", "/mnt/b/www"};
        host.application.set("torvex_loadBalancing_shareName", "www");
        host.application.set("torvex_replication_root", "/mnt/");
        row("TORVEX_SERVERS", {{"serverName", "b"}});
    }

    bool isFolder(const std::string& path) { return host.files.folderExists(path); }
    bool isFile(const std::string& path) { return host.files.fileExists(path); }
    void file(const std::string& path) { host.files.bytes[path] = "x"; }
};
INSTANTIATE_TEST_SUITE_P(Engines, InstallationFilesTest, bothEngines(), engineName);

TEST_P(InstallationFilesTest, ADirectoryIsMadeHereAndThere) {
    EXPECT_TRUE(manager().createDirectory("  /install/wwwroot/new/ "));
    EXPECT_TRUE(isFolder("/install/wwwroot/new"));
    EXPECT_TRUE(isFolder("/mnt/b/www/wwwroot/new"));
}

TEST_P(InstallationFilesTest, ADirectoryThatIsThereIsMadeThereAllTheSame) {
    file("/install/wwwroot/a.txt");
    EXPECT_TRUE(manager().createDirectory("/install/wwwroot"));
    EXPECT_TRUE(isFile("/install/wwwroot/a.txt"));
    EXPECT_TRUE(isFolder("/mnt/b/www/wwwroot"));
    EXPECT_FALSE(isFile("/mnt/b/www/wwwroot/a.txt"));
}

TEST_P(InstallationFilesTest, ADirectoryWithoutANameIsNone) {
    for (const auto* name : {"", "   ", "/", " / "}) {
        EXPECT_FALSE(manager().createDirectory(name)) << name;
        EXPECT_FALSE(manager().deleteDirectory(name)) << name;
    }
    EXPECT_TRUE(isFolder("/install/wwwroot"));
}

TEST_P(InstallationFilesTest, ADirectoryIsRemovedHereAndThereWithAllThatIsInIt) {
    file("/install/wwwroot/old/sub/a.txt");
    file("/mnt/b/www/wwwroot/old/b.txt");
    file("/mnt/b/www/wwwroot/kept.txt");
    EXPECT_TRUE(manager().deleteDirectory("/install/wwwroot/old/"));
    EXPECT_FALSE(isFolder("/install/wwwroot/old"));
    EXPECT_FALSE(isFolder("/mnt/b/www/wwwroot/old"));
    EXPECT_TRUE(isFile("/mnt/b/www/wwwroot/kept.txt"));
    EXPECT_TRUE(manager().deleteDirectory("/install/wwwroot/old")) << "none there is no error";
}

TEST_P(InstallationFilesTest, AFileIsRemovedHereAndThere) {
    file("/install/wwwroot/a.txt");
    file("/mnt/b/www/wwwroot/a.txt");
    EXPECT_TRUE(manager().deleteFile(" \\install\\wwwroot\\a.txt "));
    EXPECT_FALSE(isFile("/install/wwwroot/a.txt"));
    EXPECT_FALSE(isFile("/mnt/b/www/wwwroot/a.txt"));
}

TEST_P(InstallationFilesTest, AFileThatIsOnlyThereIsRemovedToo) {
    file("/mnt/b/www/wwwroot/a.txt");
    EXPECT_TRUE(manager().deleteFile("/install/wwwroot/a.txt"));
    EXPECT_FALSE(isFile("/mnt/b/www/wwwroot/a.txt"));
}

TEST_P(InstallationFilesTest, WildCardsRemoveFilesAndNoFolders) {
    for (const auto* name : {"a.txt", "b.txt", "readme", "sub/a.txt"}) {
        file("/install/wwwroot/" + std::string(name));
        file("/mnt/b/www/wwwroot/" + std::string(name));
    }
    EXPECT_TRUE(manager().deleteFile("/install/wwwroot/?.txt"));
    EXPECT_FALSE(isFile("/install/wwwroot/a.txt"));
    EXPECT_FALSE(isFile("/mnt/b/www/wwwroot/b.txt"));
    EXPECT_TRUE(isFile("/install/wwwroot/readme"));
    EXPECT_TRUE(manager().deleteFile("/install/wwwroot/*.*"));
    EXPECT_FALSE(isFile("/install/wwwroot/readme"));
    EXPECT_FALSE(isFile("/mnt/b/www/wwwroot/readme"));
    EXPECT_TRUE(isFile("/install/wwwroot/sub/a.txt"));
    EXPECT_TRUE(isFile("/mnt/b/www/wwwroot/sub/a.txt"));
}

TEST_P(InstallationFilesTest, WildCardsThatMatchNothingAreNoError) {
    EXPECT_TRUE(manager().deleteFile("/install/wwwroot/*.txt"));
    EXPECT_TRUE(manager().deleteFile("/install/nowhere/*.txt"));
}

TEST_P(InstallationFilesTest, AFileWithoutANameRemovesNothing) {
    file("/install/wwwroot/a.txt");
    EXPECT_TRUE(manager().deleteFile("/install/wwwroot/"));
    EXPECT_TRUE(manager().deleteFile(""));
    EXPECT_TRUE(isFile("/install/wwwroot/a.txt"));
}

TEST_P(InstallationFilesTest, TheDisksRefusalIsAnErrorAndNobodyFollows) {
    host.files.writeFailure = "disk full";
    file("/mnt/b/www/wwwroot/old/a.txt");
    file("/install/wwwroot/old/a.txt");
    EXPECT_EQ(errorOf([&] { manager().createDirectory("/install/new"); }),
              chain({"createDirectory !"}) + "/install/new: disk full");
    EXPECT_EQ(errorOf([&] { manager().deleteDirectory("/install/wwwroot/old"); }),
              chain({"deleteDirectory !"}) + "/install/wwwroot/old: disk full");
    EXPECT_EQ(errorOf([&] { manager().deleteFile("/install/wwwroot/old/a.txt"); }),
              chain({"deleteFile !"}) + "/install/wwwroot/old/a.txt: disk full");
    EXPECT_TRUE(isFile("/mnt/b/www/wwwroot/old/a.txt"));
}

TEST_P(InstallationFilesTest, ServersThatCantBeListedAreALevelOfTheirOwn) {
    drop("TORVEX_SERVERS");
    EXPECT_THAT(errorOf([&] { manager().createDirectory("/install/new"); }),
                StartsWith(chain({"createDirectory !", "replicateFolder !"})));
    EXPECT_THAT(errorOf([&] { manager().deleteDirectory("/install/new"); }),
                StartsWith(chain({"deleteDirectory !", "replicateFolder !"})));
    EXPECT_THAT(errorOf([&] { manager().deleteFile("/install/a.txt"); }),
                StartsWith(chain({"deleteFile !", "replicateFile !"})));
}

}  // namespace
}  // namespace torvex::test
