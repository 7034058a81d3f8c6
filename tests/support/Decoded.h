#pragma once

#include <string>
#include <string_view>

namespace torvex::test {

/// The bytes of a body that was sent in the content coding of that name; "" for what isn't whole.
std::string decoded(std::string_view coding, std::string_view bytes);

}  // namespace torvex::test
