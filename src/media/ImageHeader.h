#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace torvex {

/// At most `length` bytes of a file from `offset` (counted from 0) on, fewer where the file ends.
using ReadRange = std::function<std::string(std::uint64_t offset, std::size_t length)>;

/// What the bytes of a picture tell of it. A file that is cut off sets what stands before the cut.
struct ImageHeader {
    std::string_view type;         ///< "GIF", "BMP", "PNG" or "JPG"; "" for none of them
    std::optional<double> width;   ///< pixels
    std::optional<double> height;  ///< pixels
    std::optional<double> depth;   ///< the number of colours: 2 to the power of the bits of a pixel
};

/// The contents decide, whatever the file is called. Sizes are the low words of their fields, so that a
/// picture of 70,000 pixels reports 4,464. Reads some bytes of a GIF, BMP or PNG; the frame header of a JPEG
/// can lie anywhere, and is looked for through the whole file, a window at a time. What `read` throws passes
/// through.
ImageHeader readImageHeader(const ReadRange& read);

}  // namespace torvex
