#include "host/TrustedProxies.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "platform/net/Peer.h"
#include "support/Gate.h"
#include "support/RunningServer.h"

namespace torvex {
namespace {

using boost::asio::ip::make_address;
using test::RawHttpClient;
using test::RawReply;
using testing::Contains;
using testing::HasSubstr;
using namespace std::chrono_literals;
using Fields = decltype(RequestHead::fields);

class TrustedProxiesTest : public testing::Test {
  protected:
    Client visitor(const char* connected, Fields fields) const {
        RequestHead head;
        head.fields = std::move(fields);
        return proxies.visitorOf(head, {make_address(connected), false});
    }
    std::string address(const char* connected, Fields fields) const {
        return textOf(visitor(connected, std::move(fields)).address);
    }
    bool isTls(Fields fields) const { return visitor("10.0.0.1", std::move(fields)).isTls; }

    TrustedProxies proxies{{"10.0.0.0/8", "2001:db8::/32"}};
};

TEST_F(TrustedProxiesTest, OnlyTheirAddressesAreTrusted) {
    EXPECT_TRUE(proxies.contains(make_address("10.1.2.3")));
    EXPECT_TRUE(proxies.contains(make_address("::ffff:10.1.2.3")));
    EXPECT_FALSE(proxies.contains(make_address("11.1.2.3")));
    EXPECT_FALSE(TrustedProxies({}).contains(make_address("10.1.2.3")));
}

TEST_F(TrustedProxiesTest, AStrangersWordIsNotTaken) {
    EXPECT_EQ(address("203.0.113.9", {{"X-Forwarded-For", "198.51.100.1"}}), "203.0.113.9");
}

TEST_F(TrustedProxiesTest, AProxysIs) {
    EXPECT_EQ(address("10.0.0.1", {{"x-forwarded-for", "198.51.100.1"}}), "198.51.100.1");
    EXPECT_EQ(address("::ffff:10.0.0.1", {{"X-Forwarded-For", "2001:DB9::0:1"}}), "2001:db9::1");
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "::ffff:198.51.100.1"}}), "198.51.100.1");
}

TEST_F(TrustedProxiesTest, TheLastAddressThatIsNoProxysIsTheVisitors) {
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "1.1.1.1, 198.51.100.1, 10.0.0.2,2001:db8::3"}}),
              "198.51.100.1");
}

TEST_F(TrustedProxiesTest, SeveralLinesAreOneList) {
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "1.1.1.1"},
                                   {"Accept", "*/*"},
                                   {"X-FORWARDED-FOR", "198.51.100.1"},
                                   {"X-Forwarded-For", "10.0.0.2"}}),
              "198.51.100.1");
}

TEST_F(TrustedProxiesTest, PortsAndBracketsAreReadOver) {
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "198.51.100.1:4711"}}), "198.51.100.1");
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "[2001:db9::1]:4711"}}), "2001:db9::1");
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "[2001:db9::1]"}}), "2001:db9::1");
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "1.1.1.1, [2001:db8::7]:1 , 10.0.0.2:65535"}}),
              "1.1.1.1");
}

TEST_F(TrustedProxiesTest, WhatIsNoAddressIsNotBelieved) {
    for (const auto* garbage :
         {"", " ", "unknown", "198.51.100", "198.51.100.1:", "198.51.100.1:x", "198.51.100.1:123456", "[::1",
          "[198.51.100.1]", "[2001:db9::1]x", "198.51.100.1 1.1.1.1", "fe80::1%eth0", "\"198.51.100.1\"",
          "::1:::", "198.51.100.1,", "1.1.1.1,,"}) {
        EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", garbage}}), "10.0.0.1") << garbage;
    }
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", std::string_view("1.1.1.1, x, 10.0.0.2")}}),
              "10.0.0.2");
}

TEST_F(TrustedProxiesTest, WhatStandsAheadOfTheVisitorDoesNotMatter) {
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "' or 1=1 --, <script>, 10.0.0.9, 198.51.100.1"}}),
              "198.51.100.1");
}

