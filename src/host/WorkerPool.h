#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

namespace torvex {

/// Threads that run jobs in the order in which they came. There are as many as run well side by side; further
/// ones are added while some of them wait for something slow (a feed, a lock), so that the others aren't held
/// up. All operations are safe from any thread. Jobs must not throw.
class WorkerPool {
  public:
    using Job = std::function<void()>;

    /// `capacity` jobs may wait; more are refused, so that an overload is answered and not piled up. There
    /// are never more than `most` threads.
    WorkerPool(unsigned threads, std::size_t capacity, unsigned most = 0);
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;
    ~WorkerPool() { stop(); }

    /// False, and the job is dropped, when too many wait or the pool has stopped.
    bool submit(Job job);

    /// Adds threads when jobs wait behind ones that are stuck; to be called some times a second.
    void relieve();

    /// Drops the jobs that wait, and waits for those that run.
    void stop();

  private:
    using Clock = std::chrono::steady_clock;

    void add();
    void addIfStuck();
    void work(Clock::time_point& startedAt);

    /// A job that runs longer than this counts as stuck: a page takes a fraction of a millisecond to some.
    static constexpr std::chrono::milliseconds stuckAfter{100};

    const std::size_t capacity_;
    const std::size_t usual_;  ///< threads that ought to be at work or ready for it
    const std::size_t most_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Job> waiting_;
    bool stopped_ = false;
    std::size_t idle_ = 0;
    std::list<Clock::time_point> startedAt_;  ///< of each thread's job; `max` without one
    std::vector<std::thread> threads_;
};

}  // namespace torvex
