#pragma once

#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>

namespace torvex::test {

/// Holds up page handlers until it is opened.
class Gate {
  public:
    Gate() = default;
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() { open(); }

    void pass() {
        std::unique_lock lock(mutex_);
        ++arrived_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return isOpen_; });
    }
    /// That so many come to it.
    void await(int count) {
        std::unique_lock lock(mutex_);
        EXPECT_TRUE(changed_.wait_for(lock, std::chrono::seconds(10), [&] { return arrived_ >= count; }))
            << arrived_ << " of " << count << " have come";
    }
    void open() {
        const std::scoped_lock guard(mutex_);
        isOpen_ = true;
        changed_.notify_all();
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int arrived_ = 0;
    bool isOpen_ = false;
};

}  // namespace torvex::test
