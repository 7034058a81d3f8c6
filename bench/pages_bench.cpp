#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <stdexcept>

#include "PageTree.h"
#include "delivery/cServer.h"

// What a page costs must not grow with the site: the same work on trees of a hundred to a hundred thousand
// pages.

namespace torvex {
namespace {

/// The page query with its neighbours, over pages all over the tree.
void getPage(benchmark::State& state) {
    auto& tree = bench::treeOf(static_cast<int>(state.range(0)));
    cServer server(tree.host.context());
    server.connect(tree.connection());
    const db::ReadScope oneState(tree.connection());
    bench::Scattered pages(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        server.getPage(fmt::format("{}", pages.next() + 1));
        if (server.pgAccess() != 0) throw std::runtime_error("a page is missing");
    }
}
BENCHMARK(getPage)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000);

/// The children of a page in their order.
void listChildren(benchmark::State& state) {
    auto& tree = bench::treeOf(static_cast<int>(state.range(0)));
    const db::ReadScope oneState(tree.connection());
    bench::Scattered pages(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const std::string parent = bench::PageTree::parentOf(pages.next());
        auto rows = tree.connection().query(
            "select pageId, nodeId, title from TORVEX_PAGES_LIVE where parent = ? order by orderId, nodeId",
            {parent});
        int children = 0;
        while (rows.next()) ++children;
        benchmark::DoNotOptimize(children);
    }
}
BENCHMARK(listChildren)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000);

}  // namespace
}  // namespace torvex
