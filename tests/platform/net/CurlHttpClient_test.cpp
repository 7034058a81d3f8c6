#include "platform/net/CurlHttpClient.h"

#include <cstring>
#include <gtest/gtest.h>
#include <netinet/in.h>

#include "platform/Errors.h"
#include "platform/net/PublicAddress.h"
#include "support/FeedServer.h"

namespace torvex {
namespace {

using namespace std::chrono_literals;
using test::FeedServer;

HttpLimits quick() {
    HttpLimits limits;
    limits.step = 150ms;
    limits.total = 600ms;
    limits.bodyBytes = 1u << 20;
    return limits;
}

HttpLimits upTo(std::size_t bodyBytes) {
    HttpLimits limits;
    limits.bodyBytes = bodyBytes;
    return limits;
}

std::string failureOf(HttpClient& client, const std::string& url) {
    try {
        client.get(url);
    } catch (const Error& error) {
        return error.what();
    }
    return "no error";
}

/// A server, and a client with the usual limits.
class CurlHttpClientTest : public testing::Test {
  protected:
    HttpClient::Answer get() { return client.get(server.url("/a")); }
    std::string failure() { return failureOf(client, server.url("/a")); }
    std::string failureWithin(const HttpLimits& limits) {
        CurlHttpClient limited(limits);
        return failureOf(limited, server.url("/a"));
    }

    FeedServer server;
    CurlHttpClient client;
};

TEST_F(CurlHttpClientTest, GivesStatusTextAndBody) {
    server.answer("/a", "200 All Well", "Content-Type: text/plain; charset=utf-8\r\n", "caf\u00e9");
    const auto answer = get();
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.statusText, "All Well");
    EXPECT_EQ(answer.body, "caf\u00e9");
    EXPECT_EQ(answer.contentType, "text/plain; charset=utf-8");
}

TEST_F(CurlHttpClientTest, AnErrorStatusIsAnAnswer) {
    server.answer("/a", "503 Down <now>", "", "sorry");
    const auto answer = get();
    EXPECT_EQ(answer.status, 503);
    EXPECT_EQ(answer.statusText, "Down <now>");
    EXPECT_EQ(answer.body, "sorry");
}

TEST_F(CurlHttpClientTest, AStatusLineWithoutTextHasNone) {
    server.answer("/a", "404", "", "");
    EXPECT_EQ(get().statusText, "");
}

TEST_F(CurlHttpClientTest, SaysWhoItIsAndNothingElse) {
    server.answer("/a", "200 OK", "Set-Cookie: a=b\r\n", "");
    get();
    get();
    EXPECT_NE(server.lastRequest().find("User-Agent: Torvex\r\n"), std::string::npos);
    EXPECT_EQ(server.lastRequest().find("Cookie"), std::string::npos);
}

TEST_F(CurlHttpClientTest, DecodesByTheCharsetOfTheAnswer) {
    server.answer("/a", "200 OK", "Content-Type: text/html; charset=\"ISO-8859-1\"\r\n", "caf\xE9");
    const auto answer = get();
    EXPECT_EQ(answer.body, "caf\u00e9");
    EXPECT_EQ(answer.bytes, "caf\xE9");
}

TEST_F(CurlHttpClientTest, AWrongCharsetStillGivesValidText) {
    server.answer("/a", "200 OK", "Content-Type: text/html; charset=utf-8\r\n", "caf\xE9!");
    EXPECT_EQ(get().body, "caf\uFFFD!");
}

TEST_F(CurlHttpClientTest, AnUnknownCharsetIsGuessed) {
    server.answer("/a", "200 OK", "Content-Type: text/html; charset=nonsense\r\n", "caf\xE9");
    server.answer("/b", "200 OK", "Content-Type: text/html; charset=nonsense\r\n", "caf\u00e9");
    EXPECT_EQ(get().body, "caf\u00e9");
    EXPECT_EQ(client.get(server.url("/b")).body, "caf\u00e9");
}

TEST_F(CurlHttpClientTest, EncodesWhatAnAddressCannotHold) {
    server.answer("/\u00e9 a", "200 OK", "", "");
    client.get(server.url("/\u00e9 a?q=\u00fc\r\nX: y&[_]=%2F"));
    EXPECT_EQ(server.targets(), std::vector<std::string>{"/%C3%A9%20a?q=%C3%BC%0D%0AX:%20y&[_]=%2F"});
}

TEST_F(CurlHttpClientTest, FollowsRedirects) {
    server.answer("/a", "302 Found", "Location: /b\r\n", "gone");
    server.answer("/b", "200 OK", "", "here");
    const auto answer = get();
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.statusText, "OK");
    EXPECT_EQ(answer.body, "here");
}

