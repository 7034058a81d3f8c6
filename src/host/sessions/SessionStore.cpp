#include "host/sessions/SessionStore.h"

#include <algorithm>
#include <deque>
#include <fmt/format.h>
#include <iterator>
#include <list>
#include <mutex>
#include <sodium.h>
#include <unordered_map>
#include <vector>

#include "host/http/Ascii.h"
#include "pages/NoStore.h"
#include "platform/Errors.h"
#include "platform/Keys.h"

namespace torvex {

namespace {

/// Which lists a session is in; those on the left go first.
enum class Standing { OnProbation, Established, LoggedIn, Author };
constexpr std::size_t standings = 4;

bool holdsAuthor(const Session& session) {
    return !session.text(sessionKey::authorName).empty();
}

Standing standingOf(const Session& session) {
    if (holdsAuthor(session)) return Standing::Author;
    return holdsLogin(session) ? Standing::LoggedIn : Standing::Established;
}

bool isStranger(Standing standing) {
    return standing == Standing::OnProbation || standing == Standing::Established;
}

/// How long a token that was changed is known as one. Requests that were on their way at that moment arrive
/// within it.
constexpr std::chrono::seconds retirement{60};
/// Of each shard. Beyond it the oldest is like any other token that isn't known.
constexpr std::size_t mostRetired = 256;

}  // namespace

struct SessionStore::Waiting {
    Turn turn;
    std::uint64_t origin;
};

struct SessionLease::Entry {
    explicit Entry(std::uint64_t from) : Entry(SessionToken::twoRandom(), from) {}
    Entry(const std::array<SessionToken, 2>& random, std::uint64_t from)
        : token(random[0]), session(random[1].text()), origin(from) {}

    SessionToken token;
    Session session;
    SessionStore::TimePoint lastUsed{};
    std::uint64_t origin;  ///< of its first request
    Standing standing = Standing::OnProbation;
    bool isKept = false;  ///< it is in its shard, at `place` of the list of its standing
    bool isBusy = true;
    std::list<Entry*>::iterator place{};
    std::list<Entry*>* neighbours = nullptr;  ///< the strangers of its origin, it among them
    std::list<Entry*>::iterator placeAmongThem{};
    std::list<SessionStore::Waiting> waiting;
};

/// A part of the store. All lists are in the order of the last use.
struct SessionStore::Shard {
    using Entry = SessionLease::Entry;
    struct Hash {
        std::size_t operator()(const SessionToken& token) const { return token.high; }
    };
    struct Retired {
        SessionToken token;
        TimePoint since;
    };

    mutable std::mutex mutex;
    std::unordered_map<SessionToken, EntryPointer, Hash> entries;
    std::array<std::list<Entry*>, standings> byStanding;
    std::unordered_map<std::uint64_t, std::list<Entry*>> strangers;  ///< by their origin
    std::deque<Retired> retired;
    std::vector<std::string> endedAuthors;  ///< ids of sessions, since somebody asked

    std::list<Entry*>& listOf(Standing standing) { return byStanding[static_cast<std::size_t>(standing)]; }

    void add(const EntryPointer& entry, const SessionLimits& limits) {
        std::list<Entry*>& list = listOf(entry->standing);
        entry->place = list.insert(list.end(), entry.get());
        entry->isKept = true;
        entries.emplace(entry->token, entry);
        if (isStranger(entry->standing)) addToStrangers(*entry);
        makeRoom(*entry, limits);
    }

    void renew(Entry& entry, const SessionLimits& limits) {
        const Standing before = entry.standing;
        if (before == Standing::OnProbation) entry.standing = Standing::Established;
        std::list<Entry*>& list = listOf(entry.standing);
        list.splice(list.end(), listOf(before), entry.place);
        if (entry.neighbours)
            entry.neighbours->splice(entry.neighbours->end(), *entry.neighbours, entry.placeAmongThem);
        if (before != entry.standing) makeRoom(entry, limits);
    }

