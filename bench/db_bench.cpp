#include <array>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <stdlib.h>
#include <string>

#include "installation/Schema.h"
#include "platform/DateTime.h"
#include "platform/db/Database.h"

/// What the database costs a request. The embedded store holds as many pages as a large installation; with
/// TORVEX_TEST_POSTGRES set, an empty PostgreSQL database of that text is measured beside it.
namespace torvex::db {
namespace {

using namespace std::string_view_literals;

constexpr int pages = 100'000;

constexpr std::string_view pageColumns =
    "pageId {number} primary key, nodeId {text}, parent {text}, title {text}, template {number}, stylesheet "
    "{number},"
    " baseTemplate {number}, online {flag}, onlineFrom {text}, onlineTo {text}, orderId {number}, made "
    "{date}";

/// The join of a page with its design assets returns 60 columns, of which a reader uses 20.
std::string schemaText() {
    std::string filler;
    for (int i = 1; i <= 16; ++i) filler += ", extra" + std::to_string(i) + " {text} default 'extra text'";
    std::string schema = "create table BenchPage (" + std::string(pageColumns) + filler + ");";
    for (const std::string name : {"Template", "StyleSheet"}) {
        schema += "create table Bench" + name + " (" + name + "Id {number} primary key";
        for (int i = 1; i <= 15; ++i)
            schema += ", " + name + std::to_string(i) + " {text} default 'a file name'";
        schema += ");";
    }
    return schema + "create unique index idx_bench_node on BenchPage (nodeId)";
}

std::string nodeOf(int page) {
    std::string digits = std::to_string(100'000'000 + page);
    return "ab.en." + digits.substr(1, 2) + "." + digits.substr(3, 2) + "." + digits.substr(5, 2) + "." +
           digits.substr(7, 2);
}

void fill(Connection& connection) {
    Transaction transaction(connection);
    for (int id = 1; id <= 20; ++id) {
        connection.execute("insert into BenchTemplate (TemplateId) values (?)", {id});
        connection.execute("insert into BenchStyleSheet (StyleSheetId) values (?)", {id});
    }
    const DateTime made{2026, 1, 2, 3, 4, 5};
    for (int id = 1; id <= pages; ++id) {
        const std::string node = nodeOf(id);
        connection.execute(
            "insert into BenchPage (pageId, nodeId, parent, title, template, stylesheet, online, onlineFrom, "
            "onlineTo,"
            " orderId, made) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
            {id, std::string_view(node), std::string_view(node).substr(0, node.size() - 3),
             "A title of a page"sv, id % 20 + 1, id % 20 + 1, true, "00000000"sv, "99999999"sv, id % 100,
             made});
    }
    transaction.commit();
}

class Store {
  public:
    explicit Store(Engine engine) : database_(makeDatabase()) {
        if (engine == Engine::Sqlite) {
            folder_ = std::filesystem::temp_directory_path() / "torvex-bench-XXXXXX";
            if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("no temporary folder");
            text_ = "sqlite:" + folder_ + "/db";
            Schema({}, {}).create(*database_, SystemClock(), text_);
        } else {
            text_ = getenv("TORVEX_TEST_POSTGRES");
            database_->open(text_)->executeScript(
                "create extension citext; create collation torvex (provider = libc, locale = 'C.UTF-8')");
        }
        const Lease lease = database_->open(text_);
        lease->executeScript(Schema::wordsOf(engine, schemaText()));
        fill(*lease);
        lease->executeScript("analyze");
    }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store() {
        database_.reset();
        if (!folder_.empty()) std::filesystem::remove_all(folder_);
    }

    Lease open() { return database_->open(text_); }

  private:
    std::string folder_;
    std::string text_;
    std::unique_ptr<Database> database_;
};

Store& storeOf(Engine engine) {
    if (engine == Engine::Sqlite) {
        static Store sqlite(Engine::Sqlite);
        return sqlite;
    }
    static Store postgres(Engine::PostgreSql);
    return postgres;
}

/// Numbers that jump over the whole table, the same in each run.
class Jumps {
  public:
    int next() {
        at_ = (at_ + 7919) % pages;
        return at_ + 1;
    }

