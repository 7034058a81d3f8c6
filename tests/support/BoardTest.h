#pragma once

#include <gmock/gmock.h>
#include <string>

#include "modules/messageBoard/msgBoard.h"
#include "modules/newsflash/newsflash.h"
#include "support/RecordsTest.h"
#include "support/TemplateText.h"
#include "templates/Markers.h"

namespace torvex::test {

/// The base of tests of the message board and of newsflashes: rows of website "aa" in "en", in both twins
/// unless said otherwise, and the two objects, connected. Today is 2026-06-15. A category as made is online
/// and shows all its items on one page, the latest first; an item is online, in no archive, and of the first
/// of June.
class BoardTest : public RecordsTest {
  protected:
    enum class In { Both, Design, Live };

    void category(int id, const std::string& path, const std::string& title, Columns more = {},
                  In twins = In::Both) {
        const Columns columns{
            {"msgB_Id", id},          {"msgB_site", "aa"},
            {"msgB_lang", "en"},      {"msgB_catId", path},
            {"msgB_catTitle", title}, {"msgB_parent", path.size() > 3 ? path.substr(0, path.size() - 3) : ""},
            {"msgB_online", 1}};
        insert("TORVEX_MSGB_CATEGORIES", columns, std::move(more), twins);
    }

    void item(int id, int categoryId, const std::string& path, const std::string& title, Columns more = {},
              In twins = In::Both) {
        const Columns columns{{"msgB_itemId", id},
                              {"msgB_site", "aa"},
                              {"msgB_lang", "en"},
                              {"msgB_catId", path},
                              {"msgB_Id", categoryId},
                              {"msgB_itemTitle", title},
                              {"msgB_itemDesc", "Text"},
                              {"msgB_itemDate", "20260601"},
                              {"msgB_onlineDate", "20260101"},
                              {"msgB_archiveDate", "20270101"},
                              {"msgB_itemOnline", 1}};
        insert("TORVEX_MSGB_ITEMS", columns, std::move(more), twins);
    }

    void image(const std::string& filename, int width, int height, const std::string& site = "aa") {
        row("TORVEX_IMAGES",
            {{"img_site", site}, {"img_filename", filename}, {"img_width", width}, {"img_height", height}});
    }

    /// A newsflash that shows five items that are online, with all of their text, the latest first, in the
    /// template 50.
    void newsflashRow(int key, int number, const std::string& title, Columns more = {}, In twins = In::Both) {
        const Columns columns{{"nf_Id", key}, {"id", number},    {"title", title},   {"site", "aa"},
                              {"lang", "en"}, {"itemOrder", 1},  {"itemLength", -1}, {"numberOfItems", 5},
                              {"mode", "A"},  {"templateId", 50}};
        insert("TORVEX_NEWSFLASH", columns, std::move(more), twins);
    }
    void feed(int key, int categoryId, In twins = In::Both) {
        insert("TORVEX_NEWSFLASH_CATEGORIES", {{"nf_Id", key}, {"msgB_Id", categoryId}}, {}, twins);
    }

    msgBoard board() {
        msgBoard made(host.context());
        made.connect(connection());
        return made;
    }
    newsflash flash() {
        newsflash made(host.context());
        made.connect(connection());
        return made;
    }

    void allowHtml() { host.application.set("torvex_msgBoard_html_allowed", true); }

    /// Without the markers that are left, which are comments to a browser, and the ends of lines.
    static std::string seen(std::string html) {
        html = markers::withoutMarkers(html);
        std::erase(html, '\r');
        return html;
    }

  private:
    /// Columns that only one of the twins has are left out of the other.
    void insert(const std::string& table, const Columns& columns, Columns more, In twins) {
        const auto with = [&](bool isDesign) {
            Columns all = columns;
            for (const auto& [name, value] : more) {
                const bool onlyDesign =
                    table.starts_with("TORVEX_MSGB") && (name == "msgB_deleted" || name == "msgB_modified");
                if (onlyDesign && !isDesign) continue;
                std::erase_if(all, [&named = name](const auto& column) { return column.first == named; });
                all.emplace_back(name, value);
            }
            return all;
        };
        if (twins != In::Live) row(table + "_DESIGN", with(true));
        if (twins != In::Design) row(table + "_LIVE", with(false));
    }
};

}  // namespace torvex::test
