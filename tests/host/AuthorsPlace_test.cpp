// Where authors work: beside the public files below their folder, and on a host of their own.

#include <gtest/gtest.h>

#include "installation/BuiltInterface.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "support/RunningServer.h"

namespace torvex::test {
namespace {

class AuthorsPlace : public testing::Test {
  protected:
    void serve(const std::string& authoringHost = "") {
        server_.page("/", [](HostContext& host) { host.response.write("home"); });
        server_.page("/tvx.asp", [](HostContext& host) { host.response.write("public page"); });
        server_.page("/torvex/login", [](HostContext& host) { host.response.write("door"); });
        PageRoute shell{"/torvex/", [](HostContext& host) { host.response.write("shell"); }};
        shell.reach = PageRoute::Reach::BelowButFiles;
        server_.pages.push_back(std::move(shell));
        files_.write("torvex/client.js", "script");
        files_.write("a.css", "style");
        built_.write("main-12345678.js", "interface");
        server_.interface = std::make_shared<BuiltInterface>(built_.path());
        server_.options.rootFolder = files_.path();
        server_.options.authoringHost = authoringHost;
        server_.start();
    }
    RawReply get(const std::string& path, const std::string& host = "www.site.test",
                 const std::string& fields = "") {
        return server_.client().ask("GET " + path + " HTTP/1.1\r\nHost: " + host + "\r\n" + fields + "\r\n");
    }

    PublicFolder files_;
    PublicFolder built_;
    RunningServer server_;
};

TEST_F(AuthorsPlace, EveryAddressBelowIsTheShellButForFiles) {
    serve();
    for (const char* path : {"/torvex/", "/torvex/page.asp?pageId=1", "/TORVEX/Sites.asp", "/torvex/sitemap",
                             "/torvex/torvex_forum/forums.asp", "/torvex/.hidden"})
        EXPECT_EQ(get(path).body, "shell") << path;
    EXPECT_EQ(get("/torvex/login").body, "door");
    EXPECT_EQ(get("/torvex/client.js").body, "script");
    EXPECT_EQ(get("/torvex/none.js").status, 404);
    EXPECT_EQ(get("/torvex/ui/main-12345678.js").body, "interface");
    EXPECT_EQ(get("/torvex/ui/none").status, 404);
    EXPECT_EQ(get("/torvexes").status, 404);
}

TEST_F(AuthorsPlace, AScriptThatWouldAnswerInPlaceOfTheServerIsRefused) {
    serve();
    for (const char* path : {"/torvex/client.js", "/torvex/ui/main-12345678.js", "/torvex/", "/a.css"})
        EXPECT_EQ(get(path, "www.site.test", "Service-Worker: script\r\n").status, 403) << path;
    EXPECT_EQ(get("/torvex/client.js").status, 200);
}

TEST_F(AuthorsPlace, OnAHostOfTheirOwnAuthorsMeetNoPublicPage) {
    serve("authors.site.test");
    EXPECT_EQ(get("/torvex/", "authors.site.test").body, "shell");
    EXPECT_EQ(get("/torvex/", "Authors.Site.test:8080").body, "shell");
    EXPECT_EQ(get("/torvex/ui/main-12345678.js", "authors.site.test").body, "interface");
    EXPECT_EQ(get("/tvx.asp?pageId=1", "authors.site.test").status, 404);
    EXPECT_EQ(get("/", "authors.site.test").field("Location"), "/torvex/");
    EXPECT_EQ(get("/a.css", "authors.site.test").body, "style");
}

TEST_F(AuthorsPlace, AndLinksToPublicPagesLeadToWhereTheyAre) {
    server_.options.hosts = {"*.site.test", "authors.site.test", "www.site.test"};
    serve("authors.site.test");
    const RawReply reply = get("/tvx.asp?pageId=1", "authors.site.test:8080");
    EXPECT_EQ(reply.status, 307);
    EXPECT_EQ(reply.field("Location"), "http://www.site.test:8080/tvx.asp?pageId=1");
    EXPECT_EQ(get("/torvex/", "authors.site.test").body, "shell");
}

TEST_F(AuthorsPlace, AndNoOtherHostAnswersThem) {
    serve("authors.site.test");
    for (const char* path : {"/torvex/", "/torvex/login", "/torvex/page.asp", "/torvex/ui/main-12345678.js"})
        EXPECT_EQ(get(path).status, 404) << path;
    EXPECT_EQ(get("/tvx.asp?pageId=1").body, "public page");
    EXPECT_EQ(get("/").body, "home");
    EXPECT_EQ(get("/torvex/client.js").body, "script");
    EXPECT_EQ(get("/a.css", "www.site.test", "Service-Worker: script\r\n").status, 200);
}

TEST_F(AuthorsPlace, PublicFilesLoadInAnOriginOfItsOwn) {
    serve();
    EXPECT_EQ(get("/a.css").field("Access-Control-Allow-Origin"), "*");
    EXPECT_EQ(get("/tvx.asp").field("Access-Control-Allow-Origin"), "");
    EXPECT_EQ(get("/torvex/login").field("Access-Control-Allow-Origin"), "");
}

}  // namespace
}  // namespace torvex::test
