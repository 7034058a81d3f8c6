#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "support/TestHost.h"
#include "templates/HTMLTemplate.h"

namespace torvex {
namespace {

constexpr int tagCount = 60;

/// A template as sites have them: 40 KB of HTML with sixty tags and ten blocks.
const std::string& pageTemplate() {
    static const std::string page = [] {
        constexpr std::size_t size = 40 * 1024;
        std::string text = "<html><head><title><!--!title!--></title></head><body>\n";
        for (int i = 0; text.size() < size; ++i) {
            text += fmt::format(
                "<div class=\"cell\"><a href=\"/page.html?id={0}\" title='Item {0}'>An item, No. {0}</a>"
                "<br>Some text that tells what it is, and why.</div>\n",
                i);
            if (i % 4 == 0) text += fmt::format("<!--!tag{}!-->\n", i / 4 % tagCount);
            if (i % 28 == 0)
                text += fmt::format("<!--!b{0}_start!--><p>block</p><!--!b{0}_end!-->\n", i / 28);
        }
        return text + "<!--!last!--></body></html>\n";
    }();
    return page;
}

HTMLTemplate made(test::TestHost& host, const std::string& text) {
    HTMLTemplate result(host.context());
    result.setStrVal(text);
    return result;
}

void loadTemplate(benchmark::State& state) {
    test::TestHost host;
    host.files.bytes["/page.htm"] = pageTemplate();
    HTMLTemplate page(host.context());
    for (auto _ : state) benchmark::DoNotOptimize(page.load("/page.htm"));
}
BENCHMARK(loadTemplate);

void tagExistsAtTheEnd(benchmark::State& state) {
    test::TestHost host;
    const HTMLTemplate page = made(host, pageTemplate());
    for (auto _ : state) benchmark::DoNotOptimize(page.tagExists("last"));
}
BENCHMARK(tagExistsAtTheEnd);

void blockThatIsMissing(benchmark::State& state) {
    test::TestHost host;
    const HTMLTemplate page = made(host, pageTemplate());
    for (auto _ : state) benchmark::DoNotOptimize(page.blockExists("missing"));
}
BENCHMARK(blockThatIsMissing);

/// What assembling a page asks of the engine: every tag filled, a few blocks cut, the rest cleared away.
void fillWholeTemplate(benchmark::State& state) {
    test::TestHost host;
    for (auto _ : state) {
        HTMLTemplate page = made(host, pageTemplate());
        for (int i = 0; i < tagCount; ++i) page.replaceTag(fmt::format("tag{}", i), "some text to put in");
        for (int i = 0; i < 5; ++i) page.replaceAllBlocks(fmt::format("b{}", i), "");
        page.removeTags();
        benchmark::DoNotOptimize(page.strVal().size());
    }
}
BENCHMARK(fillWholeTemplate);

void replaceTagOfThousandPlaces(benchmark::State& state) {
    test::TestHost host;
    std::string text;
    for (int i = 0; i < 1000; ++i) text += "<td class=\"cell\"><!--!x!--></td>\n";
    for (auto _ : state) {
        HTMLTemplate page = made(host, text);
        page.replaceTag("x", "put in");
        benchmark::DoNotOptimize(page.strVal().size());
    }
}
BENCHMARK(replaceTagOfThousandPlaces);

void replaceBlocksOfOneName(benchmark::State& state) {
    test::TestHost host;
    std::string text;
    for (int i = 0; i < state.range(0); ++i) text += "<!--!row_start!--><td>cell</td><!--!row_end!-->\n";
    for (auto _ : state) {
        HTMLTemplate page = made(host, text);
        page.replaceAllBlocks("row", "x");
        benchmark::DoNotOptimize(page.strVal().size());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(replaceBlocksOfOneName)->Arg(100)->Arg(1000)->Arg(10000)->Complexity();

void replaceFamilyOfBlocks(benchmark::State& state) {
    test::TestHost host;
    std::string text;
    for (int i = 1; i <= state.range(0); ++i) {
        text += fmt::format("<!--!row_{0}_start!--><td>cell</td><!--!row_{0}_end!-->\n", i);
    }
    for (auto _ : state) {
        HTMLTemplate page = made(host, text);
        page.replaceAllBlocks("row_i", "x");
        benchmark::DoNotOptimize(page.strVal().size());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(replaceFamilyOfBlocks)->Arg(100)->Arg(1000)->Arg(10000)->Complexity();

void emailToLinksWithoutAny(benchmark::State& state) {
    test::TestHost host;
    HTMLTemplate page = made(host, pageTemplate());
    for (auto _ : state) page.emailToLinks();
}
BENCHMARK(emailToLinksWithoutAny);

void emailToLinksOfMany(benchmark::State& state) {
    test::TestHost host;
    std::string text;
    for (int i = 0; i < state.range(0); ++i) text += "Write to <b>some.body@mail.example.com</b> today. ";
    for (auto _ : state) {
        HTMLTemplate page = made(host, text);
        page.emailToLinks();
        benchmark::DoNotOptimize(page.strVal().size());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(emailToLinksOfMany)->Arg(100)->Arg(1000)->Arg(10000)->Complexity();

}  // namespace
}  // namespace torvex
