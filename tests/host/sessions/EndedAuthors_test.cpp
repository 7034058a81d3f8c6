#include "host/sessions/EndedAuthors.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "support/ManagerTest.h"
#include "support/RunningServer.h"

namespace torvex::test {
namespace {

using namespace std::chrono_literals;

class EndedAuthorsTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        if (HasFatalFailure()) return;
        running.host.database.target = host.database.target;
        for (const auto* key : {"torvex_odbc", "torvex_odbc_user", "torvex_odbc_password"})
            running.host.application.set(key, host.application.get(key));
        running.page("/in.asp", [](HostContext& context) {
            context.session.set("torvex_username", "anna");
            context.session.renewToken();
            context.response.write(context.session.id());
        });
        running.page("/look.asp", [](HostContext& context) { context.response.write("-"); });
        running.page("/out.asp", [](HostContext& context) { context.session.abandon(); });
    }
    void TearDown() override {
        running.stop();
        ManagerTest::TearDown();
    }
    std::string get(const std::string& target, const std::string& cookie = {}) {
        const RawReply reply =
            running.client().get(target, cookie.empty() ? "" : "Cookie: " + cookie + "\r\n");
        return target == "/in.asp" ? reply.body + " " + reply.sessionCookie() : reply.body;
    }
    /// The cookie.
    std::string enterAsAnna() {
        const std::string answer = get("/in.asp");
        const auto blank = answer.find(' ');
        const std::string session = answer.substr(0, blank);
        connection().execute(
            "update TORVEX_LOGINS set sessionId = ?, currentSite = 'aa.en', siteLock = 'aa.en' "
            "where loginId = 7",
            {std::string_view(session)});
        return answer.substr(blank + 1);
    }
    std::string website() { return cell("select currentSite from TORVEX_LOGINS where loginId = 7"); }
    bool hasLeftWithin(std::chrono::milliseconds time) {
        const auto end = std::chrono::steady_clock::now() + time;
        while (std::chrono::steady_clock::now() < end) {
            if (website().empty()) return true;
            std::this_thread::sleep_for(20ms);
        }
        return website().empty();
    }

    RunningServer running;
};
INSTANTIATE_TEST_SUITE_P(Engines, EndedAuthorsTest, bothEngines(), engineName);

TEST_P(EndedAuthorsTest, ASessionThatHasIdledOutLeavesItsWebsiteAndKeepsItsLogin) {
    running.options.sessions.authorIdle = 3s;
    running.start();
    enterAsAnna();
    EXPECT_EQ(website(), "aa.en");
    EXPECT_TRUE(hasLeftWithin(20s));
    EXPECT_EQ(cell("select siteLock from TORVEX_LOGINS where loginId = 7"), "");
    EXPECT_NE(cell("select sessionId from TORVEX_LOGINS where loginId = 7"), "");
}

TEST_P(EndedAuthorsTest, ASessionThatIsUsedStays) {
    running.options.sessions.authorIdle = 3s;
    running.start();
    const std::string cookie = enterAsAnna();
    for (int i = 0; i < 16; ++i) {
        get("/look.asp", cookie);
        std::this_thread::sleep_for(250ms);
    }
    EXPECT_EQ(website(), "aa.en");
}

TEST_P(EndedAuthorsTest, AnAbandonedSessionLeavesItsWebsite) {
    running.start();
    const std::string cookie = enterAsAnna();
    get("/out.asp", cookie);
    EXPECT_TRUE(hasLeftWithin(20s));
}

TEST_P(EndedAuthorsTest, AFailureStandsInTheLogAndTheServerGoesOn) {
    running.start();
    const std::string cookie = enterAsAnna();
    drop("TORVEX_LOGINS");
    get("/out.asp", cookie);
    std::this_thread::sleep_for(2500ms);
    EXPECT_EQ(get("/look.asp"), "-");
    const auto lines = running.logged();
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        return line.find("leaving the websites of sessions that have ended") != std::string::npos;
    }));
}

}  // namespace
}  // namespace torvex::test
