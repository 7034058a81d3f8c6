#pragma once

#include <csignal>
#include <functional>
#include <thread>

namespace torvex::cli {

/// Turns the signals by which a server is asked to end (SIGTERM, SIGINT) into a call. To be made before any
/// other thread, since threads inherit which signals they leave to it.
class StopSignals {
  public:
    StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
    ~StopSignals();

    /// From here on `stop` is called, on a thread of this object's own, for each of the signals. To be called
    /// once.
    void watch(std::function<void()> stop);

  private:
    sigset_t signals_;
    std::jthread watcher_;
};

}  // namespace torvex::cli
