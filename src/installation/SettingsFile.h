#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// The text of a new installation's `torvex.toml`: the database's address, and all other settings as comments
/// with their defaults.
std::string settingsFileText(std::string_view databaseUrl);

}  // namespace torvex
