// Sessions and the pool of workers as clients meet them.

#include <atomic>
#include <gtest/gtest.h>

#include "host/WorkerPool.h"
#include "support/Gate.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using namespace std::chrono_literals;
using test::Gate;
using test::RawHttpClient;
using test::RawReply;

class SessionsTest : public testing::Test {
  protected:
    SessionsTest() {
        running.page("/count.asp", [](HostContext& host) {
            const double count = host.session.number("count") + 1;
            host.session.set("count", Value(count));
            host.response.write(std::to_string(static_cast<int>(count)));
        });
        running.page("/held.asp", [this](HostContext& host) {
            gate.pass();
            host.response.write("held");
        });
    }
    ~SessionsTest() override { gate.open(); }

    RawReply get(std::string_view target, const std::string& cookie = {}) {
        return running.client().get(target, cookie.empty() ? "" : "Cookie: a=b; " + cookie + "\r\n");
    }
    void send(RawHttpClient& client, std::string_view target, const std::string& cookie = {}) {
        std::string request = "GET " + std::string(target) + " HTTP/1.1\r\nHost: a\r\n";
        if (!cookie.empty()) request += "Cookie: " + cookie + "\r\n";
        client.send(request + "\r\n");
    }

    Gate gate;
    test::RunningServer running;
};

TEST_F(SessionsTest, AVisitorKeepsTheSessionByItsCookie) {
    running.start();
    const RawReply first = get("/count.asp");
    const std::string cookie = first.sessionCookie();
    EXPECT_EQ(cookie.size(), std::string("torvex_session=").size() + 32);
    const std::string full = first.field("Set-Cookie");
    EXPECT_EQ(full.substr(cookie.size()), "; Path=/; HttpOnly; SameSite=Lax");
    const RawReply second = get("/count.asp", cookie);
    EXPECT_EQ(second.body, "2");
    EXPECT_EQ(second.sessionCookie(), "");
}

TEST_F(SessionsTest, ACookieMadeUpIsReplaced) {
    running.start();
    const RawReply reply = get("/count.asp", "torvex_session=0123456789abcdef0123456789abcdef");
    EXPECT_EQ(reply.body, "1");
    EXPECT_NE(reply.sessionCookie(), "");
    EXPECT_NE(reply.sessionCookie(), "torvex_session=0123456789abcdef0123456789abcdef");
}

TEST_F(SessionsTest, CookiesAreMarkedSecureWhereTheSettingsSaySo) {
    running.options.secureCookies = true;
    running.start();
    EXPECT_NE(get("/count.asp").field("Set-Cookie").find("; Secure"), std::string::npos);
    const std::string cookie = get("/count.asp").sessionCookie();
    EXPECT_TRUE(cookie.starts_with("__Host-torvex_session=")) << cookie;
    EXPECT_EQ(get("/count.asp", cookie).body, "2");
}

TEST_F(SessionsTest, TheSessionOfANewVisitorIsStartedOnce) {
    std::atomic<int> started = 0;
    running.startSession = [&](HostContext& host) {
        ++started;
        host.session.set("count", Value(10));
        host.session.set("torvex_dns", Value(host.request.serverVariable("http_host")));
    };
    running.page("/dns.asp", [](HostContext& host) { host.response.write(host.session.text("torvex_dns")); });
    running.start();
    const RawReply first = get("/count.asp");
    EXPECT_EQ(first.body, "11");
    EXPECT_EQ(get("/count.asp", first.sessionCookie()).body, "12");
    EXPECT_EQ(get("/dns.asp", first.sessionCookie()).body, "test.example");
    EXPECT_EQ(started, 1);
}

TEST_F(SessionsTest, ASessionThatCannotBeStartedIsNotKept) {
    running.startSession = [](HostContext&) { throw std::runtime_error("no database"); };
    running.start();
    const RawReply reply = get("/count.asp");
    EXPECT_EQ(reply.status, 500);
    EXPECT_EQ(reply.sessionCookie(), "");
    EXPECT_EQ(running.server->sessionCount(), 0U);
}

