#include "accounts/CommonPasswords.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

#include "installation/InstallFiles.h"

namespace torvex {
namespace {

/// All of the list, read from its beginning.
std::set<std::string> allOfThem() {
    std::set<std::string> all;
    std::string_view list = installFile("passwords/common.txt");
    std::string entry;
    while (!list.empty()) {
        const std::size_t end = list.find('\n');
        const std::string_view line = list.substr(0, end);
        list.remove_prefix(end + 1);
        if (line.empty()) continue;
        entry = entry.substr(0, static_cast<std::size_t>(line[0] - 'A')) + std::string(line.substr(1));
        all.insert(entry);
    }
    return all;
}

TEST(CommonPasswords, TheCommonestAndTheRarestOfTheListAreKnown) {
    EXPECT_TRUE(isCommonPassword("123456"));
    EXPECT_TRUE(isCommonPassword("password"));
    EXPECT_TRUE(isCommonPassword("10091970"));
    EXPECT_TRUE(isCommonPassword("nezabudu"));
}

TEST(CommonPasswords, TheFirstAMiddleAndTheLastInOrderAreKnown) {
    EXPECT_TRUE(isCommonPassword("!qaz1qaz"));
    EXPECT_TRUE(isCommonPassword("cheerio"));
    EXPECT_TRUE(isCommonPassword("zzzzzzzzzz"));
}

TEST(CommonPasswords, CaseAndBlanksAroundDontCount) {
    EXPECT_TRUE(isCommonPassword("  PassWord "));
    EXPECT_TRUE(isCommonPassword("QWERTY"));
    // Its capital is that of "s".
    EXPECT_TRUE(isCommonPassword("pa\xC5\xBFsword"));
    EXPECT_FALSE(isCommonPassword("pass word"));
}

TEST(CommonPasswords, OthersArent) {
    for (const auto* password :
         {"", "  ", "nexttime", "k7mp-2wqa-x9rt-h4ze", "fern and moss", "passwor1d", "!", "~~~~~~~~~~~~",
          "zzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzzz", "Be2%82%ac", "\n", "password\n", "\xC3\xBC", "\xFF"}) {
        EXPECT_FALSE(isCommonPassword(password)) << password;
    }
}

TEST(CommonPasswords, AreAHundredThousandAndEachIsFound) {
    const auto all = allOfThem();
    EXPECT_EQ(all.size(), 100'000U);
    for (const auto& password : all) {
        ASSERT_TRUE(isCommonPassword(password)) << password;
        ASSERT_EQ(isCommonPassword(password + '~'), all.contains(password + '~')) << password;
    }
}

}  // namespace
}  // namespace torvex
