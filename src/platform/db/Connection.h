#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/Value.h"

/// The one port to the database. Two engines stand behind it: the embedded one (SQLite) and PostgreSQL.
namespace torvex::db {

/// What an engine reports: its message, and nothing of the values of a statement.
class DatabaseError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class ScopeMemory;
struct ReadRecord;

enum class Engine { Sqlite, PostgreSql };

/// A value bound to a "?". Texts are viewed, not copied: they must live until the call returns. Whole numbers
/// are bound as whole numbers whatever their C++ type; a moment is bound as the engine's date and time.
using Parameter = std::variant<std::nullptr_t, bool, int, std::int64_t, double, std::string_view, DateTime>;

/// The values of one call, in the order of the "?". A view: the values must live until the call returns.
class Parameters {
  public:
    Parameters() = default;
    Parameters(std::initializer_list<Parameter> values) : values_(values.begin(), values.size()) {}
    Parameters(const std::vector<Parameter>& values) : values_(values) {}

    auto begin() const { return values_.begin(); }
    auto end() const { return values_.end(); }
    std::size_t size() const { return values_.size(); }

  private:
    std::span<const Parameter> values_;
};

/// The rows of one query, read forward only. Columns are found by name, ignoring case. Texts are UTF-8. Must
/// not outlive its connection; closing it (its destructor) frees the statement for its next use.
class Rows {
  public:
    class Source;  ///< what an engine implements; see RowSource.h

    explicit Rows(std::unique_ptr<Source> source);
    Rows(Rows&&) noexcept;
    Rows& operator=(Rows&&) noexcept;
    ~Rows();

    /// Moves to the next row, first to the first one; false when there is none.
    bool next();

    /// All readers of a column throw `DatabaseError` when there is no column of that name.
    bool isNull(std::string_view column) const;
    /// "" for null; a number as its plain text.
    std::string text(std::string_view column) const;
    /// The text in place, valid until `next`; only for columns that hold text or null.
    std::string_view view(std::string_view column) const;
    /// `ifNull` for null; a text that doesn't read as a number throws.
    double number(std::string_view column, double ifNull = 0) const;
    /// Null is an empty value.
    Value value(std::string_view column) const;

    std::size_t columns() const;
    std::string_view columnName(std::size_t index) const;
    Value value(std::size_t index) const;

  private:
    std::size_t indexOf(std::string_view column) const;

    std::unique_ptr<Source> source_;
    mutable std::size_t hint_ = 0;  ///< columns are mostly read in the order of the statement
};

/// An open connection, used by one thread at a time. Statements are prepared at their first use and kept, so
/// they should be constants. Without a transaction each statement is one of its own. Failures throw
/// `DatabaseError`; within a transaction PostgreSQL then refuses all but the rollback, so nothing may be
/// tried and caught there.
///
/// What statements may count on: text columns compare, sort and match `like` ignoring case beyond ASCII; "\"
/// takes the meaning from "%" and "_" behind it; a NUL or malformed UTF-8 in a bound text finds nothing. A
/// text put together by "||" compares heeding case on PostgreSQL, except with `like`; a text bound against a
/// number column must read as a number there.
class Connection {
  public:
    virtual ~Connection() = default;

    virtual Engine engine() const = 0;
    /// The text that opens the same database again.
    virtual const std::string& connectionText() const = 0;

    virtual Rows query(std::string_view statement, Parameters parameters = {}) = 0;
    /// Runs a statement that returns no rows; the result is the number of rows it changed.
    virtual std::int64_t execute(std::string_view statement, Parameters parameters = {}) = 0;
    /// Runs statements divided by ";", without parameters, unprepared: for schema steps and fixed rows.
    virtual void executeScript(const std::string& script) = 0;

    /// For writing. SQLite waits its turn for the write lock of the content; a further file of the store is
    /// locked by the first statement that touches it, even to read. On PostgreSQL writers meet at the rows
    /// they change.
    virtual void begin() = 0;
    /// For a request that only reads: all its queries see one state, and a change throws.
    virtual void beginReading() = 0;
    /// What is kept of the state that `beginReading` has begun to read; null outside of that.
    virtual ScopeMemory* memory() = 0;
    /// Notes from now on what is read, until the connection goes back to its pool; the record must live as long. One
    /// that can't leaves it as it is.
    virtual void record(ReadRecord& /*record*/) {}
    virtual void commit() = 0;
    virtual void rollback() = 0;
};

/// Begins at creation and rolls back at its end unless committed.
class Transaction {
  public:
    explicit Transaction(Connection& connection) : connection_(connection) { connection_.begin(); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();

  private:
    Connection& connection_;
    bool open_ = true;
};

/// One state of the database for a stretch of reading; ends with the scope. Never write within it.
class ReadScope {
  public:
    explicit ReadScope(Connection& connection) : connection_(connection) { connection_.beginReading(); }
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;
    ~ReadScope();

  private:
    Connection& connection_;
};

}  // namespace torvex::db
