#include "accounts/GuessThrottle.h"

#include <algorithm>

namespace torvex {

namespace {

/// No network holds a blank.
std::string bothOf(const GuessThrottle::Guess& guess) {
    return guess.network + ' ' + guess.name;
}

}  // namespace

GuessThrottle::GuessThrottle(const Options& options)
    : ofNameAndNetwork_(options.ofNameAndNetwork),
      ofNetwork_(options.ofNetwork),
      ofName_(options.ofName),
      known_(options.knownNames),
      places_(options.atOnce) {}

bool GuessThrottle::enter(const Guess& guess) {
    bool isKnown = false;
    {
        const std::scoped_lock guard(mutex_);
        isKnown = known_.contains(guess.name, guess.network);
    }
    return places_.enter(isKnown);
}

std::chrono::seconds GuessThrottle::begin(Guess& guess, Clock::time_point now) {
    const std::scoped_lock guard(mutex_);
    if (const auto wait = waitOf(guess, now); wait.count() > 0) return wait;
    guess.begun = now;
    guess.beforeOfNetwork = ofNetwork_.count(guess.network, now);
    if (guess.name.empty()) return {};
    guess.beforeOfName = ofName_.count(guess.name, now);
    guess.beforeOfBoth = ofNameAndNetwork_.count(bothOf(guess), now);
    return {};
}

std::chrono::seconds GuessThrottle::wait(const Guess& guess, Clock::time_point now) {
    const std::scoped_lock guard(mutex_);
    return waitOf(guess, now);
}

std::chrono::seconds GuessThrottle::waitOf(const Guess& guess, Clock::time_point now) const {
    if (guess.name.empty()) return ofNetwork_.wait(guess.network, now);
    const auto ofBoth = ofNameAndNetwork_.wait(bothOf(guess), now);
    if (known_.contains(guess.name, guess.network)) return ofBoth;
    return std::max({ofBoth, ofNetwork_.wait(guess.network, now), ofName_.wait(guess.name, now)});
}

void GuessThrottle::succeeded(const Guess& guess) {
    const std::scoped_lock guard(mutex_);
    takeBackBeyondBoth(guess);
    if (guess.name.empty()) return;
    ofNameAndNetwork_.forget(bothOf(guess));
    known_.add(guess.name, guess.network);
}

void GuessThrottle::takeBack(const Guess& guess) {
    const std::scoped_lock guard(mutex_);
    takeBackBeyondBoth(guess);
    if (!guess.name.empty()) ofNameAndNetwork_.takeBack(bothOf(guess), guess.begun, guess.beforeOfBoth);
}

void GuessThrottle::takeBackBeyondBoth(const Guess& guess) {
    ofNetwork_.takeBack(guess.network, guess.begun, guess.beforeOfNetwork);
    if (!guess.name.empty()) ofName_.takeBack(guess.name, guess.begun, guess.beforeOfName);
}

}  // namespace torvex
