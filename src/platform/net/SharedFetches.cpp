#include "platform/net/SharedFetches.h"

#include "platform/Errors.h"

namespace torvex {

namespace {

std::string sourceOf(const std::string& url) {
    return url.substr(0, url.find('?'));
}

bool isGood(const HttpClient::Answer& answer) {
    return answer.status >= 200 && answer.status < 400;
}

std::size_t sizeOf(const HttpClient::Answer& answer) {
    return answer.body.size() + answer.bytes.size() + 1000;
}

}  // namespace

/// Of a caller who may have to wait.
class SharedFetches::Place {
  public:
    Place(SharedFetches& fetches, const std::string& source)
        : pass_(fetches.admission_), fetches_(fetches), source_(source) {
        if (++of().inside <= fetches_.limits_.waitingForSource) return;
        leave();
        throw Error("too many pages wait for this feed at the moment");
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() { leave(); }

  private:
    Source& of() { return fetches_.sources_[source_]; }
    void leave() {
        if (--of().inside == 0) fetches_.sources_.erase(source_);
    }

    Admission::Pass pass_;
    SharedFetches& fetches_;
    const std::string& source_;
};

HttpClient::Answer SharedFetches::get(const std::string& url, Deadline deadline) {
    return *shared(url, deadline);
}

SharedFetches::Shared SharedFetches::shared(const std::string& url, Deadline deadline) {
    const std::string source = sourceOf(url);
    Lock lock(mutex_);
    if (Shared answer = known(url, source)) return answer;
    const Place place(*this, source);
    return awaited(lock, url, source, deadline);
}

void SharedFetches::cancel() {
    {
        const std::scoped_lock lock(mutex_);
        isCancelled_ = true;
    }
    changed_.notify_all();
}

/// What can be said without a fetch; nothing when one is needed.
SharedFetches::Shared SharedFetches::known(const std::string& url, const std::string& source) {
    if (Shared answer = kept(url, &Kept::freshUntil)) return answer;
    std::optional<Outcome> failure = failures_.find(source);
    if (!failure) failure = failures_.find(url);
    return failure ? resolved(url, *failure) : nullptr;
}

SharedFetches::Shared SharedFetches::awaited(Lock& lock, const std::string& url, const std::string& source,
                                             Deadline deadline) {
    const Deadline until = Deadline::in(limits_.patience).orEarlier(deadline);
    while (!isCancelled_ && !until.hasPassed()) {
        if (const auto flight = flights_.find(url); flight != flights_.end()) {
            const std::shared_ptr<Flight> joined = flight->second;
            changed_.wait_until(lock, until.until(), [&] { return isCancelled_ || joined->hasEnded; });
            if (joined->hasEnded) return resolved(url, joined->outcome);
        } else if (sources_[source].fetching < limits_.fetchesOfSource) {
            return resolved(url, fetched(lock, url, source, deadline));
        } else {
            changed_.wait_until(lock, until.until());
            if (const Shared answer = known(url, source)) return answer;
        }
    }
    throw Error(isCancelled_ ? "the server is about to end" : "the server took too long to answer");
}

/// Fetches for all who want the address, without the lock.
SharedFetches::Outcome SharedFetches::fetched(Lock& lock, const std::string& url, const std::string& source,
                                              Deadline deadline) {
    const auto flight = std::make_shared<Flight>();
    flights_.emplace(url, flight);
    ++sources_[source].fetching;
    const auto begin = Clock::now();
    lock.unlock();
    Outcome outcome = tried(url, deadline);
    lock.lock();
    --sources_[source].fetching;
    flights_.erase(url);
    flight->outcome = outcome;
    flight->hasEnded = true;
    learn(url, source, outcome, Clock::now() - begin);
    changed_.notify_all();
    return outcome;
}

SharedFetches::Outcome SharedFetches::tried(const std::string& url, Deadline deadline) {
    try {
        return {std::make_shared<const Answer>(fetcher_.get(url, deadline)), {}};
    } catch (const std::exception& error) {
        return {nullptr, error.what()};
    }
}

void SharedFetches::learn(const std::string& url, const std::string& source, const Outcome& outcome,
                          Clock::duration took) {
    if (outcome.answer && isGood(*outcome.answer)) {
        failures_.forget(source);
        failures_.forget(url);
        keep(url, outcome.answer);
    } else {
        failures_.add(outcome.answer ? url : source, took, outcome);
    }
}

/// The answer, or in place of a failure the last good one where its source allows that.
SharedFetches::Shared SharedFetches::resolved(const std::string& url, const Outcome& outcome) {
    if (outcome.answer && outcome.answer->status < 500) return outcome.answer;
    if (Shared last = kept(url, &Kept::usableUntil)) return last;
    if (!outcome.answer) throw Error(outcome.failure);
    return outcome.answer;
}

SharedFetches::Shared SharedFetches::kept(const std::string& url, Clock::time_point Kept::*until) {
    const auto place = places_.find(url);
    if (place == places_.end() || Clock::now() >= (*place->second).*until) return nullptr;
    kept_.splice(kept_.begin(), kept_, place->second);
    return place->second->answer;
}

void SharedFetches::keep(const std::string& url, const Shared& answer) {
    if (const auto before = places_.find(url); before != places_.end()) drop(before->second);
    const auto fresh = Clock::now() + answer->freshness.fresh;
    const auto usable = fresh + answer->freshness.staleIfError;
    // One answer alone may not push out all others.
    const std::size_t size = sizeOf(*answer);
    const bool hasStatusToKeep = answer->status == 200 || answer->status == 203 || answer->status == 204;
    if (usable <= Clock::now() || size > limits_.keptBytes / 2 || !hasStatusToKeep) return;
    while (keptBytes_ + size > limits_.keptBytes) drop(std::prev(kept_.end()));
    kept_.push_front({url, answer, fresh, usable});
    places_[url] = kept_.begin();
    keptBytes_ += size;
}

void SharedFetches::drop(std::list<Kept>::iterator entry) {
    keptBytes_ -= sizeOf(*entry->answer);
    places_.erase(entry->url);
    kept_.erase(entry);
}

}  // namespace torvex
