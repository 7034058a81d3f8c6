#include <mutex>
#include <vector>

#include "platform/db/ConnectionText.h"
#include "platform/db/Database.h"
#include "platform/db/PooledConnection.h"
#include "platform/db/PostgresConnection.h"
#include "platform/db/PostgresWatch.h"
#include "platform/db/SqliteConnection.h"
#include "platform/db/SqliteWatch.h"

namespace torvex::db {

namespace {

/// More requests than this seldom run at once on one server, since the pages have one worker for each core or
/// two; further connections are closed at the end of their lease.
constexpr std::size_t mostIdle = 32;

struct PoolKey {
    std::string_view text;
    std::string_view user;
    std::string_view password;
    Purpose purpose;

    bool operator==(const PoolKey&) const = default;
};

std::unique_ptr<PooledConnection> openConnection(const PoolKey& key) {
    if (engineOf(key.text) == Engine::Sqlite) return openSqliteStore(storeFolder(key.text), key.purpose);
    return openPostgres(key.text, key.user, key.password);
}

/// The idle connections to one database. Kept alive by its leases, so that they may outlive the `Database`.
class Pool : public std::enable_shared_from_this<Pool> {
  public:
    explicit Pool(const PoolKey& key)
        : text_(key.text), user_(key.user), password_(key.password), purpose_(key.purpose) {}

    PoolKey key() const { return {text_, user_, password_, purpose_}; }

    Lease lease() {
        auto connection = takeIdle();
        if (connection == nullptr) connection = openConnection(key());
        // Should making the lease fail, its deleter is called all the same.
        return Lease(connection.release(), GiveBack{shared_from_this()});
    }

    /// Begins to listen when it is first asked for.
    std::shared_ptr<PostgresListener> listener() {
        const std::scoped_lock lock(mutex_);
        if (!listener_) listener_ = std::make_shared<PostgresListener>(text_, user_, password_);
        return listener_;
    }
    /// Null when nobody listens.
    SharedStates watched() {
        const std::scoped_lock lock(mutex_);
        return listener_ ? listener_->now() : nullptr;
    }

  private:
    struct GiveBack {
        std::shared_ptr<Pool> pool;
        void operator()(Connection* connection) const noexcept {
            pool->giveBack(std::unique_ptr<PooledConnection>(static_cast<PooledConnection*>(connection)));
        }
    };

    std::unique_ptr<PooledConnection> takeIdle() {
        const std::scoped_lock lock(mutex_);
        if (idle_.empty()) return nullptr;
        auto connection = std::move(idle_.back());
        idle_.pop_back();
        return connection;
    }

    void giveBack(std::unique_ptr<PooledConnection> connection) noexcept {
        if (!connection->makeReusable()) return;
        const std::scoped_lock lock(mutex_);
        if (idle_.size() < mostIdle) idle_.push_back(std::move(connection));
        // One too many is closed by its owner here, behind the lock.
    }

    std::string text_;
    std::string user_;
    std::string password_;
    Purpose purpose_;
    std::mutex mutex_;
    std::vector<std::unique_ptr<PooledConnection>> idle_;
    std::shared_ptr<PostgresListener> listener_;
};

class Pools final : public Database {
  public:
    Lease open(std::string_view text, std::string_view user, std::string_view password,
               Purpose purpose) override {
        // PostgreSQL knows one kind of connection; two pools of it would only hold more of them.
        if (engineOf(text) == Engine::PostgreSql) purpose = Purpose::Everything;
        return poolOf({text, user, password, purpose})->lease();
    }

    std::unique_ptr<ContentWatch> watch(std::string_view text, std::string_view user,
                                        std::string_view password, bool asks) override {
        if (engineOf(text) == Engine::Sqlite) return watchSqliteStore(storeFolder(text));
        return watchBy(poolOf({text, user, password, Purpose::Everything})->listener(), asks);
    }

    SharedStates watched(std::string_view text, std::string_view user, std::string_view password) override {
        if (engineOf(text) == Engine::Sqlite) return nullptr;
        return poolOf({text, user, password, Purpose::Everything})->watched();
    }

  private:
    /// A program knows a handful of texts, so a list is searched faster than a table.
    std::shared_ptr<Pool> poolOf(const PoolKey& key) {
        const std::scoped_lock lock(mutex_);
        for (const auto& pool : pools_) {
            if (pool->key() == key) return pool;
        }
        return pools_.emplace_back(std::make_shared<Pool>(key));
    }

    std::mutex mutex_;
    std::vector<std::shared_ptr<Pool>> pools_;
};

}  // namespace

std::unique_ptr<Database> makeDatabase() {
    setUpSqlite();
    return std::make_unique<Pools>();
}

}  // namespace torvex::db
