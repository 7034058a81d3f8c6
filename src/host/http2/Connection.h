#pragma once

#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "host/LoopConnection.h"
#include "host/Pace.h"
#include "host/http/Transport.h"
#include "host/http2/AnswerFields.h"
#include "host/http2/Session.h"
#include "host/http2/Stream.h"

namespace torvex {

class EventLoop;

namespace http2 {

/// One visitor's connection that speaks HTTP/2: its bytes, its times, and its streams. Belongs to the thread of its
/// loop. It lives as long as something is read or written on it.
class Connection final : public LoopConnection,
                         public SessionEvents,
                         public std::enable_shared_from_this<Connection> {
  public:
    Connection(EventLoop& loop, std::unique_ptr<Transport> transport, const Source& source);
    ~Connection() override;

    void start() override;
    void checkDeadline(TimePoint now) override;
    void giveWay() override { close(); }
    void closeIfIdle() override;

    StreamEvents* onRequest(std::int32_t id) override;
    void onSent(std::size_t bytes) override;

    // What its streams use.
    EventLoop& loop() const { return loop_; }
    Session& session() { return session_; }
    AnswerFields& answerFields() { return answerFields_; }
    void onStage(Stream::Stage from, Stream::Stage to);
    void onBody(std::size_t bytes);
    /// Of all bodies so far.
    std::uint64_t bodyBytes() const { return bodyBytes_; }
    /// A page is being made, also when its stream ends meanwhile.
    bool isWorking() const { return working_ > 0; }
    void beginWork() { ++working_; }
    void endWork() { --working_; }
    /// Room for one more file that is open while it is sent; without any, the stream is run again when there is some.
    bool takeFile(std::int32_t stream);
    void leaveFile() { --files_; }
    void remove(const Stream& stream) { streams_.erase(stream.id()); }
    /// Sends what there is to be sent.
    void goOn();

  private:
    enum class Place { Resting, Moving, Busy };

    std::size_t& countOf(Stream::Stage stage) { return counts_[static_cast<std::size_t>(stage)]; }
    void read();
    void onRead(const boost::system::error_code& error, std::size_t count);
    void followHeader(std::size_t count);
    void runWaiting();
    void write();
    void writeOn();
    void onWritten(std::size_t count);
    void settle();
    void takePlace(Place place);
    void look(TimePoint now);
    void checkStreams(TimePoint now);
    bool isHeaderInTime(TimePoint now) const;
    bool isTaking(TimePoint now);
    void leave(std::uint32_t code);
    void beginLeaving();
    void linger();
    void abandonStreams();
    void complain();
    void close();

    EventLoop& loop_;
    const std::unique_ptr<Transport> transport_;
    Session session_;
    AnswerFields answerFields_;
    std::unordered_map<std::int32_t, std::shared_ptr<Stream>> streams_;
    std::array<std::size_t, 6> counts_{};  ///< of streams, by their stages
    std::size_t working_ = 0;              ///< pages that are being made
    std::size_t files_ = 0;                ///< that may be open
    std::deque<std::int32_t> waiting_;     ///< streams that need one more
    std::vector<char> in_;
    std::string out_;
    std::size_t outSent_ = 0;
    std::uint64_t sent_ = 0;  ///< bytes of answers
    std::uint64_t bodyBytes_ = 0;
    ReaderPace readerPace_;
    std::optional<TimePoint> headerSince_;
    std::uint64_t headerBytes_ = 0;    ///< come since then
    std::uint64_t headersBefore_ = 0;  ///< that had begun by then
    Place place_ = Place::Moving;
    TimePoint writingSince_{};
    TimePoint nextLook_{};
    TimePoint idleEnd_{};
    TimePoint lingerEnd_{};
    std::size_t lingered_ = 0;
    bool hasMoved_ = false;
    bool isWriting_ = false;
    bool isLeaving_ = false;    ///< a goodbye is to be sent
    bool isLingering_ = false;  ///< it has been sent
    bool isIdleEnd_ = false;    ///< nothing is under way: no need to linger
    bool isClosed_ = false;
};

}  // namespace http2

}  // namespace torvex
