#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace torvex {

/// Two digits for each byte, in lower case.
std::string hexadecimal(std::span<const unsigned char> bytes);

/// The SHA-256 of a text, as digits.
std::string sha256(std::string_view text);

/// So many random bytes of the system, as digits: a name that nobody can guess.
std::string randomName(std::size_t bytes);

}  // namespace torvex
