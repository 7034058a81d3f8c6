#pragma once

#include <optional>
#include <string_view>

#include "platform/Value.h"

namespace torvex {

class ApplicationValues;

/// The value of a row of TORVEX_SETUP by its type: "N" a number, "C" the text, "B" whether it is "1". Nothing
/// for another type, and for a number that isn't one.
std::optional<Value> settingValue(std::string_view dataType, std::string_view value);

/// Whether a value says who somebody is, or where the installation and its database lie: what no setting may
/// change while the system runs. `parameter` ignores case.
bool isFixedValue(std::string_view parameter);

/// Whether `torvex.toml` decides a value in place of the table: where https is what the site is, the three
/// settings that say what is on https.
bool isHeldByFile(const ApplicationValues& application, std::string_view parameter);
/// Gives those values what they then are.
void holdByFile(ApplicationValues& application);

}  // namespace torvex
