#include "host/files/StaticFiles.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "host/files/PublicFile.h"
#include "media/MediaTypes.h"
#include "support/RunningServer.h"

namespace torvex {

namespace {

using namespace std::chrono_literals;
using test::RawHttpClient;
using test::RawReply;

TEST(StaticFiles, HiddenNamesAndSourcesAreNotPublic) {
    for (const char* path : {"/a.css", "/a/b/c.PNG", "/a b.txt", "/Ünïcode.html", "/a.b.PDF", "/a.svg"})
        EXPECT_TRUE(isPublicPath(path)) << path;
    for (const char* path : {"",
                             "/",
                             "a.css",
                             "//a.css",
                             "/a//b.css",
                             "/a/",
                             "/..",
                             "/../a.css",
                             "/a/../b.css",
                             "/./a.css",
                             "/.git/config",
                             "/.htaccess",
                             "/a/.b",
                             "/page.asp",
                             "/PAGE.ASP",
                             "/a.inc",
                             "/torvex.toml",
                             "/content.db",
                             "/a.db-wal",
                             "/dump.sql",
                             "/x.lua",
                             "/x.ini",
                             "/a.css.bak",
                             "/a.css~",
                             "/a.sqlite",
                             "/a.log",
                             "/a.pem",
                             "/a\\b.css",
                             "/.env",
                             "/a/.env",
                             "/shop.pfx",
                             "/id_rsa",
                             "/id_ed25519",
                             "/a.p12",
                             "/a.jks",
                             "/a.crt",
                             "/a.csr",
                             "/a.ppk",
                             "/a.kdbx",
                             "/content.db-journal",
                             "/content.db-shm",
                             "/a.sqlite-wal",
                             "/no-suffix",
                             "/a.b.c",
                             "/a.css.",
                             "/Makefile",
                             "/a.css.swp",
                             "/a.env",
                             "/a.htpasswd",
                             "/a.mdb",
                             "/a.exe",
                             "/a.tf",
                             "/a.yml",
                             "/core"})
        EXPECT_FALSE(isPublicPath(path)) << path;
    EXPECT_FALSE(isPublicPath(std::string_view("/a.css\0.txt", 11)));
}

TEST(MediaTypes, GoBySuffixInAnyCase) {
    EXPECT_EQ(mediaType("a.css"), "text/css; charset=utf-8");
    EXPECT_EQ(mediaType("a.b/C.JPG"), "image/jpeg");
    EXPECT_EQ(mediaType("a.js"), "text/javascript; charset=utf-8");
    EXPECT_EQ(mediaType("a.unknown"), "");
    EXPECT_EQ(mediaType("a"), "");
}

TEST(MediaTypes, AnOperatorsTypesGoBeforeTheKnownOnes) {
    const MediaTypes own{{"step", "model/step"}, {"txt", "text/x-own"}};
    EXPECT_EQ(mediaType("a.STEP", own), "model/step");
    EXPECT_EQ(mediaType("a.txt", own), "text/x-own");
    EXPECT_EQ(mediaType("a.css", own), "text/css; charset=utf-8");
    EXPECT_TRUE(isPublicPath("/a.step", own));
    EXPECT_FALSE(isPublicPath("/a.step"));
    EXPECT_FALSE(isPublicPath("/.step", own));
}

class StaticFilesTest : public testing::Test {
  protected:
    void start() {
        running.options.rootFolder = folder.path();
        running.start();
    }
    RawReply get(std::string_view target, std::string_view lines = {}) {
        return running.client().get(target, lines);
    }

