#include "host/PeerLimits.h"

#include <sodium.h>

namespace torvex {

namespace {

namespace ip = boost::asio::ip;

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

Peer Peer::of(const ip::address& address) {
    if (address.is_v4()) return {address.to_v4().to_uint(), false};
    const ip::address_v6 v6 = address.to_v6();
    if (v6.is_v4_mapped()) return {ip::make_address_v4(ip::v4_mapped, v6).to_uint(), false};
    const auto bytes = v6.to_bytes();
    Peer peer{0, true};
    for (std::size_t i = 0; i < 8; ++i) peer.network = peer.network << 8U | bytes[i];
    return peer;
}

std::size_t PeerHash::operator()(const Peer& peer) const {
    static const std::uint64_t seed = randomSeed();
    return static_cast<std::size_t>(mixed(mixed(peer.network ^ seed) + (peer.isV6 ? 1 : 0)));
}

PeerLimits::PeerLimits(std::size_t connections, std::uint64_t bodies, std::uint64_t bodiesOfOne)
    : mostConnections_(connections), mostBodies_(bodies), mostBodiesOfOne_(bodiesOfOne) {}

bool PeerLimits::enter(const Peer& peer) {
    const std::scoped_lock guard(mutex_);
    Held& held = held_[peer];
    if (held.connections >= mostConnections_) return false;
    ++held.connections;
    return true;
}

void PeerLimits::leave(const Peer& peer) {
    const std::scoped_lock guard(mutex_);
    Held& held = held_[peer];
    --held.connections;
    forgetIfEmpty(peer, held);
}

bool PeerLimits::hold(const Peer& peer, std::uint64_t bytes) {
    const std::scoped_lock guard(mutex_);
    Held& held = held_[peer];
    if (bodies_ + bytes > mostBodies_ || held.bodies + bytes > mostBodiesOfOne_) return false;
    bodies_ += bytes;
    held.bodies += bytes;
    return true;
}

void PeerLimits::release(const Peer& peer, std::uint64_t bytes) {
    const std::scoped_lock guard(mutex_);
    Held& held = held_[peer];
    bodies_ -= bytes;
    held.bodies -= bytes;
    forgetIfEmpty(peer, held);
}

void PeerLimits::forgetIfEmpty(const Peer& peer, const Held& held) {
    if (held.connections == 0 && held.bodies == 0) held_.erase(peer);
}

}  // namespace torvex
