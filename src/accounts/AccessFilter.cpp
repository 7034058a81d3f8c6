#include "accounts/AccessFilter.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>
#include <charconv>
#include <optional>

#include "accounts/IpAddresses.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

namespace ip = boost::asio::ip;

/// All of it as one number of at most `most`.
std::optional<unsigned> numberIn(std::string_view text, unsigned most) {
    unsigned value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size() || value > most) return std::nullopt;
    return value;
}

/// Leading zeros mean nothing: people who write filters line them up.
std::optional<ip::address_v4> parseV4(std::string_view text) {
    ip::address_v4::bytes_type bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t end = i + 1 < bytes.size() ? text.find('.') : text.size();
        if (end == std::string_view::npos) return std::nullopt;
        const auto part = numberIn(text.substr(0, end), 255);
        if (!part) return std::nullopt;
        bytes[i] = static_cast<unsigned char>(*part);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return ip::address_v4(bytes);
}

/// Those of version 4 as the addresses of version 6 that stand for them.
std::optional<ip::address_v6> parse(std::string_view given) {
    const std::string_view text = text::trim(given);
    if (const auto v4 = parseV4(text)) return ip::make_address_v6(ip::v4_mapped, *v4);
    boost::system::error_code error;
    const ip::address_v6 v6 = ip::make_address_v6(std::string(text), error);
    if (error || v6.scope_id() != 0) return std::nullopt;
    return v6;
}

bool isInRange(std::string_view from, std::string_view to, const ip::address_v6& address) {
    const auto low = parse(from);
    const auto high = parse(to);
    if (!low || !high || low->is_v4_mapped() != high->is_v4_mapped()) return false;
    return *low <= address && address <= *high;
}

bool isInNetwork(std::string_view begin, std::string_view length, const ip::address_v6& address) {
    const auto network = parse(begin);
    if (!network) return false;
    const unsigned ahead = network->is_v4_mapped() ? 96 : 0;
    const auto bits = numberIn(text::trim(length), 128 - ahead);
    if (!bits) return false;
    const auto ours = network->to_bytes();
    const auto theirs = address.to_bytes();
    for (unsigned bit = 0; bit < *bits + ahead; ++bit) {
        if (((ours[bit / 8] ^ theirs[bit / 8]) & (0x80U >> bit % 8)) != 0) return false;
    }
    return true;
}

bool isInExactItem(std::string_view item, const ip::address_v6& address) {
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
