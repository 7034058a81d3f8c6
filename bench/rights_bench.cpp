#include <benchmark/benchmark.h>

#include "PageTree.h"
#include "authoring/cManager.h"

// What a page of the authoring side pays to know what its login may do: on the embedded store, with the
// rights of a large installation.

namespace torvex {
namespace {

using bench::PageTree;

constexpr int pages = 10'000;
constexpr int logins = 200;
constexpr int roles = 40;
constexpr int rolesOfLogin = 3;
constexpr int sites = 2;
constexpr int entries = 40;

std::string scopeOf(int role) {
    // Every fourth role is for whole trees, the others for a few branches.
    if (role % 4 == 0) return {};
    std::string scope;
    for (int i = 0; i < 4; ++i) scope += (i ? "," : "") + PageTree::parentOf((role * 7 + i * 13) % 90 * 90);
    return scope;
}

void addMenu(db::Connection& connection) {
    for (int advId = 1; advId <= entries; ++advId) {
        connection.execute(
            "insert into TORVEX_ADVANCED (advId, advLevel, advReference, advTitle, advIcon, advProgram, "
            "advView, "
            "advEdit) values (?, ?, ?, ?, 'icon.gif', '/torvex/entry.asp', 1, 1)",
            {advId, advId % 3, fmt::format("g{}.{:02}", advId / 10, advId % 10),
             std::to_string(3000 + advId)});
        connection.execute(
            "insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1) values (?, 'An entry')",
            {3000 + advId});
    }
}

void addRights(db::Connection& connection) {
    db::Transaction transaction(connection);
    connection.execute(
        "insert into TORVEX_INTERFACE_LANGUAGES (id, lang_id, lang_name) values (1, 'en', 'English')");
    addMenu(connection);
    for (int role = 1; role <= roles; ++role) {
        for (int site = 0; site < sites; ++site) {
            connection.execute(
                "insert into TORVEX_EDIT_RIGHTS (roleId, site, lang, onOff, move, edit, approve, publish, "
                "scope) values (?, ?, 'en', 1, 1, 1, 1, 1, ?)",
                {role, PageTree::rootOf(site * 8100).substr(0, 2), scopeOf(role)});
        }
        connection.execute(
            "insert into TORVEX_ADVANCED_RIGHTS (roleId, advId, site, lang, viewAccess, editAccess) "
            "select ?, advId, '', '', 1, 0 from TORVEX_ADVANCED",
            {role});
    }
    for (int login = 100; login < 100 + logins; ++login) {
        connection.execute("insert into TORVEX_LOGINS (loginId, username, sessionId) values (?, ?, ?)",
                           {login, "login" + std::to_string(login), "session" + std::to_string(login)});
        for (int i = 0; i < rolesOfLogin; ++i) {
            connection.execute("insert into TORVEX_ROLES_LOGINS (loginId, roleId) values (?, ?)",
                               {login, (login + i * 11) % roles + 1});
        }
    }
    transaction.commit();
    connection.executeScript("analyze");
}

/// The tree with logins, and a manager for one of them.
class Rights {
  public:
    Rights() {
        addRights(tree_.connection());
        tree_.host.session.set("torvex_loginId", 150);
        tree_.host.session.set("torvex_username", "login150");
        tree_.host.session.set("torvex_current_interface", "en");
        manager_ = std::make_unique<cManager>(tree_.host.context());
        manager_->connect(tree_.connection());
    }

    cManager& manager() { return *manager_; }

  private:
    PageTree& tree_ = bench::treeOf(pages);
    std::unique_ptr<cManager> manager_;
};

cManager& managerWithRights() {
    static Rights rights;
    return rights.manager();
}

void checkEditRightsByNode(benchmark::State& state) {
    auto& manager = managerWithRights();
    bench::Scattered numbers(pages / 2);
    for (auto _ : state) {
        const std::string node = PageTree::nodeOf(numbers.next());
        benchmark::DoNotOptimize(manager.checkEditRights("edit", node.substr(0, 2), "en", node));
    }
}
BENCHMARK(checkEditRightsByNode)->Name("rights/checkEditRightsByNode")->Unit(benchmark::kMicrosecond);

void checkEditRightsByNumber(benchmark::State& state) {
    auto& manager = managerWithRights();
    bench::Scattered numbers(pages / 2);
    for (auto _ : state) {
        const int page = numbers.next();
        const std::string node = PageTree::nodeOf(page);
        benchmark::DoNotOptimize(
            manager.checkEditRights("edit", node.substr(0, 2), "en", std::to_string(page + 1)));
    }
}
BENCHMARK(checkEditRightsByNumber)->Name("rights/checkEditRightsByNumber")->Unit(benchmark::kMicrosecond);

void checkAdvRights(benchmark::State& state) {
    auto& manager = managerWithRights();
    bench::Scattered numbers(entries);
    for (auto _ : state) {
        benchmark::DoNotOptimize(manager.checkAdvRights("edit", numbers.next() + 1, "10", "en"));
    }
}
BENCHMARK(checkAdvRights)->Name("rights/checkAdvRights")->Unit(benchmark::kMicrosecond);

void isMemberOfScope(benchmark::State& state) {
    auto& manager = managerWithRights();
    const std::string scope = scopeOf(1);
    const std::string node = PageTree::nodeOf(4711);
    for (auto _ : state) benchmark::DoNotOptimize(manager.isMemberOfScope(node, scope));
}
BENCHMARK(isMemberOfScope)->Name("rights/isMemberOfScope")->Unit(benchmark::kMicrosecond);

void getAdvancedMap(benchmark::State& state) {
    auto& manager = managerWithRights();
    for (auto _ : state) benchmark::DoNotOptimize(manager.getAdvancedMap("10", "en").size());
}
BENCHMARK(getAdvancedMap)->Name("rights/getAdvancedMap")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace torvex
