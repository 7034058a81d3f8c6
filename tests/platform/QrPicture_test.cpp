#include "platform/QrPicture.h"

#include <gmock/gmock.h>
#include <regex>
#include <vector>

#include "platform/Errors.h"

namespace torvex {
namespace {

/// The squares that the picture draws dark.
std::vector<std::vector<bool>> squaresOf(const std::string& svg) {
    static const std::regex side("viewBox=\"0 0 (\\d+) ");
    static const std::regex run("M(\\d+) (\\d+)h(\\d+)v1h-");
    std::smatch found;
    std::regex_search(svg, found, side);
    const std::size_t width = std::stoul(found[1]);
    std::vector<std::vector<bool>> squares(width, std::vector<bool>(width));
    for (std::sregex_iterator at(svg.begin(), svg.end(), run); at != std::sregex_iterator(); ++at) {
        for (std::size_t i = 0; i < std::stoul((*at)[3]); ++i)
            squares.at(std::stoul((*at)[2])).at(std::stoul((*at)[1]) + i) = true;
    }
    return squares;
}

std::string rowOf(const std::vector<std::vector<bool>>& squares, std::size_t row, std::size_t from,
                  std::size_t count) {
    std::string text;
    for (std::size_t i = from; i < from + count; ++i) text += squares.at(row).at(i) ? '#' : '.';
    return text;
}

TEST(QrPicture, HasTheThreeMarksByWhichCamerasFindIt) {
    const auto squares = squaresOf(qrPicture("otpauth://totp/Garden:ann?secret=MZXW6YTB", "Code"));
    const std::size_t width = squares.size();
    constexpr const char* mark[] = {"#######", "#.....#", "#.###.#", "#.###.#",
                                    "#.###.#", "#.....#", "#######"};
    for (std::size_t row = 0; row < 7; ++row) {
        EXPECT_EQ(rowOf(squares, 4 + row, 4, 7), mark[row]);
        EXPECT_EQ(rowOf(squares, 4 + row, width - 11, 7), mark[row]);
        EXPECT_EQ(rowOf(squares, width - 11 + row, 4, 7), mark[row]);
    }
}

TEST(QrPicture, HasAQuietBorderAllAround) {
    const auto squares = squaresOf(qrPicture("moss", "Code"));
    const std::size_t width = squares.size();
    EXPECT_EQ(width, 21U + 8U);
    const std::string white(width, '.');
    for (const std::size_t row : {0U, 1U, 2U, 3U, 25U, 26U, 27U, 28U})
        EXPECT_EQ(rowOf(squares, row, 0, width), white);
    for (std::size_t row = 0; row < width; ++row) {
        EXPECT_EQ(rowOf(squares, row, 0, 4), "....");
        EXPECT_EQ(rowOf(squares, row, width - 4, 4), "....");
    }
}

TEST(QrPicture, DiffersByItsText) {
    EXPECT_EQ(qrPicture("moss", "Code"), qrPicture("moss", "Code"));
    EXPECT_NE(qrPicture("moss", "Code"), qrPicture("fern", "Code"));
}

TEST(QrPicture, EncodesWhatItIsCalled) {
    EXPECT_THAT(qrPicture("moss", "A \"code\" & <more>"),
                testing::HasSubstr("aria-label=\"A &quot;code&quot; &amp; &lt;more&gt;\""));
}

TEST(QrPicture, OfATextThatIsTooLongIsNone) {
    EXPECT_THROW(qrPicture(std::string(4000, 'x'), "Code"), Error);
}

}  // namespace
}  // namespace torvex
