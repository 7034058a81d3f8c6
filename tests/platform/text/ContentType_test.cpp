#include "platform/text/ContentType.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

using namespace std::string_literals;

TEST(ContentType, GivesTheCharset) {
    EXPECT_EQ(charsetOf("text/html; charset=utf-8"), "utf-8");
    EXPECT_EQ(charsetOf("text/html;CHARSET=ISO-8859-1"), "ISO-8859-1");
    EXPECT_EQ(charsetOf("text/html ; a=b; charset = \"utf-8\" ; c=d"), "utf-8");
}

TEST(ContentType, HasNoCharsetWhereNoneIsNamed) {
    for (const char* type : {"", ";", "text/html", "text/html; charset", "text/html; charset=",
                             "charset=utf-8", "text/html; xcharset=utf-8", "text/html; charset=\"\""}) {
        EXPECT_EQ(charsetOf(type), "") << type;
    }
}

TEST(ContentType, AQuotedSemicolonDividesNothing) {
    EXPECT_EQ(charsetOf("text/html; a=\"; charset=utf-8\"; charset=big5"), "big5");
    EXPECT_EQ(charsetOf("text/html; charset=\"utf-8"), "\"utf-8");
}

TEST(DecodeText, FollowsTheCharset) {
    EXPECT_EQ(decodeText("caf\xE9", "text/html; charset=iso-8859-1"), "caf\u00e9");
    EXPECT_EQ(decodeText("caf\u00e9", "text/html; charset=utf-8"), "caf\u00e9");
    EXPECT_EQ(decodeText("caf\xE9", "text/html; charset=utf-8"), "caf\uFFFD");
}

TEST(DecodeText, AMarkOverridesTheCharsetAndIsDropped) {
    EXPECT_EQ(decodeText("\xEF\xBB\xBF\u00e9", "text/html; charset=iso-8859-1"), "\u00e9");
    EXPECT_EQ(decodeText("\xFF\xFE\xE9\0a\0"s, "text/html; charset=utf-8"), "\u00e9a");
    EXPECT_EQ(decodeText("\xFE\xFF\0\xE9\0a"s, ""), "\u00e9a");
}

TEST(DecodeText, WithoutAnyWordTheBytesDecide) {
    EXPECT_EQ(decodeText("caf\u00e9", "text/html"), "caf\u00e9");
    EXPECT_EQ(decodeText("caf\xE9 \x80", ""), "caf\u00e9 \u20ac");
    EXPECT_EQ(decodeText("caf\xE9", "text/html; charset=nonsense"), "caf\u00e9");
}

}  // namespace
}  // namespace torvex
