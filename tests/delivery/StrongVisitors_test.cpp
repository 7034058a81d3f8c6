#include <algorithm>
#include <array>
#include <barrier>
#include <chrono>
#include <thread>

#include "accounts/StrongPassword.h"
#include "accounts/VisitorProof.h"
#include "support/ExtranetTest.h"
#include "support/ThreadTime.h"

namespace torvex::test {
namespace {

constexpr auto ownPage = "http://www.site.test/tvx.asp?pageId=11";

class StrongVisitors : public ExtranetTest {
  protected:
    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        host.application.set("torvex_password_store", "strong");
    }
    std::string post(const std::string& name, const std::string& password, const std::string& target = "") {
        host.session.set("tvx_loginTrials", 0);
        ask("",
            {{"torvex_pageId", "11"},
             {"torvex_username", name},
             {"torvex_password", password},
             {"torvex_loginTarget", target}},
            {{"HTTP_Referer", ownPage}});
        return server().getLoginURL();
    }
    /// A visitor without a session.
    bool logsIn(const std::string& name, const std::string& password) {
        host.session = Session("another");
        post(name, password);
        return kept("tvx_username") == name;
    }
    std::string stored(int userId) {
        return cell("select password from TORVEX_USERS where userId = " + std::to_string(userId));
    }
    std::string hash(int userId) {
        return cell("select coalesce(passwordHash, '') from TORVEX_USERS where userId = " +
                    std::to_string(userId));
    }
    /// Ben's row has its hash, and his session its mark.
    void moveBen() {
        post("ben", "benpw");
        ASSERT_TRUE(isStrongMark(stored(ben)));
        ASSERT_TRUE(isPasswordOf(hash(ben), "benpw"));
    }
    std::chrono::duration<double, std::milli> timeOf(const std::string& name) {
        auto best = std::chrono::duration<double, std::milli>::max();
        for (int i = 0; i < 5; ++i) {
            best =
                std::min(best, threadTimeOf([&] {
                             EXPECT_FALSE(proofOfVisitor(connection(), PasswordStore::Strong, name, "wrong"));
                         }));
        }
        return best;
    }

