#include <benchmark/benchmark.h>
#include <filesystem>

#include "Store.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/text/Charset.h"
#include "platform/text/Text.h"

namespace torvex {
namespace {

/// 40 KB of HTML in which nothing of what is searched for occurs.
const std::string& html() {
    static const std::string text = [] {
        constexpr std::size_t size = 40 * 1024;
        std::string result;
        while (result.size() < size) {
            result +=
                "<div class=\"cell\"><a href=\"/index.html\" title='An item'>An item &amp; "
                "more</a><br></div>\n";
        }
        return result;
    }();
    return text;
}

void findIn40KB(benchmark::State& state, const char* needle) {
    for (auto _ : state) benchmark::DoNotOptimize(text::find(html(), needle));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(html().size()));
}
BENCHMARK_CAPTURE(findIn40KB, marker, "<!--!name!-->");
BENCHMARK_CAPTURE(findIn40KB, tagOfHtml, "</body>");
BENCHMARK_CAPTURE(findIn40KB, notation, "page(");
BENCHMARK_CAPTURE(findIn40KB, lettersOnly, "absent");
BENCHMARK_CAPTURE(findIn40KB, beyondAscii, "élan");

void equalKeys(benchmark::State& state) {
    const std::string a = "torvex_contentTemplates_dir";
    const std::string b = "TORVEX_CONTENTTEMPLATES_DIR";
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.data());
        benchmark::DoNotOptimize(text::equals(a, b));
    }
}
BENCHMARK(equalKeys);

void compareBeyondAscii(benchmark::State& state) {
    const std::string a = "Élan vital et déjà vu";
    const std::string b = "élan VITAL et DÉJÀ vu";
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.data());
        benchmark::DoNotOptimize(text::compare(a, b));
    }
}
BENCHMARK(compareBeyondAscii);

void replaceAllOften(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(text::replaceAll(html(), "<BR>", "<br/>"));
}
BENCHMARK(replaceAllOften);

void replaceAllOfNothing(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(text::replaceAll(html(), "</body>", "x"));
}
BENCHMARK(replaceAllOfNothing);

void lowerOf40KB(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(text::lower(html()));
}
BENCHMARK(lowerOf40KB);

void htmlEncodeOf40KB(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(text::htmlEncode(html()));
}
BENCHMARK(htmlEncodeOf40KB);

void encodeAsLatin1(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(charset::encodeForHtml(html(), "iso-8859-1"));
}
BENCHMARK(encodeAsLatin1);

void askForACharset(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(charset::isKnown("windows-1252"));
}
BENCHMARK(askForACharset);

void readTextOf40KB(benchmark::State& state) {
    const bench::ScratchFolder scratch;
    const std::string& folder = scratch.path();
    DiskFileSystem disk(std::vector<std::string>{folder});
    std::filesystem::create_directories(folder + "/aa/en");
    disk.writeBytes(folder + "/aa/en/page.htm", html());
    for (auto _ : state) {
        benchmark::DoNotOptimize(disk.readText(folder + "/aa/en/page.htm", TextFormat::SystemDefault));
    }
}
BENCHMARK(readTextOf40KB);

}  // namespace
}  // namespace torvex
