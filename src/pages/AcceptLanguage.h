#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace torvex {

/// Of the languages that are known the one that a request's Accept-Language likes best, without its region and
/// in lower case: "de" for "de-AT;q=0.8, fr". Of those that it likes alike the first; "" when it likes none.
std::string likedLanguage(std::string_view acceptLanguage,
                          const std::function<bool(const std::string& language)>& isKnown);

}  // namespace torvex
