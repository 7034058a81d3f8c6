#include "host/Pace.h"

#include <algorithm>
#include <linux/sockios.h>
#include <sys/ioctl.h>

#include "installation/ServerOptions.h"

namespace torvex {

namespace {

/// Of `given` bytes, those that aren't waiting in our system any more.
std::uint64_t taken(int socket, std::uint64_t given) {
    int waiting = 0;
    if (::ioctl(socket, SIOCOUTQ, &waiting) != 0 || waiting < 0) return given;
    return given - std::min(given, static_cast<std::uint64_t>(waiting));
}

}  // namespace

bool isFastEnough(const SpeedLimits& limits, std::uint64_t bytes, std::chrono::steady_clock::time_point since,
                  std::chrono::steady_clock::time_point now) {
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(now - since);
    if (passed < limits.grace) return true;
    return bytes * 1000 >= limits.bytesPerSecond * static_cast<std::uint64_t>(passed.count());
}

void ReaderPace::begin(std::uint64_t written, TimePoint now) {
    before_ = written;
    taken_ = 0;
    since_ = now;
    lastTaken_ = now;
}

bool ReaderPace::isKept(const ServerOptions& options, int socket, std::uint64_t written, TimePoint now) {
    if (const std::uint64_t bytes = taken(socket, written - before_); bytes > taken_) {
        taken_ = bytes;
        lastTaken_ = now;
    }
    return now - lastTaken_ < options.deadlines.write && isFastEnough(options.speed, taken_, since_, now);
}

}  // namespace torvex
