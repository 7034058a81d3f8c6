#pragma once

#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <memory>

#include "host/http/AnswerWriter.h"
#include "host/http/Exchange.h"
#include "host/http/RequestParser.h"
#include "host/http/Transport.h"

namespace torvex {

class EventLoop;

/// One visitor's connection: reads a request, has it answered, writes the answer, and goes on to the next.
/// Belongs to the thread of its loop, but for `finish`. It lives as long as something is under way for it.
class Connection final : public Exchange, public std::enable_shared_from_this<Connection> {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// `tls` is null for plain HTTP.
    Connection(EventLoop& loop, Socket socket, asio::ssl::context* tls);

    void start();
    void checkDeadline(TimePoint now);
    /// The server stops: ends it if no request is under way; otherwise its answer will be the last.
    void closeIfIdle();

    void finish(std::shared_ptr<Exchange> self, Answer answer) override;
    const RequestHead& head() const override { return parser_.head(); }
    const std::string& body() const override { return body_; }

  private:
    enum class Stage { Handshake, Idle, Header, Body, Handling, Writing, Lingering, Closed };

    void enter(Stage stage);
    void read();
    void onRead(const boost::system::error_code& error, std::size_t count);
    void readOn();
    void process();
    bool processOnce();
    bool onHeader();
    bool onComplete();
    bool askForBody();
    bool refuse(Answer answer);
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
    TimePoint deadline_ = TimePoint::max();
    std::size_t lingered_ = 0;
    int inOneGo_ = 0;
    bool isTimedOut_ = false;
    bool isInterim_ = false;  ///< what is being written is the "go on" ahead of a body
    bool closesAfterAnswer_ = false;
};

}  // namespace torvex
