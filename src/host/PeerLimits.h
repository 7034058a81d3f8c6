#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <unordered_map>

#include "platform/net/Peer.h"

namespace torvex {

/// What each address holds of the server at the moment: connections, and bytes of bodies. Shared by all event
/// loops; safe from any thread. A request without a body never comes here.
class PeerLimits {
  public:
    /// `connections` and `bodiesOfOne` are for each address, `bodies` for all together.
    PeerLimits(std::size_t connections, std::uint64_t bodies, std::uint64_t bodiesOfOne);

    /// Counts one more connection; false, and nothing is counted, when the address has all it may have.
    bool enter(const Peer& peer);
    void leave(const Peer& peer);

    /// Counts bytes of a body that has grown; false, and nothing is counted, when that would be too many.
    bool hold(const Peer& peer, std::uint64_t bytes);
    void release(const Peer& peer, std::uint64_t bytes);

  private:
    struct Held {
        std::size_t connections = 0;
        std::uint64_t bodies = 0;
    };

    void forgetIfEmpty(const Peer& peer, const Held& held);

    const std::size_t mostConnections_;
    const std::uint64_t mostBodies_;
    const std::uint64_t mostBodiesOfOne_;
    std::mutex mutex_;
    std::uint64_t bodies_ = 0;
    std::unordered_map<Peer, Held, PeerHash> held_;
};

}  // namespace torvex
