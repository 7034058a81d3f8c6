#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace torvex {

/// A number as the 16-bit whole number in which orders, flags and the ids of small tables are held: the
/// nearest one, a half to the even side. Nothing when that doesn't fit.
inline std::optional<int> shortInteger(double number) {
    using Limits = std::numeric_limits<std::int16_t>;
    const double whole = std::nearbyint(number);
    if (!(whole >= Limits::min() && whole <= Limits::max())) return std::nullopt;
    return static_cast<int>(whole);
}

}  // namespace torvex
