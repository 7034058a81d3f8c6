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

}  // namespace
}  // namespace torvex
