#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {

/// A name for the web space: blanks become "_", and characters beyond Latin 1, "#" and the delete character
/// become random letters or digits. What stands behind the last point stays as it is.
std::string safeFileName(std::string_view name);
/// A random name of 10 to 19 small letters and digits in place of what stands before the last point.
std::string randomFileName(std::string_view name);
/// The name under which a file that is sent as `given` is kept: safe, in small letters, without blanks around
/// it. Nothing for a name with a path or a control character, one that begins with a point, one that is too
/// long for a disk, and none.
std::optional<std::string> keptFileName(std::string_view given);

}  // namespace torvex
