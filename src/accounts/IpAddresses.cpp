#include "accounts/IpAddresses.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::size_t dottedLength = 15;
constexpr int parts = 4;
constexpr std::size_t partLength = 3;

/// One part as three digits; "" when it isn't a number of at most three characters.
std::string paddedPart(std::string_view part) {
    if (part.size() > partLength || !text::isNumeric(part)) return {};
    return std::string(partLength - part.size(), '0') + std::string(part);
}

}  // namespace

std::string normalizeIp(std::string_view address) {
    std::string compact(address);
    std::erase(compact, ' ');
    if (compact.size() == dottedLength) return compact;
    if (std::count(compact.begin(), compact.end(), '.') != parts - 1) return {};
    std::string digits;
    std::string_view rest = compact;
    for (int i = 0; i < parts; ++i) {
        const std::size_t end = std::min(rest.find('.'), rest.size());
        const std::string part = paddedPart(rest.substr(0, end));
        if (part.empty()) return {};
        digits += part;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return digits;
}

bool isInFilterItem(std::string_view item, std::string_view normalisedAddress) {
    const std::size_t dash = item.find('-');
    const std::string low = normalizeIp(item.substr(0, dash));
    const std::string high = dash == std::string_view::npos ? low : normalizeIp(item.substr(dash + 1));
    if (low.empty() || high.empty() || normalisedAddress.empty()) return false;
    return text::compare(normalisedAddress, low) >= 0 && text::compare(normalisedAddress, high) <= 0;
}

}  // namespace torvex
