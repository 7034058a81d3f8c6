#pragma once

#include <string_view>

namespace torvex {

// Days are "yyyymmdd". What is limited by two of them holds on both themselves; an empty one doesn't limit.

/// As a bound that doesn't limit.
inline constexpr std::string_view lastOfDays = "99999999";

bool isWithin(std::string_view day, std::string_view from, std::string_view to);

/// Whether a page that is switched on (1) or off shows on a day.
bool isOnlineOn(std::string_view day, double online, std::string_view from, std::string_view to);

}  // namespace torvex
