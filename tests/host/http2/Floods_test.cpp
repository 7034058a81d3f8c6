// What somebody who means harm can do with frames, and how long the server puts up with it.

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

#include "host/http2/Http2Test.h"
#include "support/RunningServer.h"

namespace torvex::test {

namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::HasSubstr;
using testing::SizeIs;

constexpr int endHeaders = NGHTTP2_FLAG_END_HEADERS;

/// Of this process, which holds the server.
std::size_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

/// How often this process has a file of the name open.
std::size_t openFiles(const std::string& name) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry.path(), gone).filename() == name) ++count;
    }
    return count;
}

class Http2Floods : public Http2Test {
  protected:
    /// That the client is sent away for it, with one line in the log, while others are answered and memory stays.
    void expectSentAway(Http2Client& flooding, const std::string& complaint) {
        EXPECT_EQ(flooding.goodbye(), NGHTTP2_ENHANCE_YOUR_CALM);
        EXPECT_TRUE(flooding.isClosedWithin(5s));
        expectOthersAnswered();
        EXPECT_THAT(running.logged(), testing::AllOf(SizeIs(1), Each(HasSubstr(complaint))));
    }
    /// Sends the same again and again, for as long as the server listens.
    static void flood(Http2Client& client, const std::string& bytes, int times) {
        std::string many;
        while (many.size() < 60'000) many += bytes;
        const int perWrite = static_cast<int>(many.size() / bytes.size());
        for (int sent = 0; sent < times && !client.isSentAway(); sent += perWrite) client.send(many);
    }
};

TEST_F(Http2Floods, RequestsThatAreDroppedAtOnce) {
    std::atomic<int> made = 0;
    running.page("/made.asp", [&](HostContext&) { ++made; });
    start();
    Http2Client one = client();
    std::int32_t id = 1;
    for (int burst = 0; burst < 1000 && !one.isSentAway(); ++burst) {
        std::string frames;
        for (int i = 0; i < 100; ++i, id += 2)
            frames += frameOf(NGHTTP2_HEADERS, endHeaders | NGHTTP2_FLAG_END_STREAM, id,
                              encoded(get("/made.asp"))) +
                      frameOf(NGHTTP2_RST_STREAM, 0, id, number(NGHTTP2_CANCEL));
        one.send(frames);
    }
    expectSentAway(one, "bring no request forward");
    EXPECT_LT(made, 1500);
}

TEST_F(Http2Floods, DroppedRequestsGoOnCountingWhileTheirPagesAreMade) {
    running.options.streams = 5;
    start();
    Http2Client one = client();
    for (std::int32_t id = 1; id < 11; id += 2) {
        one.headers(id, get("/held.asp", {{"x", std::to_string(id)}}));
        one.frame(NGHTTP2_RST_STREAM, 0, id, number(NGHTTP2_CANCEL));
    }
    one.headers(11, get("/hello.asp"));
    EXPECT_EQ(one.await(NGHTTP2_RST_STREAM, 11).code(), NGHTTP2_REFUSED_STREAM);
    gate.open();
    for (std::int32_t id = 13; id < 400; id += 2) {
        one.headers(id, get("/hello.asp"));
        if (one.reply(id).status == 200) return;
        std::this_thread::sleep_for(50ms);
    }
    FAIL() << "the places aren't given back";
}

TEST_F(Http2Floods, AnAddressHasNoMorePagesMadeThanItHasPlaces) {
    running.options.connectionsOfOne = 4;
    start();
    Http2Client one = client();
    for (std::int32_t id = 1; id < 9; id += 2) one.headers(id, get("/held.asp"));
    gate.await(1);
    one.headers(9, get("/hello.asp"));
    EXPECT_EQ(one.reply(9).status, 503);
    one.headers(11, get("/a.txt"));
    EXPECT_EQ(one.reply(11).body, "a file");
    gate.open();
    for (std::int32_t id = 1; id < 9; id += 2) EXPECT_EQ(one.reply(id).status, 200) << id;
    one.headers(13, get("/hello.asp"));
    EXPECT_EQ(one.reply(13).body, "Hello");
}

TEST_F(Http2Floods, RequestsThatTheServerMustDrop) {
    start();
    Http2Client one = client();
    for (std::int32_t id = 1; id < 4001 && !one.isSentAway(); id += 2)
        one.send(
            frameOf(NGHTTP2_HEADERS, endHeaders | NGHTTP2_FLAG_END_STREAM, id, encoded(get("/held.asp"))) +
            frameOf(NGHTTP2_WINDOW_UPDATE, 0, id, number(0x7fffffff)));
    expectSentAway(one, "bring no request forward");
}

TEST_F(Http2Floods, Settings) {
    start();
    Http2Client one = client();
    flood(one, frameOf(NGHTTP2_SETTINGS, 0, 0, setting(3, 100)), 20'000);
    expectSentAway(one, "bring no request forward");
}

TEST_F(Http2Floods, Pings) {
    start();
    Http2Client one = client();
    flood(one, frameOf(NGHTTP2_PING, 0, 0, "12345678"), 20'000);
    EXPECT_EQ(one.goodbye(), NGHTTP2_ENHANCE_YOUR_CALM);
    expectOthersAnswered();
    EXPECT_THAT(running.logged(), SizeIs(1));
}

TEST_F(Http2Floods, Priorities) {
    start();
    Http2Client one = client();
    flood(one, frameOf(NGHTTP2_PRIORITY, 0, 1, number(0) + "\x01"), 20'000);
    expectSentAway(one, "bring no request forward");
}

TEST_F(Http2Floods, Windows) {
    start();
    Http2Client one = client();
    flood(one, frameOf(NGHTTP2_WINDOW_UPDATE, 0, 0, number(1)), 50'000);
    expectSentAway(one, "bring no request forward");
}

TEST_F(Http2Floods, EmptyFramesOfABody) {
    start();
    Http2Client one = client();
    one.headers(1, post("/form.asp"), endHeaders);
    flood(one, frameOf(NGHTTP2_DATA, 0, 1, ""), 20'000);
    expectSentAway(one, "bring no request forward");
}

TEST_F(Http2Floods, PiecesOfAHeaderWithoutEnd) {
    start();
    Http2Client one = client();
    one.frame(NGHTTP2_HEADERS, NGHTTP2_FLAG_END_STREAM, 1, encoded(get("/hello.asp")));
    flood(one, frameOf(NGHTTP2_CONTINUATION, 0, 1, encoded({{"x", "1"}})), 100'000);
    EXPECT_GE(one.goodbye(), NGHTTP2_PROTOCOL_ERROR);
    expectOthersAnswered();
}

TEST_F(Http2Floods, AHeaderThatUnpacksToMegabytes) {
    start();
    Http2Client one = client();
    const std::size_t before = residentBytes();
    // The field is remembered once, and named 16,000 times by one byte.
    const std::string remembered =
        std::string(1, '\x40') + encoded({{"x", std::string(3000, 'x')}}).substr(1);
    one.frame(NGHTTP2_HEADERS, endHeaders | NGHTTP2_FLAG_END_STREAM, 1,
              encoded(get("/hello.asp")) + remembered + std::string(13'000, '\xbe'));
    expectSentAway(one, "far longer headers");
    EXPECT_LT(residentBytes(), before + 8U * 1024 * 1024);
}

TEST_F(Http2Floods, AHeaderThatDoesNotComeToAnEnd) {
    running.options.deadlines.header = 300ms;
    start();
    Http2Client one = client();
    EXPECT_EQ(one.ask("/hello.asp").body, "Hello");
    one.frame(NGHTTP2_HEADERS, 0, 3, encoded(get("/hello.asp")));
    EXPECT_EQ(one.goodbye(), NGHTTP2_ENHANCE_YOUR_CALM);
}

TEST_F(Http2Floods, AReaderWhoTakesNothing) {
    running.options.deadlines.write = 500ms;
    folder.write("big.zip", std::string(40'000'000, 'x'));
    start();
    Http2Client one = client();
    one.givesNoRoom();
    const std::size_t before = residentBytes();
    for (std::int32_t id = 1; id < 100; id += 2) one.headers(id, get("/big.zip"));
    EXPECT_TRUE(one.isClosedWithin(5s));
    EXPECT_LT(residentBytes(), before + 20U * 1024 * 1024);
}

TEST_F(Http2Floods, AStreamThatIsHeldUpByItsReaderEndsAlone) {
    running.options.deadlines.write = 500ms;
    running.options.speed.bytesPerSecond = 0;
    folder.write("big.zip", std::string(1'000'000, 'x'));
    start();
    Http2Client other(running.server->port());
    other.greet(setting(NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE, 1000));
    other.givesNoRoom();
    other.headers(1, get("/big.zip"));
    EXPECT_EQ(other.await(NGHTTP2_RST_STREAM, 1).code(), NGHTTP2_CANCEL);
    other.headers(3, get("/hello.asp"));
    EXPECT_EQ(other.reply(3).body, "Hello");
}

TEST_F(Http2Floods, FilesThatAreHeldOpen) {
    folder.write("big.zip", std::string(200'000, 'x'));
    start();
    Http2Client one(running.server->port());
    one.greet(setting(NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE, 1000));
    one.givesNoRoom();
    for (std::int32_t id = 1; id < 81; id += 2) one.headers(id, get("/big.zip"));
    one.headers(81, get("/hello.asp"));
    EXPECT_EQ(one.reply(81).body, "Hello");
    EXPECT_EQ(openFiles("big.zip"), 16U);
}

TEST_F(Http2Floods, FilesThatWaitForOthersComeAsWell) {
    folder.write("big.zip", std::string(200'000, 'x'));
    start();
    Http2Client one = client();
    for (std::int32_t id = 1; id < 81; id += 2) one.headers(id, get("/big.zip"));
    for (std::int32_t id = 1; id < 81; id += 2) EXPECT_EQ(one.reply(id).body.size(), 200'000U) << id;
}

TEST_F(Http2Floods, PingsDontKeepAConnectionThatAsksNothing) {
    running.options.deadlines.idle = 400ms;
    start();
    Http2Client one = client();
    one.ask("/hello.asp");
    const auto begin = std::chrono::steady_clock::now();
    while (!one.isClosedWithin(50ms) && std::chrono::steady_clock::now() - begin < 5s)
        one.frame(NGHTTP2_PING, 0, 0, "12345678");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    EXPECT_EQ(one.goodbye(), NGHTTP2_NO_ERROR);
}

TEST_F(Http2Floods, OneThatRestsGoesWhenAllPlacesAreTaken) {
    running.options.connections = 2;
    start();
    Http2Client working = client("127.0.0.2");
    working.headers(1, get("/held.asp"));
    gate.await(1);
    Http2Client resting = client("127.0.0.3");
    EXPECT_EQ(resting.ask("/hello.asp").body, "Hello");
    Http2Client third = client("127.0.0.4");
    EXPECT_EQ(third.ask("/hello.asp").body, "Hello");
    EXPECT_TRUE(resting.isClosedWithin(2s));
    gate.open();
    EXPECT_EQ(working.reply(1).body, "held");
}

TEST_F(Http2Floods, AServerThatStopsFinishesWhatIsUnderWay) {
    start();
    Http2Client one = client();
    one.headers(1, get("/held.asp"));
    gate.await(1);
    running.server->stop();
    EXPECT_EQ(one.goodbye(), NGHTTP2_NO_ERROR);
    gate.open();
    EXPECT_EQ(one.reply(1).body, "held");
    EXPECT_TRUE(one.isClosedWithin(2s));
}

TEST_F(Http2Floods, AnUploadGetsNoMoreRoomThanItHasUsed) {
    start();
    Http2Client one = client();
    one.await(NGHTTP2_SETTINGS);
    one.headers(1, post("/form.asp", {{"content-length", "1000000"}}), endHeaders);
    one.body(1, std::string(900'000, 'a'), false);
    std::uint32_t given = 0;
    while (const auto frame = one.next(300ms))
        if (frame->type == NGHTTP2_WINDOW_UPDATE && frame->id == 1) given += frame->code();
    EXPECT_GT(given, 0U);
    EXPECT_LE(given, 900'000U);
}

}  // namespace

}  // namespace torvex::test
