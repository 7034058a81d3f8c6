#include "platform/db/SqliteWatch.h"

#include <optional>
#include <sqlite3.h>

#include "platform/db/Connection.h"
#include "platform/db/SqliteConnection.h"
#include "platform/db/SqliteStatement.h"
#include "platform/db/SqliteStore.h"

namespace torvex::db {

namespace {

struct CloseDatabase {
    void operator()(sqlite3* database) const noexcept { sqlite3_close_v2(database); }
};
using Handle = std::unique_ptr<sqlite3, CloseDatabase>;

Handle openContent(const std::string& folder) {
    setUpSqlite();
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(storeFile(folder, "content").c_str(), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    Handle handle(opened);
    if (code != SQLITE_OK) throw DatabaseError(sqlite3_errstr(code));
    return handle;
}

class SqliteWatch final : public ContentWatch {
  public:
    explicit SqliteWatch(const std::string& folder)
        : file_(openContent(folder)),
          version_(file_.get(), "pragma data_version"),
          connection_(openSqliteFile(folder, "content")) {}

    SharedStates now() override {
        const auto version = look();
        if (!version) return nullptr;
        // The version comes first: what changes between the two looks is then looked at once more.
        if (!states_ || versionOf_ != version) states_ = read();
        versionOf_ = states_ ? version : std::nullopt;
        return states_;
    }

  private:
    std::optional<int> look() noexcept {
        const int code = sqlite3_step(version_.handle());
        const int version = code == SQLITE_ROW ? sqlite3_column_int(version_.handle(), 0) : 0;
        version_.reset();
        return code == SQLITE_ROW ? std::optional(version) : std::nullopt;
    }

    SharedStates read() try {
        return readStates(connection_->query(selectTableChanges));
    } catch (const DatabaseError&) {
        return nullptr;
    }

    Handle file_;
    SqliteStatement version_;
    std::unique_ptr<Connection> connection_;
    SharedStates states_;
    std::optional<int> versionOf_;
};

}  // namespace

std::unique_ptr<ContentWatch> watchSqliteStore(const std::string& folder) {
    return std::make_unique<SqliteWatch>(folder);
}

}  // namespace torvex::db
