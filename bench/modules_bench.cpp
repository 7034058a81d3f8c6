#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "Store.h"
#include "modules/messageBoard/msgBoard.h"
#include "modules/newsflash/newsflash.h"

// A message board that has been written to for years: a category of 10,000 items on 1,000 pages. A page of it,
// even one in the middle, must stay under 5 ms, and publishing 5,000 items under 2 s.

namespace torvex {
namespace {

constexpr int itemCount = 10'000;
constexpr int pageSize = 10;
constexpr int changedItems = 5'000;

class BoardRoom : public bench::Store {
  public:
    BoardRoom() {
        lendToHost();
        host.application.set("torvex_contentTemplates_dir", "/templates/");
        fill();
        board.connect(connection());
        flash.connect(connection());
    }

    void setOrder(std::int64_t order) {
        connection().execute("update TORVEX_MSGB_CATEGORIES_LIVE set msgB_itemOrder = ?", {order});
    }

    msgBoard board{host.context()};
    newsflash flash{host.context()};

  private:
    void fill() {
        db::Transaction transaction(connection());
        connection().execute(
            "insert into TORVEX_MSGB_CATEGORIES_DESIGN (msgB_Id, msgB_site, msgB_lang, msgB_catId, "
            "msgB_catTitle, msgB_online, msgB_pageSize) values (1, 'aa', 'en', '01', 'News', 1, ?)",
            {pageSize});
        connection().execute(
            "insert into TORVEX_MSGB_CATEGORIES_LIVE (msgB_Id, msgB_site, msgB_lang, msgB_catId, "
            "msgB_catTitle, msgB_online, msgB_pageSize) values (1, 'aa', 'en', '01', 'News', 1, ?)",
            {pageSize});
        const std::string words(600, 'x');
        for (int i = 1; i <= itemCount; ++i) {
            const std::string day = fmt::format("20{:02}{:02}{:02}", i % 26, i % 12 + 1, i % 28 + 1);
            connection().execute(
                "insert into TORVEX_MSGB_ITEMS_DESIGN (msgB_itemId, msgB_site, msgB_lang, msgB_catId, "
                "msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemDate, msgB_onlineDate, msgB_archiveDate, "
                "msgB_itemOnline) values (?, 'aa', 'en', '01', 1, ?, ?, ?, '20000101', '99991231', 1)",
                {i, fmt::format("Title no. {}", i * 7919 % itemCount), words, day});
        }
        connection().execute(
            "insert into TORVEX_MSGB_ITEMS_LIVE select msgB_itemId, msgB_site, msgB_lang, msgB_catId, "
            "msgB_Id, msgB_itemTitle, msgB_itemDesc, msgB_itemLink, msgB_itemLinkText, msgB_itemImage, "
            "msgB_itemDate, "
            "msgB_onlineDate, msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash from "
            "TORVEX_MSGB_ITEMS_DESIGN");
        connection().execute(
            "insert into TORVEX_TEMPLATES (tpl_id, tpl_filename, tpl_system) values (1, 'flash.html', 1)");
        connection().execute(
            "insert into TORVEX_NEWSFLASH_LIVE (nf_Id, id, site, lang, itemOrder, itemLength, numberOfItems, "
            "mode, templateId) values (1, 1, 'aa', 'en', 1, 100, 5, 'A', 1)");
        connection().execute("insert into TORVEX_NEWSFLASH_CATEGORIES_LIVE (nf_Id, msgB_Id) values (1, 1)");
        transaction.commit();
        host.files.bytes["/templates/aa/en/flash.html"] =
            "<!--!torvex_content_start!--><!--!nfItem_start!--><!--!nfDefault_start!--><h3>"
            "<!--!nfTitle!--></h3><p><!--!nfText!--></"
            "p><!--!nfDefault_end!--><!--!nfItem_end!--><!--!torvex_content_end!-->";
    }
};

BoardRoom& room() {
    static BoardRoom shared;
    return shared;
}

constexpr const char* boardTemplate =
    "<!--!torvex_application_3_start!--><!--!msgB_item_start!--><!--!msgB_default_start!--><h2>"
    "<!--!msgB_itemTitle!--></h2><p><!--!msgB_DD!--> <!--!msgB_MMM!--> <!--!msgB_YYYY!--></p><p>"
    "<!--!msgB_itemText!--></p><!--!msgB_default_end!--><!--!msgB_item_end!--><!--!msgB_paging_start!-->"
    "<!--!msgB_pLink_start!--><a href=\"?page=<!--!msgB_pageId!-->\"><!--!msgB_pageId!--></a>"
    "<!--!msgB_pLink_end!--><!--!msgB_paging_end!--><!--!torvex_application_3_end!-->";

/// By the category's order of items.
void boardPage(benchmark::State& state) {
    room().setOrder(state.range(0));
    const db::ReadScope oneState(room().connection());
    for (auto _ : state) {
        const std::string html = room().board.load("aa", "en", "", "01", "01", false, 500, boardTemplate);
        if (html.find("page=499") == std::string::npos) state.SkipWithError("this is not page 500");
    }
}
BENCHMARK(boardPage)->DenseRange(1, 6)->Unit(benchmark::kMillisecond);

/// Without a read scope: within one it would be drawn once and then remembered.
void newsflashOfALongCategory(benchmark::State& state) {
    for (auto _ : state) {
        if (!room().flash.load("aa", "en", 1)) state.SkipWithError("there should be a newsflash");
    }
}
BENCHMARK(newsflashOfALongCategory)->Unit(benchmark::kMillisecond);

void publishBoard(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        room().connection().execute(
            "update TORVEX_MSGB_ITEMS_DESIGN set msgB_modified = 1 where msgB_itemId <= ?", {changedItems});
        state.ResumeTiming();
        if (!room().board.publish("aa", "en", "", true, true).empty()) state.SkipWithError("it failed");
    }
}
BENCHMARK(publishBoard)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torvex
