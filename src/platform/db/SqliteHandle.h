#pragma once

#include <memory>
#include <sqlite3.h>
#include <string>

namespace torvex::db {

struct CloseSqlite {
    void operator()(sqlite3* database) const noexcept { sqlite3_close_v2(database); }
};
using SqliteHandle = std::unique_ptr<sqlite3, CloseSqlite>;

/// Opens a file with the flags of `sqlite3_open_v2`, for one thread at a time. Throws `DatabaseError`, which names the file.
SqliteHandle openSqlite(const std::string& path, int flags);

}  // namespace torvex::db
