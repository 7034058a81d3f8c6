#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/Descriptor.h"

namespace torvex::test {

struct RawReply {
    int status = 0;    ///< 0 when the connection ended without an answer
    std::string head;  ///< with the empty line
    std::string body;

    /// The value of the field, "" when it isn't there.
    std::string field(std::string_view name) const;
    /// The values of all fields of the name.
    std::vector<std::string> fields(std::string_view name) const;
    /// "name=value" of the session's cookie, "" when none is set.
    std::string sessionCookie() const;
};

/// A client that sends any bytes, well-formed or not, at any pace, to a server on this machine. Nothing it
/// does waits longer than ten seconds.
class RawHttpClient {
  public:
    /// From an address of this machine: all of 127.0.0.0/8 are, and each counts as another visitor.
    explicit RawHttpClient(std::uint16_t port, const std::string& from = "127.0.0.1");

    void send(std::string_view bytes);
    /// Byte by byte, until all is sent or the server has closed; the number sent.
    std::size_t drip(std::string_view bytes, std::chrono::milliseconds pause);
    void endSending();

    /// Reads one answer, and the one to a HEAD, which announces a body that does not come.
    RawReply read();
    RawReply readWithoutBody();
    /// Whether the server closes within the time, with nothing sent before.
    bool isClosedWithin(std::chrono::milliseconds time);
    /// Whatever comes until the server closes.
    std::string readAll();

    /// Sends and reads one answer.
    RawReply ask(std::string_view bytes) {
        send(bytes);
        return read();
    }
    /// A GET with the extra header lines given ("Name: value\r\n").
    RawReply get(std::string_view target, std::string_view lines = {});

    int descriptor() const { return socket_.number(); }

  private:
    bool receive(std::chrono::milliseconds time);
    RawReply readHead();

    Descriptor socket_;
    std::string received_;
    bool isAtEnd_ = false;
};

}  // namespace torvex::test
