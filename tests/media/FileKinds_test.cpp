#include "media/FileKinds.h"

#include <gtest/gtest.h>
#include <string>

namespace torvex {
namespace {

using namespace std::string_literals;

const std::string zip = "PK\3\4\x14\0\0\0"s;
const std::string png = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR"s;
const std::string jpeg = "\xFF\xD8\xFF\xE0\0\x10JFIF"s;
const std::string gif = "GIF89a\x40\x01\xC8\0"s;
const std::string bmp = "BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x01\0\0\0"s;

TEST(FileKinds, AFileBeginsAsItsNameSays) {
    const struct {
        const char* suffix;
        std::string start;
    } files[] = {
        {"png", png},
        {"apng", png},
        {"jpg", jpeg},
        {"jpeg", jpeg},
        {"gif", gif},
        {"gif", "GIF87a"},
        {"bmp", bmp},
        {"webp", "RIFF\x24\0\0\0WEBPVP8 "s},
        {"avif",
         "\0\0\0\x1C"
         "ftypavif\0\0"s},
        {"ico", "\0\0\1\0\1\0"s},
        {"tif", "II*\0\x08"s},
        {"tiff", "MM\0*\0"s},
        {"svg", "<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"/>"},
        {"svg", "\xEF\xBB\xBF<SVG>"},
        {"pdf", "%PDF-1.7\n"},
        {"pdf", "\r\nsome printers write this\r\n%PDF-1.4"},
        {"docx", zip},
        {"odt", zip},
        {"zip", "PK\5\6"s},
        {"doc", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0"s},
        {"mp3", "ID3\3\0"s},
        {"mp3", "\xFF\xFB\x90\x44"},
        {"mp4",
         "\0\0\0\x18"
         "ftypmp42"s},
        {"mov", "\0\0\0\x08wide"s},
        {"webm", "\x1A\x45\xDF\xA3\x01"},
        {"wav", "RIFF\x24\0\0\0WAVEfmt "s},
        {"ogg", "OggS\0\2"s},
        {"woff2", "wOF2\0\1\0\0"s},
        {"ttf", "\0\1\0\0\0"s},
        {"gz", "\x1F\x8B\x08\0"s},
        {"7z", "7z\xBC\xAF\x27\x1C"},
        {"rtf", "{\\rtf1"},
        {"eps", "%!PS-Adobe"},
        {"ai", "%PDF-1.5"},
        {"txt", "BMW and others"},
        {"txt", "MZ was a general"},
        {"json", "true"},
        {"txt", "OTTO found the FWS"},
        {"txt", ""},
        {"csv",
         "\xFF\xFE"
         "a\0;\0"s},
        {"html", "<!doctype html>"},
    };
    for (const auto& [suffix, start] : files) EXPECT_TRUE(beginsAs(suffix, start)) << suffix << " " << start;
}

TEST(FileKinds, AFileOfAnotherKindDoesnt) {
    for (const auto* suffix : {"png", "jpg", "gif", "bmp", "webp", "avif", "svg", "ico", "tif", "pdf", "txt",
                               "csv", "html", "mp3", "mp4", "doc", "json", "woff2"}) {
        EXPECT_FALSE(beginsAs(suffix, zip)) << suffix;
    }
    for (const auto* suffix : {"jpg", "gif", "pdf", "docx", "txt"})
        EXPECT_FALSE(beginsAs(suffix, png)) << suffix;
    EXPECT_FALSE(beginsAs("png", jpeg));
    EXPECT_FALSE(beginsAs("png", "<html>"));
    EXPECT_FALSE(beginsAs("png", ""));
    EXPECT_FALSE(beginsAs("webp", "RIFF\x24\0\0\0WAVE"s));
    EXPECT_FALSE(beginsAs("svg", "<html><p>no drawing</p></html>"));
    EXPECT_FALSE(beginsAs("txt", "a\0b"s));
}

TEST(FileKinds, AProgramIsOfNoKind) {
    for (const std::string& program : {"MZ\x90\0\3\0"s,
                                       "\x7F"
                                       "ELF\2"s,
                                       "\xCF\xFA\xED\xFE"s}) {
        for (const auto* suffix : {"pdf", "txt", "mpp", "step", ""})
            EXPECT_FALSE(beginsAs(suffix, program)) << suffix;
    }
}

TEST(FileKinds, OfASuffixThatIsntKnownNothingCanBeSaid) {
    EXPECT_TRUE(beginsAs("step", "ISO-10303-21;"));
    EXPECT_TRUE(beginsAs("step", zip));
    EXPECT_TRUE(beginsAs("", zip));
}

TEST(FileKinds, ASuffixIsTakenWhole) {
    EXPECT_TRUE(beginsAs("pn", zip));
    EXPECT_TRUE(beginsAs("jpg jpeg", zip));
}

}  // namespace
}  // namespace torvex
