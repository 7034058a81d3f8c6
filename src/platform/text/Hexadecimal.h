#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace torvex {

/// Two digits for each byte, in lower case.
std::string hexadecimal(std::span<const unsigned char> bytes);

/// So many random bytes of the system, as digits: a name that nobody can guess.
std::string randomName(std::size_t bytes);

}  // namespace torvex
