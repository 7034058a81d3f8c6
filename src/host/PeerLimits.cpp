#include "host/PeerLimits.h"

namespace torvex {

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
