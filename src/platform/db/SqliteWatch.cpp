#include "platform/db/SqliteWatch.h"

#include <optional>

#include "platform/db/Connection.h"
#include "platform/db/SqliteConnection.h"
#include "platform/db/SqliteHandle.h"
#include "platform/db/SqliteStatement.h"
#include "platform/db/SqliteStore.h"

namespace torvex::db {

namespace {

SqliteHandle openContent(const std::string& folder) {
    setUpSqlite();
    return openSqlite(storeFile(folder, "content"), SQLITE_OPEN_READWRITE);
}

class SqliteWatch final : public ContentWatch {
  public:
    explicit SqliteWatch(const std::string& folder)
        : file_(openContent(folder)),
          version_(file_.get(), "pragma data_version"),
          changes_(file_.get(), selectTableChanges) {}

    /// The version comes first: what changes between the two looks is then looked at once more.
    SharedStates now() override try {
        const int version = look();
        if (!states_ || versionOf_ != version) states_ = read();
        versionOf_ = version;
        return states_;
    } catch (const DatabaseError&) {
        states_ = nullptr;
        return nullptr;
    }

  private:
    int look() {
        const Reset reset{version_};
        return version_.step() ? sqlite3_column_int(version_.handle(), 0) : 0;
    }

    SharedStates read() {
        const Reset reset{changes_};
        auto states = std::make_shared<TableStates>();
        while (changes_.step()) {
            const auto* table = reinterpret_cast<const char*>(sqlite3_column_text(changes_.handle(), 0));
            if (table) states->note(table, sqlite3_column_int64(changes_.handle(), 1));
        }
        return states;
    }

    /// Whatever happens, nothing of the file stays held.
    struct Reset {
        SqliteStatement& statement;
        ~Reset() { statement.reset(); }
    };

    const SqliteHandle file_;
    SqliteStatement version_;
    SqliteStatement changes_;
    SharedStates states_;
    int versionOf_ = 0;  ///< of the states
};

}  // namespace

std::unique_ptr<ContentWatch> watchSqliteStore(const std::string& folder) {
    return std::make_unique<SqliteWatch>(folder);
}

}  // namespace torvex::db
