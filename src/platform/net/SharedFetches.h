#pragma once

#include <condition_variable>
#include <list>
#include <map>
#include <memory>
#include <mutex>

#include "platform/Admission.h"
#include "platform/SlowFailures.h"
#include "platform/net/HttpClient.h"

namespace torvex {

/// A source is an address up to its "?".
struct SharingLimits {
    unsigned fetchesOfSource = 2;    ///< at a time
    unsigned waitingForSource = 12;  ///< callers that one source may hold, with those that fetch
    std::size_t keptBytes = 32u << 20;
    std::chrono::milliseconds patience{5'000};  ///< of a caller that waits for another's fetch
};

/// A client that asks for nothing twice: callers who want the same address at the same time share one fetch,
/// and an answer is handed out again for as long as its source allows. A source that fails slowly is left
/// alone for a while (see `SlowFailures`), in which its last answer takes the failure's place where the
/// source allows that. Callers who have to wait take a place of the admission, so that slow sources can't
/// hold all workers; one without a place fails at once. Safe to share between threads.
class SharedFetches final : public HttpClient {
  public:
    /// `fetcher` and `admission` must outlive this.
    SharedFetches(HttpClient& fetcher, Admission& admission, SharingLimits limits = {})
        : fetcher_(fetcher), admission_(admission), limits_(limits) {}

    using HttpClient::get;
    Answer get(const std::string& url, Deadline deadline) override;

    /// Whoever waits for another's fetch, now or later, gives up.
    void cancel();

  private:
    using Clock = Deadline::Clock;
    using Shared = std::shared_ptr<const Answer>;
    using Lock = std::unique_lock<std::mutex>;

    struct Outcome {
        Shared answer;
        std::string failure;  ///< in place of an answer
    };
    struct Flight {
        bool hasEnded = false;
        Outcome outcome;
    };
    struct Kept {
        std::string url;
        Shared answer;
        Clock::time_point freshUntil;
        Clock::time_point usableUntil;
    };
    struct Source {
        unsigned fetching = 0;
        unsigned inside = 0;
    };
    class Place;

    Shared shared(const std::string& url, Deadline deadline);
    Shared kept(const std::string& url, Clock::time_point Kept::*until);
    void keep(const std::string& url, const Shared& answer);
    void drop(std::list<Kept>::iterator entry);
    Shared known(const std::string& url, const std::string& source);
    Shared awaited(Lock& lock, const std::string& url, const std::string& source, Deadline deadline);
    Outcome fetched(Lock& lock, const std::string& url, const std::string& source, Deadline deadline);
    Outcome tried(const std::string& url, Deadline deadline);
    void learn(const std::string& url, const std::string& source, const Outcome& outcome,
               Clock::duration took);
    Shared resolved(const std::string& url, const Outcome& outcome);

    HttpClient& fetcher_;
    Admission& admission_;
    const SharingLimits limits_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isCancelled_ = false;
    std::map<std::string, std::shared_ptr<Flight>> flights_;  ///< by address
    std::map<std::string, Source> sources_;
    std::list<Kept> kept_;  ///< used last in front
    std::map<std::string, std::list<Kept>::iterator> places_;
    std::size_t keptBytes_ = 0;
    SlowFailures<Outcome> failures_;  ///< no answer: by source; an answer that is a failure: by address
};

}  // namespace torvex
