#include "support/RecordsTest.h"

#include <algorithm>
#include <utility>

namespace torvex::test {

namespace {

constexpr std::string_view sqliteTables =
    "select name from sqlite_master where type = 'table' and name like 'TORVEX_%' "
    "and name not like 'TORVEX_PAGE_WORDS_INDEX%'";
constexpr std::string_view postgresTables =
    "select relname as name from pg_class where relnamespace = current_schema()::regnamespace "
    "and relkind = 'r' and relname like 'torvex_%' and relname <> 'torvex_audit_trail'";

}  // namespace

void RecordsTest::SetUp() {
    ManagerTest::SetUp();
    if (HasFatalFailure()) return;
    failing_ = std::make_unique<FailingDatabase>(database());
    host.database.target = failing_.get();
    login(bert, "bert", "Bert Broker", bertsSession);
}

void RecordsTest::TearDown() {
    host.database.target = nullptr;
    ManagerTest::TearDown();
}

std::vector<std::string> RecordsTest::tableNames() {
    std::vector<std::string> names;
    auto rows = connection().query(GetParam() == db::Engine::Sqlite ? sqliteTables : postgresTables);
    while (rows.next()) names.push_back(rows.text("name"));
    return names;
}

std::vector<std::string> RecordsTest::rowsOf(const std::string& statement) {
    std::vector<std::string> lines;
    auto rows = connection().query(statement);
    while (rows.next()) {
        std::string line;
        for (std::size_t i = 0; i < rows.columns(); ++i) {
            const Value cell = rows.value(i);
            if (i > 0) line += '|';
            line += cell.isEmpty() ? "-" : cell.toText();
        }
        lines.push_back(line);
    }
    return lines;
}

RecordsTest::Tables RecordsTest::everything() {
    Tables tables;
    for (const std::string& name : tableNames()) {
        // How often something was changed says nothing of how it is.
        if (name == "TORVEX_TABLE_CHANGES") continue;
        auto lines = rowsOf("select * from " + name);
        std::sort(lines.begin(), lines.end());
        tables.emplace(name, std::move(lines));
    }
    return tables;
}

void RecordsTest::beforeTransaction(std::function<void()> work) {
    constexpr int begin = 2;  // behind the opening of the connection
    interruption_ = std::move(work);
    failing().reset(0);
    failing().atStep = [this](int step) {
        if (step == begin && interruption_) std::exchange(interruption_, nullptr)();
    };
}

void RecordsTest::hold(const std::string& table, const std::string& key, const Value& id,
                       const std::string& session) {
    const std::string text = id.toText();
    const std::string value = id.isNumber() ? text : "'" + text + "'";
    connection().execute("update " + table + " set lock = ? where " + key + " = " + value, {session});
}

}  // namespace torvex::test
