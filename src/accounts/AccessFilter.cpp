#include "accounts/AccessFilter.h"

#include <algorithm>

#include "accounts/IpAddresses.h"
#include "platform/text/Text.h"

namespace torvex {

bool passesAccessFilter(std::string_view filter, std::string& address) {
    if (filter.empty()) return true;
    if (address.empty()) return false;
    if (text::contains(filter, address)) return true;
    while (true) {
        const std::size_t comma = filter.find(',');
        address = normalizeIp(address);
        if (isInFilterItem(filter.substr(0, comma), address)) return true;
        if (comma == std::string_view::npos) return false;
        filter.remove_prefix(comma + 1);
    }
}

}  // namespace torvex
