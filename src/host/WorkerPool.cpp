#include "host/WorkerPool.h"

namespace torvex {

WorkerPool::WorkerPool(unsigned threads, std::size_t capacity) : capacity_(capacity) {
    threads_.reserve(threads);
    for (unsigned i = 0; i < threads; ++i) threads_.emplace_back([this] { work(); });
}

bool WorkerPool::submit(Job job) {
    {
        const std::scoped_lock guard(mutex_);
        if (stopped_ || waiting_.size() >= capacity_) return false;
        waiting_.push_back(std::move(job));
    }
    wake_.notify_one();
    return true;
}

void WorkerPool::stop() {
    std::deque<Job> dropped;  // destroyed without the lock: a job's end may submit another
    {
        const std::scoped_lock guard(mutex_);
        stopped_ = true;
        dropped.swap(waiting_);
    }
    wake_.notify_all();
    for (std::thread& thread : threads_)
        if (thread.joinable()) thread.join();
}

void WorkerPool::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        wake_.wait(lock, [this] { return stopped_ || !waiting_.empty(); });
        if (stopped_) return;
        Job job = std::move(waiting_.front());
        waiting_.pop_front();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
}

}  // namespace torvex
