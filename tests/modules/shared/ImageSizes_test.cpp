#include "modules/shared/ImageSizes.h"

#include "support/BoardTest.h"

namespace torvex::test {
namespace {

void expectShown(const ImageSize& image, const ImageSize& limit, const ShownImage& wanted) {
    const ShownImage shown = shownImage(image, limit);
    EXPECT_EQ(shown.columnWidth, wanted.columnWidth);
    EXPECT_EQ(shown.width, wanted.width);
    EXPECT_EQ(shown.height, wanted.height);
}

TEST(ShownImage, WithoutLimitsAPictureHasItsOwnSize) {
    expectShown({300, 200}, {0, 0}, {300, 300, 200});
}

TEST(ShownImage, IsMadeSmallerByItsWidth) {
    expectShown({300, 200}, {100, 0}, {100, 100, 66});
}

TEST(ShownImage, IsMadeSmallerByItsHeight) {
    expectShown({300, 200}, {0, 50}, {300, 75, 50});
}

TEST(ShownImage, TheSmallerOfBothRatiosHolds) {
    expectShown({300, 200}, {150, 50}, {150, 75, 50});
    expectShown({300, 200}, {30, 100}, {30, 30, 20});
}

TEST(ShownImage, IsNeverMadeLarger) {
    expectShown({30, 20}, {100, 100}, {100, 30, 20});
}

TEST(ShownImage, WholePixelsComeOutWhole) {
    for (int width = 1; width <= 700; ++width) expectShown({700, 700}, {width, 0}, {width, width, width});
}

TEST(ShownImage, APictureWithoutASizeHasNone) {
    expectShown({0, 0}, {100, 100}, {100, 0, 0});
    expectShown({0, 0}, {0, 0}, {0, 0, 0});
}

class ImageSizesTest : public BoardTest {};
INSTANTIATE_TEST_SUITE_P(Engines, ImageSizesTest, bothEngines(), engineName);

TEST_P(ImageSizesTest, ManyPicturesAreFoundByNamesOfAnyCase) {
    std::vector<std::string> names;
    for (int i = 0; i < 70; ++i) {
        names.push_back("P" + std::to_string(i) + ".jpg");
        image("p" + std::to_string(i) + ".JPG", 100 + i, 50);
    }
    image("p3.jpg", 999, 999, "bb");
    const ImageSizes sizes(connection(), "aa", names);
    for (int i = 0; i < 70; ++i)
        EXPECT_EQ(sizes.shown(names[static_cast<std::size_t>(i)], {}).width, 100 + i);
}

TEST_P(ImageSizesTest, OneThatIsNotRegisteredHasNoSize) {
    image("other.jpg", 10, 10, "bb");
    const ImageSizes sizes(connection(), "aa", {"other.jpg"});
    EXPECT_EQ(sizes.shown("other.jpg", {50, 50}).columnWidth, 0);
    EXPECT_EQ(sizes.shown("other.jpg", {50, 50}).width, 0);
}

}  // namespace
}  // namespace torvex::test
