// registers: the items of the message board, and marks for deletion.

#include <algorithm>
#include <optional>

#include "authoring/StatusCodes.h"
#include "desk/BoardRecords.h"
#include "desk/FirstRow.h"
#include "desk/ModuleStatus.h"
#include "desk/registers.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::size_t longestItemTitle = 250;
constexpr std::size_t longestItemText = 20'000;

constexpr std::string_view selectItems =
    "select d.msgB_itemId, d.msgB_itemTitle, d.msgB_itemDesc, d.msgB_itemLink, d.msgB_itemLinkText, "
    "d.msgB_itemImage, d.msgB_itemDate, d.msgB_onlineDate, d.msgB_archiveDate, d.msgB_itemOnline, "
    "d.msgB_itemNewsflash, d.msgB_deleted, d.msgB_modified, "
    "case when exists (select 1 from TORVEX_MSGB_ITEMS_LIVE l where l.msgB_itemId = d.msgB_itemId) "
    "then 1 else 0 end as isLive "
    "from TORVEX_MSGB_ITEMS_DESIGN d where d.msgB_Id = ? and d.msgB_site = ? and d.msgB_lang = ? "
    "order by d.msgB_itemDate desc, d.msgB_itemId desc limit ? offset ?";
constexpr std::string_view selectItem =
    "select msgB_itemTitle from TORVEX_MSGB_ITEMS_DESIGN "
    "where msgB_itemId = ? and msgB_site = ? and msgB_lang = ?";
constexpr std::string_view selectLive =
    "select msgB_itemOnline, msgB_itemNewsflash from TORVEX_MSGB_ITEMS_LIVE where msgB_itemId = ?";
constexpr std::string_view insertItem =
    "insert into TORVEX_MSGB_ITEMS_DESIGN (msgB_site, msgB_lang) values (?, ?)";
/// Those who add one wait for each other, so the last one is one's own.
constexpr std::string_view selectLast = "select max(msgB_itemId) as itemId from TORVEX_MSGB_ITEMS_DESIGN";
constexpr std::string_view updateItem =
    "update TORVEX_MSGB_ITEMS_DESIGN set msgB_catId = ?, msgB_Id = ?, msgB_itemTitle = ?, msgB_itemDesc = ?, "
    "msgB_itemLink = ?, msgB_itemLinkText = ?, msgB_itemImage = ?, msgB_itemDate = ?, msgB_onlineDate = ?, "
    "msgB_archiveDate = ?, msgB_itemOnline = ?, msgB_itemNewsflash = ?, msgB_modified = 1 "
    "where msgB_itemId = ?";
constexpr std::string_view markItem =
    "update TORVEX_MSGB_ITEMS_DESIGN set msgB_deleted = ? where msgB_itemId = ?";

using Outcome = db::Outcome<std::string>;

struct ItemFields {
    int category;
    std::string title;
    std::string text;
    std::string link;
    std::string linkText;
    std::string image;
    std::string day;
    std::string firstDay;
    std::string archiveDay;
    bool isOn;
    bool isNewsflash;
};

/// How visitors have the item's switches.
struct LiveSwitches {
    bool isOn = false;
    bool isNewsflash = false;
};

LiveSwitches liveSwitches(db::Connection& own, int itemId) {
    auto rows = own.query(selectLive, {itemId});
    if (!rows.next()) return {};
    return {rows.number("msgB_itemOnline") == 1, rows.number("msgB_itemNewsflash") == 1};
}

/// What visitors see in a newsflash leaves it with the next publishing.
int newsflashSwitch(bool isOn, bool isLiveOn) {
    constexpr int offWithPublishing = 2;
    if (isOn) return 1;
    return isLiveOn ? offWithPublishing : 0;
}

bool areDays(const ItemFields& fields) {
    return isDate8(fields.day) && isDate8(fields.firstDay) &&
           (isDate8(fields.archiveDay) || fields.archiveDay == lastOfDays);
}

std::string dayOr(const std::string& day, std::string_view otherwise) {
    const std::string_view given = text::trim(day);
    return std::string(given.empty() ? otherwise : given);
}

int addItem(db::Connection& own, const ModulePlace& place) {
    own.execute(insertItem, {place.site, place.lang});
    auto rows = own.query(selectLast);
    rows.next();
    return static_cast<int>(rows.number("itemId"));
}

