// What a request of HTTP/2 is to pages, and what becomes of their answers.

#include <gmock/gmock.h>

#include "host/http2/Http2Test.h"
#include "platform/Request.h"
#include "support/RunningServer.h"

namespace torvex::test {

namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

constexpr int endHeaders = NGHTTP2_FLAG_END_HEADERS;

class Http2Requests : public Http2Test {
  protected:
    void showVariable(const std::string& name) {
        running.page("/shown.asp",
                     [name](HostContext& host) { host.response.write(host.request.serverVariable(name)); });
    }
    RawReply askAs(const Fields& fields) {
        Http2Client one = client();
        one.headers(1, fields);
        return one.reply(1);
    }
};

TEST_F(Http2Requests, PagesAreToldTheProtocol) {
    showVariable("server_protocol");
    start();
    EXPECT_EQ(askAs(get("/shown.asp")).body, "HTTP/2.0");
}

TEST_F(Http2Requests, CookiesThatComeOneByOneAreOneField) {
    showVariable("http_cookie");
    start();
    EXPECT_EQ(askAs(get("/shown.asp", {{"cookie", "a=1"}, {"cookie", "b=2; c=3"}})).body, "a=1; b=2; c=3");
}

TEST_F(Http2Requests, CookiesThatComeOneByOneAreNoCrowd) {
    running.options.limits.fields = 10;
    showVariable("http_cookie");
    start();
    Fields many;
    for (int i = 0; i < 50; ++i) many.emplace_back("cookie", "a=1");
    EXPECT_EQ(askAs(get("/shown.asp", many)).status, 200);
}

TEST_F(Http2Requests, ASessionIsKept) {
    running.page("/count.asp", [](HostContext& host) {
        host.session.set("count", host.session.number("count") + 1);
        host.response.write(std::to_string(static_cast<int>(host.session.number("count"))));
    });
    start();
    Http2Client one = client();
    const std::string cookie = one.ask("/count.asp").sessionCookie();
    EXPECT_THAT(cookie, HasSubstr("__Host-"));
    EXPECT_EQ(one.ask("/count.asp", {{"cookie", "x=1"}, {"cookie", cookie}}).body, "2");
}

TEST_F(Http2Requests, TheAuthorityIsTheHost) {
    showVariable("http_host");
    start();
    EXPECT_EQ(askAs({{":method", "GET"},
                     {":scheme", "https"},
                     {":authority", "www.site.test:8443"},
                     {":path", "/shown.asp"}})
                  .body,
              "www.site.test:8443");
    EXPECT_EQ(
        askAs({{":method", "GET"}, {":scheme", "https"}, {":path", "/shown.asp"}, {"host", "b.test"}}).body,
        "b.test");
    EXPECT_EQ(askAs(get("/shown.asp", {{"host", "A"}})).body, "A");
}

TEST_F(Http2Requests, AnAuthorityAndAnotherHostContradictEachOther) {
    start();
    EXPECT_EQ(askAs(get("/hello.asp", {{"host", "b"}})).status, 400);
}

TEST_F(Http2Requests, AnAuthorityIsAHostAndNoPerson) {
    start();
    Fields fields = get("/hello.asp");
    fields[2].second = "anna@a";
    EXPECT_EQ(askAs(fields).status, 400);
}

TEST_F(Http2Requests, OtherHostsAreNotAnswered) {
    running.options.hosts = {"www.site.test"};
    start();
    EXPECT_EQ(askAs(get("/hello.asp")).status, 421);
}

TEST_F(Http2Requests, NobodyIsLedOnToOtherServers) {
    start();
    EXPECT_EQ(askAs({{":method", "CONNECT"}, {":authority", "other.test:443"}}).status, 501);
}

TEST_F(Http2Requests, TrailersAreTakenAndDropped) {
    showVariable("http_x_after");
    running.pages.back().methods = methods::form;
    start();
    Http2Client one = client();
    one.headers(1, post("/shown.asp"), endHeaders);
    one.body(1, "a=1", false);
    one.headers(1, {{"x-after", "1"}});
    const RawReply reply = one.reply(1);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "");
}

TEST_F(Http2Requests, AWillToTakeTrailersIsNoHarm) {
    start();
    EXPECT_EQ(askAs(get("/hello.asp", {{"te", "trailers"}})).body, "Hello");
}

