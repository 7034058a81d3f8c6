// What every answer tells browsers and caches, over real sockets.

#include "host/http/SecurityFields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/http/AnswerParts.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using test::RawReply;
using testing::HasSubstr;
using testing::Not;

class SecurityFieldsTest : public testing::Test {
  protected:
    SecurityFieldsTest() {
        running.page("/hello.asp", [](HostContext& host) { host.response.write("Hello"); });
    }

    void start() { running.start(); }
    RawReply get(std::string_view target, std::string_view lines = {}) {
        return running.client().get(target, lines);
    }

    test::RunningServer running;
};

TEST_F(SecurityFieldsTest, EveryAnswerCarriesTheSecurityFields) {
    start();
    for (const char* target : {"/hello.asp", "/nothing", "/%zz"}) {
        const RawReply reply = get(target);
        EXPECT_EQ(reply.field("X-Content-Type-Options"), "nosniff") << target;
        EXPECT_EQ(reply.field("Referrer-Policy"), "strict-origin-when-cross-origin") << target;
        EXPECT_EQ(reply.field("X-Frame-Options"), "SAMEORIGIN") << target;
        EXPECT_THAT(reply.field("Permissions-Policy"), HasSubstr("camera=()")) << target;
        EXPECT_EQ(reply.field("Cross-Origin-Opener-Policy"), "") << target;
    }
}

TEST_F(SecurityFieldsTest, PagesAreForThisSiteAndPublicFilesForAll) {
    const test::PublicFolder folder;
    folder.write("a.txt", "x");
    running.options.rootFolder = folder.path();
    running.guards.push_back(
        {"/guarded/", [] { return true; }, [](HostContext&, std::string_view) { return true; }});
    folder.write("guarded/a.txt", "x");
    start();
    for (const char* target : {"/hello.asp", "/guarded/a.txt"})
        EXPECT_EQ(get(target).field("Cross-Origin-Resource-Policy"), "same-origin") << target;
    EXPECT_EQ(get("/a.txt").field("Cross-Origin-Resource-Policy"), "cross-origin");
}

TEST_F(SecurityFieldsTest, PermissionsAreTheSettings) {
    running.options.permissionsPolicy = "camera=(self)";
    start();
    EXPECT_EQ(get("/hello.asp").fields("Permissions-Policy"), std::vector<std::string>{"camera=(self)"});
}

TEST_F(SecurityFieldsTest, WithoutPermissionsThereIsNoFieldForThem) {
    running.options.permissionsPolicy.clear();
    start();
    EXPECT_THAT(get("/hello.asp").head, Not(HasSubstr("Permissions-Policy")));
}

TEST_F(SecurityFieldsTest, APageIsNotKeptBySharedCaches) {
    start();
    EXPECT_EQ(get("/hello.asp").field("Cache-Control"), "private, no-cache");
}

TEST_F(SecurityFieldsTest, WhatASessionWithALoginGetsIsKeptNowhere) {
    const test::PublicFolder folder;
    folder.write("guarded/a.txt", "x");
    running.options.rootFolder = folder.path();
    bool mayRead = true;
    running.guards.push_back(
        {"/guarded/", [] { return true; }, [&](HostContext&, std::string_view) { return mayRead; }});
    running.page("/login.asp", [](HostContext& host) { host.session.set("tvx_username", "ann"); });
    running.page("/author.asp", [](HostContext& host) { host.session.set("torvex_username", "sa"); });
    running.page("/control.asp", [](HostContext& host) { host.response.cacheControl = "no-cache"; });
    running.page("/ended.asp", [](HostContext& host) { host.response.end(); });
    running.page("/logout.asp", [](HostContext& host) { host.session.set("tvx_username", ""); });
    start();
    for (const char* login : {"/login.asp", "/author.asp"}) {
        const RawReply reply = get(login);
        EXPECT_EQ(reply.field("Cache-Control"), "no-store");
        const std::string cookie = "Cookie: " + reply.sessionCookie() + "\r\n";
        EXPECT_EQ(get("/hello.asp", cookie).field("Cache-Control"), "no-store");
        EXPECT_EQ(get("/ended.asp", cookie).field("Cache-Control"), "no-store");
        EXPECT_EQ(get("/control.asp", cookie).field("Cache-Control"), "no-cache, no-store");
        EXPECT_EQ(get("/guarded/a.txt", cookie).field("Cache-Control"), "private, no-store");
        mayRead = false;
        EXPECT_EQ(get("/guarded/a.txt", cookie).status, 403);
        mayRead = true;
    }
    const std::string cookie = "Cookie: " + get("/login.asp").sessionCookie() + "\r\n";
    EXPECT_EQ(get("/logout.asp", cookie).field("Cache-Control"), "no-store");
    EXPECT_EQ(get("/hello.asp", cookie).field("Cache-Control"), "private, no-cache");
    EXPECT_EQ(get("/guarded/a.txt").field("Cache-Control"), "private, no-cache");
}

TEST_F(SecurityFieldsTest, WhereAGuardLeadsSomebodyWithALoginIsKeptNowhere) {
    const test::PublicFolder folder;
    running.options.rootFolder = folder.path();
    running.guards.push_back({"/guarded/", [] { return true; },
                              [](HostContext& host, std::string_view) {
                                  host.response.redirect("/hello.asp");
                                  return false;
                              }});
    running.page("/login.asp", [](HostContext& host) { host.session.set("tvx_username", "ann"); });
    start();
    const std::string cookie = "Cookie: " + get("/login.asp").sessionCookie() + "\r\n";
    const RawReply led = get("/guarded/a.txt", cookie);
    EXPECT_EQ(led.field("Location"), "/hello.asp");
    EXPECT_EQ(led.field("Cache-Control"), "no-store");
    EXPECT_EQ(get("/guarded/a.txt").field("Cache-Control"), "private, no-cache");
}

TEST_F(SecurityFieldsTest, PagesOfTheServersOwnRunNoScript) {
    start();
    for (const char* target : {"/nothing.asp", "/%zz"})
        EXPECT_THAT(get(target).field("Content-Security-Policy"),
                    testing::AllOf(HasSubstr("default-src 'none'"), Not(HasSubstr("script-src"))));
}

}  // namespace

TEST(SecurityFields, AreKnownByTheirNames) {
    ServerOptions options;
    options.httpsAlone = true;
    options.strictTransport = std::chrono::seconds(1);
    const SecurityFields fields(options);
    for (const auto kind : {SecurityFields::Kind::Page, SecurityFields::Kind::PublicFile}) {
        std::string_view lines = fields.of(kind, true);
        while (!lines.empty()) {
            const std::string_view line = answerParts::takeLine(lines);
            EXPECT_TRUE(SecurityFields::has(line.substr(0, line.find(':')))) << line;
        }
    }
    EXPECT_TRUE(SecurityFields::has("x-frame-options"));
    EXPECT_FALSE(SecurityFields::has("Content-Security-Policy"));
}

}  // namespace torvex
