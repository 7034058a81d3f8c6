#include "search/catalogue/Keeper.h"

#include <algorithm>
#include <sys/resource.h>
#include <unistd.h>

#include "platform/DateTime.h"
#include "platform/OperatorLog.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Queue.h"
#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

namespace {

/// Commits and queries come between two pieces of work of this length.
constexpr std::chrono::milliseconds piece{500};
constexpr int niceness = 10;

}  // namespace

Keeper::Keeper(UpkeepParts parts, ChangedFiles& changes, Renewal& renewal, KeeperTimes times)
    : parts_(std::move(parts)), changes_(changes), renewal_(renewal), times_(times), upkeep_(parts_) {
    tell();
    thread_ = std::thread([this] { work(); });
}

Keeper::~Keeper() {
    {
        const std::scoped_lock lock(mutex_);
        isStopping_ = true;
    }
    changed_.notify_all();
    thread_.join();
    renewal_.end();
}

/// False when it is time to end.
bool Keeper::rest(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return !changed_.wait_for(lock, time, [this] { return isStopping_; });
}

void Keeper::work() {
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), niceness);
    std::chrono::milliseconds pause{0};
    while (rest(pause)) {
        pause = times_.look;
        try {
            keep();
            note("");
        } catch (const BusyError&) {
            // "torvex index" is at work, and does this work too.
        } catch (const ReadingEnded&) {
            // What is still to be read is found again at the next start.
            upkeep_->rest();
        } catch (const DamagedError& error) {
            note(std::string(error.what()) + "; it is made anew");
            upkeep_.emplace(parts_);
            hasCompared_ = false;
            followUp(parts_.log, "the catalogue", [&] { removeDamaged(parts_.folder); });
        } catch (const std::exception& error) {
            note(error.what());
            upkeep_.emplace(parts_);
            hasCompared_ = false;
            pause = times_.afterFailure;
        }
    }
}

void Keeper::keep() {
    queueChanges();
    heed();
    compareWhenDue();
    while (upkeep_->step(piece)) {
        tell();
        if (!rest(std::chrono::milliseconds(0))) return upkeep_->rest();
        queueChanges();
        heed();
        if (!hasCompared_) compare();
    }
    progress_.task = Task::None;
    progress_.total = 0;
    tell();
}

/// What was asked for stays so until it is begun: another may be writing the catalogue now.
void Keeper::heed() {
    const Task task = renewal_.asked();
    if (task == Task::None) return;
    begin(task);
    tell();
    renewal_.take(task);
}

void Keeper::begin(Task task) {
    if (task == Task::Stop) {
        upkeep_->plan({});
        progress_.task = Task::None;
        progress_.total = 0;
        return;
    }
    if (task == Task::Anew) upkeep_->beginAnew();
    progress_.task = task;
    progress_.total = 0;
    hasCompared_ = false;
}

void Keeper::tell() {
    progress_.done = progress_.total - std::min(progress_.total, upkeep_->planned());
    if (told_ == progress_) return;
    renewal_.tell(progress_);
    told_ = progress_;
}

void Keeper::queueChanges() {
    const std::vector<std::string> paths = changes_.take();
    if (paths.empty()) return;
    try {
        enqueue(*parts_.openDatabase(), parts_.clock, paths);
    } catch (...) {
        changes_.putBack(paths);
        throw;
    }
}

void Keeper::compareWhenDue() {
    const auto now = std::chrono::steady_clock::now();
    const bool isDue = !hasCompared_ || (times_.compare.count() > 0 && now - compared_ >= times_.compare);
    if (isDue) compare();
}

void Keeper::compare() {
    if (progress_.task == Task::None) progress_.task = Task::Compare;
    tell();
    upkeep_->plan(upkeep_->compare());
    upkeep_->tidyQueue();
    hasCompared_ = true;
    compared_ = std::chrono::steady_clock::now();
    progress_.compared = parts_.clock.now();
    progress_.total = upkeep_->planned();
    tell();
}

/// A failure that goes on is told once.
void Keeper::note(const std::string& failure) {
    if (failure == progress_.failure) return;
    if (!failure.empty()) parts_.log.warn("site search: " + failure);
    if (failure.empty()) parts_.log.warn("site search: the catalogue is kept up to date again");
    progress_.failure = failure;
    tell();
}

}  // namespace torvex::catalogue
