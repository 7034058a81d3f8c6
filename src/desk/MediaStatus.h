#pragma once

#include <string_view>

/// What changes of media answer beside the codes of all operations.
namespace torvex::mediaStatus {

inline constexpr std::string_view gone = "-1";
inline constexpr std::string_view taken = "-2";      ///< a name or a title
inline constexpr std::string_view otherType = "-2";  ///< of `replaceMedia`
inline constexpr std::string_view missing = "-3";    ///< a name or a title
/// A file of this name is there already.
inline constexpr std::string_view exists = "exists";

/// An alternative text that stays as it is.
inline constexpr std::string_view keptAlt = "-1";

}  // namespace torvex::mediaStatus