TEST_F(SessionsTest, ARenewedTokenSendsANewCookie) {
    running.page("/login.asp", [](HostContext& host) { host.session.renewToken(); });
    running.start();
    const std::string before = get("/count.asp").sessionCookie();
    const std::string after = get("/login.asp", before).sessionCookie();
    EXPECT_NE(after, "");
    EXPECT_NE(after, before);
    EXPECT_EQ(get("/count.asp", after).body, "2");
    EXPECT_EQ(get("/count.asp", before).body, "1");
}

TEST_F(SessionsTest, ARequestThatWaitsBehindALoginIsAStrangersAndLeavesTheLoginItsCookie) {
    running.page("/login.asp", [this](HostContext& host) {
        gate.pass();
        host.session.set("tvx_username", Value(std::string("flora")));
        host.session.renewToken();
    });
    running.page("/who.asp", [](HostContext& host) {
        host.response.write("<" + host.session.text("tvx_username") + ">");
    });
    running.start();
    const std::string before = get("/count.asp").sessionCookie();
    RawHttpClient login = running.client();
    send(login, "/login.asp", before);
    gate.await(1);
    RawHttpClient waiting = running.client();
    send(waiting, "/who.asp", before);
    std::this_thread::sleep_for(50ms);  // so that it waits
    gate.open();
    const std::string after = login.read().sessionCookie();
    const RawReply stranger = waiting.read();
    EXPECT_EQ(stranger.body, "<>");
    EXPECT_EQ(stranger.sessionCookie(), "");
    EXPECT_EQ(get("/who.asp", after).body, "<flora>");
}

TEST_F(SessionsTest, ALoginWithoutASessionKeepsTheCookieThatItGot) {
    running.page("/login.asp", [](HostContext& host) { host.session.renewToken(); });
    running.start();
    const std::string cookie = get("/login.asp").sessionCookie();
    EXPECT_NE(cookie, "");
    EXPECT_EQ(get("/count.asp", cookie).sessionCookie(), "");
    EXPECT_EQ(get("/count.asp", cookie).body, "2");
}

TEST_F(SessionsTest, AnAbandonedSessionIsGone) {
    running.page("/logout.asp", [](HostContext& host) { host.session.abandon(); });
    running.start();
    const std::string cookie = get("/count.asp").sessionCookie();
    EXPECT_EQ(get("/logout.asp", cookie).status, 200);
    EXPECT_EQ(get("/count.asp", cookie).body, "1");
}

TEST_F(SessionsTest, RequestsOfOneSessionRunOneAtATimeInOrder) {
    running.start();
    const std::string cookie = get("/count.asp").sessionCookie();
    RawHttpClient holding = running.client();
    send(holding, "/held.asp", cookie);
    gate.await(1);
    std::vector<RawHttpClient> others;
    for (int i = 0; i < 5; ++i) {
        others.push_back(running.client());
        send(others.back(), "/count.asp", cookie);
        std::this_thread::sleep_for(20ms);  // so that they arrive in this order
    }
    gate.open();
    EXPECT_EQ(holding.read().body, "held");
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(others[static_cast<std::size_t>(i)].read().body, std::to_string(i + 2));
}

TEST_F(SessionsTest, WaitingForASessionTakesNoWorker) {
    running.options.workers = 2;
    running.start();
    const std::string cookie = get("/count.asp").sessionCookie();
    RawHttpClient holding = running.client();
    send(holding, "/held.asp", cookie);
    gate.await(1);
    std::vector<RawHttpClient> waiting;
    for (int i = 0; i < 10; ++i) {
        waiting.push_back(running.client());
        send(waiting.back(), "/count.asp", cookie);
    }
    EXPECT_EQ(get("/count.asp").body, "1");  // another visitor, on the worker that is left
    gate.open();
}