    test::PublicFolder folder;
    test::RunningServer running;
};

TEST_F(StaticFilesTest, AFileIsAnsweredWithItsTypeAndVersion) {
    folder.write("css/a.css", "body {}");
    start();
    const RawReply reply = get("/css/a.css");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.body, "body {}");
    EXPECT_EQ(reply.field("Content-Type"), "text/css; charset=utf-8");
    EXPECT_EQ(reply.field("Cache-Control"), "public, max-age=300");
    EXPECT_EQ(reply.field("Accept-Ranges"), "bytes");
    EXPECT_EQ(reply.field("ETag").front(), '"');
    EXPECT_EQ(reply.field("Last-Modified").size(), 29U);
    EXPECT_TRUE(reply.fields("Set-Cookie").empty());
}

TEST_F(StaticFilesTest, WhatIsNotThereOrNotPublicIsNotFound) {
    folder.write("sub/a.css", "x");
    folder.write("page.asp", "secret");
    folder.write(".hidden", "secret");
    start();
    folder.write(".env", "secret");
    folder.write("shop.pfx", "secret");
    folder.write("id_rsa", "secret");
    folder.write("content.db-journal", "secret");
    for (const char* target :
         {"/.env", "/shop.pfx", "/id_rsa", "/content.db-journal", "/nothing.css", "/sub", "/sub/",
          "/page.asp", "/.hidden", "/sub/../sub/a.css", "/sub//a.css", "/%2e%2e/x.css", "/..%20/a.css"})
        EXPECT_EQ(get(target).status, 404) << target;
    for (const char* target : {"/sub%2fa.css", "/sub%5ca.css", "/sub/a.css%00", "/%zz"})
        EXPECT_EQ(get(target).status, 400) << target;
}

TEST_F(StaticFilesTest, ALinkOutOfTheFolderLeadsNowhere) {
    test::PublicFolder outside;
    outside.write("secret.txt", "secret");
    std::filesystem::create_symlink(outside.path() + "/secret.txt", folder.path() + "/a.txt");
    std::filesystem::create_directory_symlink(outside.path(), folder.path() + "/sub");
    start();
    EXPECT_EQ(get("/a.txt").status, 404);
    EXPECT_EQ(get("/sub/secret.txt").status, 404);
}

TEST_F(StaticFilesTest, ATypeThatTheSettingsNameIsPublic) {
    folder.write("part.step", "ISO-10303-21;");
    running.options.fileTypes["step"] = "model/step";
    start();
    const RawReply reply = get("/part.step");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.field("Content-Type"), "model/step");
}

TEST_F(StaticFilesTest, ALinkDoesNotLeadAroundAGuard) {
    folder.write("images/closed.png", "closed");
    folder.write("pub/open.png", "open");
    std::filesystem::create_symlink("../images/closed.png", folder.path() + "/pub/file.png");
    std::filesystem::create_directory_symlink("images", folder.path() + "/folder");
    std::filesystem::create_directory_symlink("../pub", folder.path() + "/images/out");
    running.guards.push_back(
        {"/images/", [] { return true; }, [](HostContext&, std::string_view) { return false; }});
    start();
    EXPECT_EQ(get("/images/closed.png").status, 403);
    EXPECT_EQ(get("/pub/file.png").status, 404);
    EXPECT_EQ(get("/folder/closed.png").status, 404);
    EXPECT_EQ(get("/pub/open.png").body, "open");
}

