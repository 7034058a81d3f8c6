#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// The text with each plain e-mail address made a link. It knows nothing of tags, nor of addresses that are
/// links already. An address at the very start of the text needs a local part, as anywhere.
std::string linkEmailAddresses(std::string_view text);

}  // namespace torvex
