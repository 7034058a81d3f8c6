#pragma once

#include <memory>

#include "host/LoopConnection.h"
#include "host/http/Transport.h"

namespace torvex {

class EventLoop;

/// A connection until its encryption stands. Then one that speaks what both sides have agreed on takes its place.
class Handshake final : public LoopConnection, public std::enable_shared_from_this<Handshake> {
  public:
    Handshake(EventLoop& loop, std::unique_ptr<Transport> transport, const Source& source);

    void start() override;
    void checkDeadline(TimePoint now) override;
    void giveWay() override { close(); }
    void closeIfIdle() override { close(); }

  private:
    void onDone();
    void pass(const std::shared_ptr<LoopConnection>& next);
    void close();

    EventLoop& loop_;
    std::unique_ptr<Transport> transport_;  ///< null once it has been handed on
    TimePoint deadline_ = TimePoint::max();
    bool isClosed_ = false;
};

}  // namespace torvex
