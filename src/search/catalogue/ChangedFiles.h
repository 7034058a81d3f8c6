#pragma once

#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "search/catalogue/Holdings.h"

namespace torvex::catalogue {

/// The files of a catalogue that this process has changed and that aren't in the queue yet. Who changes them
/// may be in the middle of a transaction, and is not made to wait for the database. Safe to share between
/// threads.
class ChangedFiles {
  public:
    explicit ChangedFiles(Holdings holdings) : holdings_(std::move(holdings)) {}

    /// A path of the machine, with "/" behind a folder; others than those of a catalogue are passed over.
    void note(const std::string& absolute) noexcept;
    /// Those noted since, each once.
    std::vector<std::string> take();
    /// For the next `take`.
    void putBack(const std::vector<std::string>& paths);

  private:
    const Holdings holdings_;
    std::mutex mutex_;
    std::set<std::string> paths_;
};

}  // namespace torvex::catalogue