    void remove(Entry& entry) {
        listOf(entry.standing).erase(entry.place);
        if (entry.neighbours) removeFromStrangers(entry);
        entry.isKept = false;
        entries.erase(entry.token);  // the last: it may be the entry's end
    }

    /// For good. One that a request has just now ends with the request's turn.
    void end(Entry& entry) {
        if (!entry.isBusy) noteEnd(entry);
        remove(entry);
    }

    void noteEnd(const Entry& entry) {
        if (holdsAuthor(entry.session)) endedAuthors.push_back(entry.session.id());
    }

    void retire(const SessionToken& token, TimePoint now) {
        retired.push_back({token, now});
        if (retired.size() > mostRetired) retired.pop_front();
    }

    bool isRetired(const SessionToken& token, TimePoint now) const {
        return std::any_of(retired.begin(), retired.end(), [&](const Retired& one) {
            return one.token == token && now - one.since <= retirement;
        });
    }

  private:
    void addToStrangers(Entry& entry) {
        entry.neighbours = &strangers[entry.origin];
        entry.placeAmongThem = entry.neighbours->insert(entry.neighbours->end(), &entry);
    }

    void removeFromStrangers(Entry& entry) {
        entry.neighbours->erase(entry.placeAmongThem);
        if (entry.neighbours->empty()) strangers.erase(entry.origin);
        entry.neighbours = nullptr;
    }

    /// After one has come into a list.
    void makeRoom(const Entry& newest, const SessionLimits& limits) {
        if (newest.neighbours && newest.neighbours->size() > limits.ofOneAddress)
            end(*newest.neighbours->front());
        auto& onProbation = listOf(Standing::OnProbation);
        if (onProbation.size() > limits.onProbation) end(*onProbation.front());
        const std::array kept{&listOf(Standing::Established), &listOf(Standing::LoggedIn),
                              &listOf(Standing::Author)};
        if (kept[0]->size() + kept[1]->size() + kept[2]->size() <= limits.established) return;
        const auto list = std::ranges::find_if(kept, [](const auto* one) { return !one->empty(); });
        end(*(*list)->front());
    }
};

/// The start values of the most recent visits: one block for all sessions that start alike. Which values a
/// session starts with depends on the host name that the visitor sends, so the number of blocks must be
/// bounded.
class SessionStore::DefaultsCache {
  public:
    std::shared_ptr<const Session::Values> share(const Session::Values& values) {
        const std::scoped_lock guard(mutex_);
        const auto known =
            std::find_if(blocks_.begin(), blocks_.end(), [&](const auto& block) { return *block == values; });
        if (known != blocks_.end()) {
            blocks_.splice(blocks_.begin(), blocks_, known);
        } else {
            blocks_.push_front(std::make_shared<const Session::Values>(values));
            if (blocks_.size() > capacity) blocks_.pop_back();
        }
        return blocks_.front();
    }

  private:
    static constexpr std::size_t capacity = 32;
    std::mutex mutex_;
    std::list<std::shared_ptr<const Session::Values>> blocks_;
};

SessionToken SessionToken::random() {
    SessionToken token;
    randombytes_buf(&token, sizeof token);
    return token;
}

std::array<SessionToken, 2> SessionToken::twoRandom() {
    std::array<SessionToken, 2> tokens;
    randombytes_buf(tokens.data(), sizeof tokens);
    return tokens;
}

std::optional<SessionToken> SessionToken::parse(std::string_view text) {
    if (text.size() != 32) return std::nullopt;
    SessionToken token;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int digit = ascii::hexValue(text[i]);
        if (digit < 0) return std::nullopt;
        std::uint64_t& half = i < 16 ? token.high : token.low;
        half = half << 4U | static_cast<std::uint64_t>(digit);
    }
    return token;
}

std::string SessionToken::text() const {
    return fmt::format("{:016x}{:016x}", high, low);
}

SessionLease::SessionLease(SessionStore& store, std::shared_ptr<Entry> entry, Kind kind)
    : store_(&store), entry_(std::move(entry)), kind_(kind) {}

