#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// Whether the filter of the authoring side lets an address in: an empty filter lets everybody in, an empty
/// address never passes another one. A filter is a list of addresses and ranges ("10.0.0.1-10.0.0.9"),
/// divided by commas.
///
/// `address` is changed on the way and comes back in the form in which the login keeps it: as it was when it
/// stands in the filter word for word, otherwise normalised. Normalising it again, as every further item
/// does, leaves nothing of it unless it has fifteen characters: so as a range only the first item counts for
/// shorter addresses.
bool passesAccessFilter(std::string_view filter, std::string& address);

/// The same by whole addresses, for installations that want it so (the setting
/// `torvex_access_IP_filter_exact`): each item is an address, a range of two with its ends, or a network
/// ("10.0.0.0/8"), of version 4 or 6, and every item counts. What is none of these lets nobody in. The
/// address stays as it is.
bool passesExactAccessFilter(std::string_view filter, std::string_view address);

}  // namespace torvex
