#include "platform/db/SqliteConnection.h"

#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <optional>
#include <sqlite3.h>
#include <utility>

#include "platform/db/ScopeMemory.h"
#include "platform/db/SqliteFunctions.h"
#include "platform/db/SqliteHandle.h"
#include "platform/db/SqliteStatement.h"
#include "platform/db/SqliteStore.h"

namespace torvex::db {

namespace {

/// Per connection and file. The pages that are read come through the memory map, which all connections share;
/// the cache mostly holds what a transaction changes.
constexpr int cacheKibibytes = 8 * 1024;
constexpr std::int64_t mappedBytes = std::int64_t{1} << 30;
/// A log that a long change has made longer than this is cut when it is used again from its start.
constexpr std::int64_t keptLogBytes = std::int64_t{64} << 20;

/// Takes the write lock of one file and changes nothing.
struct LockStatement {
    SqliteFiles file;
    std::string_view text;
};
constexpr LockStatement lockMain = {MainFile,
                                    "update main.TORVEX_SCHEMA_CONTENT set version = version where 1 = 0"};
constexpr LockStatement lockHits = {HitsFile,
                                    "update hits.TORVEX_SCHEMA_HITS set version = version where 1 = 0"};
constexpr LockStatement lockAudit = {AuditFile,
                                     "update audit.TORVEX_SCHEMA_AUDIT set version = version where 1 = 0"};

struct AttachedFile {
    const char* schema;
    SqliteFiles file;
};
constexpr std::array<AttachedFile, 3> attachedFiles = {
    {{"main", MainFile}, {"hits", HitsFile}, {"audit", AuditFile}}};

unsigned fileOfSchema(std::string_view schema) {
    for (const AttachedFile& attached : attachedFiles) {
        if (schema == attached.schema) return attached.file;
    }
    return NoFile;
}

/// SQLite asks this about each thing that a statement does while it is prepared. It leaves out the schema of
/// a table of which no column is read.
int noteUse(void* noted, int action, const char* table, const char* column, const char* schema,
            const char* /*trigger*/) {
    auto& use = *static_cast<SqliteUse*>(noted);
    if (action == SQLITE_READ) use.tables.set(countedNumber(table, column));
    if (schema == nullptr) {
        if (action == SQLITE_READ) use.unplaced.emplace_back(table);
        return SQLITE_OK;
    }
    const unsigned file = fileOfSchema(schema);
    use.files |= file;
    if (action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE) use.written |= file;
    return SQLITE_OK;
}

/// The file that holds a table; they are searched in the order in which SQLite searches them.
unsigned fileOfTable(sqlite3* database, const std::string& table) {
    for (const AttachedFile& attached : attachedFiles) {
        const int code = sqlite3_table_column_metadata(database, attached.schema, table.c_str(), nullptr,
                                                       nullptr, nullptr, nullptr, nullptr, nullptr);
        if (code == SQLITE_OK) return attached.file;
    }
    return NoFile;
}

void run(sqlite3* database, const std::string& script) {
    if (sqlite3_exec(database, script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) failSqlite(database);
}

SqliteHandle openFile(const std::string& path) {
    if (!std::filesystem::exists(path)) {
        throw DatabaseError(fmt::format("there is no database {}", path));
    }
    SqliteHandle handle = openSqlite(path, SQLITE_OPEN_READWRITE);
    sqlite3_extended_result_codes(handle.get(), 0);
    sqlite3_busy_timeout(handle.get(), lockWaitSeconds * 1000);
    return handle;
}

/// A text in double quotes is a name, as on the other engine, and never silently a text.
void setStrictQuotes(sqlite3* database) {
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
}

/// Also the first reading of the file: one that is damaged shows here.
void tune(sqlite3* database, std::string_view schema, std::string_view synchronous) {
    run(database, fmt::format("pragma {0}.journal_mode = wal; pragma {0}.synchronous = {1};"
                              "pragma {0}.cache_size = -{2}; pragma {0}.mmap_size = {3};"
                              "pragma {0}.secure_delete = fast; pragma {0}.journal_size_limit = {4}",
                              schema, synchronous, cacheKibibytes, mappedBytes, keptLogBytes));
}

/// What tells one state of the content from the next, whoever made it; nothing outside of a scope that reads.
std::optional<unsigned> contentVersion(sqlite3* database) {
    if (sqlite3_txn_state(database, "main") != SQLITE_TXN_READ) return std::nullopt;
    unsigned version = 0;
    if (sqlite3_file_control(database, "main", SQLITE_FCNTL_DATA_VERSION, &version) != SQLITE_OK)
        return std::nullopt;
    return version;
}

class SqliteConnection final : public PooledConnection {
  public:
    SqliteConnection(SqliteHandle handle, std::string text, bool wholeStore)
        : handle_(std::move(handle)), text_(std::move(text)), wholeStore_(wholeStore) {
        setStrictQuotes(handle_.get());
        addTextFunctions(handle_.get());
        sqlite3_set_authorizer(handle_.get(), noteUse, &preparing_);
    }

    Engine engine() const override { return Engine::Sqlite; }
    const std::string& connectionText() const override { return text_; }
    Rows query(std::string_view statement, Parameters parameters) override;
    std::int64_t execute(std::string_view statement, Parameters parameters) override;
    void executeScript(const std::string& script) override { run(handle_.get(), script); }
    void begin() override;
    void beginReading() override;
    ScopeMemory* memory() override;
    void record(ReadRecord& record) override;
    void commit() override;
    void rollback() override;
    bool makeReusable() noexcept override;

    void attach(const std::string& folder, const std::string& store, std::string_view synchronous);

  private:
    SqliteRun take(std::string_view statement);
    std::unique_ptr<SqliteStatement> prepareNew(std::string_view statement);
    SqliteRun prepare(std::string_view statement, Parameters parameters);
    void runOnly(std::string_view statement);
    void lockTouched(const SqliteUse& use);
    void lock(const LockStatement& statement);
    LastingMemory* lastingNow();
    void noteReads(const SqliteUse& use);
    void endReading();
    SharedStates statesNow();

    SqliteHandle handle_;
    std::string text_;
    bool wholeStore_;
    SqliteUse preparing_;
    std::optional<ScopeMemory> memory_;  ///< while it only reads
    LastingMemory lasting_;
    ReadRecord* record_ = nullptr;  ///< null: nobody wants to know
    SharedStates states_;           ///< of the content when it was of `statesOf_`
    std::optional<unsigned> statesOf_;
    bool writing_ = false;
    unsigned locked_ = NoFile;  ///< while `writing_`
    SqliteStatementCache statements_;
};

void SqliteConnection::attach(const std::string& folder, const std::string& store,
                              std::string_view synchronous) {
    const std::string path = storeFile(folder, store);
    if (!std::filesystem::exists(path)) throw DatabaseError(fmt::format("there is no database {}", path));
    execute("attach ? as " + store, {std::string_view(path)});
    tune(handle_.get(), store, synchronous);
}

SqliteRun SqliteConnection::take(std::string_view statement) {
    auto& slot = statements_.slot(statement);
    auto idle = SqliteStatementCache::take(slot);
    if (idle == nullptr) {
        idle = prepareNew(statement);
        ++slot.inUse;
    }
    return {slot, std::move(idle)};
}

std::unique_ptr<SqliteStatement> SqliteConnection::prepareNew(std::string_view statement) {
    preparing_ = {};
    auto prepared = std::make_unique<SqliteStatement>(handle_.get(), statement);
    SqliteUse use = std::exchange(preparing_, {});
    for (const std::string& table : use.unplaced) use.files |= fileOfTable(handle_.get(), table);
    prepared->setUse(std::move(use));
    return prepared;
}

SqliteRun SqliteConnection::prepare(std::string_view statement, Parameters parameters) {
    SqliteRun taken = take(statement);
    if (memory_ && taken->use().written != NoFile) {
        throw DatabaseError("a change within a scope that only reads");
    }
    if (writing_) lockTouched(taken->use());
    noteReads(taken->use());
    taken->bind(parameters);
    return taken;
}

/// What is read outside of a scope may be of another state than the rest.
void SqliteConnection::noteReads(const SqliteUse& use) {
    if (memory_) {
        memory_->tablesRead() |= use.tables;
    } else if (record_) {
        record_->isWhole = false;
    }
}

Rows SqliteConnection::query(std::string_view statement, Parameters parameters) {
    return Rows(openSqliteRows(prepare(statement, parameters)));
}

std::int64_t SqliteConnection::execute(std::string_view statement, Parameters parameters) {
    const SqliteRun taken = prepare(statement, parameters);
    const std::int64_t before = sqlite3_total_changes64(handle_.get());
    while (taken->step()) {
    }
    // The count of the last change stays as it was when a statement, such as "create table", changes no row.
    return sqlite3_total_changes64(handle_.get()) == before ? 0 : sqlite3_changes64(handle_.get());
}

void SqliteConnection::runOnly(std::string_view statement) {
    const SqliteRun taken = take(statement);
    taken->step();
}

void SqliteConnection::lock(const LockStatement& statement) {
    if ((locked_ & statement.file) != 0) return;
    runOnly(statement.text);
    locked_ |= statement.file;
}

/// Reading a further file and only then locking it would fail if someone else wrote it in between.
void SqliteConnection::lockTouched(const SqliteUse& use) {
    if ((use.files & HitsFile) != 0) lock(lockHits);
    if ((use.files & AuditFile) != 0) lock(lockAudit);
}

void SqliteConnection::begin() {
    if (!wholeStore_) return runOnly("begin immediate");
    // "begin immediate" would lock all three files.
    runOnly("begin");
    try {
        locked_ = NoFile;
        lock(lockMain);
    } catch (const DatabaseError&) {
        rollback();
        throw;
    }
    writing_ = true;
}

void SqliteConnection::beginReading() {
    runOnly("begin");
    memory_.emplace();
}

ScopeMemory* SqliteConnection::memory() {
    if (!memory_) return nullptr;
    memory_->setLasting(lastingNow());
    return &*memory_;
}

/// The file of the content counts its changes, whoever makes them. What it says holds once this scope has
/// begun to read it. What lasts may be made of that file alone: the others change with each view.
LastingMemory* SqliteConnection::lastingNow() {
    const auto version = contentVersion(handle_.get());
    if (!version) return nullptr;
    lasting_.readsState(*version);
    return &lasting_;
}

void SqliteConnection::record(ReadRecord& record) {
    record_ = &record;
    record_->isWhole = true;
}

/// The states are those of the rows that were read: the scope is still open.
void SqliteConnection::endReading() {
    if (record_ && memory_ && memory_->tablesRead().any()) {
        const SharedStates now = statesNow();
        if (!now || (record_->states && record_->states != now)) record_->isWhole = false;
        record_->tables |= memory_->tablesRead();
        record_->states = now;
    }
    memory_.reset();
}

SharedStates SqliteConnection::statesNow() try {
    const auto version = contentVersion(handle_.get());
    if (!version) return nullptr;
    if (!states_ || statesOf_ != version)
        states_ = readStates(Rows(openSqliteRows(take(selectTableChanges))));
    statesOf_ = version;
    return states_;
} catch (const DatabaseError&) {
    return nullptr;
}

void SqliteConnection::commit() {
    endReading();
    runOnly("commit");
    writing_ = false;
}

void SqliteConnection::rollback() {
    endReading();
    writing_ = false;
    // After some failures SQLite has rolled back by itself.
    if (sqlite3_get_autocommit(handle_.get()) == 0) runOnly("rollback");
}

bool SqliteConnection::makeReusable() noexcept {
    record_ = nullptr;
    try {
        rollback();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

void setUpSqlite() {
    // With its statistics on, all threads meet at one lock at every allocation.
    static const int code = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(code);
}

std::unique_ptr<PooledConnection> openSqliteStore(const std::string& folder, Purpose purpose) {
    setUpSqlite();
    if (!std::filesystem::is_directory(folder)) {
        throw DatabaseError(fmt::format("there is no database folder {}", folder));
    }
    // A lost hit after a power cut is no loss; a lost change or audit line would be.
    if (purpose == Purpose::Hits) {
        SqliteHandle hits = openFile(storeFile(folder, "hits"));
        tune(hits.get(), "main", "normal");
        return std::make_unique<SqliteConnection>(std::move(hits), "sqlite:" + folder, false);
    }
    SqliteHandle handle = openFile(storeFile(folder, "content"));
    tune(handle.get(), "main", "full");
    auto connection = std::make_unique<SqliteConnection>(std::move(handle), "sqlite:" + folder, true);
    connection->attach(folder, "hits", "normal");
    if (purpose == Purpose::Everything) connection->attach(folder, "audit", "full");
    return connection;
}

std::unique_ptr<Connection> openSqliteFile(const std::string& folder, const std::string& store) {
    setUpSqlite();
    SqliteHandle handle = openFile(storeFile(folder, store));
    tune(handle.get(), "main", "full");
    return std::make_unique<SqliteConnection>(std::move(handle), "sqlite:" + folder, false);
}

}  // namespace torvex::db
