// What visitors who mean harm, or have bad lines, can hold of the server's connections and memory.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <sys/socket.h>
#include <thread>

#include "host/HttpServer.h"
#include "support/Gate.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using test::Gate;
using test::RawHttpClient;
using test::RawReply;
using test::RunningServer;
using testing::HasSubstr;
using namespace std::chrono_literals;

std::string post(std::string_view path, std::size_t length) {
    return "POST " + std::string(path) +
           " HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
           std::to_string(length) + "\r\n\r\n";
}

std::string formOf(int fields) {
    std::string form = "a=1";
    for (int i = 1; i < fields; ++i) form += "&a=1";
    return form;
}

/// All but the last 5,000 bytes.
std::string mostOfAForm() {
    return post("/form.asp", 95'000) + std::string(90'000, 'a');
}

class ConnectionsTest : public testing::Test {
  protected:
    ConnectionsTest() {
        running.options.loops = 1;
        running.options.rootFolder = folder.path();
        folder.write("a.txt", "x");
        running.page("/hello.asp", [](HostContext& host) { host.response.write("Hello"); });
        running.page("/held.asp", [this](HostContext&) { gate.pass(); });
        running.form("/form.asp", [](HostContext& host) { host.response.write(host.request.item("last")); });
    }

    ~ConnectionsTest() override { gate.open(); }

