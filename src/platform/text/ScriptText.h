#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// A text for a string of a script in either kind of quote: backslashes and quotes have a backslash in front.
/// What stands inside an attribute has to be encoded for that besides.
std::string scriptText(std::string_view text);

}  // namespace torvex
