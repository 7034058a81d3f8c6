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

TEST(Hexadecimal, ARandomNameIsAnotherOneEachTime) {
    const std::string one = randomName(16);
    EXPECT_EQ(one.size(), 32U);
    EXPECT_NE(one, randomName(16));
}

}  // namespace
}  // namespace torvex
