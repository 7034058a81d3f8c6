#pragma once

#include <string_view>

#include "desk/RecordFields.h"

/// What changes of templates, stylesheets, applications and feeds answer beside the codes of all operations.
namespace torvex::designStatus {

using namespace recordStatus;
inline constexpr std::string_view fileTaken = "-5";      ///< of design files
inline constexpr std::string_view sourceMissing = "-5";  ///< of feeds
inline constexpr std::string_view noFileName = "-6";     ///< of design files
inline constexpr std::string_view noSource = "-6";       ///< of feeds: an address or a file that is none
inline constexpr std::string_view noWebsite = "-7";

}  // namespace torvex::designStatus
