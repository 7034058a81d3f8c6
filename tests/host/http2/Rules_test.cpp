// What the protocol demands of a server (RFC 9113 and RFC 7541), each rule by frames that break it.

#include <gmock/gmock.h>

#include "host/http2/Http2Test.h"

namespace torvex::test {

namespace {

constexpr int endHeaders = NGHTTP2_FLAG_END_HEADERS;
constexpr int whole = NGHTTP2_FLAG_END_HEADERS | NGHTTP2_FLAG_END_STREAM;

std::string headers(std::int32_t id, const Fields& fields, int flags = whole) {
    return frameOf(NGHTTP2_HEADERS, flags, id, encoded(fields));
}

/// The fields of a GET with one of them changed, or left out.
Fields with(const std::string& name, const std::string& value) {
    Fields fields = get("/hello.asp");
    for (auto& field : fields)
        if (field.first == name) field.second = value;
    return fields;
}
Fields without(const std::string& name) {
    Fields fields = get("/hello.asp");
    std::erase_if(fields, [&](const auto& field) { return field.first == name; });
    return fields;
}
Fields plus(const std::string& name, const std::string& value) {
    return get("/hello.asp", {{name, value}});
}

struct Rule {
    const char* name;
    std::string bytes;
    std::uint32_t code;
};

void PrintTo(const Rule& rule, std::ostream* out) {
    *out << rule.name;
}

std::string nameOf(const testing::TestParamInfo<Rule>& tested) {
    return tested.param.name;
}

/// An error of the connection: it ends with a GOAWAY.
class ConnectionRules : public Http2Test, public testing::WithParamInterface<Rule> {};

TEST_P(ConnectionRules, EndTheConnection) {
    start();
    Http2Client breaking = client();
    breaking.send(GetParam().bytes);
    EXPECT_EQ(breaking.goodbye(), GetParam().code);
    EXPECT_TRUE(breaking.isClosedWithin(std::chrono::seconds(5)));
    expectOthersAnswered();
}

const std::string hello = headers(1, get("/hello.asp"));
const std::string eight(8, 'x');

INSTANTIATE_TEST_SUITE_P(
    Frames, ConnectionRules,
    testing::Values(
        Rule{"AFrameIsNoLargerThanAllowed", frameOf(NGHTTP2_DATA, 0, 1, std::string(16385, 'x')),
             NGHTTP2_FRAME_SIZE_ERROR},
        Rule{"DataBelongsToAStream", frameOf(NGHTTP2_DATA, 0, 0, "x"), NGHTTP2_PROTOCOL_ERROR},
        Rule{"DataComesOnNoIdleStream", frameOf(NGHTTP2_DATA, 0, 1, "x"), NGHTTP2_PROTOCOL_ERROR},
        Rule{"PaddingIsNoLongerThanItsFrame",
             headers(1, get("/held.asp"), endHeaders) +
                 frameOf(NGHTTP2_DATA, NGHTTP2_FLAG_PADDED, 1, "\x05xx"),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"HeadersBelongToAStream", headers(0, get("/hello.asp")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"ClientsUseOddStreams", headers(2, get("/hello.asp")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"PriorityBelongsToAStream", frameOf(NGHTTP2_PRIORITY, 0, 0, "xxxxx"), NGHTTP2_PROTOCOL_ERROR},
        Rule{"PriorityHasFiveBytes", frameOf(NGHTTP2_PRIORITY, 0, 1, "xxxx"), NGHTTP2_FRAME_SIZE_ERROR},
        Rule{"AResetBelongsToAStream", frameOf(NGHTTP2_RST_STREAM, 0, 0, number(8)), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AResetComesOnNoIdleStream", frameOf(NGHTTP2_RST_STREAM, 0, 1, number(8)),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"AResetHasFourBytes", hello + frameOf(NGHTTP2_RST_STREAM, 0, 1, "xxx"),
             NGHTTP2_FRAME_SIZE_ERROR},
        Rule{"SettingsBelongToTheConnection", frameOf(NGHTTP2_SETTINGS, 0, 1, ""), NGHTTP2_PROTOCOL_ERROR},
        Rule{"SettingsHaveSixBytesEach", frameOf(NGHTTP2_SETTINGS, 0, 0, "xxxxx"), NGHTTP2_FRAME_SIZE_ERROR},
        Rule{"AnAcknowledgementIsEmpty", frameOf(NGHTTP2_SETTINGS, NGHTTP2_FLAG_ACK, 0, setting(3, 1)),
             NGHTTP2_FRAME_SIZE_ERROR},
        Rule{"PushIsOnOrOff", frameOf(NGHTTP2_SETTINGS, 0, 0, setting(2, 2)), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AWindowBeginsBelowTwoGigabytes", frameOf(NGHTTP2_SETTINGS, 0, 0, setting(4, 0x80000000U)),
             NGHTTP2_FLOW_CONTROL_ERROR},
        Rule{"FramesAreNoSmallerThan16KB", frameOf(NGHTTP2_SETTINGS, 0, 0, setting(5, 16383)),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"FramesAreNoLargerThan16MB", frameOf(NGHTTP2_SETTINGS, 0, 0, setting(5, 1U << 24U)),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"ClientsDontPush", frameOf(NGHTTP2_PUSH_PROMISE, endHeaders, 1, number(2) + encoded(get("/"))),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"APingBelongsToTheConnection", frameOf(NGHTTP2_PING, 0, 1, eight), NGHTTP2_PROTOCOL_ERROR},
        Rule{"APingHasEightBytes", frameOf(NGHTTP2_PING, 0, 0, "x"), NGHTTP2_FRAME_SIZE_ERROR},
        Rule{"AGoodbyeBelongsToTheConnection", frameOf(NGHTTP2_GOAWAY, 0, 1, eight), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AWindowGrowsByFourBytes", frameOf(NGHTTP2_WINDOW_UPDATE, 0, 0, "xxx"),
             NGHTTP2_FRAME_SIZE_ERROR},
        Rule{"AWindowGrows", frameOf(NGHTTP2_WINDOW_UPDATE, 0, 0, number(0)), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AWindowGrowsOnNoIdleStream", frameOf(NGHTTP2_WINDOW_UPDATE, 0, 1, number(1)),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"AWindowOfAStreamGrows",
             headers(1, get("/held.asp")) + frameOf(NGHTTP2_WINDOW_UPDATE, 0, 1, number(0)),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"TheWindowStaysBelowTwoGigabytes", frameOf(NGHTTP2_WINDOW_UPDATE, 0, 0, number(0x7fffffff)),
             NGHTTP2_FLOW_CONTROL_ERROR},
        Rule{"AContinuationFollowsAHeader", frameOf(NGHTTP2_CONTINUATION, endHeaders, 1, "x"),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"NothingComesBetweenAHeaderAndItsContinuation",
             headers(1, get("/hello.asp"), NGHTTP2_FLAG_END_STREAM) + frameOf(NGHTTP2_PING, 0, 0, eight),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"AContinuationIsOfTheSameStream",
             headers(1, get("/hello.asp"), NGHTTP2_FLAG_END_STREAM) +
                 frameOf(NGHTTP2_CONTINUATION, endHeaders, 3, "x"),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"AHeaderCanBeUnpacked", frameOf(NGHTTP2_HEADERS, whole, 1, std::string(1, '\xff')),
             NGHTTP2_COMPRESSION_ERROR},
        Rule{"AFieldIsInTheTable", frameOf(NGHTTP2_HEADERS, whole, 1, std::string(1, '\xbe')),
             NGHTTP2_COMPRESSION_ERROR},
        Rule{"TheFirstPlaceOfTheTableIsOne", frameOf(NGHTTP2_HEADERS, whole, 1, std::string(1, '\x80')),
             NGHTTP2_COMPRESSION_ERROR},
        Rule{"TheTableIsNoLargerThanAllowed",
             frameOf(NGHTTP2_HEADERS, whole, 1, "\x3f\xe2\x1f" + encoded(get("/"))),
             NGHTTP2_COMPRESSION_ERROR},
        Rule{"TheTableChangesAheadOfTheFields",
             frameOf(NGHTTP2_HEADERS, whole, 1, encoded(get("/")) + "\x20"), NGHTTP2_COMPRESSION_ERROR},
        Rule{"PackedTextEndsWithinAByte",
             frameOf(NGHTTP2_HEADERS, whole, 1, std::string("\x00\x85\xff\xff\xff\xff\xff\x01x", 9)),
             NGHTTP2_COMPRESSION_ERROR}),
    nameOf);

/// An error of one request: its stream is reset, and the connection goes on.
class StreamRules : public Http2Test, public testing::WithParamInterface<Rule> {};

TEST_P(StreamRules, EndTheStream) {
    start();
    Http2Client breaking = client();
    breaking.send(GetParam().bytes);
    EXPECT_EQ(breaking.await(NGHTTP2_RST_STREAM, 1).code(), GetParam().code);
    breaking.headers(3, get("/hello.asp"));
    EXPECT_EQ(breaking.reply(3).body, "Hello");
}

Fields formOf(const std::string& length) {
    return {{":method", "POST"},
            {":scheme", "https"},
            {":authority", "a"},
            {":path", "/form.asp"},
            {"content-type", "application/x-www-form-urlencoded"},
            {"content-length", length}};
}

INSTANTIATE_TEST_SUITE_P(
    Requests, StreamRules,
    testing::Values(
        Rule{"NamesAreInLowerCase", headers(1, plus("X-Name", "1")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"NamesAreNoneWithBlanks", headers(1, plus("x name", "1")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"NamesAreNotEmpty", headers(1, plus("", "1")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"ValuesHoldNoLineFeed", headers(1, plus("x-name", "1\nx: 2")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"ValuesHoldNoCarriageReturn", headers(1, plus("x-name", "1\r2")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"ValuesHoldNoZero", headers(1, plus("x-name", std::string("1\0002", 3))),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"ValuesBeginWithNoBlank", headers(1, plus("x-name", " 1")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AMethodIsThere", headers(1, without(":method")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"ASchemeIsThere", headers(1, without(":scheme")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"APathIsThere", headers(1, without(":path")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AHostIsThere", headers(1, without(":authority")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"APathIsNotEmpty", headers(1, with(":path", "")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"APathBeginsWithASlash", headers(1, with(":path", "hello.asp")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AMethodComesOnce", headers(1, plus(":method", "GET")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"NothingElseBeginsWithAColon", headers(1, plus(":other", "1")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AStatusIsForAnswers", headers(1, plus(":status", "200")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"NamesWithAColonComeFirst",
             headers(
                 1,
                 {{":method", "GET"}, {":scheme", "https"}, {"x", "1"}, {":authority", "a"}, {":path", "/"}}),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"NothingIsSaidOfTheConnection", headers(1, plus("connection", "close")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"NothingIsKeptAlive", headers(1, plus("keep-alive", "1")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"NothingIsUpgraded", headers(1, plus("upgrade", "h2c")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"NothingComesInChunks", headers(1, plus("transfer-encoding", "chunked")),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"OfTransfersTrailersAlone", headers(1, plus("te", "gzip")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"ALengthIsANumber", headers(1, formOf("abc"), endHeaders), NGHTTP2_PROTOCOL_ERROR},
        Rule{"ALengthComesOnce",
             headers(1,
                     {{":method", "POST"},
                      {":scheme", "https"},
                      {":authority", "a"},
                      {":path", "/form.asp"},
                      {"content-length", "1"},
                      {"content-length", "2"}},
                     endHeaders),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"ABodyIsNoLongerThanItSays",
             headers(1, formOf("3"), endHeaders) + frameOf(NGHTTP2_DATA, 1, 1, "name=x"),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"ABodyIsNoShorterThanItSays",
             headers(1, formOf("7"), endHeaders) + frameOf(NGHTTP2_DATA, 1, 1, "name=x"),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"NoBodyThatWasAnnouncedIsMissing", headers(1, formOf("7")), NGHTTP2_PROTOCOL_ERROR},
        Rule{"TrailersEndTheRequest",
             headers(1, formOf("6"), endHeaders) + headers(1, {{"x-after", "1"}}, endHeaders),
             NGHTTP2_PROTOCOL_ERROR},
        Rule{"TrailersHaveNoNamesWithAColon",
             headers(1, formOf("0"), endHeaders) + headers(1, {{":path", "/"}}), NGHTTP2_PROTOCOL_ERROR},
        Rule{"AWindowOfAStreamStaysBelowTwoGigabytes",
             headers(1, get("/held.asp")) + frameOf(NGHTTP2_WINDOW_UPDATE, 0, 1, number(0x7fffffff)),
             NGHTTP2_FLOW_CONTROL_ERROR}),
    nameOf);

class RulesTest : public Http2Test {};

TEST_F(RulesTest, TheServerSpeaksFirstOfItsSettings) {
    start();
    Http2Client one = client();
    const auto first = one.next();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->type, NGHTTP2_SETTINGS);
    EXPECT_EQ(first->flags, 0);
    EXPECT_THAT(first->payload, testing::HasSubstr(setting(NGHTTP2_SETTINGS_MAX_CONCURRENT_STREAMS, 100)));
}

TEST_F(RulesTest, SettingsAreAcknowledged) {
    start();
    Http2Client one = client();
    one.await(NGHTTP2_SETTINGS);
    EXPECT_EQ(one.await(NGHTTP2_SETTINGS).flags, NGHTTP2_FLAG_ACK);
}

TEST_F(RulesTest, UnknownSettingsArePassedOver) {
    start();
    Http2Client one = client();
    one.frame(NGHTTP2_SETTINGS, 0, 0, setting(99, 7));
    EXPECT_EQ(one.ask("/hello.asp").body, "Hello");
}

TEST_F(RulesTest, UnknownFramesArePassedOver) {
    start();
    Http2Client one = client();
    one.frame(0x77, 0, 0, "whatever");
    one.frame(0x77, 0xff, 1, "whatever");
    EXPECT_EQ(one.ask("/hello.asp").body, "Hello");
}

TEST_F(RulesTest, APingComesBackAsItIs) {
    start();
    Http2Client one = client();
    one.frame(NGHTTP2_PING, 0, 0, "12345678");
    const Frame back = one.await(NGHTTP2_PING);
    EXPECT_EQ(back.flags, NGHTTP2_FLAG_ACK);
    EXPECT_EQ(back.payload, "12345678");
}

TEST_F(RulesTest, AConnectionBeginsAsItMust) {
    start();
    Http2Client one(running.server->port());
    one.send("GET / HTTP/1.1\r\nHost: a\r\n\r\n");
    EXPECT_EQ(one.goodbye(), NGHTTP2_PROTOCOL_ERROR);
    Http2Client other(running.server->port());
    other.send("PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n" + frameOf(NGHTTP2_PING, 0, 0, "12345678"));
    EXPECT_EQ(other.goodbye(), NGHTTP2_PROTOCOL_ERROR);
}

TEST_F(RulesTest, PaddingIsNoPartOfAHeader) {
    start();
    Http2Client one = client();
    one.frame(NGHTTP2_HEADERS, whole | NGHTTP2_FLAG_PADDED, 1, "\x04" + encoded(get("/hello.asp")) + "1234");
    EXPECT_EQ(one.reply(1).body, "Hello");
}

TEST_F(RulesTest, PriorityIsNoPartOfAHeader) {
    start();
    Http2Client one = client();
    one.frame(NGHTTP2_HEADERS, whole | NGHTTP2_FLAG_PRIORITY, 1,
              number(0) + "\x0f" + encoded(get("/hello.asp")));
    EXPECT_EQ(one.reply(1).body, "Hello");
}

TEST_F(RulesTest, AHeaderMayComeInPieces) {
    start();
    Http2Client one = client();
    const std::string block = encoded(get("/hello.asp"));
    one.frame(NGHTTP2_HEADERS, NGHTTP2_FLAG_END_STREAM, 1, block.substr(0, 10));
    one.frame(NGHTTP2_CONTINUATION, 0, 1, block.substr(10, 5));
    one.frame(NGHTTP2_CONTINUATION, endHeaders, 1, block.substr(15));
    EXPECT_EQ(one.reply(1).body, "Hello");
}

TEST_F(RulesTest, NothingMoreComesBehindTheEndOfARequest) {
    start();
    Http2Client one = client();
    one.headers(1, get("/held.asp"));
    one.frame(NGHTTP2_DATA, 0, 1, "x");
    EXPECT_EQ(one.goodbye(), NGHTTP2_STREAM_CLOSED);
}

TEST_F(RulesTest, NoMoreStreamsAreOpenThanAllowed) {
    running.options.streams = 3;
    start();
    Http2Client one = client();
    one.await(NGHTTP2_SETTINGS);
    for (std::int32_t id : {1, 3, 5}) one.headers(id, get("/held.asp"));
    gate.await(3);
    one.headers(7, get("/hello.asp"));
    EXPECT_EQ(one.goodbye(), NGHTTP2_PROTOCOL_ERROR);
}

TEST_F(RulesTest, AStreamThatWasPassedByIsClosed) {
    running.options.deadlines.header = std::chrono::milliseconds(300);
    start();
    Http2Client one = client();
    one.headers(5, get("/hello.asp"));
    EXPECT_EQ(one.reply(5).body, "Hello");
    one.headers(3, get("/hello.asp"));
    std::this_thread::sleep_for(std::chrono::seconds(1));
    one.headers(7, get("/hello.asp"));
    EXPECT_EQ(one.reply(7).body, "Hello");
}

TEST_F(RulesTest, TheWindowOfAStreamIsHeeded) {
    folder.write("big.txt", std::string(5000, 'x'));
    start();
    Http2Client one(running.server->port());
    one.greet(setting(NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE, 100));
    one.givesNoRoom();
    one.headers(1, get("/big.txt"));
    EXPECT_EQ(one.await(NGHTTP2_DATA, 1).payload.size(), 100U);
    one.frame(NGHTTP2_WINDOW_UPDATE, 0, 1, number(50));
    EXPECT_EQ(one.await(NGHTTP2_DATA, 1).payload.size(), 50U);
}

TEST_F(RulesTest, TheWindowOfTheConnectionIsHeeded) {
    folder.write("big.txt", std::string(100'000, 'x'));
    start();
    Http2Client one(running.server->port());
    one.greet(setting(NGHTTP2_SETTINGS_INITIAL_WINDOW_SIZE, 1'000'000));
    one.givesNoRoom();
    one.headers(1, get("/big.txt"));
    std::size_t came = 0;
    while (const auto frame = one.next(std::chrono::milliseconds(500)))
        if (frame->type == NGHTTP2_DATA) came += frame->payload.size();
    EXPECT_EQ(came, 65535U);
}

TEST_F(RulesTest, NoFrameIsLargerThanTheClientTakes) {
    folder.write("big.txt", std::string(60'000, 'x'));
    start();
    Http2Client one = client();
    one.headers(1, get("/big.txt"));
    std::size_t came = 0;
    while (came < 60'000) {
        const Frame frame = one.await(NGHTTP2_DATA, 1);
        ASSERT_EQ(frame.type, NGHTTP2_DATA);
        EXPECT_LE(frame.payload.size(), 16384U);
        came += frame.payload.size();
    }
}

}  // namespace

}  // namespace torvex::test
