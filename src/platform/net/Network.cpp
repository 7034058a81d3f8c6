#include "platform/net/Network.h"

#include <algorithm>
#include <arpa/inet.h>
#include <charconv>
#include <string>

namespace torvex {

namespace {

constexpr std::size_t longestAddress = 45;
constexpr std::size_t beginOf4 = 12;  ///< of an address of version 4 among the bytes of the one for it

bool isAddress4(std::string_view text) {
    return text.find(':') == std::string_view::npos;
}

/// As many as the kind of address has at most.
std::optional<unsigned> parseBits(std::string_view text, unsigned most) {
    unsigned bits = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), bits);
    if (code != std::errc() || end != text.data() + text.size() || bits > most) return std::nullopt;
    return bits;
}

}  // namespace

std::optional<AddressBytes> parseAddress(std::string_view text) {
    if (text.size() > longestAddress || text.find('\0') != std::string_view::npos) return std::nullopt;
    const std::string ended(text);
    AddressBytes bytes{};
    if (!isAddress4(text)) {
        if (::inet_pton(AF_INET6, ended.c_str(), bytes.data()) != 1) return std::nullopt;
        return bytes;
    }
    bytes[10] = bytes[11] = 0xff;
    if (::inet_pton(AF_INET, ended.c_str(), bytes.data() + beginOf4) != 1) return std::nullopt;
    return bytes;
}

std::optional<Network> Network::parse(std::string_view text) {
    const std::size_t slash = text.find('/');
    const auto address = parseAddress(text.substr(0, slash));
    if (!address) return std::nullopt;
    if (slash == std::string_view::npos) return Network{*address};
    const unsigned ahead = isAddress4(text.substr(0, slash)) ? beginOf4 * 8 : 0;
    const auto bits = parseBits(text.substr(slash + 1), 128 - ahead);
    if (!bits) return std::nullopt;
    return Network{*address, ahead + *bits};
}

bool Network::contains(const AddressBytes& other) const {
    const std::size_t whole = bits / 8;
    if (!std::equal(address.begin(), address.begin() + static_cast<std::ptrdiff_t>(whole), other.begin()))
        return false;
    const unsigned rest = bits % 8;
    return rest == 0 || (address[whole] ^ other[whole]) >> (8 - rest) == 0;
}

}  // namespace torvex