Outcome writeItem(db::Connection& own, int itemId, const ModulePlace& place, const ItemFields& fields) {
    lockRegisters(own);
    if (itemId != 0 && !own.query(selectItem, {itemId, place.site, place.lang}).next())
        return db::refuse(moduleStatus::gone);
    const auto category = findBoardCategory(own, fields.category, place);
    if (!category) return db::refuse(moduleStatus::noSuchPlace);
    if (fields.title.empty()) return db::refuse(moduleStatus::nameMissing);
    if (!areDays(fields)) return db::refuse(moduleStatus::noSuchChoice);
    const int id = itemId != 0 ? itemId : addItem(own, place);
    const LiveSwitches live = liveSwitches(own, id);
    own.execute(updateItem, {category->path, category->id, fields.title, fields.text, fields.link,
                             fields.linkText, fields.image, fields.day, fields.firstDay, fields.archiveDay,
                             switchedOn(fields.isOn, live.isOn),
                             newsflashSwitch(fields.isNewsflash, live.isNewsflash), id});
    return db::commit(std::to_string(id));
}

}  // namespace

std::optional<std::string> markBoardItem(db::Connection& own, int itemId, const ModulePlace& place,
                                         bool marked) {
    std::string title;
    {
        auto rows = own.query(selectItem, {itemId, place.site, place.lang});
        if (!rows.next()) return std::nullopt;
        title = rows.text("msgB_itemTitle");
    }
    own.execute(markItem, {flagOf(marked), itemId});
    return "Item \"" + title + '"';
}

Value registers::getItems(const std::string& site, const std::string& lang, int category, double from) try {
    const ModulePlace place = placeFrom(site, lang);
    return db::gridOf(connection().query(
        selectItems, {category, place.site, place.lang, listedAtOnce, firstRow(from).value_or(0)}));
} catch (...) {
    raiseFrom("getItems !");
}

std::string registers::saveItem(int itemId, const std::string& site, const std::string& lang, int category,
                                const std::string& title, const std::string& text, const std::string& link,
                                const std::string& linkText, const std::string& image,
                                const std::string& date, const std::string& onlineDate,
                                const std::string& archiveDate, bool online, bool newsflash, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string today = host_.clock.today();
    const ItemFields fields{.category = category,
                            .title = cleanField(title, longestItemTitle),
                            .text = storedLines(cleanField(text, longestItemText)),
                            .link = cleanField(link, longestModuleText),
                            .linkText = cleanField(linkText, longestModuleName),
                            .image = cleanField(image, longestModuleText),
                            .day = dayOr(date, today),
                            .firstDay = dayOr(onlineDate, today),
                            .archiveDay = dayOr(archiveDate, lastOfDays),
                            .isOn = online,
                            .isNewsflash = newsflash};
    const auto outcome = db::tryInOwnTransaction(
        host_, "saveItem of " + std::to_string(itemId), status::failed,
        [&](auto& own) { return writeItem(own, itemId, placeFrom(site, lang), fields); });
    if (!outcome.isCommitted) return outcome.value;
    recordModule("saveItem", advId, itemId == 0, false, "Item \"" + fields.title + '"');
    return outcome.value;
}

std::string registers::markDeleted(const std::string& kind, int id, const std::string& site,
                                   const std::string& lang, bool marked, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const bool isCategory = text::equals(text::trim(kind), "category");
    if (!isCategory && !text::equals(text::trim(kind), "item")) return std::string(moduleStatus::gone);
    std::string what;
    const auto mark = isCategory ? markBoardCategory : markBoardItem;
    const auto outcome = db::tryInOwnTransaction(host_, "markDeleted of " + kind + " " + std::to_string(id),
                                                 status::failed, [&](auto& own) -> Outcome {
                                                     lockRegisters(own);
                                                     const auto found =
                                                         mark(own, id, placeFrom(site, lang), marked);
                                                     if (!found) return db::refuse(moduleStatus::gone);
                                                     what = *found;
                                                     return db::commit(status::done);
                                                 });
    if (outcome.isCommitted) recordModule("markDeleted", advId, false, marked, what);
    return outcome.value;
}

}  // namespace torvex