SessionLease::~SessionLease() {
    if (entry_ && !isNew()) store_->endTurn(entry_);
}

Session& SessionLease::session() {
    return entry_->session;
}

void SessionLease::keepAsDefaults() {
    Session fresh(entry_->session.id(), store_->defaults_->share(entry_->session.ownValues()));
    fresh.setCodePage(entry_->session.codePage());
    entry_->session = std::move(fresh);
}

std::optional<SessionToken> SessionLease::finish() {
    const std::shared_ptr<Entry> entry = std::exchange(entry_, nullptr);
    if (entry->session.isAbandoned()) {
        store_->abandon(entry);
        return std::nullopt;
    }
    // Asked in any case: a new session's token is new enough, and mustn't change at the next request.
    const bool isAskedFor = entry->session.takeTokenRequest();
    const bool sendsToken = isAskedFor || (kind_ == Kind::New && entry->session.holdsSomething());
    if (sendsToken && isNew()) store_->keep(entry);
    if (sendsToken && !isNew()) store_->giveNewToken(entry);
    const SessionToken token = entry->token;
    store_->endTurn(entry);
    return sendsToken ? std::optional(token) : std::nullopt;
}

SessionStore::SessionStore(const SessionLimits& limits, Now now)
    : limits_(limits),
      now_(std::move(now)),
      shards_(std::make_unique<std::array<Shard, shardCount>>()),
      defaults_(std::make_unique<DefaultsCache>()) {
    if (sodium_init() < 0) throw Error("The random number generator can't be used.");
    limits_.onProbation = std::max<std::size_t>(limits_.onProbation / shardCount, 1);
    limits_.established = std::max<std::size_t>(limits_.established / shardCount, 1);
    limits_.ofOneAddress = std::max<std::size_t>(limits_.ofOneAddress / shardCount, 1);
}

SessionStore::~SessionStore() = default;

SessionStore::Shard& SessionStore::shardOf(const SessionToken& token) const {
    return (*shards_)[token.low % shardCount];
}

bool SessionStore::isOutlived(const SessionLease::Entry& entry) const {
    const auto unused = now_() - entry.lastUsed;
    if (entry.standing == Standing::OnProbation) return unused > limits_.probation;
    return unused > (entry.standing == Standing::Author ? limits_.authorIdle : limits_.idle);
}

SessionStore::EntryPointer SessionStore::findAndRenew(Shard& shard, const SessionToken& token) {
    const auto found = shard.entries.find(token);
    if (found == shard.entries.end()) return nullptr;
    const EntryPointer entry = found->second;
    if (!entry->isBusy && isOutlived(*entry)) {
        shard.end(*entry);
        return nullptr;
    }
    entry->lastUsed = now_();
    shard.renew(*entry, limits_);
    return entry;
}

bool SessionStore::enter(std::string_view token, std::uint64_t origin, Turn turn) {
    using Kind = SessionLease::Kind;
    const std::optional<SessionToken> known = SessionToken::parse(token);
    if (!known) return startNew(turn, origin, Kind::New), true;
    EntryPointer entry;
    Kind otherwise = Kind::New;
    {
        Shard& shard = shardOf(*known);
        const std::scoped_lock guard(shard.mutex);
        entry = findAndRenew(shard, *known);
        if (entry && entry->isBusy) {
            if (entry->waiting.size() >= limits_.waiting) return false;
            entry->waiting.push_back({std::move(turn), origin});
            return true;
        }
        if (entry) entry->isBusy = true;
        if (!entry && shard.isRetired(*known, now_())) otherwise = Kind::Passing;
    }
    if (!entry) return startNew(turn, origin, otherwise), true;
    turn(SessionLease(*this, std::move(entry), Kind::Known));
    return true;
}

