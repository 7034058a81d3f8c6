#pragma once

#include <chrono>
#include <cstdint>

#include "host/IdleOrder.h"
#include "host/TrustedProxies.h"
#include "platform/net/Peer.h"

namespace torvex {

/// Where a connection comes from.
struct Source {
    Client visitor;  ///< who has connected
    Peer peer;
    bool isProxy = false;  ///< its requests are others', for whom they count
    std::uint16_t localPort = 0;
};

/// A connection as its loop sees it, whatever is spoken on it. Belongs to the thread of the loop.
class LoopConnection : public OrderHook<OfLoop>, public OrderHook<OfPeer> {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    explicit LoopConnection(const Source& source) : source_(source) {}
    LoopConnection(const LoopConnection&) = delete;
    LoopConnection& operator=(const LoopConnection&) = delete;
    virtual ~LoopConnection() = default;

    /// To be called once the loop knows it.
    virtual void start() = 0;
    /// Some times a second.
    virtual void checkDeadline(TimePoint now) = 0;
    /// Another needs its place.
    virtual void giveWay() = 0;
    /// The server stops: ends it if no request is under way; otherwise those under way will be the last.
    virtual void closeIfIdle() = 0;

    const Source& source() const { return source_; }
    /// The order of its address, which outlives it.
    IdleOrder<OfPeer>& orderOfPeer() const { return *orderOfPeer_; }
    void joins(IdleOrder<OfPeer>& order) { orderOfPeer_ = &order; }
    TimePoint lastMove() const { return lastMove_; }

  protected:
    TimePoint lastMove_{};

  private:
    const Source source_;
    IdleOrder<OfPeer>* orderOfPeer_ = nullptr;
};

}  // namespace torvex
