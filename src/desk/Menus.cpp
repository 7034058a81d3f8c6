// registers: dynamic menus, by the pages that they hold for.

#include <algorithm>

#include "authoring/StatusCodes.h"
#include "desk/ModuleFields.h"
#include "desk/ModuleStatus.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/PageId.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

/// No tree that people find their way in is deeper.
constexpr int mostLevels = 20;

constexpr std::string_view selectMenus =
    "select d.pageId, p.nodeId, p.title, d.minLevels, d.maxLevels, d.templateId, t.tpl_name, d.display, "
    "d.extranet, d.deleted, d.modified, "
    "case when exists (select 1 from TORVEX_DYNMENU_LIVE l where l.pageId = d.pageId) then 1 else 0 end "
    "as isLive from TORVEX_DYNMENU_DESIGN d "
    "inner join TORVEX_PAGES_DESIGN p on p.pageId = d.pageId "
    "left outer join TORVEX_TEMPLATES t on t.tpl_id = d.templateId "
    "where d.site = ? and d.lang = ? order by p.nodeId, d.deleted";
constexpr std::string_view selectPage =
    "select title from TORVEX_PAGES_DESIGN where pageId = ? and site = ? and lang = ?";
constexpr std::string_view insertMenu =
    "insert into TORVEX_DYNMENU_DESIGN (site, lang, pageId, deleted) values (?, ?, ?, 0)";
/// One that is marked may stand beside its successor: the other one is meant then.
constexpr std::string_view selectMenu =
    "select min(deleted) as deleted from TORVEX_DYNMENU_DESIGN where pageId = ?";
constexpr std::string_view updateMenu =
    "update TORVEX_DYNMENU_DESIGN set site = ?, lang = ?, minLevels = ?, maxLevels = ?, templateId = ?, "
    "display = ?, extranet = ?, deleted = ?, modified = 1 where pageId = ? and deleted = ?";

using Outcome = db::Outcome<std::string>;

struct MenuFields {
    int minLevels;
    int maxLevels;
    int templateId;
    int display;
    int extranet;
    bool isMarked;
};

int levels(int given) {
    return std::clamp(given, 0, mostLevels);
}

/// The mark of the page's menu; makes one where there is none.
double menuOf(db::Connection& own, const ModulePlace& place, PageId pageId) {
    {
        auto rows = own.query(selectMenu, {pageId});
        if (rows.next() && !rows.isNull("deleted")) return rows.number("deleted");
    }
    own.execute(insertMenu, {place.site, place.lang, pageId});
    return 0;
}

Outcome writeMenu(db::Connection& own, const ModulePlace& place, PageId pageId, const MenuFields& fields,
                  std::string& title) {
    lockRegisters(own);
    {
        auto page = own.query(selectPage, {pageId, place.site, place.lang});
        if (!page.next()) return db::refuse(moduleStatus::gone);
        title = page.text("title");
    }
    if (!isOneOf(fields.display, 1) || !isOneOf(fields.extranet, 1))
        return db::refuse(moduleStatus::noSuchChoice);
    if (!isModuleTemplate(own, place, fields.templateId)) return db::refuse(moduleStatus::noSuchTemplate);
    const double mark = menuOf(own, place, pageId);
    own.execute(updateMenu, {place.site, place.lang, fields.minLevels, fields.maxLevels, fields.templateId,
                             fields.display, fields.extranet, flagOf(fields.isMarked), pageId, mark});
    return db::commit(status::done);
}

}  // namespace

Value registers::getMenus(const std::string& site, const std::string& lang) try {
    const ModulePlace place = placeFrom(site, lang);
    return db::gridOf(connection().query(selectMenus, {place.site, place.lang}));
} catch (...) {
    raiseFrom("getMenus !");
}

std::string registers::saveMenu(double pageId, const std::string& site, const std::string& lang,
                                int minLevels, int maxLevels, int templateId, int display, int extranet,
                                bool marked, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const MenuFields fields{levels(minLevels), levels(maxLevels), templateId, display, extranet, marked};
    std::string title;
    const auto outcome = db::tryInOwnTransaction(
        host_, "saveMenu of page " + text::fromNumber(pageId), status::failed,
        [&](auto& own) { return writeMenu(own, placeFrom(site, lang), pageId, fields, title); });
    if (outcome.isCommitted)
        recordModule("saveMenu", advId, false, marked, "Menu of the page \"" + title + '"');
    return outcome.value;
}

}  // namespace torvex
