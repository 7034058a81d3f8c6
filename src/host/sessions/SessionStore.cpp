#include "host/sessions/SessionStore.h"

#include <algorithm>
#include <fmt/format.h>
#include <list>
#include <mutex>
#include <sodium.h>
#include <unordered_map>
#include <vector>

#include "host/http/Ascii.h"
#include "platform/Errors.h"

namespace torvex {

struct SessionLease::Entry {
    Entry() : Entry(SessionToken::twoRandom()) {}
    explicit Entry(const std::array<SessionToken, 2>& random) : token(random[0]), session(random[1].text()) {}

    SessionToken token;
    Session session;
    SessionStore::TimePoint lastUsed{};
    bool isKept = false;         ///< it is in its shard, at `place` of one of the two lists
    bool isEstablished = false;  ///< its cookie has come back
    bool isBusy = true;
    std::list<Entry*>::iterator place{};
    std::list<SessionStore::Turn> waiting;
};

/// A part of the store. Both lists are in the order of the last use.
struct SessionStore::Shard {
    using Entry = SessionLease::Entry;
    struct Hash {
        std::size_t operator()(const SessionToken& token) const { return token.high; }
    };

    mutable std::mutex mutex;
    std::unordered_map<SessionToken, EntryPointer, Hash> entries;
    std::list<Entry*> onProbation;
    std::list<Entry*> established;

    std::list<Entry*>& listOf(const Entry& entry) { return entry.isEstablished ? established : onProbation; }

    void add(const EntryPointer& entry, std::size_t room) {
        std::list<Entry*>& list = listOf(*entry);
        entry->place = list.insert(list.end(), entry.get());
        entry->isKept = true;
        entries.emplace(entry->token, entry);
        if (list.size() > room) remove(*list.front());
    }

    void renew(Entry& entry, std::size_t room) {
        established.splice(established.end(), listOf(entry), entry.place);
        entry.isEstablished = true;
        if (established.size() > room) remove(*established.front());
    }

    void remove(Entry& entry) {
        listOf(entry).erase(entry.place);
        entry.isKept = false;
        entries.erase(entry.token);  // the last: it may be the entry's end
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

SessionLease::SessionLease(SessionStore& store, std::shared_ptr<Entry> entry, bool isNew)
    : store_(&store), entry_(std::move(entry)), isNew_(isNew) {}

SessionLease::~SessionLease() {
    if (entry_ && !isNew_) store_->endTurn(entry_);
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
    const bool isAskedFor = entry->session.takeTokenRequest();  // of a new session too: its token is new
    const bool sendsToken = isNew_ || isAskedFor;
    if (isNew_) {
        store_->keep(entry);
    } else if (sendsToken) {
        store_->giveNewToken(entry);
    }
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
}

SessionStore::~SessionStore() = default;

SessionStore::Shard& SessionStore::shardOf(const SessionToken& token) const {
    return (*shards_)[token.low % shardCount];
}

bool SessionStore::isOutlived(const SessionLease::Entry& entry) const {
    return now_() - entry.lastUsed > (entry.isEstablished ? limits_.idle : limits_.probation);
}

SessionStore::EntryPointer SessionStore::findAndRenew(Shard& shard, const SessionToken& token) {
    const auto found = shard.entries.find(token);
    if (found == shard.entries.end()) return nullptr;
    const EntryPointer entry = found->second;
    if (!entry->isBusy && isOutlived(*entry)) {
        shard.remove(*entry);
        return nullptr;
    }
    entry->lastUsed = now_();
    shard.renew(*entry, limits_.established);
    return entry;
}

bool SessionStore::enter(std::string_view token, Turn turn) {
    const std::optional<SessionToken> known = SessionToken::parse(token);
    if (!known) return startNew(turn), true;
    EntryPointer entry;
    {
        Shard& shard = shardOf(*known);
        const std::scoped_lock guard(shard.mutex);
        entry = findAndRenew(shard, *known);
        if (entry && entry->isBusy) {
            if (entry->waiting.size() >= limits_.waiting) return false;
            entry->waiting.push_back(std::move(turn));
            return true;
        }
        if (entry) entry->isBusy = true;
    }
    if (!entry) return startNew(turn), true;
    turn(SessionLease(*this, std::move(entry), false));
    return true;
}

void SessionStore::touch(std::string_view token) {
    const std::optional<SessionToken> known = SessionToken::parse(token);
    if (!known) return;
    Shard& shard = shardOf(*known);
    const std::scoped_lock guard(shard.mutex);
    findAndRenew(shard, *known);
}

void SessionStore::startNew(const Turn& turn) {
    turn(SessionLease(*this, std::make_shared<SessionLease::Entry>(), true));
}

void SessionStore::keep(const EntryPointer& entry) {
    Shard& shard = shardOf(entry->token);
    const std::scoped_lock guard(shard.mutex);
    entry->lastUsed = now_();
    shard.add(entry, entry->isEstablished ? limits_.established : limits_.onProbation);
}

void SessionStore::giveNewToken(const EntryPointer& entry) {
    {
        Shard& shard = shardOf(entry->token);
        const std::scoped_lock guard(shard.mutex);
        if (entry->isKept) shard.remove(*entry);
    }
    entry->token = SessionToken::random();  // out of all shards, only this thread has the entry
    keep(entry);
}

void SessionStore::endTurn(const EntryPointer& entry) {
    Turn next;
    {
        const std::scoped_lock guard(shardOf(entry->token).mutex);
        if (entry->waiting.empty()) {
            entry->isBusy = false;
            return;
        }
        next = std::move(entry->waiting.front());
        entry->waiting.pop_front();
    }
    next(SessionLease(*this, entry, false));
}

/// Those who waited for the session must not see it any more: they start anew.
void SessionStore::abandon(const EntryPointer& entry) {
    std::list<Turn> waiting;
    {
        Shard& shard = shardOf(entry->token);
        const std::scoped_lock guard(shard.mutex);
        if (entry->isKept) shard.remove(*entry);
        waiting.swap(entry->waiting);
    }
    for (const Turn& turn : waiting) startNew(turn);
}

void SessionStore::sweep() {
    constexpr int most = 500;  // for each list: holds the lock for some 50 microseconds
    for (Shard& shard : *shards_) {
        const std::scoped_lock guard(shard.mutex);
        for (std::list<SessionLease::Entry*>* list : {&shard.onProbation, &shard.established}) {
            for (int i = 0; i < most && !list->empty() && isOutlived(*list->front()); ++i) {
                SessionLease::Entry& oldest = *list->front();
                if (!oldest.isBusy) {
                    shard.remove(oldest);
                    continue;
                }
                oldest.lastUsed = now_();
                list->splice(list->end(), *list, oldest.place);
            }
        }
    }
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