TEST_F(SessionsTest, DifferentSessionsRunInParallel) {
    running.start();
    RawHttpClient first = running.client();
    RawHttpClient second = running.client();
    send(first, "/held.asp");
    send(second, "/held.asp");
    gate.await(2);
    gate.open();
    EXPECT_EQ(first.read().body, "held");
    EXPECT_EQ(second.read().body, "held");
}

TEST_F(SessionsTest, AFullQueueIsAnsweredAtOnce) {
    running.options.workers = 1;
    running.options.mostWorkers = 1;
    running.options.queuedPages = 1;
    running.start();
    RawHttpClient runs = running.client();
    send(runs, "/held.asp");
    gate.await(1);
    RawHttpClient waits = running.client();
    send(waits, "/count.asp");
    std::this_thread::sleep_for(100ms);
    const RawReply refused = get("/count.asp");
    EXPECT_EQ(refused.status, 503);
    EXPECT_EQ(refused.field("Retry-After"), "5");
    EXPECT_EQ(get("/nothing.css").status, 404);  // what needs no worker is answered
    gate.open();
    EXPECT_EQ(runs.read().body, "held");
    EXPECT_EQ(waits.read().body, "1");
}

TEST_F(SessionsTest, AClientThatLeavesHarmsNobody) {
    running.start();
    for (int i = 0; i < 50; ++i) {
        RawHttpClient client = running.client();
        send(client, "/count.asp");
    }
    RawHttpClient holding = running.client();
    send(holding, "/held.asp");
    gate.await(1);
    { const RawHttpClient gone = std::move(holding); }
    gate.open();
    EXPECT_EQ(get("/count.asp").body, "1");
}

TEST_F(SessionsTest, StoppingWithRequestsWaitingEndsInOrder) {
    running.options.workers = 1;
    running.options.deadlines.stop = 200ms;
    running.start();
    const std::string cookie = get("/count.asp").sessionCookie();
    RawHttpClient holding = running.client();
    send(holding, "/held.asp", cookie);
    gate.await(1);
    std::vector<RawHttpClient> waiting;
    for (int i = 0; i < 6; ++i) {
        waiting.push_back(running.client());
        send(waiting.back(), "/count.asp", i % 2 == 0 ? cookie : std::string());
    }
    std::this_thread::sleep_for(50ms);
    running.stop();
    gate.open();
    running.server.reset();
}

TEST(WorkerPool, RunsJobsInTheOrderInWhichTheyCame) {
    std::vector<int> order;
    {
        WorkerPool pool(1, 100);
        std::atomic<int> done = 0;
        for (int i = 0; i < 50; ++i)
            ASSERT_TRUE(pool.submit([&, i] {
                order.push_back(i);
                ++done;
            }));
        while (done < 50) std::this_thread::sleep_for(1ms);
    }
    for (int i = 0; i < 50; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

TEST(WorkerPool, TakesOneJobOfEachOriginAfterTheOther) {
    std::string order;
    Gate gate;
    std::atomic<int> done = 0;
    WorkerPool pool(1, 100);
    ASSERT_TRUE(pool.submit([&] { gate.pass(); }));
    gate.await(1);
    for (const char c : std::string("aaaaabbc")) {
        ASSERT_TRUE(pool.submit(
            [&order, &done, c] {
                order += c;
                ++done;
            },
            static_cast<std::uint64_t>(c)));
    }
    gate.open();
    while (done < 8) std::this_thread::sleep_for(1ms);
    EXPECT_EQ(order, "abcabaaa");
}

TEST(WorkerPool, RefusesJobsWhenItIsFullOrStopped) {
    Gate gate;
    WorkerPool pool(1, 2);
    ASSERT_TRUE(pool.submit([&] { gate.pass(); }));
    gate.await(1);
    EXPECT_TRUE(pool.submit([] {}));
    EXPECT_TRUE(pool.submit([] {}));
    EXPECT_FALSE(pool.submit([] { ADD_FAILURE(); }));
    gate.open();
    pool.stop();
    EXPECT_FALSE(pool.submit([] { ADD_FAILURE(); }));
}

}  // namespace

}  // namespace torvex
