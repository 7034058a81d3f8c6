#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace torvex {

/// An Internet address. One of version 4 is held as the address of version 6 that stands for it, so that both
/// compare.
using AddressBytes = std::array<std::uint8_t, 16>;

/// "10.0.0.7" or "2001:db8::1"; nothing for anything else, a port, a zone or brackets among it.
std::optional<AddressBytes> parseAddress(std::string_view text);

/// All addresses that begin with the same bits.
struct Network {
    AddressBytes address{};
    unsigned bits = 128;

    /// "10.0.0.0/8", "2001:db8::/32", or an address alone; nothing for anything else.
    static std::optional<Network> parse(std::string_view text);
    bool contains(const AddressBytes& other) const;
};

}  // namespace torvex
