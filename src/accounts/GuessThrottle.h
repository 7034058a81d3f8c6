#pragma once

#include <mutex>

#include "accounts/CheckPlaces.h"
#include "accounts/FailureCounts.h"
#include "accounts/KnownPlaces.h"

namespace torvex {

/// Slows down whoever guesses passwords, without letting a stranger lock anybody out. Failures are counted
/// three times over, and a try has to wait as long as the longest of the three says:
///
/// - of one name from one network: people mistype, guessing programs need thousands of tries;
/// - of one network over all names: one who tries a few passwords on each of many names;
/// - of one name over all networks: one who guesses from many. This one bites late and gently, since it is
///   what strangers could lock a person out with.
///
/// Where a name has logged in before, only the first of them counts for it.
///
/// A try is counted as a failure when it begins, so that tries made at once gain nothing by it. Safe to share
/// between threads, and bounded in memory.
class GuessThrottle {
  public:
    using Clock = FailureCounts::Clock;

    struct Options {
        FailureCounts::Options ofNameAndNetwork{5, std::chrono::seconds(2), std::chrono::seconds(300),
                                                std::chrono::hours(1), 100'000};
        /// Many people may sit behind one address.
        FailureCounts::Options ofNetwork{20, std::chrono::seconds(2), std::chrono::seconds(300),
                                         std::chrono::hours(1), 100'000};
        FailureCounts::Options ofName{100, std::chrono::seconds(2), std::chrono::seconds(60),
                                      std::chrono::hours(1), 100'000};
        std::size_t knownNames = 20'000;
        CheckPlaces::Options atOnce{};
    };

    /// One try. `name` is "" when it is nobody's.
    struct Guess {
        std::string name;
        std::string network;
        Clock::time_point begun{};
        Clock::time_point beforeOfNetwork{};  ///< filled with what taking it back needs
        Clock::time_point beforeOfName{};
        Clock::time_point beforeOfBoth{};
    };

    GuessThrottle() : GuessThrottle(Options()) {}
    explicit GuessThrottle(const Options& options);

    /// Counts the try, and gives 0; or gives how long it has to wait, and counts nothing.
    std::chrono::seconds begin(Guess& guess, Clock::time_point now = Clock::now());
    /// How long the next try of the same has to wait.
    std::chrono::seconds wait(const Guess& guess, Clock::time_point now = Clock::now());
    /// The password was right: the name's failures from this network are forgiven, and the try isn't counted
    /// in the other two. These stay: a guesser may have a login of its own.
    void succeeded(const Guess& guess);
    /// No password was tested.
    void takeBack(const Guess& guess);

    /// Takes a place among the tests that run at once; false when there is none. Each true wants its `leave`.
    bool enter(const Guess& guess);
    void leave() { places_.leave(); }

  private:
    std::chrono::seconds waitOf(const Guess& guess, Clock::time_point now) const;
    void takeBackBeyondBoth(const Guess& guess);

    std::mutex mutex_;
    FailureCounts ofNameAndNetwork_;
    FailureCounts ofNetwork_;
    FailureCounts ofName_;
    KnownPlaces known_;
    CheckPlaces places_;
};

}  // namespace torvex
