#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <grp.h>
#include <pwd.h>
#include <regex>
#include <sys/stat.h>
#include <unistd.h>

#include "cli/ProgramFixture.h"
#include "platform/net/CurlHttpClient.h"

namespace torvex::test {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

constexpr const char* otherName = "daemon";

bool isRoot() {
    return ::geteuid() == 0;
}

const passwd& otherUser() {
    return *::getpwnam(otherName);
}

/// "serve" started as root, which becomes somebody else; tests that aren't run as root see that it refuses
/// to.
class ServerUser : public ProgramDatabaseTest {
  protected:
    void SetUp() override { init({"--title", "Blue house", "--admin-password", "word"}); }

    void name(const std::string& user) {
        const std::string settings = content("site/torvex.toml");
        std::ofstream(site() + "/torvex.toml") << std::regex_replace(
            settings, std::regex("\n#user = \"\"\n# Threads"), "\nuser = \"" + user + "\"\n# Threads");
        ASSERT_NE(content("site/torvex.toml"), settings);
    }
    /// So that they can come there and call it their own.
    void handOver() {
        if (!isRoot()) return;
        std::filesystem::permissions(folder(), std::filesystem::perms(0755));
        own(site());
        for (const auto& entry : std::filesystem::recursive_directory_iterator(site())) own(entry.path());
    }
    std::unique_ptr<RunningProgram> serve(const std::string& listen = "127.0.0.1:0") {
        // A process that has given up rights can't be traced, which the search for leaks would have to.
        return ProgramTest::serve(listen, {{"ASAN_OPTIONS", "detect_leaks=0"}});
    }
    std::string refusal(const std::string& listen = "127.0.0.1:0") {
        const ProgramResult result = run({"serve", "--install", site(), "--listen", listen});
        EXPECT_EQ(result.code, 1);
        EXPECT_THAT(result.err, Not(HasSubstr("serving ")));
        return result.err;
    }

  private:
    static void own(const std::filesystem::path& path) {
        ASSERT_EQ(::lchown(path.c_str(), otherUser().pw_uid, otherUser().pw_gid), 0);
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, ServerUser, bothEngines(), engineName);

/// One line of the status of each of a process's threads.
std::vector<std::string> statusLines(pid_t process, const std::string& beginning) {
    std::vector<std::string> lines;
    for (const auto& task :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        std::ifstream status(task.path() / "status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with(beginning)) lines.push_back(line);
        }
    }
    return lines;
}

std::string fourTimes(unsigned number) {
    const std::string text = '\t' + std::to_string(number);
    return text + text + text + text;
}

TEST_P(ServerUser, RootTakesTheSocketAndBecomesTheNamedUserForGood) {
    name(otherName);
    handOver();
    if (!isRoot()) {
        EXPECT_THAT(refusal(), HasSubstr("only root can serve as somebody else"));
        return;
    }
    const auto server = serve("127.0.93.17:919");  // a port that only root may take
    const auto home = CurlHttpClient().get(addressOf(*server) + "tvx.asp?pageId=1");
    EXPECT_THAT(home.body, HasSubstr("Welcome to Blue house"));
    const auto users = statusLines(server->process(), "Uid:");
    EXPECT_GT(users.size(), 4U);
    EXPECT_THAT(users, Each("Uid:" + fourTimes(otherUser().pw_uid)));
    EXPECT_THAT(statusLines(server->process(), "Gid:"), Each("Gid:" + fourTimes(otherUser().pw_gid)));
    const std::string ownGroup = std::to_string(otherUser().pw_gid);
    EXPECT_THAT(statusLines(server->process(), "Groups:"),
                Each(AnyOf("Groups:\t" + ownGroup, "Groups:\t" + ownGroup + ' ')));
    EXPECT_THAT(statusLines(server->process(), "CapEff:"), Each("CapEff:\t0000000000000000"));
    EXPECT_THAT(statusLines(server->process(), "CapPrm:"), Each("CapPrm:\t0000000000000000"));
}

TEST_P(ServerUser, WhatItWritesBelongsToTheNamedUser) {
    name(isRoot() ? otherName : ::getpwuid(::geteuid())->pw_name);
    handOver();
    const auto server = serve();
    CurlHttpClient().get(addressOf(*server) + "tvx.asp?pageId=2");
    server->signal(SIGTERM);
    EXPECT_EQ(server->wait().code, 0);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(site())) {
        struct stat status {};
        ASSERT_EQ(::lstat(entry.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, isRoot() ? otherUser().pw_uid : ::geteuid()) << entry.path();
    }
    EXPECT_THAT(sql("select nodeId, hits from TORVEX_LOGGING"), HasSubstr("\"hits\":1"));
}

TEST_P(ServerUser, AUserThatIsNotThereIsRefused) {
    name("no-such-user");
    const std::string said = refusal();
    EXPECT_THAT(said, HasSubstr("user in [server] of torvex.toml is \"no-such-user\""));
    EXPECT_THAT(said, HasSubstr("there is no such user"));
}

TEST_P(ServerUser, AFolderOfSomebodyElseIsRefused) {
    name(otherName);
    if (isRoot()) std::filesystem::permissions(folder(), std::filesystem::perms(0755));
    EXPECT_THAT(refusal(), HasSubstr(isRoot() ? "chown -R daemon " + site() : "only root can serve"));
}

TEST_P(ServerUser, WithoutANameRootServesThisMachineAloneAndWarns) {
    if (isRoot()) {
        EXPECT_THAT(refusal("0.0.0.0:0"), HasSubstr("root serves this machine alone, and not 0.0.0.0"));
        EXPECT_THAT(refusal("[::]:0"), HasSubstr("Name the user to serve as"));
    }
    const auto server = serve();
    EXPECT_EQ(CurlHttpClient().get(addressOf(*server) + "tvx.asp?pageId=2").status, 200);
    EXPECT_EQ(server->err().find("working as root") != std::string::npos, isRoot());
}

TEST_P(ServerUser, WhoIsNamedAnywayStays) {
    name(::getpwuid(::geteuid())->pw_name);
    const auto server = serve();
    EXPECT_EQ(CurlHttpClient().get(addressOf(*server) + "tvx.asp?pageId=2").status, 200);
    EXPECT_THAT(server->err(), Not(HasSubstr("working as root")));
}

}  // namespace
}  // namespace torvex::test
