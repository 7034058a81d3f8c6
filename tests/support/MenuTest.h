#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "modules/dynamicMenu/dynMenu.h"
#include "platform/Session.h"
#include "support/SiteTest.h"
#include "support/TemplateText.h"

namespace torvex::test {

/// How deep a menu goes, and what else its row says.
struct MenuRow {
    int minLevels = 1;
    int maxLevels = 3;
    int display = 0;
    int extranet = 0;
    int deleted = 0;
    int modified = 0;
    int templateId = 1;
};

/// The base of tests of dynamic menus. All pages are in menus:
///   10 aa.en
///   11 aa.en.01      12 aa.en.02   13 aa.en.03
///   21 aa.en.01.01   31 aa.en.02.01
///   22 aa.en.01.02
///   41 aa.en.01.01.01
///   51 aa.en.01.01.01.01
/// titled by their numbers. A menu stands below the root once a test has made one.
class MenuTest : public SiteTest {
  protected:
    void SetUp() override {
        SiteTest::SetUp();
        if (HasFatalFailure()) return;
        for (const auto& [number, node] :
             std::initializer_list<std::pair<int, const char*>>{{10, "aa.en"},
                                                                {11, "aa.en.01"},
                                                                {12, "aa.en.02"},
                                                                {13, "aa.en.03"},
                                                                {21, "aa.en.01.01"},
                                                                {22, "aa.en.01.02"},
                                                                {31, "aa.en.02.01"},
                                                                {41, "aa.en.01.01.01"},
                                                                {51, "aa.en.01.01.01.01"}}) {
            inMenu(number, node).insert();
        }
        menu_.connect(connection());
    }

    PageBuilder inMenu(int number, const std::string& node) {
        return page(node).id(number).title(std::to_string(number)).set("dynMenu", "1");
    }
    /// In both twins.
    void change(PageId pageId, const std::string& column, const std::string& value) {
        for (const std::string twin : {"DESIGN", "LIVE"}) {
            connection().execute("update TORVEX_PAGES_" + twin + " set " + column + " = ? where pageId = ?",
                                 {value, pageId});
        }
    }
    /// Only in what is live.
    void changeLive(PageId pageId, const std::string& column, const std::string& value) {
        connection().execute("update TORVEX_PAGES_LIVE set " + column + " = ? where pageId = ?",
                             {value, pageId});
    }

    void menuAt(PageId pageId, const MenuRow& made, bool inDesign = true, bool inLive = true) {
        const Columns columns{{"site", "aa"},
                              {"lang", "en"},
                              {"pageId", pageId},
                              {"minLevels", made.minLevels},
                              {"maxLevels", made.maxLevels},
                              {"templateId", made.templateId},
                              {"display", made.display},
                              {"extranet", made.extranet},
                              {"deleted", made.deleted},
                              {"modified", made.modified}};
        if (inDesign) row("TORVEX_DYNMENU_DESIGN", columns);
        if (inLive) row("TORVEX_DYNMENU_LIVE", columns);
    }
    void systemTemplate(int id, const std::string& source) {
        contentTemplate(id, "aa", "en", "menu" + std::to_string(id) + ".html", source);
        connection().execute("update TORVEX_TEMPLATES set tpl_system = 1 where tpl_id = ?", {id});
    }

    /// An item as the tests' own template draws it: "*" before an active one, "-" before another.
    static std::string itemLayout(const std::string& mark = "") {
        return block("dynMenu_itemOn", "*" + mark + "<!--!dynMenu_pageTitle!-->") +
               block("dynMenu_itemOff", "-" + mark + "<!--!dynMenu_pageTitle!-->");
    }
    static std::string menuLayout(const std::string& levels) {
        return block("torvex_head", "head") +
               block("torvex_content", block("dynMenu", "{" + block("dynMenu_levels", levels) + "}") +
                                           block("dynMenu_empty", "none"));
    }
    static std::string plainLayout() { return menuLayout(block("dynMenu_level", itemLayout())); }

    /// A menu below the root with a template of its own.
    void menu(const MenuRow& made = {}, const std::string& source = plainLayout()) {
        systemTemplate(made.templateId, source);
        menuAt(10, made);
    }

    /// The items that a page's menu shows, in order; none when it shows no menu.
    std::vector<std::string> items(const std::string& ident, const std::string& mode = "") {
        std::vector<std::string> found;
        if (!loaded().load(ident, mode)) return found;
        const std::string& content = loaded().dmContent();
        const std::size_t begin = content.find('{');
        if (begin == std::string::npos) return found;
        std::istringstream lines(content.substr(begin + 1, content.find('}') - begin - 1));
        for (std::string line; std::getline(lines, line, '\r');) {
            if (!line.empty()) found.push_back(line);
        }
        return found;
    }

    using Items = std::vector<std::string>;

    dynMenu& loaded() { return menu_; }

  private:
    dynMenu menu_{host.context()};
};

}  // namespace torvex::test
