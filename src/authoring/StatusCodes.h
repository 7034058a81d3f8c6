#pragma once

#include <string_view>

/// What operations answer in place of a result. Callers tell them from results by their being negative
/// numbers; codes that only one operation has stand beside it.
namespace torvex::status {

inline constexpr std::string_view done = "0";
inline constexpr std::string_view notLoggedIn = "-10";
/// Failed without a code of its own: no such thing, or the world broke.
inline constexpr std::string_view failed = "-99";

}  // namespace torvex::status