TEST_F(Http2Requests, AClientThatAsksIsToldToSendItsBody) {
    start();
    Http2Client one = client();
    one.headers(1, post("/form.asp", {{"expect", "100-continue"}}), endHeaders);
    EXPECT_EQ(one.reply(1).status, 100);
    one.body(1, "name=abc");
    const RawReply reply = one.reply(1);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "abc");
}

TEST_F(Http2Requests, ARefusalOfABodyEndsTheStreamWithoutAnError) {
    running.options.limits.body = 1000;
    start();
    Http2Client one = client();
    one.headers(1, post("/form.asp", {{"content-length", "500000"}}), endHeaders);
    EXPECT_EQ(one.reply(1).status, 413);
    EXPECT_EQ(one.await(NGHTTP2_RST_STREAM, 1).code(), NGHTTP2_NO_ERROR);
    one.headers(3, get("/hello.asp"));
    EXPECT_EQ(one.reply(3).body, "Hello");
}

TEST_F(Http2Requests, ABodyThatTurnsOutTooLongIsRefusedAndItsConnectionGoesOn) {
    running.options.limits.body = 1000;
    start();
    Http2Client one = client();
    one.headers(1, post("/form.asp"), endHeaders);
    one.body(1, std::string(60'000, 'a'), false);
    EXPECT_EQ(one.reply(1).status, 413);
    one.headers(3, get("/hello.asp"));
    EXPECT_EQ(one.reply(3).body, "Hello");
}

TEST_F(Http2Requests, AHeaderThatIsTooLargeIsRefusedAndItsConnectionGoesOn) {
    start();
    Http2Client one = client();
    EXPECT_EQ(
        one.ask("/hello.asp", {{"x-long", std::string(8000, 'x')}, {"x-longer", std::string(8400, 'x')}})
            .status,
        431);
    EXPECT_EQ(one.ask("/hello.asp").body, "Hello");
}

TEST_F(Http2Requests, TooManyFieldsAreRefused) {
    start();
    Fields many;
    for (int i = 0; i < 101; ++i) many.emplace_back("x", "1");
    EXPECT_EQ(askAs(get("/hello.asp", many)).status, 431);
}

TEST_F(Http2Requests, ALongTargetIsRefused) {
    start();
    EXPECT_EQ(askAs(get("/hello.asp?" + std::string(9000, 'x'))).status, 414);
}

TEST_F(Http2Requests, AnAnswerSaysNothingOfTheConnection) {
    running.page("/old.asp", [](HostContext& host) {
        host.response.addHeader("Connection", "close");
        host.response.addHeader("Keep-Alive", "timeout=1");
        host.response.addHeader("X-Own", "1");
    });
    start();
    const RawReply reply = askAs(get("/old.asp"));
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.head, Not(HasSubstr("connection: ")));
    EXPECT_THAT(reply.head, Not(HasSubstr("keep-alive: ")));
    EXPECT_THAT(reply.head, HasSubstr("x-own: 1\r\n"));
    EXPECT_THAT(reply.head, HasSubstr("x-content-type-options: nosniff\r\n"));
    EXPECT_THAT(reply.head, HasSubstr("date: "));
}

TEST_F(Http2Requests, AFileThatTheClientHasIsNotSentAgain) {
    start();
    Http2Client one = client();
    const std::string tag = one.ask("/a.txt").field("ETag");
    const RawReply reply = one.ask("/a.txt", {{"if-none-match", tag}});
    EXPECT_EQ(reply.status, 304);
    EXPECT_EQ(reply.body, "");
    EXPECT_EQ(reply.field("Content-Length"), "");
}

TEST_F(Http2Requests, SmallAndLargeFilesArriveWhole) {
    std::string bytes;
    for (int i = 0; bytes.size() < 3'000'000; ++i) bytes += std::to_string(i);
    folder.write("big.zip", bytes);
    start();
    Http2Client one = client();
    EXPECT_EQ(one.ask("/a.txt").body, "a file");
    EXPECT_TRUE(one.ask("/big.zip").body == bytes);
}

TEST_F(Http2Requests, APartOfAFileIsSent) {
    folder.write("big.zip", std::string(200'000, 'a') + "here" + std::string(200'000, 'b'));
    start();
    const RawReply reply = askAs(get("/big.zip", {{"range", "bytes=200000-200003"}}));
    EXPECT_EQ(reply.status, 206);
    EXPECT_EQ(reply.body, "here");
}

TEST_F(Http2Requests, AHeaderAloneIsSentWithoutABody) {
    start();
    Fields fields = get("/a.txt");
    fields[0].second = "HEAD";
    const RawReply reply = askAs(fields);
    EXPECT_EQ(reply.field("Content-Length"), "6");
    EXPECT_EQ(reply.body, "");
}

TEST_F(Http2Requests, AShortAnswerIsOnePiece) {
    start();
    Http2Client one = client();
    one.ask("/a.txt");
    one.headers(3, get("/a.txt"));
    const auto bytes = one.line().receive(5s);
    ASSERT_TRUE(bytes);
    // Both frames are in what one record of TLS brought.
    EXPECT_EQ((*bytes)[3], NGHTTP2_HEADERS);
    EXPECT_TRUE(bytes->ends_with("a file"));
}

TEST_F(Http2Requests, OneThatWaitsHoldsUpNoOther) {
    start();
    Http2Client one = client();
    one.headers(1, get("/held.asp"));
    gate.await(1);
    one.headers(3, get("/a.txt"));
    EXPECT_EQ(one.reply(3).body, "a file");
    gate.open();
    EXPECT_EQ(one.reply(1).body, "held");
}

TEST_F(Http2Requests, AShortAnswerDoesNotWaitBehindALongOne) {
    folder.write("big.zip", std::string(30'000'000, 'x'));
    start();
    Http2Client one(running.server->port());
    one.greet(setting(NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE, 100'000'000));
    one.headers(1, get("/big.zip", {{"priority", "u=0"}}));
    one.headers(3, get("/hello.asp", {{"priority", "u=7"}}));
    std::size_t ahead = 0;
    while (const auto frame = one.next()) {
        if (frame->id == 3 && frame->isLast()) break;
        ahead += frame->payload.size();
    }
    EXPECT_LT(ahead, 20'000'000U);
}

TEST_F(Http2Requests, AnswersOfManyStreamsComeWhole) {
    const std::string text(50'000, 'x');
    folder.write("big.txt", text);
    start();
    Http2Client one = client();
    for (std::int32_t id = 1; id < 100; id += 2) one.headers(id, get("/big.txt"));
    for (std::int32_t id = 1; id < 100; id += 2) EXPECT_EQ(one.reply(id).body.size(), text.size()) << id;
}

TEST_F(Http2Requests, WhatCameOfABodyWhoseSenderIsGoneIsHandedOn) {
    struct Counting final : BodySink {
        bool take(std::string_view bytes) override { return count += bytes.size(), true; }
        std::string receipt() const override { return std::to_string(count); }
        std::size_t count = 0;
    };
    std::atomic<int> receipts = 0;
    PageRoute route{
        .path = "/sink",
        .handler =
            [&](HostContext& host) { receipts += std::stoi(host.request.serverVariable("body_receipt")); },
        .methods = methods::form};
    route.receiver = [](const std::string&, const FieldOf&) {
        return BodyReception{.sink = std::make_shared<Counting>(), .limit = 1'000'000};
    };
    running.pages.push_back(route);
    start();
    {
        Http2Client one = client();
        one.headers(1, post("/sink", {{"content-length", "1000"}}), endHeaders);
        one.body(1, "abcdef", false);
        one.frame(NGHTTP2_RST_STREAM, 0, 1, number(NGHTTP2_CANCEL));
        one.headers(3, post("/sink", {{"content-length", "1000"}}), endHeaders);
        one.body(3, "abc", false);
        EXPECT_EQ(one.ask("/hello.asp").status, 0);  // stream 1 again: ends the connection
    }
    for (int i = 0; i < 200 && receipts < 9; ++i) std::this_thread::sleep_for(20ms);
    EXPECT_EQ(receipts, 9);
}

TEST_F(Http2Requests, TheVisitorOfAProxyIsFoundForEachRequest) {
    running.options.trustedProxies = {"127.0.0.1"};
    showVariable("remote_addr");
    start();
    Http2Client one = client();
    EXPECT_EQ(one.ask("/shown.asp", {{"x-forwarded-for", "192.0.2.7"}}).body, "192.0.2.7");
    EXPECT_EQ(one.ask("/shown.asp", {{"x-forwarded-for", "192.0.2.8"}}).body, "192.0.2.8");
    EXPECT_EQ(one.ask("/shown.asp").body, "127.0.0.1");
}

}  // namespace

}  // namespace torvex::test
