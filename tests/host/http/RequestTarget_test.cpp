#include "host/http/RequestTarget.h"

#include <gtest/gtest.h>

namespace torvex {

namespace {

/// The decoded path, "refused" when the target isn't taken.
std::string path(std::string_view target) {
    const auto result = parseTarget(target);
    return result ? result->path : "refused";
}

TEST(RequestTarget, DecodesPaths) {
    EXPECT_EQ(path("/"), "/");
    EXPECT_EQ(path("/a/b.css?x=1"), "/a/b.css");
    EXPECT_EQ(path("/M%C3%BCller"), "/Müller");
    EXPECT_EQ(path("/a%20b+c"), "/a b+c");
    EXPECT_EQ(path("/%41%7e"), "/A~");
    EXPECT_EQ(path("/a%252fb"), "/a%2fb");  // decoded once
    EXPECT_EQ(path("/../x"), "/../x");      // for those who use it to refuse
}

TEST(RequestTarget, RefusesBrokenEscapesAndWhatFoolsChecks) {
    for (const char* target :
         {"/%",   "/%4",    "/%zz",   "/%4g",     "/a%",     "/%00",      "/a%00.css",   "/%2f",
          "/%2F", "/a%5cb", "/a%5Cb", "/a\\b",    "/%0d%0a", "/%7f",      "/a#b",        "",
          "*",    "a",      "a/b",    "ftp://a/", "http://", "http:///x", "http://a b/", "javascript://a/"})
        EXPECT_EQ(path(target), "refused") << target;
    EXPECT_EQ(path(std::string_view("/a\0b", 4)), "refused");
}

TEST(RequestTarget, KeepsTheQueryAsItStands) {
    const auto target = parseTarget("/a?b=%zz&c=%00?d");
    ASSERT_TRUE(target);
    EXPECT_EQ(target->query, "b=%zz&c=%00?d");
}

TEST(RequestTarget, ReadsTheAbsoluteForm) {
    const auto target = parseTarget("http://www.example.org:80/a?b");
    ASSERT_TRUE(target);
    EXPECT_EQ(target->authority, "www.example.org:80");
    EXPECT_EQ(target->path, "/a");
    EXPECT_EQ(target->query, "b");
    EXPECT_EQ(path("http://a"), "/");
    EXPECT_EQ(path("http://a?b"), "/");
}

TEST(RequestTarget, AHostIsANameOrAddressWithAnOptionalPort) {
    for (const char* host :
         {"a", "www.example.org", "a:80", "127.0.0.1:8080", "[::1]", "[::1]:80", "a_b", "a:"})
        EXPECT_TRUE(isValidHost(host)) << host;
    for (const char* host : {"", ":80", "a b", "a/b", "a@b", "a:x", "a:123456", "a\"b", "<a>", "[::1", "[]",
                             "[x]", "a:80:80", "a,b", "a'b", "é"})
        EXPECT_FALSE(isValidHost(host)) << host;
    EXPECT_FALSE(isValidHost(std::string(300, 'a')));
}

TEST(RequestTarget, TheNameOfAHostIsWithoutThePort) {
    EXPECT_EQ(hostName("a:80"), "a");
    EXPECT_EQ(hostName("a"), "a");
    EXPECT_EQ(hostName("[::1]:80"), "[::1]");
}

}  // namespace

}  // namespace torvex
