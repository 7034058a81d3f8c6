#include "delivery/BodyPlaces.h"

#include <gtest/gtest.h>

#include "platform/Errors.h"
#include "templates/Markers.h"

namespace torvex {
namespace {

std::string tag(int number) {
    return "<!--!torvex_body_" + std::to_string(number) + "!-->";
}
std::string block(int number, const std::string& sample) {
    const std::string name = "<!--!torvex_body_" + std::to_string(number);
    return name + "_start!-->" + sample + name + "_end!-->";
}

std::string filled(const std::string& page, const std::vector<std::string>& bodies) {
    BodyPlaces places(page);
    for (int n = 1; places.has(n); ++n) {
        const auto index = static_cast<std::size_t>(n - 1);
        places.fill(n, index < bodies.size() ? bodies[index] : "?");
    }
    return places.text();
}

TEST(BodyPlaces, FillsEveryTagOfANumber) {
    EXPECT_EQ(filled("a" + tag(1) + "b" + tag(2) + "c" + tag(1), {"x", "y"}), "axbycx");
    EXPECT_EQ(filled("<!--!TORVEX_Body_1!-->", {"x"}), "x");
}

TEST(BodyPlaces, OfBlocksOnlyTheFirst) {
    EXPECT_EQ(filled("a" + block(1, "s") + block(1, "t"), {"x"}), "ax" + block(1, "t"));
}

TEST(BodyPlaces, ATagGoesBeforeABlock) {
    EXPECT_EQ(filled(block(1, "s") + tag(1), {"x"}), block(1, "s") + "x");
}

TEST(BodyPlaces, NumbersOtherThanPlainOnesAreText) {
    for (const char* text : {"<!--!torvex_body_01!-->", "<!--!torvex_body_0!-->", "<!--!torvex_body_-1!-->",
                             "<!--!torvex_body_1x!-->", "<!--!torvex_body_1 !-->", "<!--!torvex_body_1",
                             "<!--!torvex_body_99999999999!-->", "<!--!torvex_body_1_middle!-->"}) {
        EXPECT_EQ(filled(text, {"x"}), text);
    }
}

TEST(BodyPlaces, ABlockThatIsGoneTakesThePlacesInItAlong) {
    EXPECT_EQ(filled(block(1, tag(2) + block(3, "s")) + "-", {"x", "y", "z"}), "x-");
    EXPECT_EQ(filled(block(1, tag(2)) + "-" + tag(2), {"x", "y"}), "x-y");
}

TEST(BodyPlaces, BlocksMayStandInEachOther) {
    EXPECT_EQ(filled(block(3, block(2, block(1, "s"))), {"x", "y", "z"}), "z");
}

TEST(BodyPlaces, ABlockThatAnotherHasTornApartIsNone) {
    const std::string start = "<!--!torvex_body_1_start!-->";
    const std::string end = "<!--!torvex_body_2_end!-->";
    EXPECT_EQ(filled(start + "<!--!torvex_body_2_start!-->s<!--!torvex_body_1_end!-->" + end, {"x", "y"}),
              "x" + end);
    EXPECT_EQ(filled("<!--!torvex_body_1_end!-->a" + start, {"x"}), "<!--!torvex_body_1_end!-->a" + start);
}

TEST(BodyPlaces, ABodyMayBringPlacesOfHigherNumbers) {
    EXPECT_EQ(filled(tag(1), {tag(1) + tag(2), "[" + tag(2) + tag(3) + "]", "z"}),
              tag(1) + "[" + tag(2) + "z]");
    EXPECT_EQ(filled(tag(1), {block(2, "s") + block(2, "t"), "y"}), "y" + block(2, "t"));
    EXPECT_EQ(filled(block(2, "late") + tag(1), {block(2, "s"), "y"}), "y" + block(2, "s"));
    EXPECT_EQ(filled(tag(1) + block(2, "late"), {block(2, "s"), "y"}), "y" + block(2, "late"));
}

TEST(BodyPlaces, APageThatWouldGrowTooLargeStaysAsItIs) {
    std::string page;
    for (int n = 0; n < 20; ++n) page += tag(1);
    BodyPlaces places(page);
    EXPECT_THROW(places.fill(1, std::string(markers::largestPage / 20, 'x')), Error);
    EXPECT_EQ(places.text(), page);
    places.fill(1, std::string(markers::largestPage / 20 - 100, 'x'));
    EXPECT_EQ(places.text().size(), (markers::largestPage / 20 - 100) * 20);
}

TEST(BodyPlaces, HundredsOfThousandsOfPlacesTakeOnePass) {
    constexpr int count = 200'000;
    std::string tags;
    std::string blocks;
    for (int n = 1; n <= count; ++n) {
        tags += tag(n);
        blocks += block(n, "s");
    }
    const std::vector<std::string> bodies(count, "x");
    EXPECT_EQ(filled(tags, bodies), std::string(count, 'x'));
    EXPECT_EQ(filled(blocks, bodies), std::string(count, 'x'));
}

}  // namespace
}  // namespace torvex
