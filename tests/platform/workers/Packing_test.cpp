#include "platform/workers/Packing.h"

#include <gtest/gtest.h>
#include <limits>

#include "platform/Errors.h"

namespace torvex::test {
namespace {

constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

TEST(Packing, IsReadInTheOrderInWhichItWasPutIn) {
    const std::string bytes =
        Packing().number(0).text("").number(largest).text(std::string("a\0b", 3)).number(128).take() + "rest";
    Unpacking unpacking(bytes);
    EXPECT_EQ(unpacking.number(), 0U);
    EXPECT_EQ(unpacking.text(), "");
    EXPECT_EQ(unpacking.number(), largest);
    EXPECT_EQ(unpacking.text(), std::string_view("a\0b", 3));
    EXPECT_EQ(unpacking.number(), 128U);
    EXPECT_EQ(unpacking.rest(), "rest");
}
TEST(Packing, SmallNumbersTakeFewerBytes) {
    EXPECT_EQ(Packing().number(127).take().size(), 1U);
    EXPECT_EQ(Packing().number(128).take().size(), 2U);
    EXPECT_EQ(Packing().number(largest).take().size(), 10U);
}
TEST(Packing, BytesThatEndTooSoonAreRefused) {
    const std::string whole = Packing().number(300).text("text").take();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Unpacking unpacking(std::string_view(whole).substr(0, size));
        EXPECT_THROW((unpacking.number(), unpacking.text()), Error) << size;
    }
    EXPECT_THROW(Unpacking(Packing().number(largest).take() + "text").text(), Error);
}
TEST(Packing, ANumberWithoutAnEndIsRefused) {
    const std::string bytes(20, '\xFF');
    EXPECT_THROW(Unpacking(bytes).number(), Error);
}

}  // namespace
}  // namespace torvex::test
