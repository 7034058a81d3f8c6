#include <benchmark/benchmark.h>

#include "PageTree.h"
#include "desk/Presence.h"
#include "desk/desk.h"

// What each author's half minute costs: on the embedded store, with a tree of 100,000 pages of which some wait,
// and a hundred others online.

namespace torvex {
namespace {

using bench::PageTree;

constexpr int pages = 100'000;
constexpr int others = 100;

class Desk {
  public:
    Desk() {
        auto& connection = tree_.connection();
        const std::string root = PageTree::rootOf(0);
        connection.execute(
            "insert into TORVEX_LOGINS (loginId, username, name, sessionId) values (150, 'iris', 'Iris', "
            "'s')");
        connection.execute("insert into TORVEX_ROLES_LOGINS (loginId, roleId) values (150, 77)");
        connection.execute(
            "insert into TORVEX_EDIT_RIGHTS (roleId, site, lang, edit, approve, publish, move) "
            "values (77, ?, 'en', 1, 1, 1, 1)",
            {std::string_view(root).substr(0, 2)});
        connection.execute("update TORVEX_PAGES_DESIGN set editStatus = 'M' where pageId % 500 = 1");
        connection.execute("update TORVEX_PAGES_DESIGN set approveStatus = 1 where pageId % 1000 = 1");
        connection.executeScript("analyze");
        tree_.host.session.set("torvex_loginId", 150);
        tree_.host.session.set("torvex_username", "iris");
        site_ = root.substr(0, 2);
        for (int id = 1; id <= others; ++id)
            presence_->note({{id, "Author"}, {site_, "en", id * 7.0}, Presence::Doing::Typing, {}});
    }
    Value pulse(PageId pageId) {
        desk object(tree_.host.context(), presence_);
        object.connect(tree_.connection());
        return object.pulse(site_, "en", pageId, "typing");
    }

  private:
    PageTree& tree_ = bench::treeOf(pages);
    std::shared_ptr<Presence> presence_ = std::make_shared<Presence>();
    std::string site_;
};

void pulse(benchmark::State& state) {
    static Desk desk;
    bench::Scattered numbers(pages / 2);
    for (auto _ : state) benchmark::DoNotOptimize(desk.pulse(numbers.next() % 5000 + 1));
}
BENCHMARK(pulse)->Name("desk/pulse")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace torvex
