#include "host/Descriptors.h"

#include <algorithm>
#include <limits>
#include <sys/resource.h>

namespace torvex {

namespace {

constexpr std::size_t ofProgram = 64;  ///< log, listening sockets, event loops
constexpr std::size_t ofWorker = 8;    ///< a connection to each part of the database, a feed, a file
constexpr std::size_t ofConnection = 2;
constexpr std::size_t least = 16;  ///< with fewer there is no serving at all

}  // namespace

std::size_t descriptorLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(limit.rlim_cur);
}

void raiseDescriptorLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

std::size_t connectionsWithin(std::size_t descriptors, std::size_t wanted, unsigned workers) {
    const std::size_t others = ofProgram + ofWorker * workers;
    const std::size_t left = descriptors > others ? (descriptors - others) / ofConnection : 0;
    return std::min(wanted, std::max(left, least));
}

}  // namespace torvex
