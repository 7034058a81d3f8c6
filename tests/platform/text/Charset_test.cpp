#include "platform/text/Charset.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "platform/Errors.h"

namespace torvex {
namespace {

using namespace std::string_literals;

std::string messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Error& error) {
        return error.what();
    }
    return "nothing was thrown";
}

TEST(Charset, KnowsTheCommonEncodingsInAnyCase) {
    for (const char* label : {"utf-8", "UTF-8", "iso-8859-1", "ISO-8859-15", "windows-1250", "shift_jis",
                              "Big5", "gb2312", "koi8-r", "euc-kr"}) {
        EXPECT_TRUE(charset::isKnown(label)) << label;
    }
}

TEST(Charset, AnUnknownOrEmptyOrBrokenLabelIsNotKnown) {
    for (const std::string& label : {""s, "  "s, "no-such-thing"s, "utf-8\0x"s}) {
        EXPECT_FALSE(charset::isKnown(label)) << label;
    }
}

TEST(Charset, EncodesWhatTheEncodingHas) {
    EXPECT_EQ(charset::encodeForHtml("café", "iso-8859-1"), "caf\xE9");
    EXPECT_EQ(charset::encodeForHtml("日本", "shift_jis"), "\x93\xFA\x96\x7B");
}

TEST(Charset, EncodesWhatTheEncodingLacksAsDecimalReferences) {
    EXPECT_EQ(charset::encodeForHtml("5 €", "iso-8859-1"), "5 &#8364;");
    EXPECT_EQ(charset::encodeForHtml("😀", "iso-8859-1"), "&#128512;");
}

TEST(Charset, DoesNotReplaceALetterByOneThatLooksAlike) {
    EXPECT_EQ(charset::encodeForHtml("Ā", "windows-1252"), "&#256;");
}

TEST(Charset, ALongTextOfReferencesIsWhole) {
    std::string text;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        text += "€";
        expected += "&#8364;";
    }
    EXPECT_EQ(charset::encodeForHtml(text, "iso-8859-1"), expected);
}

TEST(Charset, EncodingInUtf8OrAnUnknownEncodingChangesNothing) {
    EXPECT_EQ(charset::encodeForHtml("é€", "utf-8"), "é€");
    EXPECT_EQ(charset::encodeForHtml("é€", "no-such-thing"), "é€");
    EXPECT_EQ(charset::encodeForHtml("é€", ""), "é€");
}

TEST(Charset, DecodesBytes) {
    EXPECT_EQ(charset::decode("caf\xE9", "iso-8859-1"), "café");
    EXPECT_EQ(charset::decode("\xA4", "iso-8859-15"), "€");
    EXPECT_EQ(charset::decode("\x93\xFA\x96\x7B", "shift_jis"), "日本");
}

TEST(Charset, ReadsWhatBrowsersSendForLatin1) {
    EXPECT_EQ(charset::decode("\x80", "iso-8859-1"), "€");
}

TEST(Charset, DecodingReplacesWhatCannotBeDecoded) {
    EXPECT_EQ(charset::decode("a\xFF"
                              "b",
                              "utf-8"),
              "a\uFFFDb");
    EXPECT_EQ(charset::decode("\x81", "shift_jis"), "\uFFFD");
}

TEST(Charset, AnUnknownLabelIsReadAsUtf8) {
    EXPECT_EQ(charset::decode("é", "no-such-thing"), "é");
}

TEST(Charset, AUtf16FileBeginsWithItsMark) {
    EXPECT_EQ(charset::toUtf16File("aé"),
              "\xFF\xFE"
              "a\0\xE9\0"s);
    EXPECT_EQ(charset::toUtf16File(""), "\xFF\xFE"s);
}

TEST(Charset, ADecodedFileLosesItsMark) {
    EXPECT_EQ(charset::decodeFile("\xEF\xBB\xBF"
                                  "é"),
              "é");
    EXPECT_EQ(charset::decodeFile("\xFF\xFE"
                                  "a\0\xE9\0"s),
              "aé");
    EXPECT_EQ(charset::decodeFile("\xFE\xFF\0a\0\xE9"s), "aé");
}

TEST(Charset, AFileInUtf16ReadsBackAsItWasWritten) {
    const std::string text = "Grüße, 日本, 😀\r\n";
    EXPECT_EQ(charset::decodeFile(charset::toUtf16File(text)), text);
}

TEST(Charset, WithoutAMarkAFileIsUtf8UnlessUtf16IsAssumed) {
    EXPECT_EQ(charset::decodeFile("é"), "é");
    EXPECT_EQ(charset::decodeFile("a\0b\0"s, true), "ab");
    EXPECT_EQ(charset::decodeFile("\xEF\xBB\xBF"
                                  "é",
                                  true),
              "é");
}

TEST(Charset, ABadByteIsNamedByItsOffset) {
    EXPECT_THAT(messageOf([] { charset::decodeFile("abc\xE9 d"); }), testing::HasSubstr("offset 3"));
    EXPECT_THAT(messageOf([] {
                    charset::decodeFile(
                        "\xEF\xBB\xBF"
                        "abc\xE9 d");
                }),
                testing::HasSubstr("offset 6"));
}

TEST(Charset, AnUnpairedSurrogateOrAnOddByteIsReplaced) {
    EXPECT_EQ(charset::decodeFile("\xFF\xFE"
                                  "\x00\xD8"
                                  "a\0"s),
              "\uFFFDa");
    EXPECT_EQ(charset::decodeFile("\xFF\xFE"
                                  "a\0b"s),
              "a\uFFFD");
}

TEST(Charset, MayBeUsedFromManyThreads) {
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&wrong] {
            for (int i = 0; i < 200; ++i) {
                if (charset::encodeForHtml("é", i % 2 == 0 ? "iso-8859-1" : "windows-1252") != "\xE9")
                    ++wrong;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace torvex
