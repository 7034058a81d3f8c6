#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace torvex {

/// "Sun, 06 Nov 1994 08:49:37 GMT".
std::string httpDate(std::time_t moment);

/// Reads that form; nothing for any other text (the two outdated forms are not sent by anyone).
std::optional<std::time_t> parseHttpDate(std::string_view text);

}  // namespace torvex
