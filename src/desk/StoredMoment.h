#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/DateTime.h"

namespace torvex {

/// The moment of a row that keeps its day as "yyyymmdd" and its time apart from it; `time` is "hh:mm:ss". Nothing
/// for a day or a time that isn't one.
std::optional<DateTime> storedMoment(std::string_view day, std::string_view time);

}  // namespace torvex
