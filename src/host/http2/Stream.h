#pragma once

#include <chrono>
#include <memory>

#include "host/RequestAccount.h"
#include "host/http/BodyGrowth.h"
#include "host/http/Exchange.h"
#include "host/http/Transport.h"
#include "host/http2/RequestFields.h"
#include "host/http2/Session.h"

namespace torvex::http2 {

class Connection;

/// One request and its answer on a connection with HTTP/2. Belongs to the thread of the loop, but for `finish`. While
/// its page is being made it outlives its connection, if need be.
class Stream final : public Exchange, public StreamEvents, public std::enable_shared_from_this<Stream> {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    enum class Stage { Header, Body, Waiting, Working, Answering, Closed };

    Stream(Connection& connection, std::int32_t id);

    void finish(std::shared_ptr<Exchange> self, Answer answer) override;
    const RequestHead& head() const override { return head_; }
    const std::string& body() const override { return body_; }

    bool onField(std::string_view name, std::string_view value) override;
    void onHead(bool isWhole) override;
    void onBody(std::string_view bytes) override;
    void onEnd() override;
    void onClosed() override;
    std::uint64_t unsent() const override { return bodyToSend_ - bodySent_; }
    bool takeBody(std::string& out, std::size_t count) override;

    std::int32_t id() const { return id_; }
    Stage stage() const { return stage_; }
    void checkDeadline(TimePoint now);
    /// The connection has ended: nothing of it may be used any more.
    void abandon();
    /// The request is whole: has it answered, or waits until the connection has room for one more file.
    void run();

  private:
    void enter(Stage stage);
    bool isBodyInTime(TimePoint now) const;
    int putAway(std::string_view bytes);
    bool takePlace();
    void leaveFile();
    void work();
    void onFinished(Answer answer);
    void send(Answer answer);
    std::string_view commonFields() const;

    asio::io_context& context_;
    Connection& connection_;  ///< used only until it is closed
    const std::weak_ptr<Connection> owner_;
    const std::int32_t id_;
    Stage stage_ = Stage::Header;
    RequestFields fields_;
    RequestHead head_;
    RequestAccount account_;
    std::string body_;
    BodyGrowth growth_;
    Answer answer_;
    std::uint64_t bodyLimit_ = 0;
    std::uint64_t received_ = 0;      ///< of the body
    std::uint64_t bodiesBefore_ = 0;  ///< bytes of all bodies of the connection until this one began
    std::uint64_t bodyToSend_ = 0;
    std::uint64_t bodySent_ = 0;
    TimePoint bodyBegan_{};
    TimePoint lastMove_{};
    bool hasHead_ = false;
    bool isFile_ = false;  ///< counted as one that may hold a file open
};

}  // namespace torvex::http2
