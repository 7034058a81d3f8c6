#include "host/BufferedHits.h"

#include <fmt/format.h>

#include "delivery/HitStore.h"
#include "host/LineLog.h"
#include "platform/db/Connection.h"

namespace torvex {

BufferedHits::BufferedHits(OpenDatabase open, LineLog& log, std::chrono::milliseconds delay)
    : open_(std::move(open)), log_(log), delay_(delay), thread_([this] { work(); }) {}

BufferedHits::~BufferedHits() {
    {
        const std::scoped_lock guard(mutex_);
        isStopping_ = true;
    }
    changed_.notify_all();
    thread_.join();
    flush();
}

bool BufferedHits::count(std::string_view nodeId, std::string_view day, bool unique) {
    const Key key(day, nodeId);
    std::unique_lock lock(mutex_);
    if (!isKnown(key)) {
        lock.unlock();
        const bool before = wasViewedBefore(key);
        lock.lock();
        // Of two first views at once, the one that comes here first is the unique one.
        if (!isKnown(key)) {
            know(key);
            unique = unique || !before;
        }
    }
    const bool isFirst = pending_.empty();
    add(key, unique);
    lock.unlock();
    // The thread that writes waits for the first view; while it gathers more, waking it would only cost.
    if (isFirst) changed_.notify_one();
    return unique;
}

bool BufferedHits::isKnown(const Key& key) {
    const auto day = known_.find(key.first);
    return day != known_.end() && day->second.contains(key.second);
}

void BufferedHits::know(const Key& key) {
    constexpr std::size_t daysKept = 2;  // around midnight two days are counted
    known_[key.first].insert(key.second);
    while (known_.size() > daysKept)
        known_.erase(known_.begin()->first == key.first ? std::next(known_.begin()) : known_.begin());
}

bool BufferedHits::wasViewedBefore(const Key& key) {
    return hasHits(*open_(), key.second, key.first);
}

void BufferedHits::add(const Key& key, bool unique) {
    Views& views = pending_[key];
    ++views.hits;
    if (unique) ++views.uniqueHits;
}

bool BufferedHits::flush() {
    const std::scoped_lock oneAtATime(writing_);
    Batch batch;
    {
        const std::scoped_lock guard(mutex_);
        batch.swap(pending_);
    }
    if (batch.empty()) return true;
    try {
        write(batch);
        noteResult(nullptr);
        return true;
    } catch (const std::exception& error) {
        putBack(batch);
        noteResult(error.what());
        return false;
    }
}

void BufferedHits::write(const Batch& batch) {
    const db::Lease connection = open_();
    db::Transaction transaction(*connection);
    for (const auto& [key, views] : batch)
        addHits(*connection, key.second, key.first, views.hits, views.uniqueHits);
    transaction.commit();
}

void BufferedHits::putBack(const Batch& batch) {
    const std::scoped_lock guard(mutex_);
    for (const auto& [key, views] : batch) {
        Views& waiting = pending_[key];
        waiting.hits += views.hits;
        waiting.uniqueHits += views.uniqueHits;
    }
}

void BufferedHits::noteResult(const char* failure) {
    if (failure && !isFailing_)
        log_.error(fmt::format("views can't be stored and are kept for later: {}", failure));
    if (!failure && isFailing_) log_.info("views can be stored again");
    isFailing_ = failure != nullptr;
}

void BufferedHits::work() {
    std::unique_lock lock(mutex_);
    while (!isStopping_) {
        changed_.wait(lock, [this] { return isStopping_ || !pending_.empty(); });
        changed_.wait_for(lock, delay_, [this] { return isStopping_; });
        lock.unlock();
        flush();
        lock.lock();
    }
}

}  // namespace torvex