TEST_F(CurlHttpClientTest, StopsAtRedirectsForEver) {
    server.answer("/a", "302 Found", "Location: /a\r\n", "");
    EXPECT_EQ(failure(), "more than 10 redirects");
    EXPECT_EQ(server.targets().size(), 11u);
}

TEST_F(CurlHttpClientTest, RefusesAllButHttpAndHttps) {
    const std::string refused = "only http and https addresses can be fetched";
    for (const char* url : {"file:///etc/passwd", "ftp://127.0.0.1/", "gopher://127.0.0.1/", "127.0.0.1/a",
                            "/etc/passwd", "", "javascript:1"}) {
        EXPECT_EQ(failureOf(client, url), refused) << url;
    }
}

TEST_F(CurlHttpClientTest, RefusesRedirectsToFiles) {
    server.answer("/a", "302 Found", "Location: file:///etc/passwd\r\n", "");
    EXPECT_EQ(failure(), "only http and https addresses can be fetched");
}

TEST_F(CurlHttpClientTest, RefusesABrokenAddress) {
    EXPECT_EQ(failureOf(client, "http://"), "the address is not valid");
    EXPECT_EQ(failureOf(client, "http://127.0.0.1:99999/"), "the address is not valid");
}

TEST_F(CurlHttpClientTest, SaysThatNobodyListens) {
    std::string url;
    {
        FeedServer gone;
        url = gone.url("/");
    }
    EXPECT_EQ(failureOf(client, url), "the server could not be reached");
}

TEST_F(CurlHttpClientTest, GivesUpOnAServerThatKeepsSilent) {
    server.at("/a", [](FeedServer::Peer& peer) { peer.waitForClose(); });
    EXPECT_EQ(failureWithin(quick()), "the server took too long to answer");
}

TEST_F(CurlHttpClientTest, GivesUpOnAnAnswerThatStops) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nbegin");
        peer.waitForClose();
    });
    EXPECT_EQ(failureWithin(quick()), "the server took too long to answer");
}

TEST_F(CurlHttpClientTest, WaitsForAnAnswerThatGetsOn) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
        for (int piece = 0; piece < 5; ++piece) {
            std::this_thread::sleep_for(60ms);
            peer.send("x");
        }
    });
    HttpLimits limits;
    limits.step = 250ms;
    EXPECT_EQ(CurlHttpClient(limits).get(server.url("/a")).body, "xxxxx");
}

TEST_F(CurlHttpClientTest, GivesUpOnAnAnswerThatDripsForEver) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\n\r\n");
        peer.sendForEver("x", 20ms);
    });
    EXPECT_EQ(failureWithin(quick()), "the server took too long to answer");
}

TEST_F(CurlHttpClientTest, CutsOffAnEndlessAnswer) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\n\r\n");
        peer.sendForEver(std::string(65536, 'x'));
    });
    EXPECT_EQ(failureWithin(upTo(1u << 20)), "the answer is larger than 1 MB");
}

TEST_F(CurlHttpClientTest, CutsOffAHugeAnswerAtTheUsualLimit) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\nContent-Length: 52428800\r\n\r\n");
        peer.sendForEver(std::string(65536, 'x'));
    });
    EXPECT_EQ(failure(), "the answer is larger than 8 MB");
}

TEST_F(CurlHttpClientTest, TakesAnAnswerOfExactlyTheLimit) {
    server.answer("/a", "200 OK", "", std::string(100, 'x'));
    EXPECT_EQ(CurlHttpClient(upTo(100)).get(server.url("/a")).body.size(), 100u);
    EXPECT_EQ(failureWithin(upTo(99)), "the answer is larger than 99 bytes");
}

TEST_F(CurlHttpClientTest, CutsOffAnEndlessRedirect) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 302 Found\r\nLocation: /b\r\nContent-Length: 9999999999\r\n\r\n");
        peer.sendForEver(std::string(65536, 'x'));
    });
    HttpLimits limits = upTo(1u << 20);
    limits.total = 5s;
    EXPECT_EQ(failureWithin(limits), "the answer is larger than 1 MB");
}

TEST_F(CurlHttpClientTest, CutsOffAnEndlessHeader) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\n");
        peer.sendForEver("X-Filler: " + std::string(500, 'x') + "\r\n");
    });
    EXPECT_EQ(failure(), "the answer's header is too long");
}

TEST_F(CurlHttpClientTest, SaysThatAnAnswerBrokeOff) {
    server.at("/a", [](FeedServer::Peer& peer) {
        peer.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf of it");
    });
    EXPECT_EQ(failure(), "the answer broke off");
}

