#include "media/ImageHeader.h"

#include <array>
#include <cmath>
#include <limits>

#include "platform/text/Text.h"

namespace torvex {

namespace {

using Byte = std::optional<unsigned>;

/// The bytes of a file, read a window at a time. Nothing behind its end.
class Bytes {
  public:
    explicit Bytes(const ReadRange& read) : read_(read) {}

    Byte at(std::uint64_t offset) {
        if (offset < begin_ || offset - begin_ >= window_.size()) {
            begin_ = offset;
            window_ = read_(offset, windowSize);
            if (window_.empty()) return std::nullopt;
        }
        return static_cast<unsigned char>(window_[static_cast<std::size_t>(offset - begin_)]);
    }
    std::optional<double> littleEndian(std::uint64_t offset) { return word(at(offset), at(offset + 1)); }
    std::optional<double> bigEndian(std::uint64_t offset) { return word(at(offset + 1), at(offset)); }

  private:
    static constexpr std::size_t windowSize = 64 * 1024;

    static std::optional<double> word(Byte low, Byte high) {
        if (!low || !high) return std::nullopt;
        return *low + 256.0 * *high;
    }

    const ReadRange& read_;
    std::uint64_t begin_ = 0;
    std::string window_;
};

/// Nothing when no number holds that many.
std::optional<double> colours(unsigned bits) {
    if (bits >= static_cast<unsigned>(std::numeric_limits<double>::max_exponent)) return std::nullopt;
    return std::exp2(bits);
}

/// Sets the fields in turn, up to the first that isn't there.
bool setSize(ImageHeader& header, std::optional<double> width, std::optional<double> height) {
    header.width = width;
    if (width) header.height = height;
    return width && height;
}

ImageHeader readGif(Bytes& file) {
    ImageHeader header{"GIF", {}, {}, {}};
    if (!setSize(header, file.littleEndian(6), file.littleEndian(8))) return header;
    if (const Byte flags = file.at(10)) header.depth = colours((*flags & 7U) + 1);
    return header;
}

ImageHeader readBmp(Bytes& file) {
    ImageHeader header{"BMP", {}, {}, {}};
    if (!setSize(header, file.littleEndian(18), file.littleEndian(22))) return header;
    if (const Byte bits = file.at(28)) header.depth = colours(*bits);
    return header;
}

/// Values in a pixel by colour type: grey, none, RGB, palette, grey and alpha, none, RGB and alpha.
constexpr std::array<unsigned, 7> channels{1, 0, 3, 1, 2, 0, 4};

ImageHeader readPng(Bytes& file) {
    ImageHeader header{"PNG", {}, {}, {}};
    if (!setSize(header, file.bigEndian(18), file.bigEndian(22))) return header;
    const Byte bits = file.at(24);
    const Byte colourType = file.at(25);
    if (!bits || !colourType || *colourType >= channels.size()) return header;
    const unsigned values = channels[*colourType];
    if (values > 0) header.depth = colours(values * *bits);
    return header;
}

/// Where the file's first segments begin, at the second 255 of 255, 216, 255.
std::optional<std::uint64_t> findStartOfImage(Bytes& file) {
    unsigned before = 0;
    unsigned last = 0;
    for (std::uint64_t offset = 0;; ++offset) {
        const Byte byte = file.at(offset);
        if (!byte) return std::nullopt;
        if (before == 255 && last == 216 && *byte == 255) return offset;
        before = last;
        last = *byte;
    }
}

/// The marker of a frame header. The later kinds of frames don't count.
bool startsFrame(unsigned marker) {
    return marker >= 0xC0 && marker <= 0xC3;
}

/// Where the marker of the first frame header stands.
std::optional<std::uint64_t> findFrame(Bytes& file) {
    auto offset = findStartOfImage(file);
    while (offset) {
        while (file.at(*offset) == Byte(255)) ++*offset;
        const Byte marker = file.at(*offset);
        if (!marker) return std::nullopt;
        if (startsFrame(*marker)) return offset;
        const auto length = file.bigEndian(*offset + 1);
        if (!length) return std::nullopt;
        *offset += 2 + static_cast<std::uint64_t>(*length);
    }
    return std::nullopt;
}

ImageHeader readJpeg(Bytes& file) {
    const auto frame = findFrame(file);
    if (!frame) return {};
    ImageHeader header{"JPG", {}, {}, {}};
    header.height = file.bigEndian(*frame + 4);
    if (header.height) header.width = file.bigEndian(*frame + 6);
    const Byte components = file.at(*frame + 8);
    if (header.width && components) header.depth = colours(8 * *components);
    return header;
}

}  // namespace

ImageHeader readImageHeader(const ReadRange& read) {
    const std::string start = read(0, 3);
    Bytes file(read);
    if (text::equals(start, "GIF")) return readGif(file);
    if (start.starts_with("BM")) return readBmp(file);
    if (start == "\x89PN") return readPng(file);
    return readJpeg(file);
}

}  // namespace torvex