    void start() { running.start(); }
    void startWithRoomFor(std::size_t connections) {
        running.options.connections = connections;
        start();
    }
    static void askForHeld(RawHttpClient& client) {
        client.send("GET /held.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    }
    /// Both wait for pages, until they are released.
    void occupy(RawHttpClient& first, RawHttpClient& second) {
        askForHeld(first);
        askForHeld(second);
        gate.await(2);
    }
    void release(RawHttpClient& first, RawHttpClient& second) {
        gate.open();
        EXPECT_EQ(first.read().status, 200);
        EXPECT_EQ(second.read().status, 200);
    }
    /// That one who sends so slowly isn't heard out.
    static void expectCutOff(RawHttpClient& client, const std::string& dripped) {
        const auto begin = std::chrono::steady_clock::now();
        client.drip(dripped, 20ms);
        EXPECT_EQ(client.read().status, 408);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    }
    RawHttpClient from(const std::string& address) { return running.clientFrom(address); }
    void expectAnswer(RawHttpClient& client) { EXPECT_EQ(client.get("/hello.asp").status, 200); }
    static void expectTurnedAway(RawHttpClient client) {
        const RawReply reply = client.read();
        EXPECT_EQ(reply.status, 503);
        EXPECT_NE(reply.field("Retry-After"), "");
    }

    Gate gate;
    test::PublicFolder folder;
    RunningServer running;
};

/// What holds whatever is spoken.
class ConnectionsOfEveryProtocol : public ConnectionsTest,
                                   public testing::WithParamInterface<test::Protocol> {
  protected:
    ConnectionsOfEveryProtocol() { running.protocol = GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Protocols, ConnectionsOfEveryProtocol, test::everyProtocol, test::nameOf);

TEST_P(ConnectionsOfEveryProtocol, TheIdlestConnectionGoesWhenAllAreTaken) {
    startWithRoomFor(2);
    RawHttpClient first = from("127.0.0.2");
    RawHttpClient second = from("127.0.0.3");
    expectAnswer(first);
    expectAnswer(second);
    expectAnswer(first);  // so the second is the idlest
    RawHttpClient third = from("127.0.0.4");
    expectAnswer(third);
    EXPECT_TRUE(second.isClosedWithin(2s));
    expectAnswer(first);
}

TEST_F(ConnectionsTest, OneThatIsKeptGoesBeforeOneInTheMiddleOfARequest) {
    startWithRoomFor(2);
    RawHttpClient slow = from("127.0.0.2");
    slow.send("GET /hello.asp HTTP/1.1\r\n");
    std::this_thread::sleep_for(1200ms);
    RawHttpClient kept = from("127.0.0.3");
    expectAnswer(kept);
    RawHttpClient third = from("127.0.0.4");
    expectAnswer(third);
    EXPECT_TRUE(kept.isClosedWithin(2s));
    EXPECT_EQ(slow.ask("Host: a\r\n\r\n").status, 200);
}

TEST_F(ConnectionsTest, OneThatHasStoppedInTheMiddleOfARequestGoesWhenNoneIsKept) {
    startWithRoomFor(2);
    RawHttpClient silent = from("127.0.0.2");
    RawHttpClient stopped = from("127.0.0.3");
    silent.send("GET /hello.asp HTTP/1.1\r\n");
    stopped.send(post("/form.asp", 100) + "a=1");
    std::this_thread::sleep_for(1200ms);
    RawHttpClient third = from("127.0.0.4");
    expectAnswer(third);
    EXPECT_TRUE(silent.isClosedWithin(2s));
}

TEST_F(ConnectionsTest, WhileAllAreBusyAFurtherOneIsToldToComeBack) {
    startWithRoomFor(2);
    RawHttpClient first = from("127.0.0.2");
    RawHttpClient second = from("127.0.0.3");
    occupy(first, second);
    expectTurnedAway(from("127.0.0.4"));
    release(first, second);
}

TEST_F(ConnectionsTest, AnAddressHasNoMoreThanItsShare) {
    running.options.connectionsOfOne = 2;
    start();
    RawHttpClient first = from("127.0.0.2");
    RawHttpClient second = from("127.0.0.2");
    occupy(first, second);
    expectTurnedAway(from("127.0.0.2"));
    expectTurnedAway(from("127.0.0.2"));
    RawHttpClient other = from("127.0.0.3");
    expectAnswer(other);
    const auto log = running.logged();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_THAT(log[0], HasSubstr("127.0.0.2 has 2 connections"));
    release(first, second);
}

TEST_P(ConnectionsOfEveryProtocol, OfAnAddressWithItsShareTheIdlestGoesAndNobodyElses) {
    running.options.connectionsOfOne = 2;
    start();
    RawHttpClient other = from("127.0.0.3");
    expectAnswer(other);
    RawHttpClient first = from("127.0.0.2");
    RawHttpClient second = from("127.0.0.2");
    expectAnswer(first);
    expectAnswer(second);
    RawHttpClient third = from("127.0.0.2");
    expectAnswer(third);
    EXPECT_TRUE(first.isClosedWithin(2s));
    expectAnswer(second);
    expectAnswer(other);
}

TEST_P(ConnectionsOfEveryProtocol, WhatEndsIsNoLongerCounted) {
    running.options.connectionsOfOne = 2;
    running.options.connections = 3;
    start();
    for (int i = 0; i < 20; ++i) {
        RawHttpClient client = from("127.0.0.2");
        EXPECT_EQ(client.get("/hello.asp", "Connection: close\r\n").status, 200) << i;
    }
}

TEST_P(ConnectionsOfEveryProtocol, PagesOfOneAddressDontWaitBehindAllThoseOfAnother) {
    running.options.workers = 1;
    running.options.mostWorkers = 1;
    std::mutex mutex;
    std::string order;
    running.page("/noted.asp", [&](HostContext& host) {
        const std::scoped_lock guard(mutex);
        order += host.request.serverVariable("remote_addr").back();
    });
    start();
    RawHttpClient blocking = from("127.0.0.9");
    askForHeld(blocking);
    gate.await(1);
    std::vector<RawHttpClient> many;
    for (int i = 0; i < 20; ++i) many.push_back(from("127.0.0.2"));
    for (auto& client : many) client.send("GET /noted.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    std::this_thread::sleep_for(200ms);
    RawHttpClient other = from("127.0.0.3");
    other.send("GET /noted.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    std::this_thread::sleep_for(200ms);
    gate.open();
    EXPECT_EQ(other.read().status, 200);
    for (auto& client : many) EXPECT_EQ(client.read().status, 200);
    EXPECT_LE(order.find('3'), 1U) << order;
}

TEST_F(ConnectionsTest, AHeaderBelowTheLowestSpeedIsCutOff) {
    running.options.speed = {1000, 200ms};
    start();
    RawHttpClient client = running.client();
    expectCutOff(client, "GET /hello.asp HTTP/1.1\r\nHost: a\r\nX: " + std::string(2000, 'x'));
}

TEST_P(ConnectionsOfEveryProtocol, ABodyBelowTheLowestSpeedIsCutOff) {
    running.options.speed = {1000, 200ms};
    start();
    RawHttpClient client = running.client();
    client.send(post("/form.asp", 5000));
    expectCutOff(client, std::string(5000, 'x'));
}

TEST_P(ConnectionsOfEveryProtocol, OneThatConnectsAheadOfItsRequestIsNotSlow) {
    running.options.speed = {100'000, 100ms};
    start();
    RawHttpClient client = running.client();
    std::this_thread::sleep_for(500ms);
    expectAnswer(client);
}

TEST_P(ConnectionsOfEveryProtocol, AReaderBelowTheLowestSpeedIsCutOff) {
    running.options.speed = {100'000'000, 300ms};
    folder.write("big.zip", std::string(40'000'000, 'x'));
    start();
    RawHttpClient client = running.client();
    client.send("GET /big.zip HTTP/1.1\r\nHost: a\r\n\r\n");
    std::this_thread::sleep_for(2500ms);
    EXPECT_LT(client.readAll().size(), 40'000'000U);
}

TEST_F(ConnectionsTest, AReaderAboveItGetsAllHoweverLongThatTakes) {
    running.options.speed = {1000, 200ms};
    running.options.deadlines.write = 500ms;
    folder.write("big.zip", std::string(20'000'000, 'x'));
    start();
    RawHttpClient client = running.client();
    client.send("GET /big.zip HTTP/1.1\r\nHost: a\r\n\r\n");
    std::size_t received = 0;
    std::string space(500'000, ' ');
    for (int pause = 0; received < 20'000'000U; pause = 40) {
        std::this_thread::sleep_for(std::chrono::milliseconds(pause));
        const ssize_t count = ::recv(client.descriptor(), space.data(), space.size(), 0);
        if (count <= 0) break;
        received += static_cast<std::size_t>(count);
    }
    EXPECT_GE(received, 20'000'000U);
}

TEST_F(ConnectionsTest, WhatIsNoPostToAPageBringsNoBody) {
    running.guards.push_back(
        {"/guarded/", [] { return true; }, [](HostContext&, std::string_view) { return true; }});
    start();
    for (const char* target : {"/a.txt", "/nothing.txt", "/guarded/a.txt", "/hello.asp", "/form.asp"}) {
        for (const char* lines : {"Content-Length: 2000000\r\n", "Transfer-Encoding: chunked\r\n"}) {
            RawHttpClient client = running.client();
            const RawReply reply = client.get(target, lines);
            EXPECT_EQ(reply.status, 413) << target;
            EXPECT_EQ(reply.field("Connection"), "close");
        }
    }
    RawHttpClient client = running.client();
    EXPECT_EQ(client.get("/a.txt", "Content-Length: 0\r\n").status, 200);
    EXPECT_EQ(client.get("/a.txt").status, 200);
}

TEST_P(ConnectionsOfEveryProtocol, APageMayTakeLessThanOthers) {
    running.pages.push_back({"/small.asp", [](HostContext&) {}, methods::form, 100});
    start();
    EXPECT_EQ(running.client().ask(post("/small.asp", 100) + std::string(100, 'a')).status, 200);
    EXPECT_EQ(running.client().ask(post("/small.asp", 101)).status, 413);
    EXPECT_EQ(running.client().ask(post("/form.asp", 101) + std::string(101, 'a')).status, 200);
}

TEST_P(ConnectionsOfEveryProtocol, AFormHasNoMoreFieldsThanItMay) {
    start();
    const std::string most = formOf(999) + "&last=here";
    EXPECT_EQ(running.client().ask(post("/form.asp", most.size()) + most).body, "here");
    EXPECT_EQ(running.client().ask(post("/form.asp", most.size() + 1) + most + "&").body, "here");
    const std::string more = formOf(1000) + "&last=here";
    RawHttpClient client = running.client();
    const RawReply refused = client.ask(post("/form.asp", more.size()) + more);
    EXPECT_EQ(refused.status, 413);
    EXPECT_THAT(refused.body, HasSubstr("Too much was sent"));
    expectAnswer(client);
}

TEST_P(ConnectionsOfEveryProtocol, BodiesOfOneAddressTakeNoMoreThanItsShare) {
    running.options.limits.body = 100'000;
    running.options.limits.bodies = 250'000;
    start();
    const std::string part = mostOfAForm();
    RawHttpClient first = from("127.0.0.2");
    first.send(part);
    std::this_thread::sleep_for(200ms);
    const RawReply refused = from("127.0.0.2").ask(part);
    EXPECT_EQ(refused.status, 503);
    EXPECT_NE(refused.field("Retry-After"), "");
    RawHttpClient other = from("127.0.0.3");
    EXPECT_EQ(other.ask(part + std::string(5000, 'a')).status, 200);
    EXPECT_EQ(first.ask(std::string(5000, 'a')).status, 200);
}

TEST_P(ConnectionsOfEveryProtocol, AllBodiesTogetherTakeNoMoreThanTheyMay) {
    running.options.limits.body = 100'000;
    running.options.limits.bodies = 200'000;
    start();
    const std::string part = mostOfAForm();
    {
        RawHttpClient first = from("127.0.0.2");
        RawHttpClient second = from("127.0.0.3");
        first.send(part);
        second.send(part);
        std::this_thread::sleep_for(200ms);
        EXPECT_EQ(from("127.0.0.4").ask(part).status, 503);
        RawHttpClient small = from("127.0.0.4");
        EXPECT_EQ(small.ask(post("/form.asp", 10) + "last=12345").body, "12345");
    }
    std::this_thread::sleep_for(200ms);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(from("127.0.0.4").ask(part + std::string(5000, 'a')).status, 200) << i;
    EXPECT_EQ(running.logged().size(), 1U);
}

}  // namespace

}  // namespace torvex
