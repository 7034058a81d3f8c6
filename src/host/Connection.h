#pragma once

#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <memory>
#include <optional>

#include "host/IdleOrder.h"
#include "host/PeerLimits.h"
#include "host/TrustedProxies.h"
#include "host/http/AnswerWriter.h"
#include "host/http/Exchange.h"
#include "host/http/RequestParser.h"
#include "host/http/Transport.h"

namespace torvex {

class EventLoop;

/// Where a connection comes from.
struct Source {
    Client visitor;  ///< who has connected
    Peer peer;
    bool isProxy = false;  ///< its requests are others', for whom they count
};

/// One visitor's connection: reads a request, has it answered, writes the answer, and goes on to the next.
/// Belongs to the thread of its loop, but for `finish`. It lives as long as something is under way for it.
class Connection final : public Exchange,
                         public std::enable_shared_from_this<Connection>,
                         public OrderHook<OfLoop>,
                         public OrderHook<OfPeer> {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// `tls` is null for plain HTTP.
    Connection(EventLoop& loop, Socket socket, asio::ssl::context* tls, const Source& source);

    void start();
    void checkDeadline(TimePoint now);
    const Source& source() const { return source_; }
    /// The order of its address, which outlives it.
    IdleOrder<OfPeer>& orderOfPeer() const { return *orderOfPeer_; }
    void joins(IdleOrder<OfPeer>& order) { orderOfPeer_ = &order; }
    /// Another needs its place.
    void giveWay();
    TimePoint lastMove() const { return lastMove_; }
    /// The server stops: ends it if no request is under way; otherwise its answer will be the last.
    void closeIfIdle();

    void finish(std::shared_ptr<Exchange> self, Answer answer) override;
    const RequestHead& head() const override { return parser_.head(); }
    const std::string& body() const override { return body_; }

  private:
    enum class Stage { Handshake, Idle, Header, Body, Handling, Writing, Lingering, Closed };

    void enter(Stage stage);
    TimePoint endOf(Stage stage, TimePoint now) const;
    void moved();
    bool keepsPace(TimePoint now);
    bool isFastEnough(std::uint64_t bytes, TimePoint now) const;
    bool isTaking(TimePoint now);
    std::uint64_t taken();
    void takeAs(const Client& visitor);
    bool enterForVisitor();
    void leaveForVisitor();
    bool isBodyInTime(TimePoint now);
    std::optional<Answer> receiveBody();
    bool pour();
    void cutShort();
    bool holdBody();
    void releaseBody();
    void read();
    void onRead(const boost::system::error_code& error, std::size_t count);
    void readOn();
    void process();
    bool processOnce();
    bool onHeader();
    bool onComplete();
    bool askForBody();
    bool refuse(Answer answer);
    bool decline(Answer answer);
    bool send(Answer answer);
    bool writeOn();
    bool writePlain();
    void writeEncrypted();
    void awaitWritable();
    void resume();
    bool afterAnswer();
    void linger();
    void onLinger(const boost::system::error_code& error, std::size_t count);
    void close();

    EventLoop& loop_;
    Transport transport_;
    RequestParser parser_;
    AnswerWriter writer_;
    boost::beast::flat_buffer buffer_;
    std::string body_;
    Stage stage_ = Stage::Idle;
    const Source source_;
    Peer visitor_;  ///< whose the request is
    IdleOrder<OfPeer>* orderOfPeer_ = nullptr;
    TimePoint deadline_ = TimePoint::max();  ///< of the next look at it
    TimePoint stageEnd_ = TimePoint::max();
    TimePoint movingSince_{};
    TimePoint lastMove_{};
    TimePoint lastTaken_{};
    std::uint64_t takenBefore_ = 0;  ///< bytes of earlier answers
    std::uint64_t taken_ = 0;        ///< of this answer, that the visitor's system has acknowledged
    std::uint64_t heldOfBody_ = 0;   ///< counted against the budget of bodies
    std::size_t lingered_ = 0;
    int inOneGo_ = 0;
    bool isTimedOut_ = false;
    bool isCounted_ = false;    ///< the request, among those of its visitor
    std::uint64_t poured_ = 0;  ///< bytes of the body that went to its sink
    bool isCut_ = false;        ///< the rest of the body won't come
    bool isInterim_ = false;    ///< what is being written is the "go on" ahead of a body
    bool closesAfterAnswer_ = false;
};

}  // namespace torvex
