// Public files and pages in the forms that browsers take.

#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

#include "host/files/EncodedFiles.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "support/Decoded.h"
#include "support/RunningServer.h"

namespace torvex::test {
namespace {

using namespace std::chrono_literals;

std::string longText(std::string_view word) {
    std::string text;
    while (text.size() < 20'000) text.append(word).append(" in the garden\n");
    return text;
}

class CompressionTest : public testing::Test {
  protected:
    void start() {
        server_.options.rootFolder = folder_.path();
        server_.start();
    }

    RawReply get(std::string_view target, std::string_view accepted, std::string_view more = {}) {
        std::string lines(more);
        if (!accepted.empty()) lines.append("Accept-Encoding: ").append(accepted).append("\r\n");
        return server_.client().get(target, lines);
    }

    void page(const std::string& path, bool isOpen, PageHandler handler) {
        PageRoute route{path, std::move(handler), methods::form};
        route.isOpen = isOpen;
        server_.pages.push_back(std::move(route));
    }

    PublicFolder folder_;
    RunningServer server_;
};

/// What holds whatever is spoken.
class CompressionOfEveryProtocol : public CompressionTest, public testing::WithParamInterface<Protocol> {
  protected:
    CompressionOfEveryProtocol() { server_.protocol = GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Protocols, CompressionOfEveryProtocol, everyProtocol, nameOf);

// ---- Public files ----

TEST_P(CompressionOfEveryProtocol, ATextGoesInTheFormThatIsWantedMost) {
    const std::string text = longText("roses");
    folder_.write("a.css", text);
    start();
    for (const char* coding : {"gzip", "br", "zstd"}) {
        const RawReply reply = get("/a.css", coding);
        EXPECT_EQ(reply.status, 200);
        EXPECT_EQ(reply.field("Content-Encoding"), coding);
        EXPECT_EQ(reply.field("Content-Type"), "text/css; charset=utf-8");
        EXPECT_EQ(reply.field("Vary"), "Accept-Encoding");
        EXPECT_LT(reply.body.size(), text.size() / 4);
        EXPECT_EQ(decoded(coding, reply.body), text);
    }
    EXPECT_EQ(get("/a.css", "gzip, deflate, br, zstd").field("Content-Encoding"), "br");
    EXPECT_EQ(get("/a.css", "br;q=0.1, gzip").field("Content-Encoding"), "gzip");
}

TEST_P(CompressionOfEveryProtocol, WhoeverWantsNoFormGetsTheBytes) {
    const std::string text = longText("roses");
    folder_.write("a.css", text);
    start();
    for (const char* accepted : {"", "identity", "br;q=0, gzip;q=0, zstd;q=0", "deflate"}) {
        const RawReply reply = get("/a.css", accepted);
        EXPECT_EQ(reply.body, text) << accepted;
        EXPECT_EQ(reply.field("Content-Encoding"), "");
        EXPECT_EQ(reply.field("Vary"), "Accept-Encoding");
    }
}

TEST_P(CompressionOfEveryProtocol, PicturesAndShortTextsStayAsTheyAre) {
    folder_.write("a.png", longText("png"));
    folder_.write("a.txt", "short");
    start();
    for (const char* target : {"/a.png", "/a.txt"}) {
        const RawReply reply = get(target, "br, gzip");
        EXPECT_EQ(reply.status, 200);
        EXPECT_EQ(reply.field("Content-Encoding"), "");
        EXPECT_EQ(reply.field("Vary"), "");
    }
}

TEST_P(CompressionOfEveryProtocol, ATextThatIsNotKeptInMemoryIsEncodedToo) {
    std::string text;
    while (text.size() < 300'000) text += longText("tulips");
    folder_.write("a.csv", text);
    start();
    for (int i = 0; i < 2; ++i) {
        const RawReply reply = get("/a.csv", "zstd");
        EXPECT_EQ(reply.field("Content-Encoding"), "zstd");
        EXPECT_EQ(decoded("zstd", reply.body), text);
    }
}

TEST_P(CompressionOfEveryProtocol, EachFormIsAVersionOfItsOwn) {
    folder_.write("a.css", longText("roses"));
    start();
    const RawReply plain = get("/a.css", "");
    const RawReply gzip = get("/a.css", "gzip");
    const RawReply brotli = get("/a.css", "br");
    EXPECT_NE(plain.field("ETag"), gzip.field("ETag"));
    EXPECT_NE(brotli.field("ETag"), gzip.field("ETag"));
    const RawReply known = get("/a.css", "gzip", "If-None-Match: " + gzip.field("ETag") + "\r\n");
    EXPECT_EQ(known.status, 304);
    EXPECT_EQ(known.field("ETag"), gzip.field("ETag"));
    EXPECT_EQ(known.field("Vary"), "Accept-Encoding");
    EXPECT_EQ(known.body, "");
    EXPECT_EQ(get("/a.css", "gzip", "If-None-Match: " + brotli.field("ETag") + "\r\n").status, 200);
    EXPECT_EQ(get("/a.css", "", "If-None-Match: " + gzip.field("ETag") + "\r\n").status, 200);
    EXPECT_EQ(get("/a.css", "gzip", "If-Modified-Since: " + gzip.field("Last-Modified") + "\r\n").status,
              304);
}

TEST_P(CompressionOfEveryProtocol, APartIsAPartOfTheBytes) {
    const std::string text = longText("roses");
    folder_.write("a.css", text);
    start();
    EXPECT_EQ(get("/a.css", "gzip").status, 200);
    const RawReply part = get("/a.css", "gzip", "Range: bytes=100-199\r\n");
    EXPECT_EQ(part.status, 206);
    EXPECT_EQ(part.field("Content-Encoding"), "");
    EXPECT_EQ(part.body, text.substr(100, 100));
}

TEST_P(CompressionOfEveryProtocol, AnotherVersionIsNeverAnsweredByTheForm) {
    const std::string file = folder_.path() + "/a.css";
    folder_.write("a.css", longText("roses"));
    start();
    const auto moment = std::filesystem::last_write_time(file);
    EXPECT_EQ(decoded("br", get("/a.css", "br").body), longText("roses"));
    // As long as before, and with the same date.
    folder_.write("a.css", longText("lilac"));
    std::filesystem::last_write_time(file, moment);
    EXPECT_EQ(decoded("br", get("/a.css", "br").body), longText("lilac"));
}

TEST_P(CompressionOfEveryProtocol, HeadTellsTheLengthOfTheForm) {
    folder_.write("a.css", longText("roses"));
    start();
    const std::size_t size = get("/a.css", "gzip").body.size();
    RawHttpClient client = server_.client();
    client.send("HEAD /a.css HTTP/1.1\r\nHost: a\r\nAccept-Encoding: gzip\r\n\r\n");
    EXPECT_EQ(client.readWithoutBody().field("Content-Length"), std::to_string(size));
    EXPECT_EQ(client.get("/a.css").status, 200);
}

TEST_P(CompressionOfEveryProtocol, ManyWhoAskAtOnceGetTheSame) {
    const std::string text = longText("roses");
    folder_.write("a.css", text);
    start();
    std::vector<std::thread> clients;
    std::atomic<int> right = 0;
    for (int i = 0; i < 8; ++i)
        clients.emplace_back([&] { right += decoded("br", get("/a.css", "br").body) == text ? 1 : 0; });
    for (auto& client : clients) client.join();
    EXPECT_EQ(right, 8);
}

TEST_P(CompressionOfEveryProtocol, SwitchedOffNothingIsEncoded) {
    folder_.write("a.css", longText("roses"));
    page("/a.asp", true, [](HostContext& host) { host.response.write(longText("roses")); });
    server_.options.compression = false;
    start();
    for (const char* target : {"/a.css", "/a.asp"}) {
        const RawReply reply = get(target, "br, gzip");
        EXPECT_EQ(reply.body, longText("roses"));
        EXPECT_EQ(reply.field("Content-Encoding"), "");
        EXPECT_EQ(reply.field("Vary"), "");
    }
}

// ---- What is kept ----

class EncodedFilesTest : public testing::Test {
  protected:
    PublicFile file(const std::string& name) {
        folder_.write(name, longText(name));
        // The stamp of what was written just now could be that of the next version as well.
        std::this_thread::sleep_for(2100ms);
        StaticFileOptions options;
        options.encodes = true;
        return *PublicFile::open(root_, name, options);
    }

    PublicFolder folder_;
    RootFolder root_{folder_.path()};
};

TEST_F(EncodedFilesTest, AFormIsMadeOnceForEachVersion) {
    EncodedFiles encoded(1'000'000);
    const PublicFile one = file("a.txt");
    EXPECT_EQ(encoded.find(one.stamp, Coding::Gzip), nullptr);
    const auto made = encoded.make(one, Coding::Gzip);
    EXPECT_EQ(encoded.make(one, Coding::Gzip), made);
    EXPECT_EQ(encoded.find(one.stamp, Coding::Gzip), made);
    EXPECT_EQ(encoded.find(one.stamp, Coding::Brotli), nullptr);
}

TEST_F(EncodedFilesTest, TheLeastUsedGoesFirst) {
    const PublicFile one = file("a.txt");
    EncodedFiles measure(1'000'000);
    measure.make(one, Coding::Gzip);
    EncodedFiles encoded(measure.bytes() * 2);
    encoded.make(one, Coding::Gzip);
    encoded.make(one, Coding::Brotli);
    encoded.find(one.stamp, Coding::Gzip);
    encoded.make(one, Coding::Zstd);
    EXPECT_NE(encoded.find(one.stamp, Coding::Gzip), nullptr);
    EXPECT_EQ(encoded.find(one.stamp, Coding::Brotli), nullptr);
    EXPECT_LE(encoded.bytes(), measure.bytes() * 2);
}

TEST_F(EncodedFilesTest, WithoutRoomNothingIsKept) {
    EncodedFiles encoded(0);
    const PublicFile one = file("a.txt");
    EXPECT_EQ(decoded("br", *encoded.make(one, Coding::Brotli)), longText("a.txt"));
    EXPECT_EQ(encoded.find(one.stamp, Coding::Brotli), nullptr);
    EXPECT_EQ(encoded.bytes(), 0U);
}

// ---- Pages ----

TEST_P(CompressionOfEveryProtocol, AnOpenPageIsCompressed) {
    page("/a.asp", true, [](HostContext& host) { host.response.write(longText("roses")); });
    start();
    const RawReply reply = get("/a.asp", "gzip, deflate, br, zstd");
    EXPECT_EQ(reply.field("Content-Encoding"), "zstd");
    EXPECT_EQ(reply.field("Vary"), "Accept-Encoding");
    EXPECT_EQ(decoded("zstd", reply.body), longText("roses"));
    EXPECT_EQ(decoded("br", get("/a.asp", "br").body), longText("roses"));
    EXPECT_EQ(get("/a.asp", "").body, longText("roses"));
    EXPECT_EQ(get("/a.asp", "").field("Vary"), "Accept-Encoding");
}

TEST_P(CompressionOfEveryProtocol, APageInAnotherCharsetIsCompressedAsItIsSent) {
    page("/a.asp", true, [](HostContext& host) {
        host.response.charset = "iso-8859-1";
        host.response.write(longText("Kürbis"));
    });
    start();
    const std::string body = decoded("gzip", get("/a.asp", "gzip").body);
    EXPECT_EQ(body, get("/a.asp", "").body);
    EXPECT_NE(body.find("K\xFCrbis"), std::string::npos);
}

TEST_P(CompressionOfEveryProtocol, APageOfSomebodyWhoIsLoggedInIsNot) {
    page("/a.asp", true, [](HostContext& host) {
        host.session.set(sessionKey::visitorName, Value("vera"));
        host.response.write(longText("roses"));
    });
    start();
    const RawReply reply = get("/a.asp", "br, gzip");
    EXPECT_EQ(reply.body, longText("roses"));
    EXPECT_EQ(reply.field("Content-Encoding"), "");
}

TEST_P(CompressionOfEveryProtocol, WhatIsTheSameForEverybodyIsCompressedForWhoIsLoggedInToo) {
    PageRoute route{"/a.asp", [](HostContext& host) {
                        host.session.set(sessionKey::authorName, Value("anna"));
                        host.response.write(longText("roses"));
                    }};
    route.isPersonal = false;
    server_.pages.push_back(std::move(route));
    start();
    EXPECT_EQ(decoded("br", get("/a.asp", "br").body), longText("roses"));
}

TEST_P(CompressionOfEveryProtocol, APageThatMayHoldATokenIsNot) {
    page("/a.asp", false, [](HostContext& host) { host.response.write(longText("roses")); });
    start();
    EXPECT_EQ(get("/a.asp", "br, gzip").field("Content-Encoding"), "");
}

TEST_P(CompressionOfEveryProtocol, ShortPagesPicturesAndRedirectionsAreNot) {
    page("/short.asp", true, [](HostContext& host) { host.response.write("short"); });
    page("/picture.asp", true, [](HostContext& host) {
        host.response.contentType = "image/png";
        host.response.write(longText("png"));
    });
    page("/away.asp", true, [](HostContext& host) { host.response.redirect("/elsewhere"); });
    start();
    for (const char* target : {"/short.asp", "/picture.asp", "/away.asp"})
        EXPECT_EQ(get(target, "br, gzip").field("Content-Encoding"), "") << target;
}

}  // namespace
}  // namespace torvex::test
