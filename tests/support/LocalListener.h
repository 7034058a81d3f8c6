#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace torvex::test {

/// Waits a moment for a socket; `event` is one of poll's.
bool isReady(int socket, short event);

/// A free port of 127.0.0.1 whose connections are served, each by a thread of its own, and closed then. All of
/// it ends with the object, which waits for them: who serves looks at `isEnding`.
class LocalListener {
  public:
    using Serve = std::function<void(int socket)>;

    explicit LocalListener(Serve serve);
    LocalListener(const LocalListener&) = delete;
    LocalListener& operator=(const LocalListener&) = delete;
    ~LocalListener();

    int port() const { return port_; }
    bool isEnding() const { return ending_; }

  private:
    void listen();

    Serve serve_;
    int listening_;
    int port_;
    std::atomic<bool> ending_ = false;
    std::vector<std::thread> peers_;
    std::thread listener_;  ///< last: it starts when all else is there
};

}  // namespace torvex::test
