#include "media/Image.h"

#include <cmath>
#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace torvex::test {
namespace {

std::string little(unsigned value) {
    return {static_cast<char>(value & 0xFFU), static_cast<char>(value >> 8U & 0xFFU)};
}
std::string big(unsigned value) {
    return {static_cast<char>(value >> 8U & 0xFFU), static_cast<char>(value & 0xFFU)};
}
std::string big32(unsigned value) {
    return big(value >> 16U) + big(value & 0xFFFFU);
}

std::string gif(unsigned width, unsigned height, char flags) {
    return "GIF89a" + little(width) + little(height) + flags + std::string(2, '\0');
}
std::string bmp(unsigned width, unsigned height, unsigned bits) {
    return "BM" + std::string(16, '\0') + little(width & 0xFFFFU) + little(width >> 16U) + little(height) +
           little(0) + little(1) + little(bits) + std::string(24, '\0');
}
std::string png(unsigned width, unsigned height, unsigned bits, unsigned colourType) {
    return "\x89PNG\r\n\x1A\n" + big32(13) + "IHDR" + big32(width) + big32(height) + static_cast<char>(bits) +
           static_cast<char>(colourType) + std::string(7, '\0');
}
std::string segment(unsigned marker, const std::string& content) {
    return "\xFF" + std::string(1, static_cast<char>(marker)) +
           big(static_cast<unsigned>(content.size()) + 2) + content;
}
std::string jpeg(unsigned width, unsigned height, unsigned components, unsigned frame = 0xC0,
                 const std::string& before = segment(0xE0, "JFIF")) {
    return "\xFF\xD8" + before +
           segment(frame, "\x08" + big(height) + big(width) + static_cast<char>(components));
}

class ImageTest : public ::testing::Test {
  protected:
    void put(const std::string& path, const std::string& content) { host.files.bytes[path] = content; }
    /// The object after it was given a file of this content.
    Image& read(const std::string& name, const std::string& content) {
        put("/media/" + name, content);
        image.setFilename("/media/" + name);
        return image;
    }
    void expectUntouched() {
        EXPECT_EQ(image.filename(), "");
        EXPECT_EQ(image.filetype(), "");
        EXPECT_EQ(image.size(), 0);
        EXPECT_EQ(image.width(), 0);
        EXPECT_EQ(image.height(), 0);
        EXPECT_EQ(image.depth(), 0);
    }

