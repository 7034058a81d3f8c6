#pragma once

#include <string_view>

/// What changes of the modules' records answer beside the codes of all operations.
namespace torvex::moduleStatus {

inline constexpr std::string_view gone = "-1";
inline constexpr std::string_view noSuchPlace = "-2";  ///< no such website; of an item, no such category
inline constexpr std::string_view nameMissing = "-3";
inline constexpr std::string_view noSuchChoice = "-4";  ///< a code that isn't one, or a day that isn't
inline constexpr std::string_view noSuchTemplate = "-5";
inline constexpr std::string_view noAddress = "-6";
inline constexpr std::string_view numberTaken = "-7";
inline constexpr std::string_view titleTaken = "-8";
inline constexpr std::string_view noPlace = "-9";

}  // namespace torvex::moduleStatus
