#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/db/RowSource.h"
#include "platform/db/TableStates.h"

struct sqlite3;
struct sqlite3_stmt;

namespace torvex::db {

/// A file of the store that a connection holds, or several as a set of bits.
enum SqliteFiles : unsigned { NoFile = 0, MainFile = 1, HitsFile = 2, AuditFile = 4 };

/// What a statement touches, found while it was prepared.
struct SqliteUse {
    unsigned files = NoFile;
    unsigned written = NoFile;
    TableSet tables;  ///< that it reads
    /// Tables that SQLite named without their file.
    std::vector<std::string> unplaced;
};

/// How long a statement waits for another connection's write lock.
inline constexpr int lockWaitSeconds = 5;

/// Throws `DatabaseError` for the last failure on the connection, in words for operators. `written` are the
/// files that were to be locked.
[[noreturn]] void failSqlite(sqlite3* database, unsigned written = MainFile);

/// A prepared statement, kept between its runs.
class SqliteStatement {
  public:
    /// Throws `DatabaseError` when the statement is wrong or has more than one statement in it.
    SqliteStatement(sqlite3* database, std::string_view text);

    /// Copies the values: the statement runs on after the caller's texts are gone.
    void bind(Parameters parameters);
    /// To the next row; false at the end.
    bool step();
    /// Ready for the next run, without rows and values.
    void reset() noexcept;

    sqlite3_stmt* handle() const { return handle_.get(); }
    bool isReadOnly() const { return readOnly_; }
    const SqliteUse& use() const { return use_; }
    void setUse(SqliteUse use) { use_ = std::move(use); }

    /// The columns as of the current run: SQLite prepares again by itself after a change of the schema.
    const std::vector<std::string_view>& columnNames();
    /// Whether a column is declared to hold moments.
    bool holdsMoments(std::size_t column) const { return moments_[column]; }

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const noexcept;
    };

    void readColumns();
    void gatherTexts(Parameters parameters);
    void bindOne(int index, const Parameter& parameter, std::size_t& textAt, std::size_t& textNumber);

    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
    bool readOnly_ = true;
    SqliteUse use_;
    std::string texts_;              ///< the bound texts, one behind the other
    std::vector<std::size_t> ends_;  ///< where each ends in `texts_`
    std::vector<std::string_view> names_;
    std::vector<bool> moments_;
    int preparedAgain_ = -1;  ///< SQLite's count of preparations when `names_` was read
};

/// The prepared statements of one connection by their text. A statement that is in use is not in the cache; a
/// second one is then prepared for the same text, and both are kept.
class SqliteStatementCache {
  public:
    struct Slot {
        std::vector<std::unique_ptr<SqliteStatement>> idle;
        std::size_t inUse = 0;
    };

    /// The place of a text. It stays where it is until all statements taken from it are given back.
    Slot& slot(std::string_view text);
    /// An idle statement, counted as in use; nothing when there is none.
    static std::unique_ptr<SqliteStatement> take(Slot& slot);
    static void giveBack(Slot& slot, std::unique_ptr<SqliteStatement> statement) noexcept;
    void clear();

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };

    using Slots = std::unordered_map<std::string, Slot, Hash, std::equal_to<>>;

    Slots::value_type*& place(std::string_view text);
    void dropIdle();

    Slots slots_;
    /// By the address of a text: most are constants, and comparing one costs less than hashing it.
    std::array<Slots::value_type*, 256> places_{};
};

/// A statement on loan from the cache; it goes back reset.
class SqliteRun {
  public:
    SqliteRun(SqliteStatementCache::Slot& slot, std::unique_ptr<SqliteStatement> statement)
        : slot_(&slot), statement_(std::move(statement)) {}
    SqliteRun(SqliteRun&&) noexcept = default;
    SqliteRun& operator=(SqliteRun&&) = delete;
    ~SqliteRun();

    SqliteStatement* operator->() const { return statement_.get(); }

  private:
    SqliteStatementCache::Slot* slot_;
    std::unique_ptr<SqliteStatement> statement_;
};

/// The rows of a statement that has been bound and not yet stepped. The first step is made here, so that a
/// failure shows where the query is made. A statement that writes is run to its end at once, so that it never
/// stands in the way of a commit.
std::unique_ptr<Rows::Source> openSqliteRows(SqliteRun run);

}  // namespace torvex::db
