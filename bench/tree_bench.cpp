#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "Store.h"
#include "authoring/cManager.h"
#include "delivery/cServer.h"
#include "platform/files/DiskFileSystem.h"

// What authors do to the tree of one site as a whole: the sitemap, copies and moves of branches, statistics.
// Every change waits for the disk; with TMPDIR=/dev/shm it doesn't, which leaves the work itself.

namespace torvex {
namespace {

constexpr int branchPages = 1000;

void require(bool fine, const char* what) {
    if (!fine) throw std::runtime_error(what);
}

/// A site of some hundred thousand pages, published: four levels, 46 children below each page. Beside it stands
/// a branch of a thousand pages with five bodies and a snapshot each.
class LargeSite : public bench::Store {
  public:
    LargeSite() {
        lendToHost();
        host.application.set("torvex_install_path", folder() + "/");
        host.application.set("torvex_sitemap_loadLevel", 100);
        host.session.set("torvex_loginId", 1);
        host.session.set("torvex_fullname", "Author");
        connection().execute("insert into TORVEX_LOGINS (loginId, username, sessionId) values (1, 'a', 's')");
        db::Transaction transaction(connection());
        addPage("aa.en", 1);
        addLevels("aa.en", 3);
        addBranch();
        transaction.commit();
    }

    HostContext& context() { return context_; }
    int pages() const { return pages_; }

    static constexpr int children = 46;

    std::string branch = "aa.en.90";  ///< where it stands

  private:
    void addPage(const std::string& node, int order) {
        ++pages_;
        const std::string parent = node.size() > 5 ? node.substr(0, node.size() - 3) : std::string();
        for (const char* twin : {"DESIGN", "LIVE"}) {
            connection().execute(
                std::string("insert into TORVEX_PAGES_") + twin +
                    " (pageId, nodeId, orderId, site, lang, parent, type, title, navigation" +
                    (*twin == 'D' ? ", editStatus" : "") + ") values (?, ?, ?, 'aa', 'en', ?, 'P', ?, 'A'" +
                    (*twin == 'D' ? ", 'P'" : "") + ")",
                {pages_, node, order, parent, "Page " + node});
        }
    }
    void addLevels(const std::string& parent, int levels) {
        for (int i = 1; i <= children; ++i) {
            const std::string node = fmt::format("{}.{:02}", parent, i);
            addPage(node, i);
            if (levels > 1) addLevels(node, levels - 1);
        }
    }
    void addBranch() {
        const std::string text(2000, 'x');
        const std::string snapshots = folder() + "/search/html/en/aa/";
        std::filesystem::create_directories(snapshots);
        for (int i = 0; i < branchPages; ++i) {
            const std::string node = nodeInBranch(i);
            addPage(node, i % 90 + 1);
            std::ofstream(snapshots + node + ".html") << text;
            for (int body = 1; body <= 5; ++body) {
                connection().execute(
                    "insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyText) values (?, ?, ?)",
                    {pages_, body, text});
            }
            for (int group = 2; group <= 4; ++group) {
                connection().execute("insert into TORVEX_PAGES_GROUPS_DESIGN values (?, ?)", {pages_, group});
            }
            for (int tag = 1; tag <= 6; ++tag) {
                connection().execute("insert into TORVEX_PAGES_METADATA_DESIGN values (?, ?, 0, 'value')",
                                     {pages_, tag});
            }
        }
    }
    std::string nodeInBranch(int i) const {
        if (i == 0) return branch;
        return i <= 40 ? fmt::format("{}.{:02}", branch, i)
                       : fmt::format("{}.{:02}.{:02}", branch, i % 40 + 1, i / 40);
    }

    DiskFileSystem files_{std::vector<std::string>{folder()}};
    HostContext context_{host.services().with(files_), host.request, host.response, host.session};
    int pages_ = 0;
};

LargeSite& largeSite() {
    static LargeSite site;
    return site;
}

class Author {
  public:
    explicit Author(LargeSite& site) : connection_(site.openAnother()), manager_(site.context()) {
        manager_.connect(*connection_);
    }
    cManager* operator->() { return &manager_; }

  private:
    db::Lease connection_;
    cManager manager_;
};

/// Only `work` counts, not what comes before or behind it in a round.
template <typename Work>
void measure(benchmark::State& state, Work work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
}

/// A line of /proc/self/status, in bytes.
double memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == name && status >> kilobytes) return kilobytes * 1024;
    }
    return 0;
}

void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << 5;
}

// ---- The sitemap ----