/// Takes all descriptors that this process may still open, for as long as it lives.
class NoDescriptors {
  public:
    NoDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const Descriptor lowest(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        const rlimit none{static_cast<rlim_t>(lowest.number()), before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }

  private:
    rlimit before_{};
};

TEST_F(StaticFilesTest, WithoutDescriptorsAFileIsNotLostButAnsweredLater) {
    folder.write("a.txt", "x");
    folder.write("images/a.png", "x");
    running.guards.push_back(
        {"/images/", [] { return true; }, [](HostContext&, std::string_view) { return true; }});
    start();
    RawHttpClient client = running.client();
    EXPECT_EQ(client.get("/nothing.css").status, 404);
    EXPECT_EQ(client.get("/images/a.png").status, 200);
    {
        const NoDescriptors none;
        for (const char* target : {"/a.txt", "/images/a.png", "/a.txt"}) {
            const RawReply reply = client.get(target);
            EXPECT_EQ(reply.status, 503) << target;
            EXPECT_NE(reply.field("Retry-After"), "");
        }
    }
    EXPECT_EQ(client.get("/a.txt").body, "x");
    const std::vector<std::string> log = running.logged();
    ASSERT_EQ(log.size(), 1U);
    EXPECT_NE(log[0].find("no file descriptor is left"), std::string::npos);
}

TEST_F(StaticFilesTest, APipeInTheFolderHoldsUpNobody) {
    ::mkfifo((folder.path() + "/pipe.txt").c_str(), 0600);
    start();
    EXPECT_EQ(get("/pipe.txt").status, 404);
}

TEST_F(StaticFilesTest, HeadGivesTheLengthAndNoBody) {
    folder.write("a.txt", "12345");
    folder.write("big.zip", std::string(200'000, 'x'));
    start();
    RawHttpClient client = running.client();
    client.send("HEAD /a.txt HTTP/1.1\r\nHost: a\r\n\r\nHEAD /big.zip HTTP/1.1\r\nHost: a\r\n\r\n");
    EXPECT_EQ(client.readWithoutBody().field("Content-Length"), "5");
    EXPECT_EQ(client.readWithoutBody().field("Content-Length"), "200000");
    EXPECT_EQ(client.get("/a.txt").body, "12345");
}

TEST_F(StaticFilesTest, AnEmptyFileIsAnswered) {
    folder.write("empty.txt", "");
    start();
    const RawReply reply = get("/empty.txt");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.field("Content-Length"), "0");
}

TEST_F(StaticFilesTest, ALargeFileArrivesWhole) {
    std::string bytes;
    for (int i = 0; bytes.size() < 5'000'000; ++i) bytes += std::to_string(i);
    folder.write("big.zip", bytes);
    start();
    RawHttpClient client = running.client();
    EXPECT_TRUE(client.get("/big.zip").body == bytes);
    EXPECT_TRUE(client.get("/big.zip").body == bytes);
}

TEST_F(StaticFilesTest, AReaderWhoLeavesInTheMiddleHarmsNobody) {
    folder.write("big.zip", std::string(30'000'000, 'x'));
    folder.write("a.txt", "x");
    start();
    for (int i = 0; i < 10; ++i) {
        RawHttpClient client = running.client();
        client.send("GET /big.zip HTTP/1.1\r\nHost: a\r\n\r\n");
        EXPECT_EQ(client.readWithoutBody().status, 200);
    }
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(get("/a.txt").body, "x");
}

TEST_F(StaticFilesTest, PartsOfSmallAndLargeFilesAreSent) {
    folder.write("small.txt", "0123456789");
    folder.write("big.txt", std::string(100'000, 'a') + "0123456789");
    start();
    const RawReply small = get("/small.txt", "Range: bytes=2-4\r\n");
    EXPECT_EQ(small.status, 206);
    EXPECT_EQ(small.body, "234");
    EXPECT_EQ(small.field("Content-Range"), "bytes 2-4/10");
    const RawReply big = get("/big.txt", "Range: bytes=-3\r\n");
    EXPECT_EQ(big.status, 206);
    EXPECT_EQ(big.body, "789");
    EXPECT_EQ(big.field("Content-Range"), "bytes 100007-100009/100010");
    const RawReply behind = get("/small.txt", "Range: bytes=10-\r\n");
    EXPECT_EQ(behind.status, 416);
    EXPECT_EQ(behind.field("Content-Range"), "bytes */10");
}

TEST_F(StaticFilesTest, AKnownVersionIsNotSentAgain) {
    folder.write("a.txt", "x");
    start();
    RawHttpClient client = running.client();
    const RawReply first = client.get("/a.txt");
    const RawReply second = client.get("/a.txt", "If-None-Match: " + first.field("ETag") + "\r\n");
    EXPECT_EQ(second.status, 304);
    EXPECT_EQ(second.field("Content-Length"), "");
    EXPECT_EQ(second.field("ETag"), first.field("ETag"));
    const RawReply third =
        client.get("/a.txt", "If-Modified-Since: " + first.field("Last-Modified") + "\r\n");
    EXPECT_EQ(third.status, 304);
    EXPECT_EQ(client.get("/a.txt").body, "x");
}

TEST_F(StaticFilesTest, PostIsNotAllowed) {
    folder.write("a.txt", "x");
    start();
    const RawReply reply =
        running.client().ask("POST /a.txt HTTP/1.1\r\nHost: a\r\nContent-Length: 0\r\n\r\n");
    EXPECT_EQ(reply.status, 405);
    EXPECT_EQ(reply.field("Allow"), "GET, HEAD");
}

TEST_F(StaticFilesTest, AGuardedFileIsSentOnlyIfTheGuardAgrees) {
    folder.write("images/open.png", "open");
    folder.write("images/closed.png", "closed");
    folder.write("other.png", "other");
    std::atomic<bool> isOn = true;
    running.guards.push_back({"/images/", [&] { return isOn.load(); },
                              [](HostContext& host, std::string_view path) {
                                  host.session.set("asked", Value(1));
                                  return path == "/images/open.png";
                              }});
    start();
    const RawReply open = get("/images/open.png");
    EXPECT_EQ(open.body, "open");
    EXPECT_EQ(open.field("Cache-Control"), "private, no-cache");
    const RawReply closed = get("/images/closed.png");
    EXPECT_EQ(closed.status, 403);
    EXPECT_EQ(closed.body.find("closed"), std::string::npos);
    EXPECT_EQ(get("/IMAGES/closed.png").status, 403);
    EXPECT_EQ(get("/other.png").body, "other");
    isOn = false;
    EXPECT_EQ(get("/images/closed.png").body, "closed");
}

TEST_F(StaticFilesTest, AGuardThatFailsSendsNothingOfTheFile) {
    folder.write("images/a.png", "secret");
    running.guards.push_back(
        {"/images/", [] { return true; },
         [](HostContext&, std::string_view) -> bool { throw std::runtime_error("broken"); }});
    start();
    const RawReply reply = get("/images/a.png");
    EXPECT_EQ(reply.status, 500);
    EXPECT_EQ(reply.body.find("secret"), std::string::npos);
}

/// The cache itself, without a server.
class FileCacheTest : public testing::Test {
  protected:
    std::string body(std::string_view path) {
        const Answer answer = std::get<Answer>(files().answer(path, head));
        if (const auto* shared = std::get_if<std::shared_ptr<const std::string>>(&answer.body))
            return **shared;
        return "status " + std::to_string(answer.status);
    }
    /// What has just been changed is not kept.
    void waitUntilSettled() { std::this_thread::sleep_for(2100ms); }
    StaticFiles& files() {
        if (!root) {
            root.emplace(folder.path());
            cache.emplace(*root, encoded, options);
        }
        return *cache;
    }

    test::PublicFolder folder;
    StaticFileOptions options;
    RequestHead head;
    std::optional<RootFolder> root;
    EncodedFiles encoded{0};
    std::optional<StaticFiles> cache;
};

TEST_F(FileCacheTest, AKeptFileIsNeverOlderThanItsLastChange) {
    folder.write("a.txt", "one");
    folder.write("b.txt", "one");
    folder.write("c.txt", "one");
    waitUntilSettled();
    for (const char* path : {"/a.txt", "/b.txt", "/c.txt"}) EXPECT_EQ(body(path), "one");
    EXPECT_GT(files().cachedBytes(), 0U);
    folder.write("a.txt", "two");
    EXPECT_EQ(body("/a.txt"), "two");
    folder.write("new.txt", "two");
    std::filesystem::rename(folder.path() + "/new.txt", folder.path() + "/b.txt");
    EXPECT_EQ(body("/b.txt"), "two");
    std::filesystem::remove(folder.path() + "/c.txt");
    EXPECT_EQ(body("/c.txt"), "status 404");
    folder.write("a.txt", "six");  // of the same size, and quickly after
    EXPECT_EQ(body("/a.txt"), "six");
}

TEST_F(FileCacheTest, AChangeWithItsTimeSetBackIsSeen) {
    folder.write("a.txt", "one");
    waitUntilSettled();
    EXPECT_EQ(body("/a.txt"), "one");
    const auto before = std::filesystem::last_write_time(folder.path() + "/a.txt");
    folder.write("a.txt", "two");
    std::filesystem::last_write_time(folder.path() + "/a.txt", before);
    EXPECT_EQ(body("/a.txt"), "two");
}

TEST_F(FileCacheTest, TheLeastRecentlyUsedGoesWhenRoomIsShort) {
    options.cacheBytes = 25'000;
    for (const char* name : {"a.txt", "b.txt", "c.txt"}) folder.write(name, std::string(10'000, name[0]));
    waitUntilSettled();
    body("/a.txt");
    body("/b.txt");
    EXPECT_GT(files().cachedBytes(), 20'000U);
    body("/c.txt");
    EXPECT_LE(files().cachedBytes(), 25'000U);
    EXPECT_EQ(body("/a.txt"), std::string(10'000, 'a'));
}

TEST_F(FileCacheTest, AKeptFileWhoseFolderBecomesALinkIsNotServed) {
    folder.write("pub/a.txt", "public");
    waitUntilSettled();
    EXPECT_EQ(body("/pub/a.txt"), "public");
    std::filesystem::create_directory(folder.path() + "/images");
    std::filesystem::rename(folder.path() + "/pub", folder.path() + "/images/pub");
    std::filesystem::create_directory_symlink("images/pub", folder.path() + "/pub");
    std::this_thread::sleep_for(1100ms);
    EXPECT_EQ(body("/pub/a.txt"), "status 404");
    EXPECT_EQ(body("/images/pub/a.txt"), "public");
}

TEST_F(FileCacheTest, AFileReplacedByALinkOutIsNotServed) {
    test::PublicFolder outside;
    outside.write("secret.txt", "secret");
    folder.write("a.txt", "public");
    waitUntilSettled();
    EXPECT_EQ(body("/a.txt"), "public");
    std::filesystem::remove(folder.path() + "/a.txt");
    std::filesystem::create_symlink(outside.path() + "/secret.txt", folder.path() + "/a.txt");
    EXPECT_EQ(body("/a.txt"), "status 404");
}

}  // namespace

}  // namespace torvex
