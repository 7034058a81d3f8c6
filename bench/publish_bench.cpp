#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <stdexcept>
#include <thread>

#include "PageTree.h"
#include "authoring/cManager.h"
#include "delivery/cServer.h"
#include "platform/files/DiskFileSystem.h"
#include "search/Search.h"
#include "search/SnapshotRenewal.h"

// What it takes to publish and to remove pages, with their files, on growing trees. Every publishing waits
// for the disk; with TMPDIR=/dev/shm it doesn't, which leaves the work itself.

namespace torvex {
namespace {

constexpr int branchPages = 1000;

/// An author's request on a tree, with real files for the snapshots.
class Office {
  public:
    explicit Office(bench::PageTree& tree) : tree_(tree), host_(tree.host) {
        host_.database.target = database_.get();
        host_.application.set("torvex_odbc", tree.connection().connectionText());
        host_.application.set("torvex_install_path", folder_.path() + "/");
        host_.session.set("torvex_loginId", 1);
        host_.session.set("torvex_fullname", "Author");
        manager_ = std::make_unique<cManager>(context_);
        manager_->connect(tree.connection());
    }
    Office(const Office&) = delete;
    Office& operator=(const Office&) = delete;
    ~Office() { host_.database.target = nullptr; }

    cManager& manager() { return *manager_; }
    db::Connection& connection() { return tree_.connection(); }
    HostContext& context() { return context_; }
    db::Lease openAnother() { return database_->open(tree_.connection().connectionText()); }

    /// The design of a page as an author leaves it: five bodies, three groups, six values of meta data.
    void fill(int pageId) {
        const std::string text(2000, 'x');
        auto& db = connection();
        db.execute("delete from TORVEX_BODIES_DESIGN where pageId = ?", {pageId});
        db.execute("delete from TORVEX_PAGES_GROUPS_DESIGN where pageId = ?", {pageId});
        db.execute("delete from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId = ?", {pageId});
        for (int i = 1; i <= 5; ++i) {
            db.execute("insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyText) values (?, ?, ?)",
                       {pageId, i, text});
        }
        for (int i = 2; i <= 4; ++i) {
            db.execute("insert into TORVEX_PAGES_GROUPS_DESIGN values (?, ?)", {pageId, i});
        }
        for (int i = 1; i <= 6; ++i) {
            db.execute("insert into TORVEX_PAGES_METADATA_DESIGN values (?, ?, 0, 'value')", {pageId, i});
        }
    }
    void approve(int pageId) {
        connection().execute("update TORVEX_PAGES_DESIGN set approveStatus = 1 where pageId = ?", {pageId});
    }

  private:
    bench::PageTree& tree_;
    test::TestHost& host_;
    bench::ScratchFolder folder_;
    DiskFileSystem files_{std::vector<std::string>{folder_.path()}};
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
    HostContext context_{host_.services().with(files_), host_.request, host_.response, host_.session};
    std::unique_ptr<cManager> manager_;
};

/// Only `work` counts, not what comes before it in a round.
template <typename Work>
void measure(benchmark::State& state, Work work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
}

void require(bool fine, const char* what) {
    if (!fine) throw std::runtime_error(what);
}

void onGrowingTrees(benchmark::internal::Benchmark* made) {
    for (const int pages : {100, 1000, 10000, 100000}) made->Arg(pages);
    made->UseManualTime()->Unit(benchmark::kMillisecond);
}

/// The smallest durable change, for comparison: what a publishing takes beyond two of these (its own and its
/// line's) and the files is its work.
void durableCommit(benchmark::State& state) {
    Office office(bench::treeOf(100));
    for (auto _ : state) {
        measure(state, [&] {
            db::Transaction transaction(office.connection());
            office.approve(1);
            transaction.commit();
        });
    }
}
BENCHMARK(durableCommit)->UseManualTime()->Unit(benchmark::kMillisecond);

void publishPage(benchmark::State& state) {
    Office office(bench::treeOf(static_cast<int>(state.range(0))));
    bench::Scattered pages(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const int pageId = pages.next() + 1;
        {
            db::Transaction transaction(office.connection());
            office.fill(pageId);
            office.approve(pageId);
            transaction.commit();
        }
        measure(state, [&] {
            require(office.manager().publishPage(fmt::format("{}", pageId)) == "1", "a page isn't published");
        });
    }
}
BENCHMARK(publishPage)->Apply(onGrowingTrees);

/// A branch of its own beside the tree: a root, its children and theirs.
class Branch {
  public:
    explicit Branch(Office& office) : office_(office) {
        db::Transaction transaction(office.connection());
        for (int i = 0; i < branchPages; ++i) {
            const int pageId = firstPage + i;
            const std::string node = nodeOf(i);
            for (const std::string twin : {"DESIGN", "LIVE"}) {
                office.connection().execute(
                    "insert into TORVEX_PAGES_" + twin +
                        " (pageId, nodeId, parent, type, title) values (?, ?, ?, 'P', ?)",
                    {pageId, node, node.substr(0, node.size() - 3), node});
            }
            office.fill(pageId);
        }
        transaction.commit();
    }
    Branch(const Branch&) = delete;
    Branch& operator=(const Branch&) = delete;
    ~Branch() {
        for (const auto* table : {"PAGES_DESIGN", "PAGES_LIVE", "BODIES_DESIGN", "BODIES_LIVE",
                                  "PAGES_GROUPS_DESIGN", "PAGES_GROUPS_LIVE"}) {
            office_.connection().execute(std::string("delete from TORVEX_") + table + " where pageId >= ?",
                                         {firstPage});
        }
        for (const auto* twin : {"DESIGN", "LIVE"}) {
            office_.connection().execute(
                std::string("delete from TORVEX_PAGES_METADATA_") + twin + " where metaData_pageId >= ?",
                {firstPage});
        }
    }

