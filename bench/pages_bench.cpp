#include <benchmark/benchmark.h>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <memory>
#include <stdexcept>
#include <stdlib.h>

#include "cli/SchemaFiles.h"
#include "delivery/cServer.h"
#include "platform/Schema.h"
#include "support/TestHost.h"

// What a page costs must not grow with the site: the same work on trees of a hundred to a hundred thousand
// pages.

namespace torvex {
namespace {

/// A tree of three levels in an embedded store of its own: up to 90 children below each page.
class Tree {
  public:
    explicit Tree(int pages) {
        if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
        const std::string text = "sqlite:" + folder_ + "/db";
        cli::installedSchema().create(*database_, host.clock, text);
        connection_ = database_->open(text);
        db::Transaction transaction(*connection_);
        for (int i = 0; i < pages; ++i) addPage(i);
        transaction.commit();
        server.connect(*connection_);
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree() {
        connection_.reset();
        database_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    /// Sites and languages are numbered, as one root has no room for more than some eight thousand pages.
    static std::string nodeOf(int i) {
        const int inTree = i % perTree;
        return fmt::format("{:02}.en.{:02}.{:02}", i / perTree + 10, inTree / 90 + 8, inTree % 90 + 8);
    }

    db::Connection& connection() { return *connection_; }

    test::TestHost host;
    cServer server{host.context()};

  private:
    static constexpr int perTree = 8100;

    void addPage(int i) {
        const std::string node = nodeOf(i);
        const std::string_view parent = std::string_view(node).substr(0, 8);
        connection_->execute(
            "insert into TORVEX_PAGES_DESIGN (pageId, nodeId, orderId, parent, type, title) "
            "values (?, ?, ?, ?, 'P', ?)",
            {i + 1, node, i % 90 + 1, parent, node});
        connection_->execute(
            "insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, parent, type, title, online) "
            "values (?, ?, ?, ?, 'P', ?, 1)",
            {i + 1, node, i % 90 + 1, parent, node});
    }

    std::string folder_ = std::filesystem::temp_directory_path() / "torvex-bench-XXXXXX";
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
    db::Lease connection_;
};

Tree& treeOf(int pages) {
    static std::map<int, std::unique_ptr<Tree>> trees;
    auto& tree = trees[pages];
    if (!tree) tree = std::make_unique<Tree>(pages);
    return *tree;
}

/// The page query with its neighbours, over pages all over the tree.
void getPage(benchmark::State& state) {
    const int pages = static_cast<int>(state.range(0));
    Tree& tree = treeOf(pages);
    const db::ReadScope oneState(tree.connection());
    int i = 0;
    for (auto _ : state) {
        i = (i + 7919) % pages;
        tree.server.getPage(fmt::format("{}", i + 1));
        if (tree.server.pgAccess() != 0) throw std::runtime_error("a page is missing");
    }
}
BENCHMARK(getPage)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000);

/// The children of a page in their order.
void listChildren(benchmark::State& state) {
    const int pages = static_cast<int>(state.range(0));
    Tree& tree = treeOf(pages);
    const db::ReadScope oneState(tree.connection());
    int i = 0;
    for (auto _ : state) {
        i = (i + 7919) % pages;
        const std::string parent = Tree::nodeOf(i).substr(0, 8);
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
