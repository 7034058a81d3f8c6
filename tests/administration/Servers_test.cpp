#include <array>
#include <gmock/gmock.h>
#include <unistd.h>

#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ServersTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        host.files.madeFolders = {"/mnt/b/www"};
        host.files.bytes["/install/wwwroot/a.txt"] = "new";
        host.application.set("torvex_loadBalancing_shareName", "www");
        host.application.set("torvex_replication_root", "/mnt");
        server(3, "b");
    }

    void server(int id, const std::string& name) {
        row("TORVEX_SERVERS", {{"serverId", id},
                               {"serverName", name},
                               {"serverDescription", "Server " + name},
                               {"serverIP", "10.0.0." + std::to_string(id)}});
    }
    std::string copy() {
        const auto found = host.files.bytes.find("/mnt/b/www/wwwroot/a.txt");
        return found == host.files.bytes.end() ? "none" : found->second;
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ServersTest, bothEngines(), engineName);

TEST_P(ServersTest, ReplicateFileCopiesKeepsReplacesAndRemoves) {
    EXPECT_TRUE(manager().replicateFile("/install/wwwroot/a.txt"));
    EXPECT_EQ(copy(), "new");
    host.files.bytes["/install/wwwroot/a.txt"] = "newer";
    EXPECT_TRUE(manager().replicateFile("/install/wwwroot/a.txt"));
    EXPECT_EQ(copy(), "new");
    EXPECT_TRUE(manager().replicateFile("/install/wwwroot/a.txt", true));
    EXPECT_EQ(copy(), "newer");
    EXPECT_TRUE(manager().replicateFile("/install/wwwroot/a.txt", true, true));
    EXPECT_EQ(copy(), "none");
    EXPECT_TRUE(host.files.fileExists("/install/wwwroot/a.txt"));
}

TEST_P(ServersTest, ReplicateFolderMakesAndRemoves) {
    EXPECT_TRUE(manager().replicateFolder("/install/wwwroot"));
    EXPECT_TRUE(host.files.folderExists("/mnt/b/www/wwwroot"));
    EXPECT_EQ(copy(), "none");
    EXPECT_TRUE(manager().replicateFolder("/install/wwwroot", true));
    EXPECT_FALSE(host.files.folderExists("/mnt/b/www/wwwroot"));
    EXPECT_TRUE(host.files.fileExists("/install/wwwroot/a.txt"));
}

TEST_P(ServersTest, TestServerWritesFindsAndRemovesAFile) {
    EXPECT_TRUE(manager().testServer(3));
    EXPECT_FALSE(host.files.fileExists("/mnt/b/www/97568213567.txt"));
}

TEST_P(ServersTest, TestServerOverwritesWhatAnEarlierTestLeft) {
    host.files.bytes["/mnt/b/www/97568213567.txt"] = "left";
    EXPECT_TRUE(manager().testServer(3));
    EXPECT_FALSE(host.files.fileExists("/mnt/b/www/97568213567.txt"));
}

TEST_P(ServersTest, TestServerIsFalseWithoutAServerOrAShare) {
    server(4, "  ");
    for (const int id : {0, -1, 4, 5}) EXPECT_FALSE(manager().testServer(id)) << id;
    host.application.set("torvex_loadBalancing_shareName", "");
    EXPECT_FALSE(manager().testServer(3));
}

TEST_P(ServersTest, AServerThatCantBeWrittenIsAnErrorOfTheTest) {
    host.files.writeFailure = "read-only";
    EXPECT_EQ(errorOf([&] { manager().testServer(3); }),
              chain({"testServer !"}) + "/mnt/b/www/97568213567.txt: read-only");
}

TEST_P(ServersTest, AServerThatIsGoneIsAnErrorOfTheTest) {
    server(4, "c");
    EXPECT_THAT(errorOf([&] { manager().testServer(4); }), StartsWith(chain({"testServer !"})));
    host.application.set("torvex_replication_root", "");
    EXPECT_THAT(errorOf([&] { manager().testServer(3); }), HasSubstr("torvex_replication_root"));
}

TEST_P(ServersTest, TheListIsSortedByName) {
    server(1, "z");
    server(2, "A");
    const Value list = manager().getServerList();
    ASSERT_TRUE(list.isGrid());
    const ResultGrid& grid = list.grid();
    ASSERT_EQ(grid.rows(), 3U);
    EXPECT_EQ(grid.columns(), 5U);
    EXPECT_EQ(grid.at(0, 0), Value(2));
    EXPECT_EQ(grid.at(1, 0), Value("A"));
    EXPECT_EQ(grid.at(2, 0), Value("Server A"));
    EXPECT_EQ(grid.at(3, 0), Value("10.0.0.2"));
    EXPECT_TRUE(grid.at(4, 0).isEmpty());
    EXPECT_EQ(grid.at(1, 1), Value("b"));
    EXPECT_EQ(grid.at(1, 2), Value("z"));
}

TEST_P(ServersTest, AListWithoutServersIsEmpty) {
    connection().execute("delete from TORVEX_SERVERS");
    EXPECT_TRUE(manager().getServerList().isEmpty());
}

TEST_P(ServersTest, TheNameIsThatOfTheMachine) {
    std::array<char, 256> name{};
    ASSERT_EQ(::gethostname(name.data(), name.size()), 0);
    EXPECT_EQ(manager().getServerName(), name.data());
}

TEST_P(ServersTest, ABrokenDatabaseIsAnErrorOfEach) {
    drop("TORVEX_SERVERS");
    EXPECT_THAT(errorOf([&] { manager().getServerList(); }), StartsWith(chain({"getServerList !"})));
    EXPECT_THAT(errorOf([&] { manager().testServer(3); }), StartsWith(chain({"testServer !"})));
    EXPECT_THAT(errorOf([&] { manager().replicateFile("/install/wwwroot/a.txt"); }),
                StartsWith(chain({"replicateFile !"})));
    EXPECT_THAT(errorOf([&] { manager().replicateFolder("/install/wwwroot"); }),
                StartsWith(chain({"replicateFolder !"})));
}

}  // namespace
}  // namespace torvex::test
