#pragma once

#include <boost/asio/ip/address.hpp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace torvex {

/// Where a connection comes from, as limits count it: an IPv4 address, or the /64 of an IPv6 address, which
/// is what one customer gets.
struct Peer {
    std::uint64_t network = 0;
    bool isV6 = false;

    static Peer of(const boost::asio::ip::address& address);
    bool operator==(const Peer&) const = default;
};

/// Hard to predict, so that nobody can choose networks that fall together.
struct PeerHash {
    std::size_t operator()(const Peer& peer) const;
};

/// An address of version 6 that stands for one of version 4 as that one; any other as it is.
boost::asio::ip::address unmapped(const boost::asio::ip::address& address);

/// How an address is written everywhere.
std::string textOf(const boost::asio::ip::address& address);

/// The same for all addresses of one network; a text that is no address is a network of its own, cut to what
/// an address may take.
std::string networkOf(std::string_view address);

}  // namespace torvex
