#pragma once

#include <optional>

namespace torvex {

/// The row that a list goes on with, as callers give it: counted from 0, a whole number. Nothing for one that no list
/// has. A plain number, since the 16 bits of the other whole numbers end at 32,767.
inline std::optional<int> firstRow(double from) {
    constexpr double longestList = 1e9;
    if (!(from >= 0 && from <= longestList)) return std::nullopt;
    return static_cast<int>(from);
}

}  // namespace torvex
