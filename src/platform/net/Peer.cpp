#include "platform/net/Peer.h"

#include <fmt/format.h>
#include <sodium.h>

namespace torvex {

namespace {

namespace ip = boost::asio::ip;

/// Of an address as text, with the name of its link.
constexpr std::size_t longestAddress = 64;

std::uint64_t randomSeed() {
    std::uint64_t seed = 0;
    randombytes_buf(&seed, sizeof seed);
    return seed;
}

/// Spreads every bit of the input over all of the output.
std::uint64_t mixed(std::uint64_t value) {
    value = (value ^ (value >> 30U)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27U)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31U);
}

}  // namespace

Peer Peer::of(const ip::address& given) {
    const ip::address address = unmapped(given);
    if (address.is_v4()) return {address.to_v4().to_uint(), false};
    const auto bytes = address.to_v6().to_bytes();
    Peer peer{0, true};
    for (std::size_t i = 0; i < 8; ++i) peer.network = peer.network << 8U | bytes[i];
    return peer;
}

std::size_t PeerHash::operator()(const Peer& peer) const {
    static const std::uint64_t seed = randomSeed();
    return static_cast<std::size_t>(mixed(mixed(peer.network ^ seed) + (peer.isV6 ? 1 : 0)));
}

ip::address unmapped(const ip::address& address) {
    if (!address.is_v6() || !address.to_v6().is_v4_mapped()) return address;
    return ip::make_address_v4(ip::v4_mapped, address.to_v6());
}

std::string textOf(const ip::address& address) {
    return unmapped(address).to_string();
}

std::string networkOf(std::string_view address) {
    boost::system::error_code error;
    const ip::address parsed = ip::make_address(std::string(address.substr(0, longestAddress)), error);
    if (error) return std::string(address.substr(0, longestAddress));
    const Peer peer = Peer::of(parsed);
    return fmt::format("{}:{:x}", peer.isV6 ? 6 : 4, peer.network);
}

}  // namespace torvex
