#pragma once

#include <cstdint>
#include <string_view>

#include "host/LoopConnection.h"
#include "platform/net/Peer.h"

namespace torvex {

class Exchange;
class LineLog;
class PeerLimits;

/// For whom a request counts, and what it holds of their share. Gives all of it back when it ends, on whatever
/// thread that is.
class RequestAccount {
  public:
    RequestAccount(PeerLimits& limits, LineLog& log) : limits_(limits), log_(log) {}
    RequestAccount(const RequestAccount&) = delete;
    RequestAccount& operator=(const RequestAccount&) = delete;
    ~RequestAccount();

    /// Counts for this visitor from here on, and tells the request so. Only while nothing is held.
    void takeAs(const Client& visitor, Exchange& exchange);
    const Peer& visitor() const { return visitor_; }

    /// Takes one of the places of the visitor; false, and the operator is told, when there is none.
    bool enter(std::string_view warning);
    void leave();

    /// Counts the memory that a body has come to take: an announced length alone takes none from others. False,
    /// and the operator is told, when that is too much.
    bool hold(std::uint64_t bytes);
    void release();

  private:
    PeerLimits& limits_;
    LineLog& log_;
    Peer visitor_;
    std::uint64_t held_ = 0;
    bool isCounted_ = false;
};

}  // namespace torvex
