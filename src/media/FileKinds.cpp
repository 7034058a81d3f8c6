#include "media/FileKinds.h"

#include <array>
#include <string>

#include "platform/text/Text.h"

namespace torvex {

namespace {

using Text = std::string_view;

/// What a file begins with, by the sign of its format; one sign may stand for several suffixes.
enum class Kind {
    None,
    Asf,
    Bmp,
    Bzip2,
    Ebml,
    Flac,
    Font,
    Gif,
    Gzip,
    Icon,
    Jpeg,
    JpegXl,
    Media,  ///< boxes of ISO: films, sound, some pictures
    Midi,
    Mp3,
    Ogg,
    Ole,
    Pdf,
    Photoshop,
    Png,
    PostScript,
    Program,
    Rar,
    Riff,
    Rtf,
    SevenZip,
    Swf,
    Tar,
    Tiff,
    Wasm,
    Woff,
    Xz,
    Zip
};

struct Sign {
    Kind kind;
    std::size_t offset;
    Text bytes;
};

// With the zeros that follow where letters alone could be the beginning of a text.
constexpr std::array signs{
    Sign{Kind::Asf, 0, Text("\x30\x26\xB2\x75\x8E\x66\xCF\x11", 8)},
    Sign{Kind::Bzip2, 0, "BZh"},
    Sign{Kind::Ebml, 0, "\x1A\x45\xDF\xA3"},
    Sign{Kind::Flac, 0, "fLaC"},
    Sign{Kind::Font, 0, Text("\0\1\0\0", 4)},
    Sign{Kind::Font, 0, Text("OTTO\0", 5)},
    Sign{Kind::Font, 0, Text("true\0", 5)},
    Sign{Kind::Font, 0, Text("ttcf\0", 5)},
    Sign{Kind::Gif, 0, "GIF87a"},
    Sign{Kind::Gif, 0, "GIF89a"},
    Sign{Kind::Gzip, 0, "\x1F\x8B\x08"},
    Sign{Kind::Icon, 0, Text("\0\0\1\0", 4)},
    Sign{Kind::Jpeg, 0, "\xFF\xD8\xFF"},
    Sign{Kind::JpegXl, 0, "\xFF\x0A"},
    Sign{Kind::JpegXl, 0, Text("\0\0\0\x0CJXL ", 8)},
    Sign{Kind::Media, 4, "ftyp"},
    Sign{Kind::Midi, 0, Text("MThd\0", 5)},
    Sign{Kind::Mp3, 0, "ID3\2"},
    Sign{Kind::Mp3, 0, "ID3\3"},
    Sign{Kind::Mp3, 0, "ID3\4"},
    Sign{Kind::Ogg, 0, Text("OggS\0", 5)},
    Sign{Kind::Ole, 0, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"},
    Sign{Kind::Photoshop, 0, Text("8BPS\0", 5)},
    Sign{Kind::Png, 0, "\x89PNG\r\n\x1A\n"},
    Sign{Kind::PostScript, 0, "%!PS"},
    Sign{Kind::PostScript, 0, "\xC5\xD0\xD3\xC6"},
    Sign{Kind::Program, 0,
         "\x7F"
         "ELF"},
    Sign{Kind::Program, 0, "\xCF\xFA\xED\xFE"},
    Sign{Kind::Program, 0, "\xCE\xFA\xED\xFE"},
    Sign{Kind::Program, 0, "\xCA\xFE\xBA\xBE"},
    Sign{Kind::Rar, 0, "Rar!\x1A\x07"},
    Sign{Kind::Riff, 0, "RIFF"},
    Sign{Kind::Rtf, 0, "{\\rtf"},
    Sign{Kind::SevenZip, 0, "7z\xBC\xAF\x27\x1C"},
    Sign{Kind::Tar, 257, "ustar"},
    Sign{Kind::Tiff, 0, Text("II*\0", 4)},
    Sign{Kind::Tiff, 0, Text("MM\0*", 4)},
    Sign{Kind::Wasm, 0, Text("\0asm", 4)},
    Sign{Kind::Woff, 0, "wOFF"},
    Sign{Kind::Woff, 0, "wOF2"},
    Sign{Kind::Xz, 0,
         Text("\xFD"
              "7zXZ\0",
              6)},
    Sign{Kind::Zip, 0, "PK\3\4"},
    Sign{Kind::Zip, 0, "PK\5\6"},
};

bool stands(Text start, std::size_t offset, Text bytes) {
    return start.size() >= offset && start.substr(offset).starts_with(bytes);
}

bool hasNul(Text start) {
    return start.find('\0') != Text::npos;
}

/// "BM" alone is the beginning of many a text; what follows it in a picture has a size that only some take.
bool isBmp(Text start) {
    if (!start.starts_with("BM") || start.size() < 18) return false;
    constexpr Text sizesOfHeaders = "\x0C\x28\x34\x38\x40\x6C\x7C";
    return sizesOfHeaders.find(start[14]) != Text::npos && start.substr(15, 3) == Text("\0\0\0", 3);
}

bool isWindowsProgram(Text start) {
    return start.starts_with("MZ") && hasNul(start.substr(0, 64));
}

/// The byte behind the letters is a version.
bool isSwf(Text start) {
    return (stands(start, 0, "FWS") || stands(start, 0, "CWS") || stands(start, 0, "ZWS")) &&
           start.size() > 3 && static_cast<unsigned char>(start[3]) < ' ';
}

Kind kindOf(Text start) {
    for (const Sign& sign : signs)
        if (stands(start, sign.offset, sign.bytes)) return sign.kind;
    if (isBmp(start)) return Kind::Bmp;
    if (isWindowsProgram(start)) return Kind::Program;
    if (isSwf(start)) return Kind::Swf;
    // Some programs write something of their own ahead of it.
    if (start.substr(0, 1024).find("%PDF-") != Text::npos) return Kind::Pdf;
    return Kind::None;
}

/// How sure the beginning of such a file is.
enum class Sure {
    Always,  ///< it has its sign
    Mostly,  ///< it has its sign, or none
    Words,   ///< it has none, and no byte that texts haven't
    Drawing  ///< it is a text with this word in it
};

struct Expected {
    Text suffixes;  ///< each between blanks
    Kind kind;
    Sure sure;
    Text brand{};  ///< of boxes and chunks: what stands from the eighth byte on; of drawings: the word
};

constexpr std::array expectations{
    Expected{" gif ", Kind::Gif, Sure::Always},
    Expected{" png apng ", Kind::Png, Sure::Always},
    Expected{" jpg jpeg ", Kind::Jpeg, Sure::Always},
    Expected{" bmp ", Kind::Bmp, Sure::Always},
    Expected{" webp ", Kind::Riff, Sure::Always, "WEBP"},
    Expected{" avif ", Kind::Media, Sure::Always, "avi"},
    Expected{" heic ", Kind::Media, Sure::Always},
    Expected{" ico ", Kind::Icon, Sure::Always},
    Expected{" tif tiff ", Kind::Tiff, Sure::Always},
    Expected{" jxl ", Kind::JpegXl, Sure::Always},
    Expected{" psd ", Kind::Photoshop, Sure::Always},
    Expected{" svg ", Kind::None, Sure::Drawing, "<svg"},
    Expected{" pdf ", Kind::Pdf, Sure::Always},
    Expected{" docx docm dotx xlsx xlsm xltx pptx potx ppsx odt ods odp odg odf ott epub kmz zip ", Kind::Zip,
             Sure::Always},
    Expected{" doc dot xls xlt ppt pps mpp vsd ", Kind::Ole, Sure::Always},
    Expected{" gz tgz ", Kind::Gzip, Sure::Always},
    Expected{" bz2 ", Kind::Bzip2, Sure::Always},
    Expected{" xz ", Kind::Xz, Sure::Always},
    Expected{" 7z ", Kind::SevenZip, Sure::Always},
    Expected{" rar ", Kind::Rar, Sure::Always},
    Expected{" tar ", Kind::Tar, Sure::Mostly},
    Expected{" rtf ", Kind::Rtf, Sure::Always},
    Expected{" ps eps ", Kind::PostScript, Sure::Always},
    Expected{" ai ", Kind::Pdf, Sure::Always},
    Expected{" ai ", Kind::PostScript, Sure::Always},
    Expected{" swf ", Kind::Swf, Sure::Always},
    Expected{" wasm ", Kind::Wasm, Sure::Always},
    Expected{" woff woff2 ", Kind::Woff, Sure::Always},
    Expected{" ttf otf ", Kind::Font, Sure::Always},
    Expected{" mp4 m4a m4v mov ", Kind::Media, Sure::Mostly},
    Expected{" mkv webm weba ", Kind::Ebml, Sure::Always},
    Expected{" ogg oga ogv opus ", Kind::Ogg, Sure::Always},
    Expected{" flac ", Kind::Flac, Sure::Always},
    Expected{" flac ", Kind::Mp3, Sure::Always},
    Expected{" mp3 aac ", Kind::Mp3, Sure::Mostly},
    Expected{" wav ", Kind::Riff, Sure::Always, "WAVE"},
    Expected{" avi ", Kind::Riff, Sure::Always, "AVI "},
    Expected{" wma wmv ", Kind::Asf, Sure::Always},
    Expected{" mid midi ", Kind::Midi, Sure::Always},
    Expected{" mpg mpeg dwg eot ", Kind::None, Sure::Mostly},
    Expected{" atom css csv dtd dxf eml gpx htm html ics js json kml m3u8 map md mjs rss srt tsv txt vcf vtt "
             "webmanifest xhtml xml xsd xsl xslt ",
             Kind::None, Sure::Words},
};

/// In either of the two orders of UTF-16, whose every other byte may be zero.
bool isWideText(Text start) {
    return start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF");
}

bool fits(const Expected& expected, Kind kind, Text start) {
    switch (expected.sure) {
        case Sure::Always:
            return kind == expected.kind && stands(start, expected.brand.empty() ? 0 : 8, expected.brand);
        case Sure::Mostly:
            return kind == expected.kind || kind == Kind::None;
        case Sure::Words:
            return kind == Kind::None && (isWideText(start) || !hasNul(start));
        case Sure::Drawing:
            return kind == Kind::None && !hasNul(start) && text::contains(start, expected.brand);
    }
    return false;
}

bool names(const Expected& expected, std::string_view suffix) {
    const std::string whole = " " + std::string(suffix) + " ";
    return suffix.find(' ') == Text::npos && !suffix.empty() && expected.suffixes.find(whole) != Text::npos;
}

}  // namespace

bool beginsAs(std::string_view suffix, std::string_view start) {
    start = start.substr(0, tellingBytes);
    const Kind kind = kindOf(start);
    if (kind == Kind::Program) return false;
    bool isKnown = false;
    for (const Expected& expected : expectations) {
        if (!names(expected, suffix)) continue;
        if (fits(expected, kind, start)) return true;
        isKnown = true;
    }
    return !isKnown;
}

}  // namespace torvex
