#include "platform/text/LogText.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(LogText, PlainTextStays) {
    EXPECT_EQ(forLog("no such table: A \"b\" 'c' Müller 日本 \\x"),
              "no such table: A \"b\" 'c' Müller 日本 \\x");
    EXPECT_EQ(forLog(""), "");
}

TEST(LogText, IsCutAtTwoHundredCharactersAndSaysHowMuchIsLeftOut) {
    EXPECT_EQ(forLog(std::string(200, 'a')), std::string(200, 'a'));
    EXPECT_EQ(forLog(std::string(2'000'000, 'a')), std::string(200, 'a') + "... (1999800 bytes more)");
    std::string wide;
    for (int i = 0; i < 201; ++i) wide += "é";
    EXPECT_EQ(forLog(wide), wide.substr(0, 400) + "... (2 bytes more)");
}

TEST(LogText, WhatSteersATerminalOrTurnsTheTextIsEscaped) {
    EXPECT_EQ(forLog("a\x1b[2Jb\r\nc\x7f"), "a\\x1b[2Jb\\x0d\\x0ac\\x7f");
    EXPECT_EQ(forLog(std::string_view("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(forLog("\u0080\u0085\u009b\u009f"), "\\u0080\\u0085\\u009b\\u009f");
    EXPECT_EQ(forLog("\u200e\u200f\u202a\u202b\u202c\u202d\u202e"),
              "\\u200e\\u200f\\u202a\\u202b\\u202c\\u202d\\u202e");
    EXPECT_EQ(forLog("\u2066\u2067\u2068\u2069\u061c"), "\\u2066\\u2067\\u2068\\u2069\\u061c");
    EXPECT_EQ(forLog("\u2028\u2029\ufeff\u200b\U000e0041"), "\\u2028\\u2029\\ufeff\\u200b\\U000e0041");
}

TEST(LogText, BrokenBytesAreEscapedOneByOne) {
    EXPECT_EQ(forLog("\x9b\xff\xc3(\xed\xa0\x80"), "\\x9b\\xff\\xc3(\\xed\\xa0\\x80");
    EXPECT_EQ(forLog("a\xe2\x80"), "a\\xe2\\x80");
}

TEST(LogText, WhatIsEscapedStaysAsItIs) {
    const std::string once = forLog("\x9b\u202e\n");
    EXPECT_EQ(forLog(once), once);
}

TEST(LogText, AChainsLinesAreDividedByBarsAndCutOneByOne) {
    EXPECT_EQ(chainForLog("Error in function getPage!\r\nno such\x01 table\n"),
              "Error in function getPage! | no such\\x01 table");
    EXPECT_EQ(
        chainForLog(std::string(250, 'a') + "\r\n" + std::string(250, 'b')),
        std::string(200, 'a') + "... (50 bytes more) | " + std::string(200, 'b') + "... (50 bytes more)");
    EXPECT_LT(chainForLog(std::string(1'000'000, '\n')).size(), 200U);
}

}  // namespace
}  // namespace torvex
