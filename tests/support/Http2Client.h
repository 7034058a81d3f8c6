#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <nghttp2/nghttp2.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/OpenSsl.h"
#include "support/RawReply.h"
#include "support/TlsLine.h"

namespace torvex::test {

/// One frame as it stands on the line.
struct Frame {
    int type = -1;  ///< -1: the connection has ended
    int flags = 0;
    std::int32_t id = 0;
    std::string payload;
    /// Of a header: its status, and the text as HTTP/1.1 writes it.
    int status = 0;
    std::string head{};

    /// Of RST_STREAM and GOAWAY; of WINDOW_UPDATE the bytes.
    std::uint32_t code() const;
    bool isLast() const { return (flags & NGHTTP2_FLAG_END_STREAM) != 0; }
};

using Fields = std::vector<std::pair<std::string, std::string>>;

/// A header in the plainest form: every field spelled out, nothing remembered.
std::string encoded(const Fields& fields);
/// The fields of a GET.
Fields get(std::string path, const Fields& more = {});
std::string frameOf(int type, int flags, std::int32_t id, std::string_view payload);
/// Four bytes, as windows, codes and settings are written.
std::string number(std::uint32_t value);
/// Of a frame SETTINGS.
std::string setting(int id, std::uint32_t value);

/// A client of HTTP/2 over TLS that sends any frames, well-formed or not. It acknowledges settings by itself, and gives room
/// for all that it is sent, unless told otherwise. Nothing it does waits longer than ten seconds.
class Http2Client {
  public:
    static constexpr std::chrono::milliseconds patience{10'000};

    explicit Http2Client(std::uint16_t port, const std::string& from = "127.0.0.1");

    /// What opens a connection. `settings` are the frame's entries.
    void greet(std::string_view settings = {});
    void send(std::string_view bytes) { line_.send(bytes); }
    void frame(int type, int flags, std::int32_t id, std::string_view payload = {}) {
        send(frameOf(type, flags, id, payload));
    }
    /// In pieces where it is long.
    void headers(std::int32_t id, const Fields& fields,
                 int flags = NGHTTP2_FLAG_END_HEADERS | NGHTTP2_FLAG_END_STREAM);
    /// As windows allow, and until the server ends the stream.
    void body(std::int32_t id, std::string_view bytes, bool isLast = true);
    void givesNoRoom() { givesRoom_ = false; }

    /// The next frame, if one comes in time.
    std::optional<Frame> next(std::chrono::milliseconds time = patience);
    /// The next frame of the type, on the stream if one is named; all others stay for later calls. Of type -1 when the
    /// connection ends or nothing comes.
    Frame await(int type, std::int32_t id = -1);
    /// The answer on a stream; its status is 0 when the server ends the stream or the connection without one.
    RawReply reply(std::int32_t id);
    /// Sends a GET on the next stream of its own.
    RawReply ask(const std::string& path, const Fields& more = {});
    /// With which error the server ends the connection: -1 without saying so, -2 when it goes on.
    std::int64_t goodbye();
    bool isClosedWithin(std::chrono::milliseconds time);

    /// Whether it has done so already, as far as is known without waiting.
    bool isSentAway();
    TlsLine& line() { return line_; }
    int descriptor() const { return line_.descriptor(); }

  private:
    bool receive(std::chrono::milliseconds time);
    std::optional<Frame> takeFrame();
    void heed(Frame& frame);
    void decode(Frame& headers);
    void heedSettings(const Frame& frame);
    std::size_t room(std::int32_t id) const;
    bool isEnded(std::int32_t id) const;
    Frame awaitAny(const std::function<bool(const Frame&)>& isWanted);

    TlsLine line_;
    Held<nghttp2_hd_inflater, nghttp2_hd_inflate_del> inflater_;
    std::string received_;
    std::deque<Frame> kept_;
    bool isAtEnd_ = false;
    bool givesRoom_ = true;
    std::int32_t nextId_ = 1;
    std::int64_t ownWindow_ = 65535;
    std::int64_t streamWindow_ = 65535;
    std::map<std::int32_t, std::int64_t> windows_;  ///< by how much they differ
};

}  // namespace torvex::test
