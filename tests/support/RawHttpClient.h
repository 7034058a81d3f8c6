#pragma once

#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

#include "support/ClientLine.h"
#include "support/RawReply.h"

namespace torvex::test {

/// What a client speaks with the server.
enum class Protocol { Http1, Http1Tls, Http2 };

/// For tests that hold whatever is spoken.
inline const auto everyProtocol = testing::Values(Protocol::Http1, Protocol::Http1Tls, Protocol::Http2);
std::string nameOf(const testing::TestParamInfo<Protocol>& tested);

/// A client that sends any bytes, well-formed or not, at any pace, to a server on this machine. Nothing it
/// does waits longer than ten seconds. With HTTP/2 it translates what it is given, which must be well-formed then.
class RawHttpClient {
  public:
    /// From an address of this machine: all of 127.0.0.0/8 are, and each counts as another visitor.
    explicit RawHttpClient(std::uint16_t port, const std::string& from = "127.0.0.1",
                           Protocol protocol = Protocol::Http1);

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

    int descriptor() const { return line_->descriptor(); }

  private:
    bool receive(std::chrono::milliseconds time);
    RawReply readHead();

    std::unique_ptr<ClientLine> line_;
    std::string received_;
    bool isAtEnd_ = false;
};

}  // namespace torvex::test
