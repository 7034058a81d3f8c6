#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// What the records of the administration's registers have in common.

namespace torvex {

/// What changes of records answer beside the codes of all operations.
namespace recordStatus {
inline constexpr std::string_view gone = "-1";
inline constexpr std::string_view nameTaken = "-2";
inline constexpr std::string_view nameMissing = "-3";
inline constexpr std::string_view openElsewhere = "-4";  ///< another session has its lock
}  // namespace recordStatus

/// In characters, as their columns hold them.
inline constexpr std::size_t longestRecordName = 50;
inline constexpr std::size_t longestRecordDescription = 500;

/// Without blanks around it, cut to what its column holds.
std::string recordText(std::string_view given, std::size_t longest);
std::string recordName(std::string_view given);
std::string recordDescription(std::string_view given);

}  // namespace torvex
