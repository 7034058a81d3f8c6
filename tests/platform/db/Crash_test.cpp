#include <cstdint>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/TestDatabase.h"

namespace torvex::db {
namespace {

/// What a killed writer leaves. Each of its transactions writes one number to two tables.
class CrashTest : public ::testing::TestWithParam<Engine> {};
INSTANTIATE_TEST_SUITE_P(Engines, CrashTest, test::bothEngines(), test::engineName);

/// Runs until it is killed: tells each number behind its commit.
[[noreturn]] void commitForever(const std::string& text, int acknowledge) {
    const auto database = makeDatabase();
    const Lease connection = database->open(text, {}, {}, Purpose::Transaction);
    for (std::int64_t number = 1;; ++number) {
        Transaction transaction(*connection);
        connection->execute("insert into TORVEX_SETUP (parameter, loginId) values ('crash', ?)", {number});
        connection->execute("insert into TORVEX_USERGROUPS (name, entryPage) values ('crash', ?)", {number});
        transaction.commit();
        if (write(acknowledge, &number, sizeof number) != sizeof number) _exit(1);
    }
}

/// Kills the writer once it has told `enough` commits, and returns the last one that it told.
std::int64_t killAfter(pid_t writer, int acknowledged, std::int64_t enough) {
    std::int64_t number = 0;
    std::int64_t last = 0;
    while (read(acknowledged, &number, sizeof number) == sizeof number) {
        last = number;
        if (number == enough) kill(writer, SIGKILL);
    }
    return last;
}

double numberOf(Connection& connection, std::string_view statement) {
    auto rows = connection.query(statement);
    return rows.next() ? rows.number("n", 0) : -1;
}

TEST_P(CrashTest, AKilledWriterLosesNoAcknowledgedCommitAndLeavesNoHalfOne) {
    std::unique_ptr<test::TestDatabase> made;
    try {
        made = test::makeTestDatabase(GetParam());
    } catch (const std::exception& error) {
        FAIL() << error.what();
    }
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    const pid_t writer = fork();
    if (writer == 0) {
        try {
            commitForever(made->connectionText(), pipeEnds[1]);
        } catch (const std::exception&) {
            _exit(2);
        }
    }
    close(pipeEnds[1]);
    const std::int64_t acknowledged = killAfter(writer, pipeEnds[0], 40);
    close(pipeEnds[0]);
    int status = 0;
    ASSERT_EQ(waitpid(writer, &status, 0), writer);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the writer ended by itself";
    ASSERT_GE(acknowledged, 40);

    const auto database = makeDatabase();
    const Lease connection = database->open(made->connectionText());
    const double settings =
        numberOf(*connection, "select count(*) as n from TORVEX_SETUP where parameter = 'crash'");
    EXPECT_GE(settings, static_cast<double>(acknowledged));
    EXPECT_EQ(numberOf(*connection, "select count(*) as n from TORVEX_USERGROUPS where name = 'crash'"),
              settings);
    EXPECT_EQ(numberOf(*connection, "select max(entryPage) as n from TORVEX_USERGROUPS where name = 'crash'"),
              settings);
    EXPECT_NO_THROW(connection->execute("delete from TORVEX_SETUP where parameter = 'crash'"));
    if (GetParam() == Engine::Sqlite) {
        auto rows = connection->query("pragma integrity_check");
        ASSERT_TRUE(rows.next());
        EXPECT_EQ(rows.text("integrity_check"), "ok");
    }
}

}  // namespace
}  // namespace torvex::db
