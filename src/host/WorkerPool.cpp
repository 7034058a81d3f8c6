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
    if (waiting_ <= idle_ || threads_.size() >= most_) return;
    const auto limit = Clock::now() - stuckAfter;
    const auto stuck = std::count_if(startedAt_.begin(), startedAt_.end(),
                                     [limit](const auto& startedAt) { return startedAt < limit; });
    std::size_t atWork = threads_.size() - static_cast<std::size_t>(stuck);
    for (; atWork < usual_ && threads_.size() < most_; ++atWork) add();
}

std::deque<WorkerPool::Job>& WorkerPool::jobsOf(std::uint64_t origin) {
    const auto found = std::find_if(turns_.begin(), turns_.end(),
                                    [origin](const Turn& turn) { return turn.origin == origin; });
    if (found != turns_.end()) return found->jobs;
    if (spare_.empty()) spare_.emplace_back();
    turns_.splice(turns_.end(), spare_, spare_.begin());
    turns_.back().origin = origin;
    return turns_.back().jobs;
}

WorkerPool::Job WorkerPool::takeNext() {
    Turn& turn = turns_.front();
    Job job = std::move(turn.jobs.front());
    turn.jobs.pop_front();
    --waiting_;
    std::list<Turn>& goesTo = turn.jobs.empty() ? spare_ : turns_;
    goesTo.splice(goesTo.end(), turns_, turns_.begin());
    return job;
}

bool WorkerPool::submit(Job job, std::uint64_t origin) {
    {
        const std::scoped_lock guard(mutex_);
        if (stopped_ || waiting_ >= capacity_) return false;
        jobsOf(origin).push_back(std::move(job));
        ++waiting_;
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
    std::list<Turn> dropped;  // destroyed without the lock: a job's end may submit another
    std::vector<std::thread> ending;
    {
        const std::scoped_lock guard(mutex_);
        stopped_ = true;
        dropped.swap(turns_);
        waiting_ = 0;
        ending.swap(threads_);
    }
    wake_.notify_all();
    for (std::thread& thread : ending) thread.join();
}

void WorkerPool::work(Clock::time_point& startedAt) {
    std::unique_lock lock(mutex_);
    while (true) {
        ++idle_;
        wake_.wait(lock, [this] { return stopped_ || waiting_ > 0; });
        --idle_;
        if (stopped_) return;
        Job job = takeNext();
        startedAt = Clock::now();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
        startedAt = Clock::time_point::max();
    }
}

}  // namespace torvex
