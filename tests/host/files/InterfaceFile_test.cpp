#include "host/files/InterfaceFile.h"

#include <gtest/gtest.h>

#include "installation/BuiltInterface.h"
#include "support/RunningServer.h"

namespace torvex::test {
namespace {

class InterfaceFileTest : public testing::Test {
  protected:
    void SetUp() override {
        built_.write("main-Ab3_x-yZ.js", "plain text");
        built_.write("main-Ab3_x-yZ.js.br", "as brotli");
        built_.write("main-Ab3_x-yZ.js.gz", "as gzip");
        built_.write("icons-12345678.svg", "<svg/>");
        built_.write(".vite/manifest.json", "{}");
        server_.interface = std::make_shared<BuiltInterface>(built_.path());
        server_.start();
    }

    RawReply get(const std::string& path, const std::string& fields = "") {
        return server_.client().get(path, fields);
    }

    PublicFolder built_;
    RunningServer server_;
};

TEST_F(InterfaceFileTest, IsServedOutOfWhatWasBuilt) {
    const RawReply reply = get("/torvex/ui/main-Ab3_x-yZ.js");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "plain text");
    EXPECT_EQ(reply.field("Content-Type"), "text/javascript; charset=utf-8");
    EXPECT_EQ(reply.field("Vary"), "Accept-Encoding");
    EXPECT_EQ(reply.field("Set-Cookie"), "");
}

TEST_F(InterfaceFileTest, IsSentAsItWasCompressed) {
    const RawReply brotli = get("/torvex/ui/main-Ab3_x-yZ.js", "Accept-Encoding: gzip, deflate, br\r\n");
    EXPECT_EQ(brotli.body, "as brotli");
    EXPECT_EQ(brotli.field("Content-Encoding"), "br");
    EXPECT_EQ(brotli.field("Content-Type"), "text/javascript; charset=utf-8");
    const RawReply gzip = get("/torvex/ui/main-Ab3_x-yZ.js", "Accept-Encoding: GZIP;q=0.5, br;q=0\r\n");
    EXPECT_EQ(gzip.body, "as gzip");
    EXPECT_EQ(gzip.field("Content-Encoding"), "gzip");
    const RawReply none = get("/torvex/ui/icons-12345678.svg", "Accept-Encoding: br\r\n");
    EXPECT_EQ(none.body, "<svg/>");
    EXPECT_EQ(none.field("Content-Encoding"), "");
}

TEST_F(InterfaceFileTest, NothingElseOfTheFolderIsThere) {
    for (const char* path :
         {"/torvex/ui/none-12345678.js", "/torvex/ui/.vite/manifest.json", "/torvex/ui/main-Ab3_x-yZ.js.br",
          "/torvex/ui/", "/torvex/ui/../ui/icons-12345678.svg/", "/torvex/ui/%2e%2e/x.js"})
        EXPECT_EQ(get(path).status, 404) << path;
}

TEST_F(InterfaceFileTest, IsOnlyRead) {
    const RawReply reply = server_.client().ask(
        "POST /torvex/ui/icons-12345678.svg HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(reply.status, 405);
}

TEST_F(InterfaceFileTest, WhatIsWorkedOnIsAskedForAnew) {
    EXPECT_EQ(get("/torvex/ui/main-Ab3_x-yZ.js").field("Cache-Control"), "no-cache");
}

TEST(InterfaceFileOfTheProgram, IsGoodForEverByTheHashInItsName) {
    const auto bytes = std::make_shared<const std::string>("text");
    const BuiltInterface interface({{"main-Ab3_x-yZ.js", bytes}, {"robots.txt", bytes}, {"a-b.css", bytes}});
    const auto control = [&](const std::string& name) {
        const std::string fields = interfaceAnswer(interface, "/torvex/ui/" + name, {}).fields;
        const std::size_t at = fields.find("Cache-Control: ") + 15;
        return fields.substr(at, fields.find('\r', at) - at);
    };
    EXPECT_EQ(control("main-Ab3_x-yZ.js"), "public, max-age=31536000, immutable");
    EXPECT_EQ(control("robots.txt"), "no-cache");
    EXPECT_EQ(control("a-b.css"), "no-cache");
}

}  // namespace
}  // namespace torvex::test