TEST_F(CurlHttpClientTest, SaysThatThereWasNoAnswer) {
    server.at("/a", [](FeedServer::Peer&) {});
    EXPECT_EQ(failure(), "the server gave no answer");
}

TEST_F(CurlHttpClientTest, RefusesWhatIsNotHttp) {
    server.at("/a", [](FeedServer::Peer& peer) { peer.send("220 mail.example ready\r\n"); });
    EXPECT_NE(failure(), "no error");
}

HttpLimits publicOnly() {
    HttpLimits limits = quick();
    limits.mayReach = isPublicAddress;
    return limits;
}

TEST_F(CurlHttpClientTest, ReachesNoPrivateAddress) {
    server.answer("/a", "200 OK", "", "secret");
    CurlHttpClient outside(publicOnly());
    const std::string port = server.url("").substr(std::string("http://127.0.0.1").size());
    for (const char* name : {"127.0.0.1", "localhost", "127.1", "0x7f.1", "2130706433", "0.0.0.0", "[::1]",
                             "[::ffff:127.0.0.1]", "[::]"}) {
        EXPECT_EQ(failureOf(outside, "http://" + std::string(name) + port + "/a"),
                  "the address is not a public one")
            << name;
    }
    EXPECT_TRUE(server.targets().empty());
}

int allowedPort = 0;

bool isOfAllowedPort(const sockaddr& address) {
    sockaddr_in place{};
    std::memcpy(&place, &address, sizeof place);
    return ntohs(place.sin_port) == allowedPort;
}

TEST_F(CurlHttpClientTest, ARedirectReachesNoMoreThanTheFirstAddress) {
    FeedServer inner;
    inner.answer("/secret", "200 OK", "", "secret");
    FeedServer outer;
    outer.answer("/a", "302 Found", "Location: " + inner.url("/secret") + "\r\n", "");
    outer.answer("/b", "302 Found", "Location: /c\r\n", "");
    outer.answer("/c", "200 OK", "", "fine");
    HttpLimits limits = quick();
    limits.mayReach = isOfAllowedPort;
    allowedPort = std::stoi(outer.url("").substr(std::string("http://127.0.0.1:").size()));
    CurlHttpClient limited(limits);
    EXPECT_EQ(limited.get(outer.url("/b")).body, "fine");
    EXPECT_EQ(failureOf(limited, outer.url("/a")), "the address is not a public one");
    EXPECT_TRUE(inner.targets().empty());
}

TEST_F(CurlHttpClientTest, SaysThatItIsAFetch) {
    server.answer("/a", "200 OK", "", "");
    CurlHttpClient().get(server.url("/a"));
    EXPECT_NE(server.lastRequest().find("CDN-Loop: torvex\r\n"), std::string::npos);
}

TEST_F(CurlHttpClientTest, GivesUpAtTheDeadline) {
    server.at("/a", [](FeedServer::Peer& peer) { peer.waitForClose(); });
    const auto begin = Deadline::Clock::now();
    EXPECT_THROW(CurlHttpClient().get(server.url("/a"), Deadline::in(150ms)), Error);
    EXPECT_LT(Deadline::Clock::now() - begin, 2s);
}

TEST_F(CurlHttpClientTest, TellsHowLongAnAnswerMayBeKept) {
    server.answer("/a", "200 OK", "Cache-Control: public\r\nCache-Control: max-age=60\r\nAge: 10\r\n", "");
    server.answer("/b", "200 OK", "Cache-Control: max-age=60\r\nSet-Cookie: a=b\r\n", "");
    server.answer("/c", "302 Found", "Location: /d\r\nCache-Control: max-age=60\r\n", "");
    server.answer("/d", "200 OK", "", "");
    EXPECT_EQ(get().freshness.fresh, 50s);
    EXPECT_EQ(client.get(server.url("/b")).freshness.fresh, 0s);
    EXPECT_EQ(client.get(server.url("/c")).freshness.fresh, 0s);
}

TEST_F(CurlHttpClientTest, AsksTheProxy) {
    FeedServer proxy;
    proxy.answer("http://feed.invalid/a", "200 OK", "", "by proxy");
    CurlHttpClient behind({}, proxy.url(""));
    EXPECT_EQ(behind.get("http://feed.invalid/a").body, "by proxy");
}

TEST_F(CurlHttpClientTest, ServesManyThreads) {
    server.answer("/a", "200 OK", "", "fine");
    std::atomic<int> good = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&] {
            for (int n = 0; n < 5; ++n) good += get().body == "fine" ? 1 : 0;
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(good, 40);
}

}  // namespace
}  // namespace torvex
