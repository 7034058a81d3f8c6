#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace torvex::db {

class Rows;

/// Tables have small numbers, the same in the whole process.
inline constexpr std::size_t mostTables = 192;
using TableSet = std::bitset<mostTables>;

/// The number of a table, whatever the case of its name. All that don't fit share the last one, whose changes nobody
/// counts. Safe from any thread.
std::size_t tableNumber(std::string_view name);

/// What visitors ask the designs for is which number a node has, and the other way round. That is counted apart, as by a
/// table of its own, so that drafts leave what visitors see as it is.
inline constexpr std::string_view designs = "TORVEX_PAGES_DESIGN";
inline constexpr std::string_view namesOfDesigns = "TORVEX_PAGES_DESIGN.names";
/// The number under which reads of a column count.
std::size_t countedNumber(std::string_view table, std::string_view column);

/// The tables that a statement names, by the prefix that all of ours have. Where it plainly asks the designs for names
/// alone, it counts as that.
TableSet tablesNamedIn(std::string_view statement);

/// How often each table has been changed, as one state of the content tells it. Immutable once it is shared.
class TableStates {
  public:
    void note(std::string_view table, std::int64_t changes);
    /// One more change; of a table whose changes aren't counted, nothing.
    void add(std::string_view table);

    /// Whether nothing in these tables differs between two states. False when the changes of one of them aren't
    /// counted: nobody can tell then.
    bool agreesWith(const TableStates& other, const TableSet& tables) const;

  private:
    static constexpr std::int64_t unknown = -1;
    std::vector<std::int64_t> changes_ = std::vector<std::int64_t>(mostTables, unknown);
};
using SharedStates = std::shared_ptr<const TableStates>;

/// How often each table has been changed, where the engine keeps count of it.
inline constexpr std::string_view selectTableChanges = "select tableName, changes from TORVEX_TABLE_CHANGES";
/// The rows of this statement.
SharedStates readStates(Rows rows);

/// What was read on a connection while it recorded.
struct ReadRecord {
    TableSet tables;
    SharedStates states;   ///< of all of them; null when nothing was read
    bool isWhole = false;  ///< nothing else was read, and nothing was written
};

/// Looks at the content from outside of any request: to be asked by one thread, as often as one likes.
class ContentWatch {
  public:
    virtual ~ContentWatch() = default;

    /// The state of the content at this moment, whoever has changed it last; null when that can't be told. The same
    /// object as long as nothing has changed.
    virtual SharedStates now() = 0;

    /// Whether `now` may lag behind what was committed before it is called, and whoever can't have that is to `ask`.
    virtual bool mustAsk() const { return false; }
    /// Tells the state at a moment after this call, from any thread or before it returns, null when it can't be told; not at
    /// all when the watch ends before that. Whoever is told must be quick, and not ask again from there.
    using Told = std::function<void(SharedStates)>;
    virtual void ask(const Told& told) { told(now()); }
};

}  // namespace torvex::db
