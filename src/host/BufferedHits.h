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

#include "delivery/SearchStore.h"
#include "platform/HitCounter.h"
#include "platform/db/Database.h"

namespace torvex {

class LineLog;

/// Collects views and searched words in memory and writes them together, on a thread of its own: a page never waits
/// for the database to be written. What was counted in the last moment before a crash is lost. Failing to write keeps
/// them and tries again; it is logged once, until it works again.
class BufferedHits final : public HitCounter {
  public:
    using OpenDatabase = std::function<db::Lease(db::Purpose)>;

    /// `open` gives a connection, on any thread: to the hits alone for views, to the content too for words. A longer
    /// `delay` makes fewer and larger writes.
    BufferedHits(OpenDatabase open, LineLog& log,
                 std::chrono::milliseconds delay = std::chrono::milliseconds(200));
    BufferedHits(const BufferedHits&) = delete;
    BufferedHits& operator=(const BufferedHits&) = delete;
    /// Writes what is left.
    ~BufferedHits() override;

    /// Asks the database once for each node and day whether it was viewed before; throws when it can't.
    bool count(std::string_view nodeId, std::string_view day, bool unique) override;
    bool isReadyFor(std::string_view nodeId, std::string_view day) override;

    /// Visitors may search for whatever they like: who brings too many different words for the memory waits until
    /// those before them are written, and they are left out where that fails.
    void countSearch(const SearchedWords& searched) override;
    void countNothingFound(const SearchedWords& searched) override;

    /// Writes what has been counted so far before it returns; false when that failed and is left for later.
    bool flush() override;

    static constexpr std::size_t mostWords = 10'000;  ///< that wait, some 10 MB

  private:
    using Key = std::pair<std::string, std::string>;  ///< day, node
    struct Views {
        std::int64_t hits = 0;
        std::int64_t uniqueHits = 0;

        Views& operator+=(const Views& other);
    };
    using ViewBatch = std::map<Key, Views>;
    /// What is counted apart: its name in the log, and whether it can't be written.
    struct Kind {
        const char* name;
        bool isFailing = false;
    };

    bool isKnown(const Key& key);
    void know(const Key& key);
    bool wasViewedBefore(const Key& key);
    void addView(const Key& key, bool unique);
    void addWords(const SearchBatch& words);
    bool hasRoomFor(std::size_t words);
    bool hasPending() const { return !pendingViews_.empty() || !pendingWords_.empty(); }
    void write(const ViewBatch& batch);
    void write(const SearchBatch& batch);
    template <typename Counts>
    bool store(Counts& waiting, Kind& kind);
    void noteResult(Kind& kind, const char* failure);
    void work();

    OpenDatabase open_;
    LineLog& log_;
    std::chrono::milliseconds delay_;

    std::mutex writing_;  ///< one write at a time; taken before `mutex_`
    Kind views_{"views"};
    Kind words_{"searched words"};

    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, std::set<std::string, std::less<>>> known_;  ///< nodes that have a row, by day
    ViewBatch pendingViews_;
    SearchBatch pendingWords_;
    bool isStopping_ = false;
    std::thread thread_;
};

}  // namespace torvex
