#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

struct sqlite3;

namespace torvex::db {

/// The head of the index that all connections to a file with a write-ahead log share in memory: SQLite writes it anew with
/// each commit, whichever process makes it, before the commit returns. Looking at it takes no locks, as a statement would.
/// Its place and length are part of SQLite's documented format. For the thread that has the connection.
class WalHead {
  public:
    /// From now on this is the index of the connection's main file, if it has one. The connection must have read from the
    /// file or prepared a statement for it, and stay open as long as this is used.
    void attachTo(sqlite3* database);

    /// Whether something may have been committed since the last `note`; always true when there is no such index.
    bool hasMoved() const;
    /// What was committed until now is known; to be called before it is read.
    void note();

  private:
    static constexpr std::size_t words = 6;  ///< 48 bytes, of which a second copy follows
    using Head = std::array<std::uint64_t, words>;

    Head read() const;

    std::uint64_t* shared_ = nullptr;  ///< null: there is none
    Head noted_{};
};

}  // namespace torvex::db
