#include "replication/ServerShares.h"

#include <condition_variable>
#include <fmt/format.h>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

#include "platform/files/DiskFileSystem.h"

namespace torvex {

namespace {

using Seconds = std::chrono::duration<double>;
using Moment = std::chrono::steady_clock::time_point;

Moment after(Seconds wait) {
    // Beyond some days a moment no longer fits.
    const Seconds longest = std::chrono::hours(24);
    return std::chrono::steady_clock::now() +
           std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::min(wait, longest));
}

}  // namespace

/// What outlives the object for as long as a thread needs it.
struct ServerShares::Common {
    explicit Common(Open given) : open(std::move(given)) {}

    bool isHanging(const std::string& share) {
        const std::scoped_lock guard(mutex);
        return hanging.contains(share);
    }
    void noteHanging(const std::string& share) {
        const std::scoped_lock guard(mutex);
        hanging.insert(share);
    }
    void noteAnswer(const std::string& share) {
        const std::scoped_lock guard(mutex);
        hanging.erase(hanging.find(share));
    }

    const Open open;
    std::mutex mutex;
    std::multiset<std::string> hanging;  ///< shares of runs that were given up on and haven't ended
};

/// One call's work, shared by the thread that does it and the one that waits.
struct ServerShares::Run {
    std::shared_ptr<Common> common;
    std::string share;
    std::string install;
    std::vector<Step> steps;

    std::mutex mutex;
    std::condition_variable progress;
    std::vector<std::string> results;  ///< of the steps that have ended, in order
    bool ended = false;
    bool givenUp = false;

    void work();
    void workThrough();
    bool note(std::string result);
    std::vector<std::string> wait(Patience patience);
};

/// False when nobody waits for further results, so that the thread can end.
bool ServerShares::Run::note(std::string result) {
    const std::scoped_lock guard(mutex);
    results.push_back(std::move(result));
    progress.notify_all();
    return !givenUp;
}

void ServerShares::Run::workThrough() {
    std::shared_ptr<FileSystem> files;
    std::string unreachable;
    try {
        files = common->open(share, install);
    } catch (const std::exception& error) {
        unreachable = error.what();
    }
    {
        const std::scoped_lock guard(mutex);
        if (givenUp) return;
    }
    for (const Step& step : steps) {
        std::string result = unreachable;
        try {
            if (files) step(*files);
        } catch (const std::exception& error) {
            result = error.what();
        }
        if (!note(std::move(result))) return;
    }
}

void ServerShares::Run::work() {
    workThrough();
    const std::scoped_lock guard(mutex);
    ended = true;
    if (givenUp) common->noteAnswer(share);
    progress.notify_all();
}

std::vector<std::string> ServerShares::Run::wait(Patience patience) {
    std::unique_lock lock(mutex);
    const Moment end = after(patience.altogether);
    for (std::size_t seen = 0; !ended; seen = results.size()) {
        const Moment next = std::min(end, after(patience.withoutProgress));
        const bool moved = progress.wait_until(lock, next, [&] { return ended || results.size() > seen; });
        if (moved && (ended || std::chrono::steady_clock::now() < end)) continue;
        givenUp = true;
        common->noteHanging(share);
        break;
    }
    std::vector<std::string> reasons = results;
    const Seconds waited = std::min(patience.altogether, patience.withoutProgress);
    reasons.resize(steps.size(), fmt::format("no answer within {:g} seconds", waited.count()));
    return reasons;
}

ServerShares::ServerShares(Open open) : common_(std::make_shared<Common>(std::move(open))) {}

ServerShares::~ServerShares() = default;

std::vector<std::string> ServerShares::run(const std::string& share, const std::string& install,
                                           std::vector<Step> steps, Patience patience) {
    const std::size_t count = steps.size();
    if (common_->isHanging(share)) {
        return std::vector<std::string>(count, "the server hasn't answered to an earlier change yet");
    }
    auto run = std::make_shared<Run>();
    run->common = common_;
    run->share = share;
    run->install = install;
    run->steps = std::move(steps);
    try {
        std::thread([run] { run->work(); }).detach();
    } catch (const std::system_error& error) {
        return std::vector<std::string>(count, error.what());
    }
    return run->wait(patience);
}

std::shared_ptr<FileSystem> openDiskShare(const std::string& share, const std::string& install) {
    return std::make_shared<DiskFileSystem>(std::vector<std::string>{share, install});
}

}  // namespace torvex
