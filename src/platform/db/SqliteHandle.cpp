#include "platform/db/SqliteHandle.h"

#include <fmt/format.h>

#include "platform/db/Connection.h"

namespace torvex::db {

SqliteHandle openSqlite(const std::string& path, int flags) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    SqliteHandle handle(opened);
    if (code != SQLITE_OK)
        throw DatabaseError(fmt::format("the database {} can't be opened: {}", path, sqlite3_errstr(code)));
    return handle;
}

}  // namespace torvex::db
