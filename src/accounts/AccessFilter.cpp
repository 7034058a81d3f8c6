#include "accounts/AccessFilter.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "accounts/IpAddresses.h"
#include "platform/net/Network.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// The addresses that stand for those of version 4.
constexpr Network version4{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff}, 96};

bool isVersion4(const AddressBytes& address) {
    return version4.contains(address);
}

/// All of it as one number of at most `most`.
std::optional<unsigned> numberIn(std::string_view text, unsigned most) {
    unsigned value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size() || value > most) return std::nullopt;
    return value;
}

/// Leading zeros mean nothing: people who write filters line them up.
std::optional<AddressBytes> parseV4(std::string_view text) {
    AddressBytes bytes = version4.address;
    for (std::size_t i = version4.bits / 8; i < bytes.size(); ++i) {
        const std::size_t end = i + 1 < bytes.size() ? text.find('.') : text.size();
        if (end == std::string_view::npos) return std::nullopt;
        const auto part = numberIn(text.substr(0, end), 255);
        if (!part) return std::nullopt;
        bytes[i] = static_cast<std::uint8_t>(*part);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return bytes;
}

std::optional<AddressBytes> parse(std::string_view given) {
    const std::string_view text = text::trim(given);
    const auto v4 = parseV4(text);
    return v4 ? v4 : parseAddress(text);
}

bool isInRange(std::string_view from, std::string_view to, const AddressBytes& address) {
    const auto low = parse(from);
    const auto high = parse(to);
    if (!low || !high || isVersion4(*low) != isVersion4(*high)) return false;
    return *low <= address && address <= *high;
}

bool isInNetwork(std::string_view begin, std::string_view length, const AddressBytes& address) {
    const auto network = parse(begin);
    if (!network) return false;
    const unsigned ahead = isVersion4(*network) ? version4.bits : 0;
    const auto bits = numberIn(text::trim(length), 128 - ahead);
    return bits && Network{*network, ahead + *bits}.contains(address);
}

bool isInExactItem(std::string_view item, const AddressBytes& address) {
    if (const std::size_t slash = item.find('/'); slash != std::string_view::npos)
        return isInNetwork(item.substr(0, slash), item.substr(slash + 1), address);
    const std::size_t dash = item.find('-');
    const std::string_view to = dash == std::string_view::npos ? item : item.substr(dash + 1);
    return isInRange(item.substr(0, dash), to, address);
}

}  // namespace

bool passesExactAccessFilter(std::string_view filter, std::string_view given) {
    if (filter.empty()) return true;
    const auto address = parse(given);
    if (!address) return false;
    while (true) {
        const std::size_t comma = filter.find(',');
        if (isInExactItem(filter.substr(0, comma), *address)) return true;
        if (comma == std::string_view::npos) return false;
        filter.remove_prefix(comma + 1);
    }
}

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
