#pragma once

#include <string_view>

#include "desk/RecordFields.h"

/// What changes of roles answer beside the codes of all operations.
namespace torvex::roleStatus {

using namespace recordStatus;
inline constexpr std::string_view noSuchPlace = "-2";  ///< of `setEditRights`
inline constexpr std::string_view noSuchEntry = "-2";  ///< of `setAdvancedRight`
inline constexpr std::string_view noSuchRight = "-3";  ///< of the rights
inline constexpr std::string_view moreThanOwn = "-5";
inline constexpr std::string_view lastAdministrator = "-6";

}  // namespace torvex::roleStatus
