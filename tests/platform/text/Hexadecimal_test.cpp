#include "platform/text/Hexadecimal.h"

#include <array>
#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(Hexadecimal, IsTwoDigitsForEachByte) {
    constexpr std::array<unsigned char, 4> bytes{0x00, 0x0a, 0x7f, 0xff};
    EXPECT_EQ(hexadecimal(bytes), "000a7fff");
    EXPECT_EQ(hexadecimal({}), "");
}

TEST(Hexadecimal, AHashIsThatOfTheText) {
    // printf Roses | sha256sum
    EXPECT_EQ(sha256("Roses"), "5c6f53e266a7bf766d588d64267e2f94678a2aa9554b776b2762accbeabe01cf");
    EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(Hexadecimal, ARandomNameIsAnotherOneEachTime) {
    const std::string one = randomName(16);
    EXPECT_EQ(one.size(), 32U);
    EXPECT_NE(one, randomName(16));
}

}  // namespace
}  // namespace torvex
