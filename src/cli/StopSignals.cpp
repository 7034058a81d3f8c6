#include "cli/StopSignals.h"

#include <ctime>
#include <pthread.h>
#include <utility>

namespace torvex::cli {

namespace {

/// How long the end of the object may wait for its thread.
constexpr timespec patience{0, 100'000'000};

}  // namespace

StopSignals::StopSignals() {
    // A visitor who hangs up is told by the failed write, not by a signal that ends the program.
    std::signal(SIGPIPE, SIG_IGN);
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGTERM);
    sigaddset(&signals_, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
}

StopSignals::~StopSignals() = default;

void StopSignals::watch(std::function<void()> stop) {
    watcher_ = std::jthread([signals = signals_, stop = std::move(stop)](const std::stop_token& ended) {
        while (!ended.stop_requested()) {
            if (sigtimedwait(&signals, nullptr, &patience) > 0) stop();
        }
    });
}

}  // namespace torvex::cli
