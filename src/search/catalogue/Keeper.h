#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "search/catalogue/ChangedFiles.h"
#include "search/catalogue/Renewal.h"
#include "search/catalogue/Upkeep.h"

namespace torvex::catalogue {

struct KeeperTimes {
    std::chrono::milliseconds look{250};            ///< between two looks at the queue
    std::chrono::milliseconds afterFailure{5'000};  ///< until the next attempt
    std::chrono::minutes compare{15};  ///< between two comparisons of all files; 0: at the start alone
};

/// Keeps the catalogue of a running server up to date, on a thread of its own that leaves visitors their time:
/// files that this process changes are put into the queue, the queue is worked off, and now and then all files
/// are compared, as well as whenever it is asked for. What can't be done is told once, and tried again.
class Keeper {
  public:
    /// `changes`, `renewal` and what `parts` refers to must outlive this.
    Keeper(UpkeepParts parts, ChangedFiles& changes, Renewal& renewal, KeeperTimes times = {});
    Keeper(const Keeper&) = delete;
    Keeper& operator=(const Keeper&) = delete;
    /// Ends the thread behind the file that is at work.
    ~Keeper();

  private:
    void work();
    void keep();
    void queueChanges();
    void heed();
    void begin(Task task);
    void compareWhenDue();
    void compare();
    void tell();
    void note(const std::string& failure);
    bool rest(std::chrono::milliseconds time);

    const UpkeepParts parts_;
    ChangedFiles& changes_;
    Renewal& renewal_;
    const KeeperTimes times_;
    std::optional<Upkeep> upkeep_;
    bool hasCompared_ = false;
    std::chrono::steady_clock::time_point compared_;
    Progress progress_;  ///< `failure` is the one that was told last
    std::optional<Progress> told_;

    std::mutex mutex_;
    std::condition_variable changed_;
    bool isStopping_ = false;
    std::thread thread_;
};

}  // namespace torvex::catalogue
