#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <nghttp2/nghttp2.h>
#include <string>
#include <string_view>
#include <vector>

#include "host/http2/FrameBudget.h"
#include "host/http2/FrameScanner.h"

namespace torvex::http2 {

/// What a session tells of one stream. Called while the session takes or gives bytes.
class StreamEvents {
  public:
    virtual ~StreamEvents() = default;

    /// A field of the request's header. False ends the connection: it is too much.
    virtual bool onField(std::string_view name, std::string_view value) = 0;
    virtual void onHead(bool isWhole) = 0;
    virtual void onBody(std::string_view bytes) = 0;
    /// The request is whole.
    virtual void onEnd() = 0;
    /// Either side has ended the stream, or all is done.
    virtual void onClosed() = 0;

    /// Bytes of the answer's body that haven't been taken.
    virtual std::uint64_t unsent() const = 0;
    /// Appends the next bytes of it; false when they can't be had.
    virtual bool takeBody(std::string& out, std::size_t count) = 0;
};

/// What a session tells of its connection.
class SessionEvents {
  public:
    virtual ~SessionEvents() = default;

    /// A request begins; null turns it away, and it may be asked again.
    virtual StreamEvents* onRequest(std::int32_t id) = 0;
    /// So many bytes of answers have been handed out.
    virtual void onSent(std::size_t bytes) = 0;
};

/// The protocol on one connection: frames, compression of headers, windows and the states of streams, by nghttp2. It
/// knows nothing of sockets: bytes are put in and taken out. What a client may do without getting on is limited
/// here. One connection uses it, which outlives it.
class Session {
  public:
    /// `streams` requests may be under way at a time, `headerSize` is what each header may take.
    Session(SessionEvents& events, std::uint32_t streams, std::size_t headerSize);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Reads frames. After an error there is nothing more to be read, and a goodbye to be sent.
    void take(std::string_view bytes);
    /// Appends frames until there are enough for one record of TLS, or no more can be sent now.
    void give(std::string& out);

    /// Sends an answer: its header, and the body that the stream gives, if there is one.
    void answer(std::int32_t id, StreamEvents& stream, const std::vector<nghttp2_nv>& fields);
    /// Asks for the body of a request.
    void goOn(std::int32_t id);
    void reset(std::int32_t id, std::uint32_t code);
    /// Bytes of a body have been put away: as many may come again, on this stream or only on others.
    void consume(std::int32_t id, std::size_t bytes);
    void consumeOfConnection(std::size_t bytes);
    /// Whether the reader of a stream lets nothing more of it come.
    bool isHeldUp(std::int32_t id) const;

    /// What has come of requests' headers.
    const FrameScanner& frames() const { return scanner_; }

    /// No more requests are taken; those under way are finished.
    void refuseFurther();
    /// Ends everything.
    void end(std::uint32_t code);
    bool isOver() const;
    /// Why the client was sent away, for the operator's log; "" otherwise.
    std::string_view complaint() const { return complaint_; }

  private:
    struct Callbacks;
    struct Freed {
        void operator()(nghttp2_session* session) const { nghttp2_session_del(session); }
    };

    void look(const FrameScanner::Head& head);
    void introduce(std::uint32_t streams, std::size_t headerSize);
    int onBegin(const nghttp2_frame& frame);
    void share(std::int32_t id);
    int onField(const nghttp2_frame& frame, std::string_view name, std::string_view value);
    void onBody(std::int32_t id, std::string_view bytes);
    void onFrame(const nghttp2_frame& frame);
    void onStreamFrame(const nghttp2_frame& frame);
    void onGiven(const nghttp2_frame& frame);
    int giveBody(const std::uint8_t* head, StreamEvents& stream, std::size_t size);
    std::size_t sizeOfNext(std::uint64_t unsent, std::size_t most) const;
    void spend(std::int64_t cost);
    void sendAway(std::string_view complaint);
    StreamEvents* streamOf(std::int32_t id) const;
    template <class Action>
    int guarded(Action&& action);
    void rethrow();

    SessionEvents& events_;
    FrameScanner scanner_;
    FrameBudget budget_;
    std::unique_ptr<nghttp2_session, Freed> session_;
    std::string* out_ = nullptr;  ///< while bytes are given
    std::exception_ptr failure_;  ///< of a handler; it must not pass the library
    std::string_view complaint_;
    bool isEnded_ = false;
};

}  // namespace torvex::http2
