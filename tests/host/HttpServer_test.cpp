// What a client sees of the server, over real sockets.

#include "host/HttpServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/Errors.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using test::RawHttpClient;
using test::RawReply;
using test::RunningServer;
using testing::HasSubstr;
using testing::Not;
using namespace std::chrono_literals;

class HttpServerTest : public testing::Test {
  protected:
    HttpServerTest() {
        running.page("/hello.asp", [](HostContext& host) { host.response.write("Hello"); });
        running.form("/form.asp", [](HostContext& host) {
            host.response.write(host.request.item("name") + "|" +
                                host.request.serverVariable("request_method"));
        });
    }

    void start() { running.start(); }
    RawHttpClient client() { return running.client(); }
    RawReply get(std::string_view target, std::string_view lines = {}) { return client().get(target, lines); }

    RunningServer running;
};

/// What holds whatever is spoken.
class HttpServerOfEveryProtocol : public HttpServerTest, public testing::WithParamInterface<test::Protocol> {
  protected:
    HttpServerOfEveryProtocol() { running.protocol = GetParam(); }

    static bool isHttps() { return GetParam() != test::Protocol::Http1; }
    static bool isHttp2() { return GetParam() == test::Protocol::Http2; }
};

INSTANTIATE_TEST_SUITE_P(Protocols, HttpServerOfEveryProtocol, test::everyProtocol, test::nameOf);

TEST_P(HttpServerOfEveryProtocol, APageIsAnswered) {
    start();
    const RawReply reply = get("/hello.asp");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "Hello");
    EXPECT_EQ(reply.field("Content-Type"), "text/html; charset=utf-8");
    EXPECT_EQ(reply.field("Content-Length"), "5");
    EXPECT_EQ(reply.field("Date").size(), 29U);
    EXPECT_EQ(reply.field("Server"), "");
}

TEST_P(HttpServerOfEveryProtocol, APageKnowsUntilWhenItMayWork) {
    running.host.application.set("torvex_scriptTimeout_normal", 20);
    running.page("/left.asp", [](HostContext& host) {
        host.response.write(host.deadline().left() > 15s && host.deadline().left() <= 20s ? "20 s" : "?");
    });
    running.page("/mine.asp", [](HostContext& host) {
        host.scriptTimeout = 0;
        host.deadline().check();
    });
    start();
    EXPECT_EQ(get("/left.asp").body, "20 s");
    EXPECT_EQ(get("/mine.asp").status, 500);
    EXPECT_THAT(running.logged(), testing::Contains(HasSubstr("the request took longer than it may")));
}

TEST_P(HttpServerOfEveryProtocol, PathsMatchIgnoringCase) {
    start();
    EXPECT_EQ(get("/HELLO.Asp").status, 200);
}

TEST_F(HttpServerTest, OnlyTheHostsThatAreNamedAreAnswered) {
    running.options.hosts = {"www.site.test", "[::1]"};
    start();
    const auto statusFor = [&](const std::string& host) {
        return client().ask("GET /hello.asp HTTP/1.1\r\nHost: " + host + "\r\n\r\n").status;
    };
    EXPECT_EQ(statusFor("www.site.test"), 200);
    EXPECT_EQ(statusFor("WWW.site.test:8080"), 200);
    EXPECT_EQ(statusFor("[::1]:80"), 200);
    EXPECT_EQ(statusFor("stranger.test"), 421);
    EXPECT_EQ(statusFor("127.0.0.1"), 421);
    EXPECT_EQ(
        client().ask("GET http://stranger.test/hello.asp HTTP/1.1\r\nHost: www.site.test\r\n\r\n").status,
        421);
    EXPECT_EQ(client().ask("GET /hello.asp HTTP/1.0\r\n\r\n").status, 421);
}

TEST_P(HttpServerOfEveryProtocol, AHostThatIsNotAnsweredIsToldSo) {
    running.options.hosts = {"www.site.test"};
    running.page("/", [](HostContext& host) { host.response.redirect("/tvx.asp"); });
    start();
    RawHttpClient connection = client();
    const RawReply reply = connection.ask("GET / HTTP/1.1\r\nHost: stranger.test\r\n\r\n");
    EXPECT_EQ(reply.status, 421);
    EXPECT_THAT(reply.head, HasSubstr("421 Misdirected Request"));
    EXPECT_THAT(reply.body, HasSubstr("a host that this server does not answer for"));
    EXPECT_THAT(reply.head + reply.body, Not(HasSubstr("stranger.test")));
    EXPECT_EQ(reply.field("Set-Cookie"), "");
    EXPECT_EQ(connection.ask("GET /hello.asp HTTP/1.1\r\nHost: www.site.test\r\n\r\n").status, 200);
}

