#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex::cli {

/// The statements of a script, which are divided by ";" outside of quotes and comments. Blanks around them are
/// cut off, and so are statements of nothing but comments.
std::vector<std::string> splitStatements(std::string_view script);

/// The first word of a statement in small letters, behind comments; "" when there is none.
std::string firstWord(std::string_view statement);

}  // namespace torvex::cli
