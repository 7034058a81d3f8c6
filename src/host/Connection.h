#pragma once

#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <memory>

#include "host/LoopConnection.h"
#include "host/Pace.h"
#include "host/RequestAccount.h"
#include "host/http/AnswerWriter.h"
#include "host/http/Exchange.h"
#include "host/http/RequestParser.h"
#include "host/http/Transport.h"

namespace torvex {

class EventLoop;

/// One visitor's connection that speaks HTTP/1.1: reads a request, has it answered, writes the answer, and goes on to the next.
/// Belongs to the thread of its loop, but for `finish`. It lives as long as something is under way for it.
class Connection final : public Exchange,
                         public LoopConnection,
                         public std::enable_shared_from_this<Connection> {
  public:
    Connection(EventLoop& loop, std::unique_ptr<Transport> transport, const Source& source);

    void start() override;
    void checkDeadline(TimePoint now) override;
    void giveWay() override;
    void closeIfIdle() override;

    void finish(std::shared_ptr<Exchange> self, Answer answer) override;
    const RequestHead& head() const override { return parser_.head(); }
    const std::string& body() const override { return body_; }

  private:
    enum class Stage { Idle, Header, Body, Handling, Writing, Lingering, Closed };

    void enter(Stage stage);
    TimePoint endOf(Stage stage, TimePoint now) const;
    void moved();
    bool keepsPace(TimePoint now);
    bool isFastEnough(std::uint64_t bytes, TimePoint now) const;
    bool isBodyInTime(TimePoint now);
    bool pour();
    void cutShort();
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
    const std::unique_ptr<Transport> transport_;
    RequestParser parser_;
    AnswerWriter writer_;
    boost::beast::flat_buffer buffer_;
    std::string body_;
    Stage stage_ = Stage::Idle;
    RequestAccount account_;
    TimePoint deadline_ = TimePoint::max();  ///< of the next look at it
    TimePoint stageEnd_ = TimePoint::max();
    TimePoint movingSince_{};
    ReaderPace readerPace_;
    std::size_t lingered_ = 0;
    int inOneGo_ = 0;
    bool isBehindAnother_ = false;  ///< one was answered since the last read
    bool isTimedOut_ = false;
    std::uint64_t poured_ = 0;  ///< bytes of the body that went to its sink
    bool isCut_ = false;        ///< the rest of the body won't come
    bool isInterim_ = false;    ///< what is being written is the "go on" ahead of a body
    bool closesAfterAnswer_ = false;
};

}  // namespace torvex