void getSitemapWhole(benchmark::State& state) {
    LargeSite& site = largeSite();
    Author author(site);
    forgetPeak();
    const double before = memory("VmRSS:");
    for (auto _ : state) {
        require(author->getSitemap("aa", "en").size() > 100'000UL * 40, "pages are missing");
    }
    state.counters["pages"] = site.pages();
    state.counters["more_MB"] = (memory("VmHWM:") - before) / 1e6;
}
BENCHMARK(getSitemapWhole)->Unit(benchmark::kMillisecond);

void getSitemapLevel(benchmark::State& state) {
    Author author(largeSite());
    int i = 0;
    for (auto _ : state) {
        i = i % LargeSite::children + 1;
        require(author->getSitemap("aa", "en", fmt::format("aa.en.{:02}", i), 1).size() > 46UL * 40,
                "pages are missing");
    }
}
BENCHMARK(getSitemapLevel)->Unit(benchmark::kMillisecond);

// ---- Copies and moves ----

void removeCopy(LargeSite& site, const std::string& node) {
    const std::string end = node + "/";
    db::Transaction transaction(site.connection());
    for (const auto* table : {"BODIES_DESIGN where pageId", "PAGES_GROUPS_DESIGN where pageId",
                              "PAGES_METADATA_DESIGN where metaData_pageId"}) {
        site.connection().execute(
            std::string("delete from TORVEX_") + table +
                " in (select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
            {node, end});
    }
    site.connection().execute("delete from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?",
                              {node, end});
    transaction.commit();
}

void pastePage(benchmark::State& state) {
    LargeSite& site = largeSite();
    Author author(site);
    for (auto _ : state) {
        std::string copy;
        measure(state, [&] { copy = author->pastePage("D", site.branch, "aa.en.01.01", 1); });
        require(copy.starts_with("aa.en.01.01."), "a branch isn't copied");
        removeCopy(site, copy);
    }
}
BENCHMARK(pastePage)->UseManualTime()->Unit(benchmark::kMillisecond);

/// There and back.
void moveBranch(LargeSite& site, Author& author) {
    const std::string target = site.branch.starts_with("aa.en.01.01") ? "aa.en" : "aa.en.01.01";
    site.branch = author->movePage(site.branch, target);
    require(site.branch.starts_with(target), "a branch isn't moved");
}

void movePage(benchmark::State& state) {
    LargeSite& site = largeSite();
    Author author(site);
    for (auto _ : state) measure(state, [&] { moveBranch(site, author); });
}
BENCHMARK(movePage)->UseManualTime()->Unit(benchmark::kMillisecond);

void moveNode(benchmark::State& state) {
    Author author(largeSite());
    const std::string one = "aa.en.20.20.10";
    const std::string two = "aa.en.20.20.11";
    bool down = true;
    for (auto _ : state) {
        require(author->moveNode(one, two, down ? "down" : "up").empty(), "siblings aren't moved");
        down = !down;
    }
}
BENCHMARK(moveNode)->Unit(benchmark::kMillisecond);

/// A visitor's pages while `work` goes on over and over: the slowest of a hundred, in microseconds.
template <typename Work>
double slowestOfHundred(LargeSite& site, Work work) {
    std::atomic<bool> ends = false;
    std::thread author([&] {
        while (!ends) work();
    });
    test::TestHost visitor;
    const auto connection = site.openAnother();
    cServer server(visitor.context());
    server.connect(*connection);
    std::vector<double> times;
    for (int i = 0; i < 20000; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        const db::ReadScope request(*connection);
        server.getPage(fmt::format("{}", (i * 7919) % 90000 + 1));
        require(server.pgAccess() == 0, "a page is missing");
        times.push_back(
            std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count());
    }
    ends = true;
    author.join();
    std::sort(times.begin(), times.end());
    return times[times.size() * 99 / 100];
}

void visitorsMeanwhile(benchmark::State& state) {
    LargeSite& site = largeSite();
    Author author(site);
    for (auto _ : state) {
        state.counters["alone_us"] =
            slowestOfHundred(site, [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); });
        state.counters["copying_us"] = slowestOfHundred(
            site, [&] { removeCopy(site, author->pastePage("D", site.branch, "aa.en.01.01", 1)); });
        state.counters["moving_us"] = slowestOfHundred(site, [&] { moveBranch(site, author); });
    }
}
BENCHMARK(visitorsMeanwhile)->Iterations(1)->Unit(benchmark::kMillisecond);

// ---- Statistics ----

constexpr const char* addFiftyDays =
    "with recursive day (n) as (select 0 union all select n + 1 from day where n < 49) "
    "insert into TORVEX_LOGGING (site, lang, nodeId, yyyymmdd, yyyy, mm, dd, hits, uniquehits) "
    "select p.site, p.lang, p.nodeId, '2026' || printf('%02d%02d', 1 + day.n / 25, 1 + day.n % 25), '2026', "
    "printf('%02d', 1 + day.n / 25), printf('%02d', 1 + day.n % 25), 1 + p.pageId % 90, 1 "
    "from TORVEX_PAGES_LIVE p, day";

void statistics(benchmark::State& state) {
    LargeSite& site = largeSite();
    site.connection().execute("delete from TORVEX_LOGGING");
    const auto hits = site.connection().execute(addFiftyDays);
    site.host.session.set("torvex_adminTemplates_dir", "/templates/");
    site.host.files.bytes["/templates/statDetail.html"] =
        "<!--!title!--><!--!list_start!--><!--!month_start!--><!--!month!--><!--!month_end!-->"
        "<!--!item_start!--><!--!dayType!--><!--!day!--><!--!hits!--><!--!width!--><!--!item_end!-->"
        "<!--!total_start!--><!--!total!--><!--!total_end!--><!--!list_end!-->";
    const auto connection = site.openAnother();
    cManager manager(site.host.context());
    manager.connect(*connection);
    int i = 0;
    for (auto _ : state) {
        i = (i + 7919) % 90000;
        require(
            !manager.statistics(fmt::format("{}", i + 1), "01", "01", "2026", "31", "01", "2026", 1).empty(),
            "a page has no days");
    }
    state.counters["days"] = static_cast<double>(hits);
    site.connection().execute("delete from TORVEX_LOGGING");
}
BENCHMARK(statistics)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torvex
