#include "host/http/RequestParser.h"

#include <gtest/gtest.h>
#include <vector>

namespace torvex {

namespace {

using State = RequestParser::State;

constexpr RequestLimits limits{.requestLine = 200, .header = 400, .fields = 10, .body = 50};

/// Feeds in pieces of the given size, the way bytes come from a network, through header and body.
State feedAll(RequestParser& parser, std::string bytes, std::size_t piece) {
    std::string held;
    while (true) {
        const std::size_t consumed = parser.feed(held);
        held.erase(0, consumed);
        if (parser.state() == State::HeaderDone) {
            parser.readBody(limits.body);
        } else if (parser.state() == State::Refused || parser.state() == State::Complete) {
            return parser.state();
        } else if (consumed == 0) {
            if (bytes.empty()) return parser.state();
            held += bytes.substr(0, piece);
            bytes.erase(0, piece);
        }
    }
}

/// 0 for a request that is taken, -1 for one that isn't complete, else the refusal.
int verdict(const std::string& bytes, std::size_t piece) {
    RequestParser parser(limits);
    const State state = feedAll(parser, bytes, piece);
    if (state == State::Complete) return 0;
    return state == State::Refused ? parser.refusal() : -1;
}

struct Case {
    const char* name;
    std::string bytes;
    int verdict;
};

std::string field(const std::string& line) {
    return "GET / HTTP/1.1\r\nHost: a\r\n" + line + "\r\n\r\n";
}
std::string post(const std::string& lines, const std::string& body) {
    return "POST / HTTP/1.1\r\nHost: a\r\n" + lines + "\r\n" + body;
}

const std::vector<Case> cases{
    {"plain", "GET / HTTP/1.1\r\nHost: a\r\n\r\n", 0},
    {"old version", "GET / HTTP/1.0\r\n\r\n", 0},
    {"one empty line ahead", "\r\nGET / HTTP/1.1\r\nHost: a\r\n\r\n", 0},
    {"endless empty lines", "\r\n\r\n\r\n\r\n\r\n\r\n", 400},
    {"incomplete", "GET / HTTP/1.1\r\nHost: a\r\n", -1},
    {"unknown method is parsed", "BREW / HTTP/1.1\r\n\r\n", 0},
    {"no version", "GET /\r\n\r\n", 400},
    {"version 2", "GET / HTTP/2.0\r\n\r\n", 400},
    {"version 0.9", "GET / HTTP/0.9\r\n\r\n", 400},
    {"not HTTP", "GET / FTP/1.1\r\n\r\n", 400},
    {"no target", "GET  HTTP/1.1\r\n\r\n", 400},
    {"blank in target", "GET /a b HTTP/1.1\r\n\r\n", 400},
    {"two blanks", "GET  / HTTP/1.1\r\n\r\n", 400},
    {"tab for blank", "GET\t/ HTTP/1.1\r\n\r\n", 400},
    {"control character in target", "GET /\x01 HTTP/1.1\r\n\r\n", 400},
    {"bare line feeds", "GET / HTTP/1.1\nHost: a\n\n", 400},
    {"one bare line feed", "GET / HTTP/1.1\r\nHost: a\nX: b\r\n\r\n", 400},
    {"bare carriage return", "GET / HTTP/1.1\rHost: a\r\n\r\n", 400},
    {"carriage return in a value", field("X: a\rb"), 400},
    {"NUL in a value", field(std::string("X: a\0b", 6)), 400},
    {"NUL in a name", field(std::string("X\0: b", 5)), 400},
    {"folded line", "GET / HTTP/1.1\r\nHost: a\r\nX: a\r\n b\r\n\r\n", 400},
    {"folded line with tab", "GET / HTTP/1.1\r\nHost: a\r\nX: a\r\n\tb\r\n\r\n", 400},
    {"folded first line", "GET / HTTP/1.1\r\n Host: a\r\n\r\n", 400},
    {"blank before the colon", field("X : a"), 400},
    {"no colon", field("X"), 400},
    {"empty name", field(": a"), 400},
    {"blank in the name", field("X Y: a"), 400},
    {"empty value", field("X:"), 0},
    {"value of Latin letters", field("X: \xe9"), 0},
    {"encrypted bytes on the plain port", std::string("\x16\x03\x01\x02\x00", 5), 400},
    {"line of the limit", "GET /" + std::string(186, 'a') + " HTTP/1.1\r\n\r\n", 0},
    {"line above the limit", "GET /" + std::string(187, 'a') + " HTTP/1.1\r\n\r\n", 414},
    {"endless line", "GET /" + std::string(5000, 'a'), 414},
    {"header of the limit", "GET / HTTP/1.1\r\nX: " + std::string(377, 'a') + "\r\n\r\n", 0},
    {"header above the limit", "GET / HTTP/1.1\r\nX: " + std::string(378, 'a') + "\r\n\r\n", 431},
    {"endless header", "GET / HTTP/1.1\r\nX: " + std::string(5000, 'a'), 431},
    {"many fields",
     "GET / HTTP/1.1\r\nA: 1\r\nA: 2\r\nA: 3\r\nA: 4\r\nA: 5\r\nA: 6\r\nA: 7\r\nA: 8\r\nA: 9\r\nA: "
     "10\r\n\r\n",
     0},
    {"too many fields",
     "GET / HTTP/1.1\r\nA: 1\r\nA: 2\r\nA: 3\r\nA: 4\r\nA: 5\r\nA: 6\r\nA: 7\r\nA: 8\r\nA: 9\r\nA: 10\r\nA: "
     "11\r\n\r\n",
     431},
    {"body", post("Content-Length: 3\r\n", "abc"), 0},
    {"body not complete", post("Content-Length: 3\r\n", "ab"), -1},
    {"body of the limit", post("Content-Length: 50\r\n", std::string(50, 'a')), 0},
    {"body above the limit", post("Content-Length: 51\r\n", ""), 413},
    {"length beyond all numbers", post("Content-Length: 99999999999999999999999\r\n", ""), 400},
    {"negative length", post("Content-Length: -1\r\n", ""), 400},
    {"signed length", post("Content-Length: +3\r\n", "abc"), 400},
    {"hexadecimal length", post("Content-Length: 0x3\r\n", "abc"), 400},
    {"empty length", post("Content-Length:\r\n", ""), 400},
    {"length as a list", post("Content-Length: 3, 3\r\n", "abc"), 400},
    {"doubled length", post("Content-Length: 3\r\nContent-Length: 3\r\n", "abc"), 400},
    {"two lengths", post("Content-Length: 3\r\nContent-Length: 4\r\n", "abcd"), 400},
    {"length and chunks", post("Content-Length: 3\r\nTransfer-Encoding: chunked\r\n", "0\r\n\r\n"), 400},
    {"chunks and length", post("Transfer-Encoding: chunked\r\nContent-Length: 3\r\n", "0\r\n\r\n"), 400},
    {"chunks", post("Transfer-Encoding: chunked\r\n", "3\r\nabc\r\n0\r\n\r\n"), 0},
    {"chunks in capitals", post("Transfer-Encoding: Chunked\r\n", "A\r\n0123456789\r\n0\r\n\r\n"), 0},
    {"chunks to an old client", "POST / HTTP/1.0\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n", 400},
    {"doubled encoding", post("Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked\r\n", "0\r\n\r\n"),
     400},
    {"unknown encoding", post("Transfer-Encoding: gzip\r\n", ""), 501},
    {"encoding ahead of chunks", post("Transfer-Encoding: gzip, chunked\r\n", "0\r\n\r\n"), 501},
    {"disguised chunks", post("Transfer-Encoding: xchunked\r\n", ""), 501},
    {"chunks above the limit", post("Transfer-Encoding: chunked\r\n", "33\r\n" + std::string(51, 'a')), 413},
    {"chunks above the limit together",
     post("Transfer-Encoding: chunked\r\n",
          "20\r\n" + std::string(32, 'a') + "\r\n20\r\n" + std::string(32, 'a')),
     413},
    {"chunk without a number", post("Transfer-Encoding: chunked\r\n", "x\r\nabc\r\n0\r\n\r\n"), 400},
    {"chunk longer than it says", post("Transfer-Encoding: chunked\r\n", "2\r\nabc\r\n0\r\n\r\n"), 400},
    {"endless chunk line", post("Transfer-Encoding: chunked\r\n", "1;" + std::string(5000, 'a')), 400},
};

TEST(RequestParser, TakesWhatIsWellFormedAndRefusesAllElse) {
    for (const Case& one : cases) EXPECT_EQ(verdict(one.bytes, 100'000), one.verdict) << one.name;
}

TEST(RequestParser, TheVerdictDoesNotDependOnHowTheBytesCome) {
    for (const Case& one : cases)
        for (const std::size_t piece : {1U, 2U, 3U, 7U})
            EXPECT_EQ(verdict(one.bytes, piece), one.verdict) << one.name;
}

TEST(RequestParser, GivesTheHeader) {
    RequestParser parser(limits);
    parser.feed("HEAD /a?b HTTP/1.1\r\nHost:  a.example \r\nX: 1\r\nx: 2\r\n\r\n");
    ASSERT_EQ(parser.state(), State::HeaderDone);
    EXPECT_EQ(parser.head().method, Method::Head);
    EXPECT_EQ(parser.head().target, "/a?b");
    EXPECT_EQ(parser.head().field("host"), "a.example");
    EXPECT_EQ(parser.head().count("X"), 2U);
    EXPECT_TRUE(parser.head().keepAlive);
    EXPECT_FALSE(parser.head().hasBody);
}

TEST(RequestParser, WhereNoBodyIsTakenNoneIsRead) {
    for (const char* lines :
         {"Content-Length: 1\r\n", "Content-Length: 999999999999\r\n", "Transfer-Encoding: chunked\r\n"}) {
        RequestParser parser(limits);
        parser.feed(post(lines, ""));
        ASSERT_EQ(parser.state(), State::HeaderDone) << lines;
        parser.readBody(0);
        EXPECT_EQ(parser.state(), State::Refused) << lines;
        EXPECT_EQ(parser.refusal(), 413) << lines;
    }
    RequestParser parser(limits);
    parser.feed(post("Content-Length: 0\r\n", ""));
    parser.readBody(0);
    EXPECT_EQ(parser.state(), State::Complete);
}

TEST(RequestParser, ABodyTakesNoMoreMemoryThanItsLength) {
    RequestParser parser(limits);
    const std::size_t length = 150'001;
    parser.feed("POST / HTTP/1.1\r\nHost: a\r\nContent-Length: " + std::to_string(length) + "\r\n\r\n");
    parser.readBody(length);
    EXPECT_LE(parser.body().capacity(), 65'536U);
    for (std::size_t sent = 0; sent < length; sent += 1000)
        parser.feed(std::string(std::min<std::size_t>(1000, length - sent), 'a'));
    ASSERT_EQ(parser.state(), State::Complete);
    EXPECT_EQ(parser.body().size(), length);
    EXPECT_LE(parser.body().capacity(), length);
}

TEST(RequestParser, LeavesTheNextRequestAlone) {
    RequestParser parser(limits);
    const std::string first = "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 2\r\n\r\n";
    const std::string bytes = first + "abGET / HTTP/1.1\r\n\r\n";
    EXPECT_EQ(parser.feed(bytes), first.size());
    parser.readBody(limits.body);
    EXPECT_EQ(parser.feed(std::string_view(bytes).substr(first.size())), 2U);
    EXPECT_EQ(parser.state(), State::Complete);
    EXPECT_EQ(parser.body(), "ab");
}

TEST(RequestParser, ATrailerAddsNothingToTheHeader) {
    RequestParser parser(limits);
    const std::string bytes =
        post("Transfer-Encoding: chunked\r\n", "0\r\nHost: evil\r\nCookie: a=b\r\n\r\n");
    ASSERT_EQ(feedAll(parser, bytes, 1000), State::Complete);
    EXPECT_EQ(parser.head().count("Host"), 1U);
    EXPECT_EQ(parser.head().count("Cookie"), 0U);
}

TEST(RequestParser, IsReadyForTheNextRequestAfterReset) {
    RequestParser parser(limits);
    ASSERT_EQ(feedAll(parser, post("Content-Length: 3\r\n", "abc"), 1000), State::Complete);
    parser.reset();
    ASSERT_EQ(feedAll(parser, "GET /b HTTP/1.0\r\n\r\n", 1000), State::Complete);
    EXPECT_EQ(parser.head().target, "/b");
    EXPECT_TRUE(parser.head().fields.empty());
    EXPECT_FALSE(parser.head().keepAlive);
    EXPECT_EQ(parser.body(), "");
}

}  // namespace

}  // namespace torvex
