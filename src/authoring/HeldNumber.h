#pragma once

#include <string_view>

namespace torvex {

/// A number of the page record as it is held, a 16-bit whole one. Throws `Error` that names the property or
/// column when it doesn't fit.
int heldNumber(std::string_view name, double number);

}  // namespace torvex
