#pragma once

#include <string>

namespace torvex {

/// 256 random bits of the system as letters that need no escape anywhere: what nobody can guess.
std::string randomSecret();

}  // namespace torvex
