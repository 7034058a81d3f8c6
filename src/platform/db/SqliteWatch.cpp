#include "platform/db/SqliteWatch.h"

#include "platform/db/Connection.h"
#include "platform/db/SqliteConnection.h"
#include "platform/db/SqliteHandle.h"
#include "platform/db/SqliteStatement.h"
#include "platform/db/SqliteStore.h"
#include "platform/db/WalHead.h"

namespace torvex::db {

namespace {

SqliteHandle openContent(const std::string& folder) {
    setUpSqlite();
    return openSqlite(storeFile(folder, "content"), SQLITE_OPEN_READWRITE);
}

class SqliteWatch final : public ContentWatch {
  public:
    explicit SqliteWatch(const std::string& folder)
        : file_(openContent(folder)), changes_(file_.get(), selectTableChanges) {
        head_.attachTo(file_.get());
    }

    /// The head comes first: what changes between the two looks is then looked at once more.
    SharedStates now() override try {
        if (states_ && !head_.hasMoved()) return states_;
        head_.note();
        states_ = read();
        return states_;
    } catch (const DatabaseError&) {
        states_ = nullptr;
        return nullptr;
    }

  private:
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
    SqliteStatement changes_;
    WalHead head_;
    SharedStates states_;
};

}  // namespace

std::unique_ptr<ContentWatch> watchSqliteStore(const std::string& folder) {
    return std::make_unique<SqliteWatch>(folder);
}

}  // namespace torvex::db
