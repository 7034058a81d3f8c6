#include "host/cache/Looks.h"

#include <atomic>
#include <boost/asio/post.hpp>

#include "platform/DateTime.h"

namespace torvex {

namespace {

constexpr std::chrono::seconds afterFailedWatch{1};

std::uint64_t nextNumber() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

const Look& Looks::now() {
    if (look_) return *look_;
    // The number comes first: what has a higher one was seen later.
    look_.emplace(Look{.number = nextNumber(), .content = content(), .today = clock_.today()});
    boost::asio::post(loop_, [this] { end(); });
    return *look_;
}

bool Looks::mustAsk() {
    db::ContentWatch* const opened = watch();
    return opened && opened->mustAsk();
}

void Looks::ask(std::function<void(const Look&)> done) {
    watch_->ask([this, number = nextNumber(), done = std::move(done)](db::SharedStates content) {
        boost::asio::post(loop_, [this, number, done, content = std::move(content)]() mutable {
            done({number, std::move(content), clock_.today()});
        });
    });
}

db::SharedStates Looks::content() {
    db::ContentWatch* const opened = watch();
    return opened ? opened->now() : nullptr;
}

db::ContentWatch* Looks::watch() {
    if (watch_) return watch_.get();
    const auto now = std::chrono::steady_clock::now();
    if (now - triedAt_ < afterFailedWatch) return nullptr;
    triedAt_ = now;
    try {
        watch_ = open_();
    } catch (const std::exception&) {
        // Pages are made anew until it can be had; what keeps them from it is told where they are made.
    }
    return watch_.get();
}

}  // namespace torvex
