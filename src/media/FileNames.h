#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// A name for the web space: blanks become "_", and characters beyond Latin 1, "#" and the delete character
/// become random letters or digits. What stands behind the last point stays as it is.
std::string safeFileName(std::string_view name);
/// A random name of 10 to 19 small letters and digits in place of what stands before the last point.
std::string randomFileName(std::string_view name);

}  // namespace torvex
