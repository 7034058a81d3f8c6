#include "accounts/CheckPlaces.h"

namespace torvex {

bool CheckPlaces::enter(bool isKnown) {
    std::unique_lock lock(mutex_);
    if (inside_ >= options_.atOnce) {
        if (waiting_ >= (isKnown ? options_.waitingKnown : options_.waiting)) return false;
        ++waiting_;
        const bool isFree =
            left_.wait_for(lock, options_.patience, [this] { return inside_ < options_.atOnce; });
        --waiting_;
        if (!isFree) return false;
    }
    ++inside_;
    return true;
}

void CheckPlaces::leave() {
    {
        const std::scoped_lock guard(mutex_);
        --inside_;
    }
    left_.notify_one();
}

}  // namespace torvex
