#include "platform/net/HostNames.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(HostNames, WithoutAnyAllAreAnswered) {
    const HostNames all({});
    EXPECT_TRUE(all.answer("anything.example"));
    EXPECT_TRUE(all.answer(""));
}

TEST(HostNames, OnlyThoseNamedAreAnswered) {
    const HostNames names({"www.Example.org", "[::1]"});
    EXPECT_TRUE(names.answer("www.example.org"));
    EXPECT_TRUE(names.answer("WWW.EXAMPLE.ORG"));
    EXPECT_TRUE(names.answer("www.example.org."));
    EXPECT_TRUE(names.answer("[::1]"));
    for (const auto* other :
         {"", "example.org", "www.example.org.evil.test", "evil.www.example.org", "[::2]"})
        EXPECT_FALSE(names.answer(other)) << other;
}

TEST(HostNames, AStarStandsForAnyNameBelow) {
    const HostNames names({"*.example.org"});
    EXPECT_TRUE(names.answer("a.example.org"));
    EXPECT_TRUE(names.answer("a.b.Example.org"));
    for (const auto* other : {"example.org", ".example.org", "aexample.org", "a.example.org.test"})
        EXPECT_FALSE(names.answer(other)) << other;
}

TEST(HostNames, ANameHasNoPortAndNoBlank) {
    for (const auto* name : {"example.org", "*.example.org", "localhost", "127.0.0.1", "[::1]", "a_b.test"})
        EXPECT_TRUE(HostNames::isName(name)) << name;
    for (const auto* name :
         {"", "*", "*.", "a.*", "example.org:80", "a b", "[1.2.3.4]", "[x]", "https://a", ".a"})
        EXPECT_FALSE(HostNames::isName(name)) << name;
}

}  // namespace
}  // namespace torvex
