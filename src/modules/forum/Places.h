#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {

/// The places of reactions in their topic: levels of two characters, joined by points. The places below one
/// are counted 01 to 99 and then in letters, A0 to ZZ, which sort behind: 1035 in all.
namespace forumPlace {

/// Below this many levels nobody finds his way; a reaction to one at the last level stands beside it.
inline constexpr std::size_t mostLevels = 20;

/// The first place below `parent` ("" the topic), behind `last`, the last one that is taken there ("" none).
/// Nothing when all are taken.
std::optional<std::string> next(std::string_view parent, std::string_view last);

/// The place below which a reaction to the one at `reference` stands: its own, as far as there are levels.
std::string_view parentFor(std::string_view reference);

/// Whether `reference` stands somewhere below `ancestor`.
bool isBelow(std::string_view reference, std::string_view ancestor);

}  // namespace forumPlace
}  // namespace torvex
