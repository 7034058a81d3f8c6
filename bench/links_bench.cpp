#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <stdexcept>

#include "Store.h"
#include "delivery/cServer.h"

namespace torvex {
namespace {

constexpr int firstPage = 1000;
constexpr int pageCount = 5000;

/// A site of five thousand pages.
class Site : public bench::Store {
  public:
    Site() {
        db::Transaction transaction(connection());
        for (int i = 0; i < pageCount; ++i) addPage(i);
        transaction.commit();
        host.application.set("torvex_hyperlink_check", true);
        server.connect(connection());
    }

    static std::string nodeOf(int i) { return fmt::format("aa.en.{:02}.{:02}", i / 90 + 10, i % 90 + 10); }

    cServer server{host.context()};

  private:
    void addPage(int i) {
        const std::string node = nodeOf(i);
        connection().execute(
            "insert into TORVEX_PAGES_DESIGN (pageId, nodeId, parent, type, title) values (?, ?, ?, 'P', ?)",
            {firstPage + i, node, node.substr(0, 8), node});
        connection().execute(
            "insert into TORVEX_PAGES_LIVE (pageId, nodeId, parent, type, title, online) "
            "values (?, ?, ?, 'P', ?, ?)",
            {firstPage + i, node, node.substr(0, 8), node, i % 20 == 0 ? 0 : 1});
    }
};

Site& site() {
    static Site made;
    return made;
}

/// Text with `links` links to different pages, a third of them by node, one kilobyte to three links.
std::string pageWith(int links) {
    constexpr std::size_t sizeOfThree = 1024;
    std::string html = "<html><head><title>Links</title></head><body>\n";
    for (int i = 0; i < links; ++i) {
        const int target = i * 7 % pageCount;
        const std::string identifier =
            i % 3 == 0 ? Site::nodeOf(target) : fmt::format("{}", firstPage + target);
        html +=
            fmt::format("<p class=\"teaser\"><a class='more' href=\"page({})\">Read more</a> ", identifier);
        const std::size_t wanted = static_cast<std::size_t>(i + 1) * sizeOfThree / 3;
        while (html.size() < wanted) html += "Words between the links of a page. ";
        html += "</p>\n";
    }
    return html + "</body></html>\n";
}

/// With the dead link check on, as a site runs. A request reads in one transaction, and so does this.
void buildLinks(benchmark::State& state) {
    const std::string html = pageWith(static_cast<int>(state.range(0)));
    const db::ReadScope oneState(site().connection());
    for (auto _ : state) benchmark::DoNotOptimize(site().server.buildLinks(html, "aa"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(html.size()));
}
BENCHMARK(buildLinks)->Arg(0)->Arg(30)->Arg(300)->Arg(3000)->Unit(benchmark::kMicrosecond);

void buildLinksWithFrames(benchmark::State& state) {
    const std::string html = pageWith(static_cast<int>(state.range(0)));
    const db::ReadScope oneState(site().connection());
    site().host.application.set("torvex_frames", true);
    for (auto _ : state) benchmark::DoNotOptimize(site().server.buildLinks(html, "aa"));
    site().host.application.set("torvex_frames", false);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(html.size()));
}
BENCHMARK(buildLinksWithFrames)->Arg(300)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace torvex