    TestHost host;
    Image image{host.context()};
};

TEST_F(ImageTest, ReadsAGif) {
    read("a.gif", gif(320, 200, '\xF7'));
    EXPECT_EQ(image.filename(), "/media/a.gif");
    EXPECT_EQ(image.filetype(), "GIF");
    EXPECT_EQ(image.size(), 13);
    EXPECT_EQ(image.width(), 320);
    EXPECT_EQ(image.height(), 200);
    EXPECT_EQ(image.depth(), 256);
}

TEST_F(ImageTest, AGifsNameInItsBytesIsReadInAnyCase) {
    EXPECT_EQ(read("a.gif", "gif" + gif(3, 2, 0).substr(3)).filetype(), "GIF");
}

TEST_F(ImageTest, ReadsABmpOfTrueColours) {
    read("a.bmp", bmp(640, 480, 24));
    EXPECT_EQ(image.filetype(), "BMP");
    EXPECT_EQ(image.width(), 640);
    EXPECT_EQ(image.height(), 480);
    EXPECT_EQ(image.depth(), std::exp2(24));
}

TEST_F(ImageTest, ABmpWiderThanAWordReportsTheLowWord) {
    EXPECT_EQ(read("a.bmp", bmp(65536 + 7, 1, 1)).width(), 7);
}

TEST_F(ImageTest, ReadsAPngOfEachColourType) {
    struct Case {
        unsigned type;
        double bits;
    };
    for (const auto& [type, bits] : {Case{0, 8}, Case{2, 24}, Case{3, 8}, Case{4, 16}, Case{6, 32}}) {
        SCOPED_TRACE(type);
        Image fresh(host.context());
        put("/a.png", png(12, 34, 8, type));
        fresh.setFilename("/a.png");
        EXPECT_EQ(fresh.filetype(), "PNG");
        EXPECT_EQ(fresh.width(), 12);
        EXPECT_EQ(fresh.height(), 34);
        EXPECT_EQ(fresh.depth(), std::exp2(bits));
    }
}

TEST_F(ImageTest, AnUnknownColourTypeLeavesTheDepth) {
    read("a.gif", gif(1, 1, 2));
    for (const unsigned type : {1U, 5U, 7U, 255U}) {
        SCOPED_TRACE(type);
        read("b.png", png(12, 34, 8, type));
        EXPECT_EQ(image.filetype(), "PNG");
        EXPECT_EQ(image.width(), 12);
        EXPECT_EQ(image.height(), 34);
        EXPECT_EQ(image.depth(), 8);
    }
}

TEST_F(ImageTest, APngWiderThanAWordReportsTheLowWord) {
    EXPECT_EQ(read("a.png", png(70000, 1, 8, 0)).width(), 4464);
}

TEST_F(ImageTest, ReadsAJpegOfThreeComponents) {
    read("a.jpg", jpeg(800, 600, 3));
    EXPECT_EQ(image.filetype(), "JPG");
    EXPECT_EQ(image.width(), 800);
    EXPECT_EQ(image.height(), 600);
    EXPECT_EQ(image.depth(), std::exp2(24));
}

TEST_F(ImageTest, AJpegOfOneComponentHas256Colours) {
    EXPECT_EQ(read("a.jpeg", jpeg(8, 6, 1)).depth(), 256);
}

TEST_F(ImageTest, AProgressiveJpegIsReadLikeABaselineOne) {
    EXPECT_EQ(read("a.jpg", jpeg(8, 6, 1, 0xC2)).width(), 8);
}

TEST_F(ImageTest, NeitherHuffmanTablesNorLaterFramesCount) {
    read("a.jpg", jpeg(8, 6, 1, 0xC0, segment(0xC4, std::string(300, 'h')) + segment(0xC5, "12345678")));
    EXPECT_EQ(image.width(), 8);
    EXPECT_EQ(image.height(), 6);
}

TEST_F(ImageTest, AJpegMayBeginAnywhereInItsFile) {
    EXPECT_EQ(read("a.jpg", std::string(70000, 'x') + jpeg(8, 6, 1)).width(), 8);
}

TEST_F(ImageTest, FillBytesBeforeAMarkerAreSkipped) {
    EXPECT_EQ(read("a.jpg", jpeg(8, 6, 1, 0xC0, "\xFF\xFF\xFF" + segment(0xE0, "J"))).width(), 8);
}

TEST_F(ImageTest, AJpegWithoutAFrameIsNoPicture) {
    read("a.jpg", "\xFF\xD8" + segment(0xE0, "JFIF"));
    expectUntouched();
}

TEST_F(ImageTest, ASegmentThatIsLongerThanTheFileEndsTheSearch) {
    read("a.jpg", "\xFF\xD8\xFF\xE0\xFF\xFF" + std::string(100, 'x'));
    expectUntouched();
}

TEST_F(ImageTest, AJpegThatIsCutInItsFrameSetsWhatStandsBeforeTheCut) {
    const std::string whole = jpeg(8, 6, 3);
    read("a.jpg", whole.substr(0, whole.size() - 2));
    EXPECT_EQ(image.filetype(), "JPG");
    EXPECT_EQ(image.height(), 6);
    EXPECT_EQ(image.width(), 0);
    EXPECT_EQ(image.depth(), 0);
}

TEST_F(ImageTest, NoNumberHoldsTheColoursOfManyComponents) {
    EXPECT_EQ(read("a.jpg", jpeg(8, 6, 200)).depth(), 0);
}

TEST_F(ImageTest, TheContentsTellTheKindAndNotTheName) {
    EXPECT_EQ(read("a.gif", png(12, 34, 8, 2)).filetype(), "PNG");
}

TEST_F(ImageTest, TheEndOfTheNameIsReadInAnyCaseAndBlanksDontCount) {
    put("/media/A.GIF", gif(3, 2, 0));
    image.setFilename("  /media/A.GIF ");
    EXPECT_EQ(image.width(), 3);
    EXPECT_EQ(image.filename(), "/media/A.GIF");
}

TEST_F(ImageTest, AFileOfAnotherEndIsNotOpened) {
    read("a.txt", gif(3, 2, 0));
    EXPECT_EQ(host.files.reads, 0);
    expectUntouched();
}

TEST_F(ImageTest, ANameWithoutAnEndIsNotOpened) {
    read("agif", gif(3, 2, 0));
    EXPECT_EQ(host.files.reads, 0);
    expectUntouched();
}

TEST_F(ImageTest, AFileThatIsNotThereChangesNothing) {
    image.setFilename("/nowhere.gif");
    expectUntouched();
}

TEST_F(ImageTest, AnEmptyFileIsNoPicture) {
    read("a.gif", "");
    expectUntouched();
}

TEST_F(ImageTest, AFolderIsNoPicture) {
    host.files.createFolder("/media/a.gif");
    image.setFilename("/media/a.gif");
    expectUntouched();
}

TEST_F(ImageTest, AFileThatCantBeReadChangesNothing) {
    put("/media/a.gif", gif(3, 2, 0));
    host.files.readFailure = "input/output error";
    image.setFilename("/media/a.gif");
    expectUntouched();
}

TEST_F(ImageTest, WhatIsNotRecognisedKeepsTheLastPicture) {
    read("a.gif", gif(320, 200, 7));
    read("b.png", "no picture");
    EXPECT_EQ(image.filename(), "/media/a.gif");
    EXPECT_EQ(image.filetype(), "GIF");
    EXPECT_EQ(image.width(), 320);
}

TEST_F(ImageTest, AHeaderThatIsCutSetsWhatStandsBeforeTheCut) {
    read("a.gif", gif(320, 200, 7).substr(0, 9));
    EXPECT_EQ(image.filetype(), "GIF");
    EXPECT_EQ(image.size(), 9);
    EXPECT_EQ(image.width(), 320);
    EXPECT_EQ(image.height(), 0);
    EXPECT_EQ(image.depth(), 0);
}

}  // namespace
}  // namespace torvex::test
