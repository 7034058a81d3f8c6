#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/HitCounter.h"
#include "platform/db/Database.h"

namespace torvex {

class LineLog;

/// Collects views in memory and writes them together, on a thread of its own: a page never waits for the
/// database to be written. What was counted in the last moment before a crash is lost. Failing to write keeps
/// the views and tries again; it is logged once, until it works again.
class BufferedHits final : public HitCounter {
  public:
    using OpenDatabase = std::function<db::Lease()>;

    /// `open` gives a connection to the counts, on any thread. A longer `delay` makes fewer and larger
    /// writes.
    BufferedHits(OpenDatabase open, LineLog& log,
                 std::chrono::milliseconds delay = std::chrono::milliseconds(200));
    BufferedHits(const BufferedHits&) = delete;
    BufferedHits& operator=(const BufferedHits&) = delete;
    /// Writes what is left.
    ~BufferedHits() override;

    /// Asks the database once for each node and day whether it was viewed before; throws when it can't.
    bool count(std::string_view nodeId, std::string_view day, bool unique) override;

    /// Writes what has been counted so far before it returns; false when that failed and is left for later.
    bool flush();

  private:
    using Key = std::pair<std::string, std::string>;  ///< day, node
    struct Views {
        std::int64_t hits = 0;
        std::int64_t uniqueHits = 0;
    };
    using Batch = std::map<Key, Views>;

    bool isKnown(const Key& key);
    void know(const Key& key);
    bool wasViewedBefore(const Key& key);
    void add(const Key& key, bool unique);
    void write(const Batch& batch);
    void putBack(const Batch& batch);
    void noteResult(const char* failure);
    void work();

    OpenDatabase open_;
    LineLog& log_;
    std::chrono::milliseconds delay_;

    std::mutex writing_;  ///< one write at a time; taken before `mutex_`
    bool isFailing_ = false;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, std::set<std::string, std::less<>>> known_;  ///< nodes that have a row, by day
    Batch pending_;
    bool isStopping_ = false;
    std::thread thread_;
};

}  // namespace torvex
