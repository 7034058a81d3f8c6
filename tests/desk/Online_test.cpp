#include <gmock/gmock.h>

#include "desk/Presence.h"
#include "support/DeskTest.h"

namespace torvex::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class OnlineTest : public DeskTest {
  protected:
    static constexpr int ben = 8;
    static constexpr int cleo = 9;

    void SetUp() override {
        DeskTest::SetUp();
        if (HasFatalFailure()) return;
        connection().execute("delete from TORVEX_LOGINS where loginId <> ?", {anna});
        online(ben, "Ben Builder", "aa.en");
        online(cleo, "Cleo Clark", "bb.de");
        login(10, "dora", "Dora Gone");
    }
    void online(int loginId, const std::string& name, const std::string& website) {
        row("TORVEX_LOGINS", {{"loginId", loginId},
                              {"username", "user" + std::to_string(loginId)},
                              {"name", name},
                              {"sessionId", "session-" + std::to_string(loginId)},
                              {"currentSite", website},
                              {"date", "20260615"},
                              {"time", "11:55"}});
    }
    torvex::desk made() {
        torvex::desk made(host.context(), presence);
        made.connect(connection());
        return made;
    }
    std::vector<std::string> listed(const std::string& site, const std::string& lang) {
        return linesOf(made().getOnline(site, lang));
    }
    void tell(int loginId, PageId pageId) {
        presence->note({{loginId, ""}, {"aa", "en", pageId}, Presence::Doing::Looking, host.clock.now()});
    }
    std::string website(int loginId) {
        return cell("select currentSite from TORVEX_LOGINS where loginId = " + std::to_string(loginId));
    }

    Presence::TimePoint now = Presence::TimePoint(1000h);
    std::shared_ptr<Presence> presence = std::make_shared<Presence>([this] { return now; });
};
INSTANTIATE_TEST_SUITE_P(Engines, OnlineTest, bothEngines(), engineName);

TEST_P(OnlineTest, EverybodyWhoIsLoggedInIsListed) {
    tell(ben, 11);
    now += 42s;
    EXPECT_THAT(listed("", ""),
                ElementsAre("7|Anna Author|||0|-|0", "8|Ben Builder|aa|en|11|2026-06-15T11:55:00|42",
                            "9|Cleo Clark|bb|de|0|2026-06-15T11:55:00|300"));
}

TEST_P(OnlineTest, OrWhoIsInASiteAndLanguage) {
    EXPECT_THAT(listed(" AA ", "En"), ElementsAre("8|Ben Builder|aa|en|0|2026-06-15T11:55:00|300"));
    EXPECT_THAT(listed("aa", ""), IsEmpty());
    EXPECT_THAT(listed("aa", "de"), IsEmpty());
}

TEST_P(OnlineTest, WhoIsGoneLeavesTheSiteAndLanguage) {
    tell(ben, 11);
    now += 10min;
    EXPECT_EQ(made().freeIdle("AA", "en"), 1);
    EXPECT_EQ(website(ben), "");
    EXPECT_EQ(website(cleo), "bb.de");
    EXPECT_EQ(cell("select sessionId from TORVEX_LOGINS where loginId = 8"), "session-8");
    EXPECT_THAT(auditTrail(),
                ElementsAre("7|Anna Author|0||0|free idle|Ben Builder was idle and has left aa.en"));
}

TEST_P(OnlineTest, WhoWorksStays) {
    tell(ben, 11);
    now += 10min - 1s;
    EXPECT_EQ(made().freeIdle("aa", "en"), 0);
    EXPECT_EQ(website(ben), "aa.en");
    EXPECT_THAT(auditTrail(), IsEmpty());
}

TEST_P(OnlineTest, WhoNeverToldAnythingIsIdleSinceTheLogin) {
    EXPECT_EQ(made().freeIdle("bb", "de"), 0);
    host.clock = FixedClock(DateTime{2026, 6, 15, 12, 5, 0});
    EXPECT_EQ(made().freeIdle("bb", "de"), 1);
    EXPECT_EQ(website(cleo), "");
}

TEST_P(OnlineTest, TheCallerAndALockStay) {
    connection().execute(
        "update TORVEX_LOGINS set currentSite = 'aa.en', date = '20260101' where loginId = 7");
    connection().execute("update TORVEX_LOGINS set siteLock = 'aa.en', date = '20260101' where loginId = 8");
    EXPECT_EQ(made().freeIdle("aa", "en"), 1);
    EXPECT_EQ(website(anna), "aa.en");
    EXPECT_EQ(cell("select siteLock from TORVEX_LOGINS where loginId = 8"), "aa.en");
}

TEST_P(OnlineTest, NowhereIsFreed) {
    connection().execute("update TORVEX_LOGINS set date = '20260101'");
    EXPECT_EQ(made().freeIdle("", ""), 0);
    EXPECT_EQ(made().freeIdle("zz", "zz"), 0);
}

TEST_P(OnlineTest, FailuresNameTheOperation) {
    drop("TORVEX_LOGINS");
    EXPECT_THAT([&] { made().getOnline("", ""); },
                testing::ThrowsMessage<Error>(testing::HasSubstr("getOnline !")));
    EXPECT_THAT([&] { made().freeIdle("aa", "en"); },
                testing::ThrowsMessage<Error>(testing::HasSubstr("freeIdle !")));
}

}  // namespace
}  // namespace torvex::test