TEST_P(HttpServerOfEveryProtocol, APageMayTakeATextInPlaceOfAForm) {
    running.pages.push_back({"/text.asp",
                             [](HostContext& host) { host.response.write(host.request.body()); },
                             methods::form,
                             100,
                             {"application/csp-report"}});
    start();
    const auto post = [&](const std::string& type, const std::string& body) {
        return client().ask("POST /text.asp HTTP/1.1\r\nHost: a\r\nContent-Type: " + type +
                            "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    };
    EXPECT_EQ(post("Application/CSP-Report; charset=utf-8", "{\"a=b&c\"}").body, "{\"a=b&c\"}");
    EXPECT_EQ(post("application/x-www-form-urlencoded", "csp-report=x").status, 415);
    EXPECT_EQ(post("application/csp-report", std::string(101, 'x')).status, 413);
}

TEST_P(HttpServerOfEveryProtocol, AnUnknownAddressIsNotFound) {
    start();
    const RawReply reply = get("/nothing.asp");
    EXPECT_EQ(reply.status, 404);
    EXPECT_THAT(reply.body, HasSubstr("not found"));
    EXPECT_EQ(reply.field("Cache-Control"), "no-store");
}

TEST_P(HttpServerOfEveryProtocol, PipelinedRequestsAreAnsweredInOrder) {
    running.page("/slow.asp", [](HostContext& host) {
        std::this_thread::sleep_for(50ms);
        host.response.write("slow");
    });
    start();
    RawHttpClient connection = client();
    connection.send(
        "GET /slow.asp HTTP/1.1\r\nHost: a\r\n\r\nGET /hello.asp HTTP/1.1\r\nHost: a\r\n\r\n"
        "GET /nothing HTTP/1.1\r\nHost: a\r\n\r\n");
    EXPECT_EQ(connection.read().body, "slow");
    EXPECT_EQ(connection.read().body, "Hello");
    EXPECT_EQ(connection.read().status, 404);
}

TEST_F(HttpServerTest, ManyPipelinedRequestsAreAllAnswered) {
    start();
    RawHttpClient connection = client();
    std::string requests;
    for (int i = 0; i < 200; ++i) requests += "GET /nothing HTTP/1.1\r\nHost: a\r\n\r\n";
    connection.send(requests);
    for (int i = 0; i < 200; ++i) ASSERT_EQ(connection.read().status, 404) << i;
}

TEST_P(HttpServerOfEveryProtocol, AConnectionIsKeptForFurtherRequests) {
    start();
    RawHttpClient connection = client();
    EXPECT_EQ(connection.get("/hello.asp").status, 200);
    EXPECT_EQ(connection.get("/hello.asp").status, 200);
}

TEST_F(HttpServerTest, AConnectionEndsWhenTheClientAsksForIt) {
    start();
    RawHttpClient connection = client();
    EXPECT_EQ(connection.get("/hello.asp", "Connection: close\r\n").field("Connection"), "close");
    EXPECT_TRUE(connection.isClosedWithin(2s));
}

TEST_F(HttpServerTest, AnOldClientsConnectionEndsUnlessItAsksToKeepIt) {
    start();
    RawHttpClient once = client();
    EXPECT_EQ(once.ask("GET /hello.asp HTTP/1.0\r\n\r\n").status, 200);
    EXPECT_TRUE(once.isClosedWithin(2s));
    RawHttpClient kept = client();
    const RawReply reply = kept.ask("GET /hello.asp HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
    EXPECT_EQ(reply.field("Connection"), "keep-alive");
    EXPECT_EQ(kept.get("/hello.asp").status, 200);
}

TEST_P(HttpServerOfEveryProtocol, HeadGivesTheHeaderOfTheFullAnswerAndNoBody) {
    start();
    RawHttpClient connection = client();
    connection.send("HEAD /hello.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    const RawReply reply = connection.readWithoutBody();
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.field("Content-Length"), "5");
    EXPECT_EQ(connection.get("/hello.asp").status, 200);  // read as the next answer: there was no body
}

TEST_P(HttpServerOfEveryProtocol, UnknownMethodsAreNotImplemented) {
    start();
    EXPECT_EQ(client().ask("BREW /hello.asp HTTP/1.1\r\nHost: a\r\n\r\n").status, 501);
}

TEST_P(HttpServerOfEveryProtocol, KnownMethodsThatAnAddressDoesNotTakeAreRefusedWithThoseItDoes) {
    start();
    const RawReply page = client().ask("POST /hello.asp HTTP/1.1\r\nHost: a\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(page.status, 405);
    EXPECT_EQ(page.field("Allow"), "GET, HEAD");
    const RawReply form = client().ask("DELETE /form.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    EXPECT_EQ(form.status, 405);
    EXPECT_EQ(form.field("Allow"), "GET, HEAD, POST");
}

TEST_P(HttpServerOfEveryProtocol, AFormIsDecoded) {
    start();
    const RawReply reply = client().ask(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded; "
        "charset=utf-8\r\n"
        "Content-Length: 15\r\n\r\nname=M%C3%BCller");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "Mülle|POST");  // the length says where the body ends
}

TEST_P(HttpServerOfEveryProtocol, AFormInChunksIsDecoded) {
    start();
    RawHttpClient connection = client();
    const RawReply reply = connection.ask(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
        "Transfer-Encoding: chunked\r\n\r\n5\r\nname=\r\n3;x=y\r\nabc\r\n0\r\nX-Trailer: 1\r\n\r\n");
    EXPECT_EQ(reply.body, "abc|POST");
    EXPECT_EQ(connection.get("/hello.asp").status, 200);
}

TEST_F(HttpServerTest, OtherBodiesThanFormsAreRefusedUnread) {
    start();
    RawHttpClient connection = client();
    const RawReply reply = connection.ask(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/json\r\nContent-Length: "
        "1000\r\n\r\n{");
    EXPECT_EQ(reply.status, 415);
    EXPECT_EQ(reply.field("Connection"), "close");
}

TEST_P(HttpServerOfEveryProtocol, AClientThatAsksIsToldToSendItsBody) {
    start();
    RawHttpClient connection = client();
    connection.send(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
        "Content-Length: 8\r\nExpect: 100-continue\r\n\r\n");
    EXPECT_EQ(connection.readWithoutBody().status, 100);
    EXPECT_EQ(connection.ask("name=abc").body, "abc|POST");
}

TEST_P(HttpServerOfEveryProtocol, ABodyThatWouldBeRefusedIsNotAskedFor) {
    running.options.limits.body = 100;
    start();
    const RawReply reply = client().ask(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
        "Content-Length: 1000\r\nExpect: 100-continue\r\n\r\n");
    EXPECT_EQ(reply.status, 413);
}

TEST_P(HttpServerOfEveryProtocol, OtherExpectationsAreRefused) {
    start();
    EXPECT_EQ(get("/hello.asp", "Expect: miracles\r\n").status, 417);
}

TEST_P(HttpServerOfEveryProtocol, ABodyAboveTheLimitIsRefused) {
    running.options.limits.body = 100;
    start();
    const std::string head =
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n";
    EXPECT_EQ(client().ask(head + "Content-Length: 100\r\n\r\n" + std::string(100, 'a')).status, 200);
    EXPECT_EQ(client().ask(head + "Content-Length: 101\r\n\r\n" + std::string(101, 'a')).status, 413);
    EXPECT_EQ(client().ask(head + "Transfer-Encoding: chunked\r\n\r\n65\r\n" + std::string(101, 'a')).status,
              413);
}

TEST_P(HttpServerOfEveryProtocol, TheVisitorSeesTheRefusalOfALargeBodyThatIsStillBeingSent) {
    running.options.limits.body = 1000;
    start();
    const RawReply reply = client().ask(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
        "Content-Length: 150000\r\n\r\n" +
        std::string(150'000, 'a'));
    EXPECT_EQ(reply.status, 413);
    EXPECT_THAT(reply.body, HasSubstr("</html>"));
}

TEST_P(HttpServerOfEveryProtocol, ServerVariablesTellOfTheRequest) {
    running.page("/vars.asp", [](HostContext& host) {
        for (const char* name :
             {"http_host", "https", "http_referer", "http_user_agent", "script_name", "remote_addr",
              "request_method", "query_string", "server_name", "server_protocol", "http_x_a_b"})
            host.response.write(host.request.serverVariable(name) + "\n");
    });
    start();
    const RawReply reply = client().ask(
        "GET /Vars.asp?a=%41 HTTP/1.1\r\nHost: www.example.org:8080\r\nReferer: http://x/\r\n"
        "User-Agent: probe\r\nX-A-B: 1\r\nX-A-B: 2\r\nX_Forged: 3\r\n\r\n");
    EXPECT_EQ(reply.body, "www.example.org:8080\n" + std::string(isHttps() ? "on" : "off") +
                              "\nhttp://x/\nprobe\n/"
                              "Vars.asp\n127.0.0.1\nGET\na=%41\nwww.example.org\n" +
                              std::string(isHttp2() ? "HTTP/2.0" : "HTTP/1.1") + "\n1, 2\n");
}

TEST_P(HttpServerOfEveryProtocol, ABrokenEscapeInTheQueryStaysAsItStands) {
    running.page("/query.asp", [](HostContext& host) { host.response.write(host.request.queryString("a")); });
    start();
    EXPECT_EQ(get("/query.asp?a=100%zz").body, "100%zz");
}

TEST_P(HttpServerOfEveryProtocol, TextIsSentInTheCharsetOfTheResponse) {
    running.page("/latin.asp", [](HostContext& host) {
        host.response.charset = "iso-8859-1";
        host.response.write("é€");
    });
    start();
    const RawReply reply = get("/latin.asp");
    EXPECT_EQ(reply.field("Content-Type"), "text/html; charset=iso-8859-1");
    EXPECT_EQ(reply.body, "\xe9&#8364;");
}

TEST_P(HttpServerOfEveryProtocol, EndingTheResponseIsANormalEnd) {
    running.page("/end.asp", [](HostContext& host) {
        host.response.write("before");
        host.response.end();
    });
    start();
    const RawReply reply = get("/end.asp");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "before");
    EXPECT_TRUE(running.logged().empty());
}

TEST_P(HttpServerOfEveryProtocol, AFailureIsLoggedOnceAndShownAsANumberOnly) {
    running.startSession = [](HostContext& host) {
        host.session.set("torvex_username", Value(std::string("anna")));
    };
    running.page("/broken.asp",
                 [](HostContext&) { throw Error("Error in function getPage!\r\nno such table: SECRETS"); });
    start();
    const RawReply reply = get("/broken.asp?id=7&password=hush");
    EXPECT_EQ(reply.status, 500);
    EXPECT_EQ(reply.field("Cache-Control"), "no-store");
    EXPECT_THAT(reply.body, Not(HasSubstr("SECRETS")));
    const std::vector<std::string> log = running.logged();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_THAT(log[0], HasSubstr("/broken.asp?id=7"));
    EXPECT_THAT(log[0], HasSubstr("anna"));
    EXPECT_THAT(log[0], HasSubstr("getPage! | no such table: SECRETS"));
    EXPECT_THAT(log[0], Not(HasSubstr("hush")));
    const std::size_t code = reply.body.find("<code>") + 6;
    EXPECT_THAT(log[0], HasSubstr(reply.body.substr(code, reply.body.find("</code>") - code)));
}

TEST_P(HttpServerOfEveryProtocol, WhatAVisitorSendsIsCutAndEscapedInTheLog) {
    running.form("/broken.asp", [](HostContext& host) {
        throw Error("Error in function getLoginURL !\r\nthere is no login target \"" +
                    host.request.item("target") + "\"");
    });
    start();
    const std::string body = "target=%C2%9B%E2%80%AE%FF" + std::string(1'000'000, 'x');
    for (int i = 0; i < 30; ++i) {
        const RawReply reply = client().ask(
            "POST /broken.asp?p%61ssword=hush&" + std::string(1000, 'q') +
            " HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\nContent-Length: " +
            std::to_string(body.size()) + "\r\n\r\n" + body);
        EXPECT_EQ(reply.status, 500);
    }
    const std::vector<std::string> log = running.logged();
    EXPECT_EQ(log.size(), 10U);
    for (const std::string& line : log) {
        EXPECT_LT(line.size(), 1000U);
        EXPECT_THAT(line, HasSubstr("login target \"\\u009b\\u202e\ufffdxxx"));
        EXPECT_THAT(line, HasSubstr("?p%61ssword=...&qqq"));
        EXPECT_THAT(line, Not(HasSubstr("hush")));
    }
}

TEST_P(HttpServerOfEveryProtocol, ALineBreakCannotGetIntoAHeaderField) {
    running.page("/go.asp", [](HostContext& host) { host.response.redirect("/a\r\nSet-Cookie: b=c"); });
    start();
    const RawReply reply = get("/go.asp");
    EXPECT_EQ(reply.status, 302);
    EXPECT_EQ(reply.field("Location"), "/aSet-Cookie:%20b=c");
    EXPECT_TRUE(reply.fields("Set-Cookie").empty());
}

TEST_F(HttpServerTest, ASlowHeaderIsCutOffByItsTotalTime) {
    running.options.deadlines.header = 300ms;
    start();
    RawHttpClient connection = client();
    const auto begin = std::chrono::steady_clock::now();
    connection.drip("GET /hello.asp HTTP/1.1\r\nHost: test.example\r\nX-Long: " + std::string(500, 'x'),
                    20ms);
    EXPECT_EQ(connection.read().status, 408);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    EXPECT_TRUE(connection.isClosedWithin(5s));
}

TEST_P(HttpServerOfEveryProtocol, ASlowBodyIsCutOffByItsTotalTime) {
    running.options.deadlines.body = 300ms;
    start();
    RawHttpClient connection = client();
    connection.send(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
        "Content-Length: 500\r\n\r\n");
    connection.drip(std::string(500, 'x'), 20ms);
    EXPECT_EQ(connection.read().status, 408);
}

TEST_P(HttpServerOfEveryProtocol, AnIdleConnectionIsClosedInSilence) {
    running.options.deadlines.idle = 200ms;
    start();
    RawHttpClient connection = client();
    EXPECT_EQ(connection.get("/hello.asp").status, 200);
    EXPECT_TRUE(connection.isClosedWithin(3s));
}

TEST_P(HttpServerOfEveryProtocol, AConnectionThatNeverAsksIsClosedInSilence) {
    running.options.deadlines.header = 200ms;
    start();
    EXPECT_TRUE(client().isClosedWithin(3s));
}

TEST_P(HttpServerOfEveryProtocol, AReaderWhoStopsIsCutOff) {
    running.options.deadlines.write = 300ms;
    running.page("/huge.asp",
                 [](HostContext& host) { host.response.write(std::string(32 * 1024 * 1024, 'x')); });
    start();
    RawHttpClient connection = client();
    connection.send("GET /huge.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    std::this_thread::sleep_for(1500ms);
    EXPECT_LT(connection.readAll().size(), 32U * 1024 * 1024);
}

TEST_F(HttpServerTest, ConnectionsAboveTheLimitAreToldToComeBack) {
    std::atomic<bool> isOver = false;
    std::atomic<int> begun = 0;
    running.page("/busy.asp", [&](HostContext&) {
        ++begun;
        while (!isOver) std::this_thread::sleep_for(1ms);
    });
    running.options.connections = 2;
    start();
    RawHttpClient first = client();
    RawHttpClient second = client();
    first.send("GET /busy.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    second.send("GET /busy.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    while (begun < 2) std::this_thread::sleep_for(1ms);
    const RawReply third = client().read();
    EXPECT_EQ(third.status, 503);
    EXPECT_NE(third.field("Retry-After"), "");
    isOver = true;
    EXPECT_EQ(first.read().status, 200);
    EXPECT_EQ(second.read().status, 200);
}

TEST_F(HttpServerTest, ATakenAddressIsReported) {
    start();
    ServerOptions options;
    options.port = running.server->port();
    RunningServer other;
    other.options = options;
    EXPECT_THROW(other.start(), Error);
}

TEST_P(HttpServerOfEveryProtocol, StoppingLetsRunningRequestsFinish) {
    std::atomic<bool> hasBegun = false;
    running.page("/slow.asp", [&](HostContext& host) {
        hasBegun = true;
        std::this_thread::sleep_for(300ms);
        host.response.write("done");
    });
    start();
    RawHttpClient connection = client();
    RawHttpClient idle = client();
    EXPECT_EQ(idle.get("/hello.asp").status, 200);
    connection.send("GET /slow.asp HTTP/1.1\r\nHost: a\r\n\r\n");
    while (!hasBegun) std::this_thread::sleep_for(1ms);
    running.server->stop();
    EXPECT_TRUE(idle.isClosedWithin(200ms));
    const RawReply reply = connection.read();
    EXPECT_EQ(reply.body, "done");
    EXPECT_EQ(reply.field("Connection"), isHttp2() ? "" : "close");
    running.stop();
}

TEST_P(HttpServerOfEveryProtocol, StoppingDoesNotWaitBeyondItsDeadline) {
    running.options.deadlines.stop = 200ms;
    running.options.deadlines.body = 60s;
    start();
    RawHttpClient connection = client();
    connection.send(
        "POST /form.asp HTTP/1.1\r\nHost: a\r\nContent-Type: application/x-www-form-urlencoded\r\n"
        "Content-Length: 500\r\n\r\n");
    std::this_thread::sleep_for(50ms);
    const auto begin = std::chrono::steady_clock::now();
    running.stop();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
}

}  // namespace

}  // namespace torvex
