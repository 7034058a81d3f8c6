#pragma once

#include <cstddef>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TORVEX_SANITIZED 1
#endif
#endif

namespace torvex {

/// The sanitizers learn whether an address can be read by writing from it into a pipe.
#if defined(TORVEX_SANITIZED)
inline constexpr bool isSanitized = true;
#else
inline constexpr bool isSanitized = false;
#endif

/// What a helper may take that takes apart what comes from outside.
struct WorkerLimits {
    int cpuSeconds = 2;                     ///< for one request; the system counts whole ones
    int cpuSecondsOfLife = 60;              ///< whatever it does
    std::size_t memory = 256u << 20;        ///< beyond what the program itself takes
    int descriptors = isSanitized ? 5 : 3;  ///< the ones that it has
};

/// Gives up, for the rest of this process's life, all that such work doesn't need: files, network, other
/// processes, more privileges, and more of the machine than the limits say. Throws `Error` when that can't be
/// done.
void confineSelf(const WorkerLimits& limits);

/// Allows `limits.cpuSeconds` from now on; the process is ended when they are over.
void allowProcessorTime(const WorkerLimits& limits);

/// The processor time that this process has had, in seconds.
double processorTime();

}  // namespace torvex
