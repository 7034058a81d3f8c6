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
    const bool isFirst = !hasPending();
    addView(key, unique);
    lock.unlock();
    // The thread that writes waits for the first view; while it gathers more, waking it would only cost.
    if (isFirst) changed_.notify_one();
    return unique;
}

bool BufferedHits::isReadyFor(std::string_view nodeId, std::string_view day) {
    const Key key(day, nodeId);
    const std::scoped_lock guard(mutex_);
    return isKnown(key);
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
    return hasHits(*open_(db::Purpose::Hits), key.second, key.first);
}

void BufferedHits::addView(const Key& key, bool unique) {
    pendingViews_[key] += {1, unique ? 1 : 0};
}

BufferedHits::Views& BufferedHits::Views::operator+=(const Views& other) {
    hits += other.hits;
    uniqueHits += other.uniqueHits;
    return *this;
}

void BufferedHits::countSearch(const SearchedWords& searched) {
    addWords(searchesOf(searched));
}

void BufferedHits::countNothingFound(const SearchedWords& searched) {
    addWords(emptySearchesOf(searched));
}

void BufferedHits::addWords(const SearchBatch& words) {
    if (!hasRoomFor(words.size()) && !flush()) return;
    bool isFirst = false;
    {
        const std::scoped_lock guard(mutex_);
        isFirst = !hasPending();
        for (const auto& [key, counts] : words) pendingWords_[key] += counts;
    }
    if (isFirst) changed_.notify_one();
}

bool BufferedHits::hasRoomFor(std::size_t words) {
    const std::scoped_lock guard(mutex_);
    return pendingWords_.size() + words <= mostWords;
}

bool BufferedHits::flush() {
    const std::scoped_lock oneAtATime(writing_);
    const bool areViewsStored = store(pendingViews_, views_);
    return store(pendingWords_, words_) && areViewsStored;
}

/// Writes what waits; what can't be written waits on.
template <typename Counts>
bool BufferedHits::store(Counts& waiting, Kind& kind) {
    Counts batch;
    {
        const std::scoped_lock guard(mutex_);
        batch.swap(waiting);
    }
    if (batch.empty()) return true;
    try {
        write(batch);
        noteResult(kind, nullptr);
        return true;
    } catch (const std::exception& error) {
        const std::scoped_lock guard(mutex_);
        for (const auto& [key, counts] : batch) waiting[key] += counts;
        noteResult(kind, error.what());
        return false;
    }
}

void BufferedHits::write(const ViewBatch& batch) {
    const db::Lease connection = open_(db::Purpose::Hits);
    db::Transaction transaction(*connection);
    for (const auto& [key, views] : batch)
        addHits(*connection, key.second, key.first, views.hits, views.uniqueHits);
    transaction.commit();
}

void BufferedHits::write(const SearchBatch& batch) {
    const db::Lease connection = open_(db::Purpose::Transaction);
    db::Transaction transaction(*connection);
    addSearches(*connection, batch);
    transaction.commit();
}

void BufferedHits::noteResult(Kind& kind, const char* failure) {
    if (failure && !kind.isFailing)
        log_.error(fmt::format("{} can't be stored and are kept for later: {}", kind.name, failure));
    if (!failure && kind.isFailing) log_.info(fmt::format("{} can be stored again", kind.name));
    kind.isFailing = failure != nullptr;
}

void BufferedHits::work() {
    std::unique_lock lock(mutex_);
    while (!isStopping_) {
        changed_.wait(lock, [this] { return isStopping_ || hasPending(); });
        changed_.wait_for(lock, delay_, [this] { return isStopping_; });
        lock.unlock();
        flush();
        lock.lock();
    }
}

}  // namespace torvex