  private:
    int at_ = 0;
};

void pointQueryByNumber(benchmark::State& state, Engine engine) {
    const Lease connection = storeOf(engine).open();
    const ReadScope scope(*connection);
    Jumps jumps;
    for (auto _ : state) {
        auto rows = connection->query("select title, online from BenchPage where pageId = ?", {jumps.next()});
        rows.next();
        benchmark::DoNotOptimize(rows.view("title").size() + static_cast<std::size_t>(rows.number("online")));
    }
}

void pointQueryByNode(benchmark::State& state, Engine engine) {
    const Lease connection = storeOf(engine).open();
    const ReadScope scope(*connection);
    Jumps jumps;
    for (auto _ : state) {
        const std::string node = nodeOf(jumps.next());
        auto rows =
            connection->query("select pageId from BenchPage where nodeId = ?", {std::string_view(node)});
        rows.next();
        benchmark::DoNotOptimize(rows.number("pageId"));
    }
}

void pageQuery(benchmark::State& state, Engine engine) {
    constexpr std::string_view statement =
        "select a.*, b.*, c.* from BenchPage a left outer join BenchTemplate b on a.template = b.TemplateId "
        "left outer join BenchStyleSheet c on a.stylesheet = c.StyleSheetId where a.pageId = ?";
    constexpr std::array<std::string_view, 20> columns = {
        "pageId",    "nodeId",    "parent",    "title",       "template",    "online",      "onlineFrom",
        "onlineTo",  "orderId",   "made",      "extra1",      "extra3",      "extra5",      "extra9",
        "Template1", "Template4", "Template8", "StyleSheet2", "StyleSheet7", "StyleSheet15"};
    const Lease connection = storeOf(engine).open();
    const ReadScope scope(*connection);
    Jumps jumps;
    for (auto _ : state) {
        auto rows = connection->query(statement, {jumps.next()});
        rows.next();
        std::size_t bytes = 0;
        for (const std::string_view column : columns) bytes += rows.text(column).size();
        benchmark::DoNotOptimize(bytes);
    }
}

void lease(benchmark::State& state, Engine engine) {
    Store& store = storeOf(engine);
    const Lease held = store.open();
    for (auto _ : state) benchmark::DoNotOptimize(store.open());
}

void leaseWithReadScope(benchmark::State& state, Engine engine) {
    Store& store = storeOf(engine);
    for (auto _ : state) {
        const Lease connection = store.open();
        const ReadScope scope(*connection);
        benchmark::DoNotOptimize(connection.get());
    }
}

/// Each thread by itself; with a lock between the connections two threads would not do twice the work.
void pointQueryByThreads(benchmark::State& state) {
    pointQueryByNumber(state, Engine::Sqlite);
}

void smallTransaction(benchmark::State& state, Engine engine) {
    const Lease connection = storeOf(engine).open();
    Jumps jumps;
    for (auto _ : state) {
        Transaction transaction(*connection);
        connection->execute("update BenchPage set orderId = orderId + 1 where pageId = ?", {jumps.next()});
        transaction.commit();
    }
}

void addAll(Engine engine, const std::string& name) {
    const auto add = [&](const std::string& what, auto* function) {
        return benchmark::RegisterBenchmark(("db/" + what + "/" + name).c_str(), function, engine);
    };
    add("pointQueryByNumber", pointQueryByNumber);
    add("pointQueryByNode", pointQueryByNode);
    add("pageQuery60Columns", pageQuery);
    add("lease", lease);
    add("leaseWithReadScope", leaseWithReadScope);
    add("smallTransaction", smallTransaction);
}

const bool added = [] {
    addAll(Engine::Sqlite, "sqlite");
    if (getenv("TORVEX_TEST_POSTGRES") != nullptr) addAll(Engine::PostgreSql, "postgresql");
    benchmark::RegisterBenchmark("db/pointQueryByThreads", pointQueryByThreads)
        ->Threads(1)
        ->Threads(2)
        ->UseRealTime();
    return true;
}();

}  // namespace
}  // namespace torvex::db
