#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvex {

/// How many characters of a text from outside a log keeps.
inline constexpr std::size_t loggedCharacters = 200;

/// A text as it may stand in a line of the log: its first `most` characters, and how many bytes follow them.
/// What could break the line, steer a terminal or turn the direction of the text around is written as an
/// escape: "\x1b" for control characters and bytes that are no UTF-8, "\u202e" for characters that aren't
/// seen. What is escaped already stays as it is. Pure; safe from any thread.
std::string forLog(std::string_view text, std::size_t most = loggedCharacters);

/// The same for an error's text: its lines, divided by bars, each cut for itself.
std::string chainForLog(std::string_view chain, std::size_t most = loggedCharacters);

}  // namespace torvex
