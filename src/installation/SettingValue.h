#pragma once

#include <optional>
#include <string_view>

#include "platform/Value.h"

namespace torvex {

/// The value of a row of TORVEX_SETUP by its type: "N" a number, "C" the text, "B" whether it is "1". Nothing
/// for another type, and for a number that isn't one.
std::optional<Value> settingValue(std::string_view dataType, std::string_view value);

/// Whether a value says who somebody is, or where the installation and its database lie: what no setting may
/// change while the system runs. `parameter` ignores case.
bool isFixedValue(std::string_view parameter);

}  // namespace torvex
