#include "platform/net/PublicAddress.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>

namespace torvex {

namespace {

using Bytes = std::array<std::uint8_t, 16>;

struct Range4 {
    std::uint32_t begin;
    int bits;
};

constexpr std::uint32_t v4(unsigned a, unsigned b, unsigned c, unsigned d = 0) {
    return a << 24 | b << 16 | c << 8 | d;
}

constexpr std::array closedRanges{
    Range4{v4(0, 0, 0), 8},       // this network
    Range4{v4(10, 0, 0), 8},      // private
    Range4{v4(100, 64, 0), 10},   // a provider's own
    Range4{v4(127, 0, 0), 8},     // this machine
    Range4{v4(169, 254, 0), 16},  // the link; clouds tell their secrets there
    Range4{v4(172, 16, 0), 12},   // private
    Range4{v4(192, 0, 0), 24},    // protocols
    Range4{v4(192, 0, 2), 24},    // documentation, as two below
    Range4{v4(192, 88, 99), 24},  // old relays
    Range4{v4(192, 168, 0), 16},  // private
    Range4{v4(198, 18, 0), 15},   // measurements
    Range4{v4(198, 51, 100), 24}, Range4{v4(203, 0, 113), 24},
    Range4{v4(224, 0, 0), 3},  // groups, and what lies behind them
};

bool isPublic4(std::uint32_t address) {
    return std::none_of(closedRanges.begin(), closedRanges.end(), [address](const Range4& range) {
        return (address ^ range.begin) >> (32 - range.bits) == 0;
    });
}

std::uint32_t embedded(const Bytes& bytes, std::size_t at) {
    return v4(bytes[at], bytes[at + 1], bytes[at + 2], bytes[at + 3]);
}

template <std::size_t size>
bool startsWith(const Bytes& bytes, const std::array<std::uint8_t, size>& start) {
    return std::equal(start.begin(), start.end(), bytes.begin());
}

bool isPublic6(const Bytes& bytes) {
    constexpr std::array<std::uint8_t, 12> mapped{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    constexpr std::array<std::uint8_t, 12> translated{0, 0x64, 0xFF, 0x9B};
    constexpr std::array<std::uint8_t, 2> tunnelled{0x20, 0x02};
    constexpr std::array<std::uint8_t, 4> documentation{0x20, 0x01, 0x0D, 0xB8};
    if (startsWith(bytes, mapped) || startsWith(bytes, translated)) return isPublic4(embedded(bytes, 12));
    if (startsWith(bytes, tunnelled)) return isPublic4(embedded(bytes, 2));
    // 2001::/23 is for protocols, tunnels among them, and 3fff::/20 for documentation.
    const bool isForProtocols = bytes[0] == 0x20 && bytes[1] == 0x01 && bytes[2] < 0x02;
    const bool isForBooks = bytes[0] == 0x3F && bytes[1] == 0xFF && bytes[2] < 0x10;
    if (isForProtocols || isForBooks || startsWith(bytes, documentation)) return false;
    return bytes[0] >> 5 == 1;  // 2000::/3 is all that is given out
}

}  // namespace

bool isPublicAddress(const sockaddr& address) {
    if (address.sa_family == AF_INET) {
        sockaddr_in place{};
        std::memcpy(&place, &address, sizeof place);
        return isPublic4(ntohl(place.sin_addr.s_addr));
    }
    if (address.sa_family != AF_INET6) return false;
    sockaddr_in6 place{};
    std::memcpy(&place, &address, sizeof place);
    Bytes bytes{};
    std::memcpy(bytes.data(), &place.sin6_addr, bytes.size());
    return isPublic6(bytes);
}

}  // namespace torvex
