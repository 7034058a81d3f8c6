#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/db/Database.h"
#include "search/catalogue/Holdings.h"
#include "search/catalogue/Writer.h"

namespace torvex {
class Clock;
class FileSystem;
class OperatorLog;
}  // namespace torvex

namespace torvex::catalogue {

class TextExtractor;

/// What a catalogue is made from.
struct UpkeepParts {
    std::string folder;  ///< of the database
    Holdings holdings;
    FileSystem& files;
    TextExtractor& extractor;
    OperatorLog& log;
    const Clock& clock;
    std::function<db::Lease()> openDatabase;  ///< where the queue is
};

/// In which files a catalogue and the installation differ.
struct Differences {
    std::vector<std::string> changed;  ///< new, or of another size or time
    std::vector<std::string> gone;

    std::size_t count() const { return changed.size() + gone.size(); }
};

/// Brings a catalogue up to date, by the queue and by comparing all files, a step at a time. Between two steps
/// everything that was done may be committed or not; what wasn't is found by the next comparison. Used by one
/// thread. Operations throw what `Writer` throws, and what the database throws.
class Upkeep {
  public:
    explicit Upkeep(UpkeepParts parts) : parts_(std::move(parts)) {}

    /// A look at all files.
    Differences compare();
    /// From now on every file is to be read anew.
    void beginAnew();
    /// To be taken in by the next steps.
    void plan(Differences differences);

    /// Works off the queue as far as it has come, then what is planned, for about so long. Queued files can be
    /// found when it returns. Nothing is held when it returns false: all was done.
    bool step(std::chrono::milliseconds most);
    std::size_t planned() const { return planned_.size(); }
    /// Commits, and lets others write.
    void rest();

    /// Removes the rows of long ago from the queue.
    void tidyQueue();

  private:
    Writer& writer();
    void finish();
    bool workOffQueue();
    void renew(const std::string& path);
    void renewFolder(const std::string& path);
    void renewFile(const std::string& path);
    Reading read(const std::string& path, const FileStamp& stamp);

    UpkeepParts parts_;
    std::optional<Writer> writer_;
    std::deque<std::string> planned_;
    bool isFilling_ = false;  ///< most of the catalogue is planned
    std::optional<std::int64_t> position_;
    std::set<std::int64_t> seen_;  ///< the last numbers of the queue
};

}  // namespace torvex::catalogue
