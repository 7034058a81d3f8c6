#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files/Descriptor.h"

namespace torvex::test {

/// A socket that is connected to a port of this machine, from one of its addresses. Throws when that fails.
Descriptor connectTo(std::uint16_t port, const std::string& from);

/// The bytes of a client's connection, whatever they are.
class ClientLine {
  public:
    virtual ~ClientLine() = default;

    /// As much as the server takes: nothing when it has closed.
    virtual void send(std::string_view bytes) = 0;
    /// What has come within the time; nothing when none did, "" at the end.
    virtual std::optional<std::string> receive(std::chrono::milliseconds time) = 0;
    virtual void endSending() = 0;
    virtual int descriptor() const = 0;
};

}  // namespace torvex::test