    static constexpr int ann = 101;
    static constexpr int ben = 102;
};
INSTANTIATE_TEST_SUITE_P(Engines, StrongVisitors, bothEngines(), engineName);

TEST_P(StrongVisitors, WithoutTheSettingNoRowGetsAHash) {
    host.application.set("torvex_password_store", "");
    EXPECT_TRUE(logsIn("ben", "benpw"));
    EXPECT_EQ(stored(ben), "benpw");
    EXPECT_EQ(hash(ben), "");
    EXPECT_EQ(kept("tvx_password"), "benpw");
}

TEST_P(StrongVisitors, TheNextRightLoginMovesARow) {
    EXPECT_EQ(post("ben", "BenPW "), ownPage);
    EXPECT_TRUE(isStrongMark(stored(ben)));
    EXPECT_TRUE(isPasswordOf(hash(ben), "benpw"));
    EXPECT_EQ(kept("tvx_password"), stored(ben));
    EXPECT_EQ(stored(ann), "annpw");
}

TEST_P(StrongVisitors, EveryTargetLeadsWhereItLedBeforeAndAfterTheMove) {
    connection().execute("update TORVEX_USERGROUPS set entryPage = 12 where groupId = 2");
    for (const auto& [target, page] :
         {std::pair{"group", "12"}, {"sitemap", "11"}, {"12", "12"}, {"current", "11"}}) {
        connection().execute(
            "update TORVEX_USERS set password = 'annpw', passwordHash = null where userId = 101");
        for (int i = 0; i < 2; ++i) {
            host.session = Session("another");
            EXPECT_TRUE(post("ann", "annpw", target).ends_with(std::string("/tvx.asp?pageId=") + page))
                << target;
            EXPECT_EQ(kept("tvx_username"), "ann") << target;
        }
    }
}

TEST_P(StrongVisitors, ARefusedLoginMovesNothing) {
    EXPECT_FALSE(logsIn("ben", "wrong"));
    EXPECT_FALSE(logsIn("cleo", "cleopw"));  // in no group
    EXPECT_EQ(stored(ben), "benpw");
    EXPECT_EQ(stored(103), "cleopw");
}

TEST_P(StrongVisitors, AMovedRowIsVerifiedByItsHash) {
    moveBen();
    const std::string mark = stored(ben);
    EXPECT_FALSE(logsIn("ben", "wrong"));
    EXPECT_FALSE(logsIn("ben", mark));
    EXPECT_FALSE(logsIn("ben", hash(ben)));
    EXPECT_TRUE(logsIn("ben", " BENPW"));
    EXPECT_EQ(stored(ben), mark);
    EXPECT_EQ(kept("tvx_password"), mark);
}

TEST_P(StrongVisitors, AMovedRowStaysStrongWhenTheSettingGoes) {
    moveBen();
    host.application.set("torvex_password_store", "");
    EXPECT_FALSE(logsIn("ben", "wrong"));
    EXPECT_TRUE(logsIn("ben", "benpw"));
    EXPECT_TRUE(isStrongMark(stored(ben)));
}

TEST_P(StrongVisitors, TheSessionIsLetInByItsMark) {
    moveBen();
    get("12");
    EXPECT_EQ(server().pgAccess(), 1);
    get("14");
    EXPECT_EQ(server().pgAccess(), -5);
    EXPECT_TRUE(server().hasAccess("12"));
    EXPECT_FALSE(server().hasAccess("14"));
    EXPECT_TRUE(server().hasAccess("12", "ben"));
    EXPECT_EQ(server().getUserId(), ben);
}

TEST_P(StrongVisitors, ATypedPasswordIsStillKnownByTheOperations) {
    connection().execute("update TORVEX_USERGROUPS set entryPage = 12, exitPage = 13 where groupId = 2");
    moveBen();
    host.session = Session("another");
    EXPECT_TRUE(server().isUser("ben", "BenPw"));
    EXPECT_FALSE(server().isUser("ben", "wrong"));
    EXPECT_FALSE(server().isUser("ben", ""));
    EXPECT_EQ(server().getUserId("ben", "benpw"), ben);
    EXPECT_EQ(server().getUserId("ben", "wrong"), 0);
    EXPECT_EQ(server().getEntryPage("ben", "benpw"), 12);
    EXPECT_EQ(server().getExitPage("ben", "benpw"), 13);
    EXPECT_EQ(server().getEntryPage("ben", "wrong"), -1);
    server().getPage("12", "ben", "benpw");
    EXPECT_EQ(server().pgAccess(), 1);
    server().getPage("12", "ben", "wrong");
    EXPECT_EQ(server().pgAccess(), -5);
}

TEST_P(StrongVisitors, TheStoredPasswordIsTheMarkAndIsKnownAsSuch) {
    moveBen();
    const std::string mark = server().getUserPassword("ben");
    EXPECT_EQ(mark, stored(ben));
    EXPECT_TRUE(server().isUser("ben", mark));
    EXPECT_FALSE(server().isUser("ann", mark));
}

TEST_P(StrongVisitors, ANewPasswordTakesThePlaceOfTheHashAndEndsTheSession) {
    moveBen();
    connection().execute("update TORVEX_USERS set password = 'changed' where userId = 102");
    EXPECT_FALSE(server().hasAccess("12"));
    EXPECT_FALSE(logsIn("ben", "benpw"));
    EXPECT_TRUE(logsIn("ben", "changed"));
    EXPECT_TRUE(isPasswordOf(hash(ben), "changed"));
}

TEST_P(StrongVisitors, APasswordThatLooksLikeAMarkIsAPassword) {
    host.application.set("torvex_password_store", "");
    connection().execute("update TORVEX_USERS set password = 'strong:abcdefghijklm' where userId = 102");
    EXPECT_TRUE(logsIn("ben", "strong:abcdefghijklm"));
    host.application.set("torvex_password_store", "strong");
    EXPECT_TRUE(logsIn("ben", "strong:abcdefghijklm"));
    EXPECT_NE(hash(ben), "");
    EXPECT_TRUE(logsIn("ben", "strong:abcdefghijklm"));
    EXPECT_FALSE(logsIn("ben", stored(ben)));
}

TEST_P(StrongVisitors, TwoSessionsThatMoveARowAtOnceBothGetIn) {
    for (int round = 0; round < 3; ++round) {
        connection().execute(
            "update TORVEX_USERS set password = 'benpw', passwordHash = null where userId = 102");
        std::barrier start(2);
        std::array<std::string, 2> marks;
        const auto logIn = [&](std::size_t which) {
            TestHost own;
            own.database.target = &database();
            own.application.set("torvex_odbc", connectionText());
            own.application.set("torvex_extranet", true);
            own.application.set("torvex_password_store", "strong");
            own.request = Request(
                "", {{"torvex_pageId", "11"}, {"torvex_username", "ben"}, {"torvex_password", "benpw"}}, {});
            cServer other(own.context());
            other.connect(connectionText());
            start.arrive_and_wait();
            other.getLoginURL();
            marks[which] = own.session.text("tvx_password");
        };
        std::thread first(logIn, 0);
        std::thread second(logIn, 1);
        first.join();
        second.join();
        EXPECT_EQ(marks[0], stored(ben));
        EXPECT_EQ(marks[1], stored(ben));
    }
}

TEST_P(StrongVisitors, AWrongNameTakesAsLongAsAWrongPassword) {
    moveBen();
    const auto moved = timeOf("ben");
    for (const auto* other : {"nobody", "ann"}) {
        EXPECT_GT(timeOf(other), moved / 2) << other;
        EXPECT_LT(timeOf(other), moved * 2) << other;
    }
}

}  // namespace
}  // namespace torvex::test
