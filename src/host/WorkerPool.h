#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace torvex {

/// A fixed number of threads that run jobs in the order in which they came. All operations are safe from any
/// thread. Jobs must not throw.
class WorkerPool {
  public:
    using Job = std::function<void()>;

    /// `capacity` jobs may wait; more are refused, so that an overload is answered and not piled up.
    WorkerPool(unsigned threads, std::size_t capacity);
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;
    ~WorkerPool() { stop(); }

    /// False, and the job is dropped, when too many wait or the pool has stopped.
    bool submit(Job job);

    /// Drops the jobs that wait, and waits for those that run.
    void stop();

  private:
    void work();

    std::size_t capacity_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Job> waiting_;
    bool stopped_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace torvex
