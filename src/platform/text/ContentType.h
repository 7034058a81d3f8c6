#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// The value of "charset" in a Content-Type ("text/html; charset=utf-8"), without quotes; "" when it has
/// none.
std::string charsetOf(std::string_view contentType);

/// A fetched text as UTF-8. A byte order mark decides, then the charset of `contentType`. A text that says
/// neither is UTF-8 if its bytes are, and otherwise windows-1252, the encoding of pages that don't say.
std::string decodeText(std::string_view bytes, std::string_view contentType);

}  // namespace torvex
