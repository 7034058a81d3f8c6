#include "host/WorkerPool.h"

#include <algorithm>

namespace torvex {

WorkerPool::WorkerPool(unsigned threads, std::size_t capacity, unsigned most)
    : capacity_(capacity), usual_(threads), most_(std::max(threads, most)) {
    const std::scoped_lock guard(mutex_);
    for (unsigned i = 0; i < threads; ++i) add();
}

void WorkerPool::add() {
    Clock::time_point& startedAt = startedAt_.emplace_back(Clock::time_point::max());
    threads_.emplace_back([this, &startedAt] { work(startedAt); });
}

void WorkerPool::addIfStuck() {
    if (waiting_.size() <= idle_ || threads_.size() >= most_) return;
    const auto limit = Clock::now() - stuckAfter;
    const auto stuck = std::count_if(startedAt_.begin(), startedAt_.end(),
                                     [limit](const auto& startedAt) { return startedAt < limit; });
    std::size_t atWork = threads_.size() - static_cast<std::size_t>(stuck);
    for (; atWork < usual_ && threads_.size() < most_; ++atWork) add();
}

bool WorkerPool::submit(Job job) {
    {
        const std::scoped_lock guard(mutex_);
        if (stopped_ || waiting_.size() >= capacity_) return false;
        waiting_.push_back(std::move(job));
        addIfStuck();
    }
    wake_.notify_one();
    return true;
}

void WorkerPool::relieve() {
    const std::scoped_lock guard(mutex_);
    if (!stopped_) addIfStuck();
}

void WorkerPool::stop() {
    std::deque<Job> dropped;  // destroyed without the lock: a job's end may submit another
    std::vector<std::thread> ending;
    {
        const std::scoped_lock guard(mutex_);
        stopped_ = true;
        dropped.swap(waiting_);
        ending.swap(threads_);
    }
    wake_.notify_all();
    for (std::thread& thread : ending) thread.join();
}

void WorkerPool::work(Clock::time_point& startedAt) {
    std::unique_lock lock(mutex_);
    while (true) {
        ++idle_;
        wake_.wait(lock, [this] { return stopped_ || !waiting_.empty(); });
        --idle_;
        if (stopped_) return;
        Job job = std::move(waiting_.front());
        waiting_.pop_front();
        startedAt = Clock::now();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
        startedAt = Clock::time_point::max();
    }
}

}  // namespace torvex