bool SessionStore::isKnown(std::string_view token) const {
    const std::optional<SessionToken> known = SessionToken::parse(token);
    if (!known) return false;
    Shard& shard = shardOf(*known);
    const std::scoped_lock guard(shard.mutex);
    const auto found = shard.entries.find(*known);
    return found != shard.entries.end() && (found->second->isBusy || !isOutlived(*found->second));
}

void SessionStore::touch(std::string_view token) {
    const std::optional<SessionToken> known = SessionToken::parse(token);
    if (!known) return;
    Shard& shard = shardOf(*known);
    const std::scoped_lock guard(shard.mutex);
    findAndRenew(shard, *known);
}

void SessionStore::startNew(const Turn& turn, std::uint64_t origin, SessionLease::Kind kind) {
    turn(SessionLease(*this, std::make_shared<SessionLease::Entry>(origin), kind));
}

void SessionStore::keep(const EntryPointer& entry) {
    Shard& shard = shardOf(entry->token);
    const std::scoped_lock guard(shard.mutex);
    entry->lastUsed = now_();
    const Standing standing = standingOf(entry->session);
    if (!isStranger(standing) || !isStranger(entry->standing)) entry->standing = standing;
    shard.add(entry, limits_);
}

/// Those who waited for the session knew the old token, and that may be all that they are.
void SessionStore::giveNewToken(const EntryPointer& entry) {
    std::list<Waiting> waiting;
    {
        Shard& shard = shardOf(entry->token);
        const std::scoped_lock guard(shard.mutex);
        if (entry->isKept) shard.remove(*entry);
        shard.retire(entry->token, now_());
        waiting.swap(entry->waiting);
    }
    entry->token = SessionToken::random();  // out of all shards, only this thread has the entry
    keep(entry);
    for (const Waiting& one : waiting) startNew(one.turn, one.origin, SessionLease::Kind::Passing);
}

void SessionStore::endTurn(const EntryPointer& entry) {
    Turn next;
    {
        Shard& shard = shardOf(entry->token);
        const std::scoped_lock guard(shard.mutex);
        if (entry->waiting.empty()) {
            entry->isBusy = false;
            if (!entry->isKept) shard.noteEnd(*entry);
            return;
        }
        next = std::move(entry->waiting.front().turn);
        entry->waiting.pop_front();
    }
    next(SessionLease(*this, entry, SessionLease::Kind::Known));
}

/// Those who waited for the session must not see it any more: they start anew.
void SessionStore::abandon(const EntryPointer& entry) {
    std::list<Waiting> waiting;
    {
        Shard& shard = shardOf(entry->token);
        const std::scoped_lock guard(shard.mutex);
        if (entry->isKept) shard.remove(*entry);
        shard.noteEnd(*entry);
        waiting.swap(entry->waiting);
    }
    for (const Waiting& one : waiting) startNew(one.turn, one.origin, SessionLease::Kind::New);
}

void SessionStore::sweep() {
    constexpr int most = 500;  // for each list: holds the lock for some 50 microseconds
    for (Shard& shard : *shards_) {
        const std::scoped_lock guard(shard.mutex);
        for (std::list<SessionLease::Entry*>& list : shard.byStanding) {
            for (int i = 0; i < most && !list.empty() && isOutlived(*list.front()); ++i) {
                SessionLease::Entry& oldest = *list.front();
                if (!oldest.isBusy) {
                    shard.end(oldest);
                    continue;
                }
                oldest.lastUsed = now_();
                list.splice(list.end(), list, oldest.place);
            }
        }
    }
}

std::vector<std::string> SessionStore::takeEndedAuthors() {
    std::vector<std::string> ended;
    for (Shard& shard : *shards_) {
        const std::scoped_lock guard(shard.mutex);
        std::ranges::move(shard.endedAuthors, std::back_inserter(ended));
        shard.endedAuthors.clear();
    }
    return ended;
}

std::size_t SessionStore::size() const {
    std::size_t total = 0;
    for (const Shard& shard : *shards_) {
        const std::scoped_lock guard(shard.mutex);
        total += shard.entries.size();
    }
    return total;
}

}  // namespace torvex
