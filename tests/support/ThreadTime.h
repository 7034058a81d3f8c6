#pragma once

#include <chrono>
#include <ctime>

namespace torvex::test {

/// Processor time that this thread took for `body`: what else the machine does counts little.
template <typename Body>
std::chrono::duration<double, std::milli> threadTimeOf(const Body& body) {
    const auto now = [] {
        std::timespec taken{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &taken);
        return std::chrono::seconds(taken.tv_sec) + std::chrono::nanoseconds(taken.tv_nsec);
    };
    const auto begin = now();
    body();
    return now() - begin;
}

}  // namespace torvex::test
