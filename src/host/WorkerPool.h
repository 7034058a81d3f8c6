#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

namespace torvex {

/// Threads that run jobs: those of one origin in the order in which they came, and one of each origin after
/// the other, so that nobody waits behind all that somebody else has asked for. There are as many as run well
/// side by side; further ones are added while some of them wait for something slow (a feed, a lock), so that
/// the others aren't held up. All operations are safe from any thread. Jobs must not throw.
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
    bool submit(Job job, std::uint64_t origin = 0);

    /// Adds threads when jobs wait behind ones that are stuck; to be called some times a second.
    void relieve();

    /// Drops the jobs that wait, and waits for those that run.
    void stop();

  private:
    using Clock = std::chrono::steady_clock;

    /// The jobs of one origin; its turn is its place among the others.
    struct Turn {
        std::uint64_t origin = 0;
        std::deque<Job> jobs;
    };

    void add();
    void addIfStuck();
    std::deque<Job>& jobsOf(std::uint64_t origin);
    Job takeNext();
    void work(Clock::time_point& startedAt);

    /// A job that runs longer than this counts as stuck: a page takes a fraction of a millisecond to some.
    static constexpr std::chrono::milliseconds stuckAfter{100};

    const std::size_t capacity_;
    const std::size_t usual_;  ///< threads that ought to be at work or ready for it
    const std::size_t most_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::list<Turn> turns_;  ///< of origins with jobs that wait
    std::list<Turn> spare_;  ///< ready for further ones
    std::size_t waiting_ = 0;
    bool stopped_ = false;
    std::size_t idle_ = 0;
    std::list<Clock::time_point> startedAt_;  ///< of each thread's job; `max` without one
    std::vector<std::thread> threads_;
};

}  // namespace torvex
