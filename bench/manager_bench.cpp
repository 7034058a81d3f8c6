#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <stdexcept>

#include "PageTree.h"
#include "authoring/cManager.h"

// What authors do to one page must not grow with the site either.

namespace torvex {
namespace {

/// Runs `ask(manager, i)` for the numbers of pages all over the tree.
template <typename Ask>
void overTheTree(benchmark::State& state, Ask ask) {
    auto& tree = bench::treeOf(static_cast<int>(state.range(0)));
    cManager manager(tree.host.context());
    manager.connect(tree.connection());
    const db::ReadScope oneState(tree.connection());
    bench::Scattered pages(static_cast<int>(state.range(0)));
    for (auto _ : state) ask(manager, pages.next());
}

void onGrowingTrees(benchmark::internal::Benchmark* made) {
    for (const int pages : {100, 1000, 10000, 100000}) made->Arg(pages);
}

void getPageRecord(benchmark::State& state, const std::string& mode) {
    overTheTree(state, [&mode](cManager& manager, int i) {
        manager.getPage(fmt::format("{}", i + 1), mode);
        if (!manager.pgExists()) throw std::runtime_error("a page is missing");
    });
}
BENCHMARK_CAPTURE(getPageRecord, live, "L")->Apply(onGrowingTrees);
BENCHMARK_CAPTURE(getPageRecord, design, "D")->Apply(onGrowingTrees);

void getPageParameters(benchmark::State& state) {
    overTheTree(state, [](cManager& manager, int i) {
        if (manager.getPageParameters(bench::PageTree::nodeOf(i)) != "PP0000") {
            throw std::runtime_error("a page is missing");
        }
    });
}
BENCHMARK(getPageParameters)->Apply(onGrowingTrees);

/// Behind all children of a page, as none is missing.
void getNewChild(benchmark::State& state) {
    overTheTree(state, [](cManager& manager, int i) {
        if (manager.getNewChild(bench::PageTree::parentOf(i)).size() != 11) {
            throw std::runtime_error("a page is full or missing");
        }
    });
}
BENCHMARK(getNewChild)->Apply(onGrowingTrees);

void getNewOrderId(benchmark::State& state) {
    overTheTree(state, [](cManager& manager, int i) {
        if (manager.getNewOrderId(bench::PageTree::nodeOf(i)) < 2) {
            throw std::runtime_error("a page has no siblings");
        }
    });
}
BENCHMARK(getNewOrderId)->Apply(onGrowingTrees);

/// A login with a role whose scope is five nodes; both go when it ends, as trees are shared.
class ScopedLogin {
  public:
    explicit ScopedLogin(bench::PageTree& tree) : tree_(tree) {
        tree_.host.session.set("torvex_loginId", number);
        tree_.host.session.set("torvex_username", "scoped");
        run("insert into TORVEX_LOGINS (loginId, username) values (?, 'scoped')");
        run("insert into TORVEX_ROLES_LOGINS (loginId, roleId) values (?, 9001)");
        run("insert into TORVEX_EDIT_RIGHTS (roleId, site, lang, edit, scope) "
            "values (?, '10', 'en', 1, '10.en.86,10.en.87,10.en.88,10.en.89,10.en.01')");
    }
    ScopedLogin(const ScopedLogin&) = delete;
    ScopedLogin& operator=(const ScopedLogin&) = delete;
    ~ScopedLogin() {
        run("delete from TORVEX_EDIT_RIGHTS where roleId = ?");
        run("delete from TORVEX_ROLES_LOGINS where roleId = ?");
        run("delete from TORVEX_LOGINS where loginId = ?");
        for (const auto* key : {"torvex_loginId", "torvex_username"}) tree_.host.session.set(key, Value());
    }

  private:
    static constexpr int number = 9001;
    void run(std::string_view statement) { tree_.connection().execute(statement, {number}); }

    bench::PageTree& tree_;
};

void checkEditRights(benchmark::State& state) {
    const ScopedLogin login(bench::treeOf(static_cast<int>(state.range(0))));
    overTheTree(state, [](cManager& manager, int i) {
        const std::string page = fmt::format("{}", i % 90 + 1);
        if (!manager.checkEditRights("edit", "10", "en", page)) throw std::runtime_error("refused");
    });
}
BENCHMARK(checkEditRights)->Apply(onGrowingTrees);

}  // namespace
}  // namespace torvex