TEST_F(TrustedProxiesTest, AProxyMayAskForItself) {
    EXPECT_EQ(address("10.0.0.1", {}), "10.0.0.1");
    EXPECT_EQ(address("10.0.0.1", {{"X-Forwarded-For", "10.0.0.3, 10.0.0.2"}}), "10.0.0.3");
}

TEST_F(TrustedProxiesTest, TheSchemeIsTheNearestProxys) {
    EXPECT_TRUE(isTls({{"X-Forwarded-Proto", "https"}}));
    EXPECT_TRUE(isTls({{"x-forwarded-proto", " HTTPS "}}));
    EXPECT_TRUE(isTls({{"X-Forwarded-Proto", "http"}, {"X-Forwarded-Proto", "https"}}));
    EXPECT_FALSE(isTls({{"X-Forwarded-Proto", "https, http"}}));
    EXPECT_FALSE(isTls({{"X-Forwarded-Proto", "https"}, {"X-Forwarded-Proto", "http"}}));
    for (const auto* other : {"", "http", "httpss", "https://", "on", "https;", "https,"})
        EXPECT_FALSE(isTls({{"X-Forwarded-Proto", other}})) << other;
    EXPECT_FALSE(isTls({}));
}

// Over the line.

class BehindProxyTest : public testing::Test {
  protected:
    BehindProxyTest() {
        running.options.loops = 1;
        running.options.workers = 8;
        running.options.trustedProxies = {"127.0.0.9"};
        running.page("/who.asp", [](HostContext& host) {
            host.response.write(host.request.serverVariable("remote_addr") + " " +
                                host.request.serverVariable("REMOTE_ADDR") + " " +
                                host.request.serverVariable("https"));
        });
        running.page("/held.asp", [this](HostContext&) { gate.pass(); });
        running.form("/form.asp", [](HostContext& host) { host.response.write("read"); });
    }
    ~BehindProxyTest() override { gate.open(); }

    RawHttpClient proxy() { return running.clientFrom("127.0.0.9"); }
    static std::string ask(const std::string& target, const std::string& address) {
        return "GET " + target + " HTTP/1.1\r\nHost: a\r\nX-Forwarded-For: " + address + "\r\n\r\n";
    }

    test::Gate gate;
    test::RunningServer running;
};

TEST_F(BehindProxyTest, APageSeesTheVisitor) {
    running.start();
    EXPECT_EQ(proxy()
                  .get("/who.asp", "X-Forwarded-For: 1.1.1.1, 198.51.100.7\r\nX-Forwarded-Proto: https\r\n")
                  .body,
              "198.51.100.7 198.51.100.7 on");
}

TEST_F(BehindProxyTest, OneConnectionServesManyVisitors) {
    running.start();
    RawHttpClient connection = proxy();
    EXPECT_EQ(connection.ask(ask("/who.asp", "198.51.100.7")).body, "198.51.100.7 198.51.100.7 off");
    EXPECT_EQ(connection.ask(ask("/who.asp", "198.51.100.8")).body, "198.51.100.8 198.51.100.8 off");
    EXPECT_EQ(connection.get("/who.asp").body, "127.0.0.9 127.0.0.9 off");
}

TEST_F(BehindProxyTest, NobodyElseIsBelieved) {
    running.start();
    EXPECT_EQ(running.client()
                  .get("/who.asp", "X-Forwarded-For: 198.51.100.7\r\nX-Forwarded-Proto: https\r\n")
                  .body,
              "127.0.0.1 127.0.0.1 off");
}

TEST_F(BehindProxyTest, CookiesOfAVisitorWhoSpeaksHttpsToTheProxyAreSecure) {
    running.page("/kept.asp", [](HostContext& host) { host.session.set("kept", true); });
    running.start();
    const std::string cookie = proxy().get("/kept.asp", "X-Forwarded-Proto: https\r\n").field("Set-Cookie");
    EXPECT_THAT(cookie, testing::StartsWith("__Host-torvex_session="));
    EXPECT_THAT(cookie, testing::EndsWith("; Path=/; HttpOnly; SameSite=Lax; Secure"));
    EXPECT_THAT(proxy().get("/kept.asp").field("Set-Cookie"), testing::Not(HasSubstr("Secure")));
}

