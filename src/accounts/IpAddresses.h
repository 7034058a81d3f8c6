#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// A network address in comparable form: "10.0.0.7" as the twelve digits "010000000007". A text of fifteen
/// characters is returned as it stands, dots included; "" for anything that isn't four numbers of at most
/// three digits. Blanks are dropped.
std::string normalizeIp(std::string_view address);

/// Whether `address` (normalised) lies in an item of a filter: one address, or a range "from-to" with its
/// ends. Items with an end that isn't an address hold nothing.
bool isInFilterItem(std::string_view item, std::string_view normalisedAddress);

}  // namespace torvex
