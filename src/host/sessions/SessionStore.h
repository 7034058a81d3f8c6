#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "installation/ServerOptions.h"
#include "platform/Session.h"

namespace torvex {

class SessionStore;

/// What a visitor's cookie holds: 128 random bits. It is not the session's id: that one is written to the
/// database, and whoever reads it there must not be able to take over a visit with it.
struct SessionToken {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    static SessionToken random();
    /// Two that have nothing to do with each other, for the price of one call of the system.
    static std::array<SessionToken, 2> twoRandom();
    /// Nothing unless the text is 32 hexadecimal digits.
    static std::optional<SessionToken> parse(std::string_view text);
    std::string text() const;
    bool operator==(const SessionToken&) const = default;
};

/// One request's turn with its session: while it is held, no other request has the session. Ended by
/// `finish`; if it is just destroyed, a new session is forgotten and the next request has its turn.
class SessionLease {
  public:
    struct Entry;  ///< what the store keeps for a session

    /// `Known` has the session of the request's token. `New` has one that is kept when the turn ends, if something was
    /// stored in it that a later request must find: who only looks needs none.
    /// `Passing` has a new one, too, but came with a token that was changed a moment ago: whoever sent it may
    /// be holding the new token by now, and a cookie of this turn would overwrite it. So nothing is kept or
    /// sent, unless the turn itself asks for a token.
    enum class Kind { Known, New, Passing };

    SessionLease(SessionStore& store, std::shared_ptr<Entry> entry, Kind kind);
    SessionLease(SessionLease&&) noexcept = default;
    SessionLease& operator=(SessionLease&&) = delete;
    ~SessionLease();

    Session& session();
    /// Whether nothing is in the session yet.
    bool isNew() const { return kind_ != Kind::Known; }
    /// Takes the values now in the new session as those that it starts with, and shares them with other
    /// sessions that start with the same.
    void keepAsDefaults();
    /// Ends the turn: keeps the session, or drops it when it was abandoned. The result is the token that the
    /// visitor is to be sent, when it is a new one.
    std::optional<SessionToken> finish();

  private:
    SessionStore* store_;
    std::shared_ptr<Entry> entry_;  ///< empty when the turn has ended
    Kind kind_;
};

/// The sessions of all visitors. Safe to share between threads; no operation waits for another visitor's
/// request.
///
/// Their number is bounded. Those of strangers go first, and those of an origin that has too many before all
/// others; a session that somebody is logged in to (as it was when its token was made) goes when nothing else
/// is left, an author's last of all.
class SessionStore {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Now = std::function<TimePoint()>;
    using Turn = std::function<void(SessionLease)>;

    explicit SessionStore(const SessionLimits& limits, Now now = &std::chrono::steady_clock::now);
    SessionStore(const SessionStore&) = delete;
    SessionStore& operator=(const SessionStore&) = delete;
    ~SessionStore();

    /// Calls `turn` with the session of the token: at once, or, when earlier requests of the session have not
    /// ended, after them, on the thread that ends the last of them. A token that isn't known (made up, or of
    /// a session that has ended) is not adopted: it gets a new session. When the token is changed meanwhile,
    /// those who wait under the old one are strangers: each passes with a new session. False when too many
    /// wait for this session already. `origin` is the same for all requests of one address.
    bool enter(std::string_view token, std::uint64_t origin, Turn turn);

    /// Whether the token is one of a session that lives.
    bool isKnown(std::string_view token) const;

    /// Notes that the visitor has sent the cookie back, without a turn.
    void touch(std::string_view token);

    /// Drops a bounded number of sessions that have outlived their time; to be called about every second.
    void sweep();

    /// The ids of the sessions with an author's login that have ended since this was last asked, by
    /// themselves or because they were abandoned.
    std::vector<std::string> takeEndedAuthors();

    std::size_t size() const;

  private:
    friend class SessionLease;
    struct Shard;
    struct Waiting;
    class DefaultsCache;
    using EntryPointer = std::shared_ptr<SessionLease::Entry>;

    Shard& shardOf(const SessionToken& token) const;
    EntryPointer findAndRenew(Shard& shard, const SessionToken& token);
    bool isOutlived(const SessionLease::Entry& entry) const;
    void startNew(const Turn& turn, std::uint64_t origin, SessionLease::Kind kind);
    void keep(const EntryPointer& entry);
    void giveNewToken(const EntryPointer& entry);
    void endTurn(const EntryPointer& entry);
    void abandon(const EntryPointer& entry);

    static constexpr std::size_t shardCount = 16;

    SessionLimits limits_;
    Now now_;
    std::unique_ptr<std::array<Shard, shardCount>> shards_;
    std::unique_ptr<DefaultsCache> defaults_;
};

}  // namespace torvex
