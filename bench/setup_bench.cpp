#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <stdexcept>

#include "PageTree.h"
#include "authoring/cManager.h"

// A page that comes in front of all others moves every one of them, in the design and live.

namespace torvex {
namespace {

/// The fullest page of a tree: 98 published children, below a root of their own.
class FullPage {
  public:
    explicit FullPage(int pagesElsewhere) : tree_(bench::treeOf(pagesElsewhere)) {
        tree_.host.database.target = database_.get();
        tree_.host.application.set("torvex_odbc", tree_.connection().connectionText());
        tree_.host.session.set("torvex_loginId", 1);
        db::Transaction transaction(tree_.connection());
        run("insert into TORVEX_SITES (site, name) values ('zz', 'Site zz')");
        run("insert into TORVEX_LANGUAGES (lang, name) select 'en', 'English' "
            "where not exists (select lang from TORVEX_LANGUAGES where lang = 'en')");
        add("zz.en", "", 1);
        add("zz.en.99", "zz.en", 99);
        for (int i = 1; i <= siblings; ++i) add(fmt::format("zz.en.99.{:02}", i), "zz.en.99", i);
        transaction.commit();
    }
    FullPage(const FullPage&) = delete;
    FullPage& operator=(const FullPage&) = delete;
    ~FullPage() {
        for (const auto* table : {"TORVEX_PAGES_DESIGN", "TORVEX_PAGES_LIVE", "TORVEX_SITES"}) {
            run(fmt::format("delete from {} where site = 'zz'", table));
        }
    }

    /// In front of the sibling, or as the last.
    void insert(const std::string& insertIdent) {
        cManager manager(tree_.host.context());
        manager.connect(tree_.connection());
        manager.setPgTitle("In front");
        manager.setPgType("F");
        manager.setPgTemplateId(0);
        manager.setPgBaseTemplateId(0);
        manager.setPgStylesheetId(0);
        const std::string node = manager.saveNewPageSetup("zz", "en", "zz.en.99", insertIdent);
        if (node != "zz.en.99.99") throw std::runtime_error("the page was not made: " + node);
    }

    /// As it was before, where all have moved by `moved` places.
    void takeBack(int moved) {
        db::Transaction transaction(tree_.connection());
        run("delete from TORVEX_PAGES_DESIGN where nodeId = 'zz.en.99.99'");
        for (const auto* table : {"TORVEX_PAGES_DESIGN", "TORVEX_PAGES_LIVE"}) {
            run(fmt::format("update {} set orderId = orderId - {} where parent = 'zz.en.99'", table, moved));
        }
        transaction.commit();
    }

  private:
    static constexpr int siblings = 98;

    void run(const std::string& statement) { tree_.connection().execute(statement); }
    void add(const std::string& node, const std::string& parent, int order) {
        tree_.connection().execute(
            "insert into TORVEX_PAGES_DESIGN (nodeId, orderId, site, lang, parent, type, title, editStatus) "
            "values (?, ?, 'zz', 'en', ?, 'F', ?, 'P')",
            {node, order, parent, node});
        tree_.connection().execute(
            "insert into TORVEX_PAGES_LIVE (pageId, nodeId, orderId, site, lang, parent, type, title) "
            "select pageId, nodeId, orderId, site, lang, parent, type, title from TORVEX_PAGES_DESIGN "
            "where nodeId = ?",
            {node});
    }

    bench::PageTree& tree_;
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
};

void saveNewPageSetup(benchmark::State& state, const std::string& insertIdent, int moved) {
    FullPage page(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        page.insert(insertIdent);
        state.PauseTiming();
        page.takeBack(moved);
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(saveNewPageSetup, inFrontOf98, "zz.en.99.01", 1)
    ->Arg(100)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(saveNewPageSetup, behind98, "", 0)->Arg(100)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torvex
