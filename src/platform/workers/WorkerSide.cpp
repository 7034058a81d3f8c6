#include "platform/workers/WorkerSide.h"

#include <cstdint>
#include <cstring>
#include <exception>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

namespace torvex::workerSide {

namespace {

constexpr std::size_t lengthSize = sizeof(std::uint32_t);

bool readAll(std::string& bytes, std::size_t size) {
    bytes.resize(size);
    for (std::size_t at = 0; at < size;) {
        const ssize_t taken = ::read(STDIN_FILENO, bytes.data() + at, size - at);
        if (taken <= 0) return false;
        at += static_cast<std::size_t>(taken);
    }
    return true;
}

std::optional<std::string> receive(std::size_t longest) {
    std::string message;
    if (!readAll(message, lengthSize)) return std::nullopt;
    std::uint32_t size = 0;
    std::memcpy(&size, message.data(), lengthSize);
    if (size > longest || !readAll(message, size)) return std::nullopt;
    return message;
}

bool send(std::string_view message) {
    const std::string bytes = withLength(message);
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t sent = ::send(STDIN_FILENO, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent <= 0) return false;
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

}  // namespace

std::string withLength(std::string_view message) {
    const auto size = static_cast<std::uint32_t>(message.size());
    std::string bytes(reinterpret_cast<const char*>(&size), lengthSize);
    return bytes.append(message);
}

void sendAndEnd(const std::string& withLength) {
    const bool isSent = ::send(STDIN_FILENO, withLength.data(), withLength.size(), MSG_NOSIGNAL) > 0;
    ::_exit(isSent ? 0 : 1);
}

int serve(const WorkerLimits& limits, std::size_t longestRequest,
          const std::function<std::string(std::string_view)>& answer) {
    try {
        confineSelf(limits);
    } catch (const std::exception&) {
        return 1;
    }
    // Some time of its life is left for what is at work when the end is near.
    const double enough = limits.cpuSecondsOfLife - 2.0 * (limits.cpuSeconds + 1);
    while (processorTime() < enough) {
        const std::optional<std::string> message = receive(longestRequest);
        if (!message) break;
        allowProcessorTime(limits);
        if (!send(answer(*message))) break;
    }
    return 0;
}

}  // namespace torvex::workerSide
