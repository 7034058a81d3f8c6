#include "media/FileNames.h"

#include <gmock/gmock.h>

namespace torvex {
namespace {

TEST(KeptFileName, ANameIsMadeSafeAndSmall) {
    EXPECT_EQ(keptFileName("Plan of 2026.PDF"), "plan_of_2026.pdf");
    EXPECT_EQ(keptFileName("  rose.gif "), "rose.gif");
    EXPECT_EQ(keptFileName("\xC3\x84pfel.jpg"), "\xC3\xA4pfel.jpg");
    EXPECT_EQ(keptFileName("readme"), "readme");
    EXPECT_THAT(*keptFileName("a#b\xE2\x80\xAE.gif"), testing::MatchesRegex("a[a-z0-9]b[a-z0-9]\\.gif"));
}

TEST(KeptFileName, SomeNamesAreNone) {
    for (const std::string name :
         {"", "   ", ".", "..", ".htaccess", " .hidden", "../rose.gif", "a/b.gif", "a\\b.gif", "C:\\rose.gif",
          "a\nb.gif", "a\tb.gif", "\x7F.gif", "a\xC2\x85.gif", "\xFF.gif", "\xC3.gif"}) {
        EXPECT_EQ(keptFileName(name), std::nullopt) << name;
    }
    EXPECT_EQ(keptFileName(std::string("a\0.gif", 6)), std::nullopt);
}

TEST(KeptFileName, ANameFitsOnADisk) {
    EXPECT_TRUE(keptFileName(std::string(236, 'x') + ".gif"));
    EXPECT_FALSE(keptFileName(std::string(237, 'x') + ".gif"));
}

}  // namespace
}  // namespace torvex
