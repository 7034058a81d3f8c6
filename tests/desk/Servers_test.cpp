#include <gmock/gmock.h>

#include "desk/desk.h"
#include "support/RegistersTest.h"

namespace torvex::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class RegistersServersTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        row("TORVEX_SERVERS", {{"serverId", 3}, {"serverName", "web3"}, {"serverDescription", "Third"}});
        row("TORVEX_SERVERS", {{"serverId", 4}, {"serverName", "web4"}});
    }
    std::string save(int serverId, const std::string& name, const std::string& description = "",
                     const std::string& address = "") {
        return registers().saveServer(serverId, name, description, address, 62);
    }
    std::string rowOf(int serverId) {
        const auto rows = rowsOf(
            "select serverName, serverDescription, serverIP, lock from TORVEX_SERVERS "
            "where serverId = " +
            std::to_string(serverId));
        return rows.empty() ? "" : rows.front();
    }
    void missed(const std::string& server, const std::string& path) {
        row("TORVEX_SERVERS_MISSED", {{"serverName", server},
                                      {"path", path},
                                      {"task", "write"},
                                      {"reason", "No space left on device"},
                                      {"moment", DateTime{2026, 6, 15, 11, 0, 0}}});
    }
    std::vector<std::string> replication() {
        torvex::desk desk(host.context());
        desk.connect(connection());
        return linesOf(desk.getReplication());
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, RegistersServersTest, bothEngines(), engineName);

TEST_P(RegistersServersTest, AServerIsAdded) {
    const std::string id = save(0, " web5 ", " Fifth ", " 10.0.0.5 ");
    EXPECT_EQ(rowOf(std::stoi(id)), "web5|Fifth|10.0.0.5|");
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||62|new|New load balancing server \"web5\""));
}

TEST_P(RegistersServersTest, AServerIsChangedAndLetGo) {
    hold("TORVEX_SERVERS", "serverId", 3, host.session.id());
    EXPECT_EQ(save(3, "WEB3", "Under the stairs", "10.0.0.3"), "3");
    EXPECT_EQ(rowOf(3), "WEB3|Under the stairs|10.0.0.3|");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||62|save|Load balancing server \"WEB3\" has been updated"));
}

TEST_P(RegistersServersTest, RefusalsChangeNothing) {
    expectRefusal("-1", [&] { return save(99, "new"); });
    expectRefusal("-2", [&] { return save(3, " WEB4 "); });
    expectRefusal("-2", [&] { return save(0, "web4"); });
    for (const auto* name : {"", "  ", "..", ".", "a/b", "a\\b"})
        expectRefusal("-3", [&] { return save(3, name); });
    hold("TORVEX_SERVERS", "serverId", 3, bertsSession);
    expectRefusal("-4", [&] { return save(3, "new"); });
    actAsNobody();
    expectRefusal("-10", [&] { return save(3, "new"); });
}

TEST_P(RegistersServersTest, AFailureAnywhereChangesNothing) {
    failEverywhere("3", "-99", [&] { return save(3, "new"); });
}

TEST_P(RegistersServersTest, WhatServersHaveMissedIsListedByServerTheLatestFirst) {
    missed("web4", "wwwroot/a.gif");
    missed("web3", "wwwroot/b.gif");
    missed("web3", "wwwroot/c.gif");
    EXPECT_THAT(replication(),
                ElementsAre("web3|wwwroot/c.gif|write|No space left on device|2026-06-15T11:00:00",
                            "web3|wwwroot/b.gif|write|No space left on device|2026-06-15T11:00:00",
                            "web4|wwwroot/a.gif|write|No space left on device|2026-06-15T11:00:00"));
}

TEST_P(RegistersServersTest, AServerThatWasBroughtUpToDateHasMissedNothing) {
    missed("web4", "wwwroot/a.gif");
    missed("WEB3", "wwwroot/b.gif");
    EXPECT_EQ(registers().forgetMissed(3, 62), "0");
    EXPECT_EQ(replication().size(), 1U);
    EXPECT_THAT(auditTrail(), ElementsAre("7|Anna Author|0||62|edit|Load balancing server \"web3\" has been "
                                          "brought up to date"));
    EXPECT_EQ(registers().forgetMissed(99, 62), "-1");
    actAsNobody();
    EXPECT_EQ(registers().forgetMissed(4, 62), "-10");
    EXPECT_EQ(replication().size(), 1U);
}

TEST_P(RegistersServersTest, WhatFailsIsRaised) {
    drop("TORVEX_SERVERS_MISSED");
    torvex::desk desk(host.context());
    desk.connect(connection());
    EXPECT_THAT(errorOf([&] { desk.getReplication(); }), StartsWith(chain({"getReplication !"})));
    EXPECT_THAT(errorOf([&] { registers().forgetMissed(3, 62); }), StartsWith(chain({"forgetMissed !"})));
}

}  // namespace
}  // namespace torvex::test