    void approve() {
        office_.connection().execute("update TORVEX_PAGES_DESIGN set approveStatus = 1 where pageId >= ?",
                                     {firstPage});
    }
    void markRoot() {
        office_.connection().execute(
            "update TORVEX_PAGES_DESIGN set approveStatus = 1, deleteStatus = 1 where pageId = ?",
            {firstPage});
    }
    static std::vector<PageId> pages() {
        std::vector<PageId> numbers;
        for (int i = 0; i < branchPages; ++i) numbers.push_back(firstPage + i);
        return numbers;
    }

    static constexpr const char* root = "zz.en";
    static constexpr int firstPage = 100'000'000;

  private:
    static std::string nodeOf(int i) {
        if (i == 0) return root;
        return i <= 40 ? fmt::format("{}.{:02}", root, i)
                       : fmt::format("{}.{:02}.{:02}", root, i % 40 + 1, i / 40);
    }

    Office& office_;
};

/// With the snapshots; the case below tells how much of it they are.
void publishBranch(benchmark::State& state) {
    Office office(bench::treeOf(static_cast<int>(state.range(0))));
    Branch branch(office);
    for (auto _ : state) {
        branch.approve();
        measure(state, [&] {
            require(office.manager().publishPageCascading(Branch::root) == "0", "a branch isn't published");
        });
    }
}
BENCHMARK(publishBranch)->Apply(onGrowingTrees);

void snapshotsOfBranch(benchmark::State& state) {
    Office office(bench::treeOf(static_cast<int>(state.range(0))));
    const Branch branch(office);
    for (auto _ : state) {
        measure(state, [&] { renewSnapshots(office.context(), office.connection(), Branch::pages()); });
    }
}
BENCHMARK(snapshotsOfBranch)->Apply(onGrowingTrees);

void removeBranch(benchmark::State& state) {
    Office office(bench::treeOf(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        Branch branch(office);
        branch.markRoot();
        measure(state, [&] {
            require(office.manager().publishPage(Branch::root) == "0", "a branch isn't removed");
        });
    }
}
BENCHMARK(removeBranch)->Apply(onGrowingTrees);

/// A visitor's page while an author publishes a branch over and over; to be held beside `getPage`.
void getPageMeanwhile(benchmark::State& state) {
    auto& tree = bench::treeOf(10000);
    Office office(tree);
    Branch branch(office);
    std::atomic<bool> ends = false;
    std::thread author([&] {
        const auto connection = office.openAnother();
        while (!ends) {
            connection->execute("update TORVEX_PAGES_DESIGN set approveStatus = 1 where pageId >= ?",
                                {Branch::firstPage});
            cManager manager(office.context());
            manager.connect(*connection);
            manager.publishPageCascading(Branch::root);
        }
    });
    test::TestHost visitor;
    const auto connection = office.openAnother();
    cServer server(visitor.context());
    server.connect(*connection);
    bench::Scattered pages(10000);
    for (auto _ : state) {
        const db::ReadScope request(*connection);
        server.getPage(fmt::format("{}", pages.next() + 1));
        if (server.pgAccess() != 0) state.SkipWithError("a page is missing");
    }
    ends = true;
    author.join();
}
BENCHMARK(getPageMeanwhile)->UseRealTime();

void initializeAllPages(benchmark::State& state) {
    Office office(bench::treeOf(static_cast<int>(state.range(0))));
    Search search(office.context());
    search.connect(office.connection());
    for (auto _ : state) {
        measure(state, [&] { require(search.initializePages() == "0", "the snapshots aren't written"); });
    }
}
BENCHMARK(initializeAllPages)->Apply(onGrowingTrees);

}  // namespace
}  // namespace torvex
