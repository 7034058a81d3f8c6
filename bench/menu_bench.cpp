#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <stdexcept>
#include <string>

#include "PageTree.h"
#include "modules/dynamicMenu/dynMenu.h"
#include "platform/Session.h"

// A menu of two hundred items in three levels, all of them shown, on a site whose pages have groups.

namespace torvex {
namespace {

constexpr int tops = 8;
constexpr int middles = 4;
constexpr int leaves = 5;
constexpr int items = tops + tops * middles + tops * middles * leaves;
static_assert(items == 200);

constexpr int members = 2;  ///< the group of every other branch

constexpr const char* menuTemplate =
    "<!--!torvex_head_start!--><!--!torvex_head_end!--><!--!torvex_content_start!-->"
    "<!--!dynMenu_start!--><ul><!--!dynMenu_levels_start!-->"
    "<!--!dynMenu_level1_start!-->"
    "<!--!dynMenu_itemOn_start!--><li class=\"on\"><a href=\"page(<!--!dynMenu_pageId!-->)\">"
    "<!--!dynMenu_pageTitle!--></a></li><!--!dynMenu_itemOn_end!-->"
    "<!--!dynMenu_itemOff_start!--><li><a href=\"page(<!--!dynMenu_pageId!-->)\">"
    "<!--!dynMenu_pageTitle!--></a></li><!--!dynMenu_itemOff_end!-->"
    "<!--!dynMenu_level1_end!-->"
    "<!--!dynMenu_level2_start!-->"
    "<!--!dynMenu_itemOn_start!--><li class=\"two on\"><a href=\"page(<!--!dynMenu_pageId!-->)\">"
    "<!--!dynMenu_pageTitle!--></a></li><!--!dynMenu_itemOn_end!-->"
    "<!--!dynMenu_itemOff_start!--><li class=\"two\"><a href=\"page(<!--!dynMenu_pageId!-->)\">"
    "<!--!dynMenu_pageTitle!--></a></li><!--!dynMenu_itemOff_end!-->"
    "<!--!dynMenu_level2_end!-->"
    "<!--!dynMenu_levels_end!--></ul><!--!dynMenu_end!--><!--!torvex_content_end!-->";

/// The menu's site, in a store with ten thousand other pages.
class MenuSite {
  public:
    MenuSite() : tree_(10'000) {
        auto& host = tree_.host;
        host.application.set("torvex_contentTemplates_dir", "/templates/");
        host.application.set("torvex_extranet", true);
        host.files.bytes["/templates/me/en/menu.html"] = menuTemplate;
        db::Transaction transaction(connection());
        addPages();
        addMenu();
        transaction.commit();
    }

    db::Connection& connection() { return tree_.connection(); }
    HostContext& host() { return tree_.host.context(); }
    void logIn(const std::string& name) {
        tree_.host.session.set("tvx_username", name);
        tree_.host.session.set("tvx_password", name);
    }

  private:
    void addPages() {
        addPage("me.en", "", 1);
        for (int top = 1; top <= tops; ++top) {
            const std::string first = fmt::format("me.en.{:02}", top);
            addPage(first, "me.en", top % 2 ? members : 0);
            for (int middle = 1; middle <= middles; ++middle) {
                const std::string second = fmt::format("{}.{:02}", first, middle);
                addPage(second, first, 0);
                for (int leaf = 1; leaf <= leaves; ++leaf) {
                    addPage(fmt::format("{}.{:02}", second, leaf), second, 0);
                }
            }
        }
    }
    void addPage(const std::string& node, const std::string& parent, int group) {
        const int pageId = ++lastPage_;
        const std::string title = "The page at " + node;
        for (const std::string twin : {"DESIGN", "LIVE"}) {
            connection().execute("insert into TORVEX_PAGES_" + twin +
                                     " (pageId, nodeId, orderId, parent, type, title, navigation, dynMenu, "
                                     "onlineFrom, onlineTo, " +
                                     (twin == "LIVE" ? "online" : "editStatus") +
                                     ") values (?, ?, ?, ?, 'P', ?, 'A', '1', '00000000', '99999999', 1)",
                                 {pageId, node, pageId, parent, title});
        }
        connection().execute("insert into TORVEX_PAGES_GROUPS_LIVE (pageId, groupId) values (?, ?)",
                             {pageId, group});
    }
    void addMenu() {
        connection().execute(
            "insert into TORVEX_TEMPLATES (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_filename, tpl_system) "
            "values (1, 'me', 'en', 'menu', 'menu.html', 1)");
        connection().execute(
            "insert into TORVEX_DYNMENU_LIVE (site, lang, pageId, minLevels, maxLevels, templateId) "
            "values ('me', 'en', ?, 3, 3, 1)",
            {firstPage + 1});
        connection().execute(
            "insert into TORVEX_USERS (userId, username, password) values (1, 'ann', 'ann')");
        connection().execute("insert into TORVEX_GROUPS_USERS (groupId, userId) values (?, 1)", {members});
    }

    static constexpr int firstPage = 30'000'000;
    bench::PageTree tree_;
    int lastPage_ = firstPage;
};

MenuSite& menuSite() {
    static MenuSite site;
    return site;
}

std::size_t countOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

/// A user's menu is drawn each time; that of strangers is remembered after the first.
void drawMenu(benchmark::State& state, const std::string& visitor, std::size_t shown) {
    auto& site = menuSite();
    site.logIn(visitor);
    const db::ReadScope oneState(site.connection());
    dynMenu menu(site.host());
    menu.connect(site.connection());
    for (auto _ : state) {
        if (!menu.load("me.en.03.02.01")) throw std::runtime_error("there is no menu");
    }
    if (countOf(menu.dmContent(), "<li") != shown) throw std::runtime_error("items are missing");
}
BENCHMARK_CAPTURE(drawMenu, member, std::string("ann"), 200);
BENCHMARK_CAPTURE(drawMenu, rememberedOfStrangers, std::string(), 100);

}  // namespace
}  // namespace torvex
