#include "host/http/ByteRange.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "platform/net/HttpDate.h"

namespace torvex {

namespace {

std::string shown(const FileSelection& selection) {
    if (const auto* part = std::get_if<FilePart>(&selection))
        return fmt::format("{}+{}", part->offset, part->length);
    if (std::holds_alternative<NotModified>(selection)) return "not modified";
    return std::holds_alternative<WholeFile>(selection) ? "whole" : "unsatisfiable";
}

std::string range(std::string_view text, std::uint64_t size = 100) {
    return shown(selectRange(text, size));
}

TEST(ByteRange, SelectsParts) {
    EXPECT_EQ(range("bytes=0-0"), "0+1");
    EXPECT_EQ(range("bytes=0-99"), "0+100");
    EXPECT_EQ(range("bytes=10-19"), "10+10");
    EXPECT_EQ(range("bytes=90-"), "90+10");
    EXPECT_EQ(range("bytes=90-1000"), "90+10");
    EXPECT_EQ(range("bytes=-10"), "90+10");
    EXPECT_EQ(range("bytes=-1000"), "0+100");
    EXPECT_EQ(range("Bytes= 5-6 "), "5+2");
    EXPECT_EQ(range("bytes=0-18446744073709551615"), "0+100");
}

TEST(ByteRange, PartsBehindTheEndCannotBeHad) {
    EXPECT_EQ(range("bytes=100-"), "unsatisfiable");
    EXPECT_EQ(range("bytes=100-200"), "unsatisfiable");
    EXPECT_EQ(range("bytes=-0"), "unsatisfiable");
    EXPECT_EQ(range("bytes=0-", 0), "unsatisfiable");
    EXPECT_EQ(range("bytes=-5", 0), "unsatisfiable");
}

TEST(ByteRange, WhatIsNoRangeGivesTheWholeFile) {
    for (const char* text :
         {"", "bytes", "bytes=", "bytes=-", "bytes=a-b", "bytes=5", "bytes=9-5", "items=0-5", "bytes=0-5-7",
          "bytes=--5", "bytes=1-x", "bytes=0-18446744073709551616", "bytes=+1-2"})
        EXPECT_EQ(range(text), "whole") << text;
}

TEST(ByteRange, SeveralPartsGiveTheWholeFile) {
    EXPECT_EQ(range("bytes=0-1,5-6"), "whole");
}

class FileConditionsTest : public testing::Test {
  protected:
    std::string select(FileConditions conditions) { return shown(torvex::select(conditions, version)); }

    const std::time_t modified = 1'780'000'000;
    const std::string same = httpDate(modified);
    const std::string earlier = httpDate(modified - 1);
    const std::string later = httpDate(modified + 1);
    const FileVersion version{100, "\"tag\"", modified};
};

TEST_F(FileConditionsTest, AKnownTagIsNotModified) {
    EXPECT_EQ(select({.ifNoneMatch = "\"tag\""}), "not modified");
    EXPECT_EQ(select({.ifNoneMatch = "\"x\", W/\"tag\""}), "not modified");
    EXPECT_EQ(select({.ifNoneMatch = "*"}), "not modified");
    EXPECT_EQ(select({.ifNoneMatch = "\"x\""}), "whole");
    EXPECT_EQ(select({.ifNoneMatch = "tag"}), "whole");
}

TEST_F(FileConditionsTest, AFileUnchangedSinceIsNotModified) {
    EXPECT_EQ(select({.ifModifiedSince = same}), "not modified");
    EXPECT_EQ(select({.ifModifiedSince = later}), "not modified");
    EXPECT_EQ(select({.ifModifiedSince = earlier}), "whole");
    EXPECT_EQ(select({.ifModifiedSince = "yesterday"}), "whole");
}

TEST_F(FileConditionsTest, TheTagDecidesOverTheTime) {
    EXPECT_EQ(select({.ifNoneMatch = "\"x\"", .ifModifiedSince = later}), "whole");
}

TEST_F(FileConditionsTest, ARangeHoldsForItsVersionOnly) {
    EXPECT_EQ(select({.range = "bytes=0-9", .ifRange = "\"tag\""}), "0+10");
    EXPECT_EQ(select({.range = "bytes=0-9", .ifRange = same}), "0+10");
    EXPECT_EQ(select({.range = "bytes=0-9", .ifRange = "\"x\""}), "whole");
    EXPECT_EQ(select({.range = "bytes=0-9", .ifRange = "W/\"tag\""}), "whole");
    EXPECT_EQ(select({.range = "bytes=0-9", .ifRange = later}), "whole");
}

TEST(HttpDate, WritesAndReadsTheOneForm) {
    EXPECT_EQ(httpDate(784111777), "Sun, 06 Nov 1994 08:49:37 GMT");
    EXPECT_EQ(parseHttpDate("Sun, 06 Nov 1994 08:49:37 GMT"), 784111777);
}

TEST(HttpDate, ReadsNothingElse) {
    for (const char* text : {"", "now", "Sunday, 06-Nov-94 08:49:37 GMT", "Sun, 06 Nov 1994 08:49:37 CET",
                             "Sun, 06 Foo 1994 08:49:37 GMT", "Sun, 06 Nov 1994 25:49:37 GMT",
                             "Sun, 00 Nov 1994 08:49:37 GMT", "Sun, -6 Nov 1994 08:49:37 GMT"})
        EXPECT_FALSE(parseHttpDate(text)) << text;
}

}  // namespace

}  // namespace torvex
