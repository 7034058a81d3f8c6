#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace torvex {

/// A pointer to something that never changes, put in another one's place as a whole. Safe from any thread: a lock is held for
/// the copy of the pointer alone. No `std::atomic<std::shared_ptr>`, as GCC 12's lets a reader's look at the pointer and the
/// next change of it race.
template <typename T>
class SharedCell {
  public:
    using Pointer = std::shared_ptr<const T>;

    SharedCell() = default;
    explicit SharedCell(Pointer first) : pointer_(std::move(first)) {}

    Pointer load() const {
        const std::scoped_lock guard(mutex_);
        return pointer_;
    }
    /// What stood there before is freed behind the lock.
    void store(Pointer next) {
        const std::scoped_lock guard(mutex_);
        pointer_.swap(next);
    }
    /// Whether it is this one.
    bool holds(const Pointer& other) const {
        const std::scoped_lock guard(mutex_);
        return pointer_ == other;
    }
    bool isEmpty() const { return holds(nullptr); }

  private:
    mutable std::mutex mutex_;
    Pointer pointer_;
};

}  // namespace torvex
