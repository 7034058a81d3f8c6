#include "search/ResultsPage.h"

#include <algorithm>
#include <array>

#include "platform/HostContext.h"
#include "search/ResultList.h"
#include "search/ResultTemplate.h"
#include "search/SearchError.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

constexpr std::string_view resultBlock = "search_result";
constexpr int bestRank = 1000;

/// One page of results on its way into its template.
class ResultsPage {
  public:
    ResultsPage(HostContext& host, const SearchRun& run, const ResultList& list, std::string block)
        : host_(host), run_(run), list_(list), session_(host.session), text_(host) {
        text_.setStrVal(std::move(block));
    }

    void fill();
    std::string take() { return text_.takeStrVal(); }

  private:
    void keepPlaces();
    void fillPaging();
    void fillRange();
    std::string pieces();
    int rankBaseFor(int rank, std::size_t place);
    void remove(std::string_view block) { text_.replaceAllBlocks(block, ""); }
    bool hasPrevious() const { return run_.page > 1; }

    HostContext& host_;
    const SearchRun& run_;
    const ResultList& list_;
    SearchSession session_;
    HTMLTemplate text_;
};

void ResultsPage::fill() {
    keepPlaces();
    const std::string results = pieces();
    fillPaging();
    if (list_.shown.empty()) {
        for (const auto* block : {"search_resultRange", "search_spacer", "search_result"}) remove(block);
        return;
    }
    remove("search_empty");
    fillRange();
    text_.replaceBlock(resultBlock, results);
}

void ResultsPage::keepPlaces() {
    if (!list_.shown.empty()) session_.setBookmark(run_.page, list_.shown.front().row);
    if (list_.next) session_.setBookmark(run_.page + 1, *list_.next);
}

std::string ResultsPage::pieces() {
    const ResultTemplate result(host_, text_.extractBlock(resultBlock), *run_.running.query);
    std::string joined;
    for (std::size_t place = 0; place < list_.shown.size(); ++place) {
        const ShownResult& shown = list_.shown[place];
        const catalogue::Row row = run_.results().row(shown.row);
        const std::string piece = result.fill(row, shown.file, rankBaseFor(row.rank, place));
        markers::checkSize(joined.size(), piece.size() + result.spacer().size());
        if (place > 0) joined += result.spacer();
        joined += piece;
    }
    return joined;
}

/// The first result of all sets it.
int ResultsPage::rankBaseFor(int rank, std::size_t place) {
    if (run_.page == 1 && place == 0) session_.setRankBase(std::clamp(rank, 1, bestRank));
    return session_.rankBase();
}

void ResultsPage::fillPaging() {
    if (!hasPrevious() && !list_.next) return remove("search_paging");
    if (hasPrevious()) {
        text_.replaceTag("search_previousPage", std::to_string(run_.page - 1));
    } else {
        remove("search_pPrevious");
    }
    if (list_.next) {
        text_.replaceTag("search_nextPage", std::to_string(run_.page + 1));
    } else {
        remove("search_pNext");
    }
    if (!hasPrevious() || !list_.next) remove("search_pSpacer");
}

void ResultsPage::fillRange() {
    const std::size_t before =
        static_cast<std::size_t>(run_.search.resultsPerPage) * static_cast<std::size_t>(run_.page - 1);
    text_.replaceTag("search_resultFrom", std::to_string(before + 1));
    text_.replaceTag("search_resultTo", std::to_string(before + list_.shown.size()));
}

}  // namespace

std::string filledResults(HostContext& host, db::Connection& connection, const SearchRun& run,
                          std::string block) {
    return asSearchStep(host, "Error in function fillResults (Search module) !", [&] {
        const bool showsResults =
            markers::findBlock(block, markers::blockStart(resultBlock), markers::blockEnd(resultBlock))
                .has_value();
        if (!showsResults) return block;
        const ResultList list = listedResults(host, connection, run);
        ResultsPage page(host, run, list, std::move(block));
        page.fill();
        SearchSession session(host.session);
        if (run.page > 1 || list.next) {
            session.keep(run.running);
        } else {
            session.clear();
        }
        return page.take();
    });
}

void removeResults(std::string& html) {
    constexpr std::array<std::string_view, 4> blocks = {"search_paging", "search_resultRange",
                                                        "search_spacer", resultBlock};
    for (const auto block : blocks) markers::replaceBlocks(html, block, "");
}

}  // namespace torvex
