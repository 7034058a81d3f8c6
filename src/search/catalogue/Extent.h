#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace torvex::catalogue {

/// How much a catalogue holds.
struct Extent {
    std::size_t entries = 0;
    std::uint64_t bytes = 0;  ///< on the disk
    /// Up to which number of the queue it has come.
    std::int64_t queue = 0;
};

/// Of the catalogue of an installation; nothing where there is none that can be read.
std::optional<Extent> extentOf(std::string_view installPath);

}  // namespace torvex::catalogue
