#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {

/// Whether a text is one plain mail address, "name@host.example": nothing that could end a line of a mail or
/// begin another address in it. Names in quotes, hosts in brackets and letters beyond ASCII are refused: no
/// mailbox that people type into a form needs them.
bool isMailAddress(std::string_view text);

/// Those of a list divided by commas, semicolons or blanks; what is no address is left out.
std::vector<std::string> mailAddressesIn(std::string_view list);

}  // namespace torvex