TEST_F(BehindProxyTest, AProxyHasMoreConnectionsThanOneVisitor) {
    running.options.connectionsOfOne = 2;
    running.start();
    std::vector<RawHttpClient> connections;
    for (int i = 0; i < 6; ++i) connections.push_back(proxy());
    for (std::size_t i = 0; i < connections.size(); ++i)
        connections[i].send(ask("/held.asp", "198.51.100." + std::to_string(i)));
    gate.await(6);
    gate.open();
    for (RawHttpClient& connection : connections) EXPECT_EQ(connection.read().status, 200);
}

TEST_F(BehindProxyTest, AVisitorBehindItHasNoMoreRequestsThanConnectionsElsewhere) {
    running.options.connectionsOfOne = 2;
    running.start();
    RawHttpClient one = proxy();
    RawHttpClient two = proxy();
    RawHttpClient three = proxy();
    one.send(ask("/held.asp", "198.51.100.7"));
    two.send(ask("/held.asp", "198.51.100.7"));
    gate.await(2);
    EXPECT_EQ(three.ask(ask("/who.asp", "198.51.100.7")).status, 503);
    EXPECT_EQ(three.ask(ask("/who.asp", "198.51.100.8")).status, 200);
    EXPECT_THAT(running.logged(), Contains(HasSubstr("connections_per_address")));
    gate.open();
    EXPECT_EQ(one.read().status, 200);
    EXPECT_EQ(two.read().status, 200);
    EXPECT_EQ(three.ask(ask("/who.asp", "198.51.100.7")).status, 200);
}

TEST_F(BehindProxyTest, AVisitorsPlaceIsFreeWhenTheProxyLeaves) {
    running.options.connectionsOfOne = 1;
    running.start();
    {
        RawHttpClient gone = proxy();
        gone.send(
            "POST /form.asp HTTP/1.1\r\nHost: a\r\nX-Forwarded-For: 198.51.100.7\r\nContent-Type: "
            "application/x-www-form-urlencoded\r\nContent-Length: 10\r\n\r\na=");
        RawHttpClient refused = proxy();
        RawReply reply;
        for (int i = 0; i < 200 && reply.status != 503; ++i) {
            reply = refused.ask(ask("/who.asp", "198.51.100.7"));
            std::this_thread::sleep_for(10ms);
        }
        EXPECT_EQ(reply.status, 503);
    }
    RawReply reply;
    for (int i = 0; i < 200 && reply.status != 200; ++i) {
        reply = proxy().ask(ask("/who.asp", "198.51.100.7"));
        std::this_thread::sleep_for(10ms);
    }
    EXPECT_EQ(reply.status, 200);
}

TEST_F(BehindProxyTest, BodiesCountForTheVisitor) {
    running.options.limits.body = 100'000;
    running.options.limits.bodies = 250'000;
    running.start();
    const auto part = [](const std::string& address) {
        return "POST /form.asp HTTP/1.1\r\nHost: a\r\nX-Forwarded-For: " + address +
               "\r\nContent-Type: application/x-www-form-urlencoded\r\nContent-Length: 95000\r\n\r\n" +
               std::string(90'000, 'a');
    };
    RawHttpClient first = proxy();
    first.send(part("198.51.100.7"));
    std::this_thread::sleep_for(200ms);
    EXPECT_EQ(proxy().ask(part("198.51.100.7")).status, 503);
    EXPECT_EQ(proxy().ask(part("198.51.100.8") + std::string(5000, 'a')).status, 200);
    EXPECT_EQ(first.ask(std::string(5000, 'a')).status, 200);
}

}  // namespace
}  // namespace torvex
