#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// The form in which an author's password is stored and compared: at most 20 digits, from which it can't be
/// read back. Case and blanks around it are ignored, and so is what follows the 20th character. An empty
/// password gives "". Pure.
std::string encodePassword(std::string_view password);

}  // namespace torvex
