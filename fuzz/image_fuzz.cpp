#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "media/ImageHeader.h"

using namespace torvex;

/// Headers of pictures. However broken, reading ends, and what it tells is a number.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::size_t readings = 0;
    const ImageHeader header = readImageHeader([&](std::uint64_t offset, std::size_t length) {
        if (++readings > 2 * size + 100) std::abort();
        return std::string(bytes.substr(std::min<std::uint64_t>(offset, size), length));
    });
    for (const auto& field : {header.width, header.height, header.depth}) {
        if (field && (header.type.empty() || !std::isfinite(*field) || *field < 0)) std::abort();
    }
    return 0;
}
