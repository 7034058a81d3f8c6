// registers: the categories of the message board, as their administrators write them.

#include <optional>

#include "authoring/StatusCodes.h"
#include "desk/BoardRecords.h"
#include "desk/ModuleStatus.h"
#include "desk/registers.h"
#include "modules/forum/Places.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::string_view selectCategories =
    "select d.msgB_Id, d.msgB_catId, d.msgB_parent, d.msgB_catTitle, d.msgB_catDesc, d.msgB_itemOrder, "
    "d.msgB_archiveAfter, d.msgB_archiveVisible, d.msgB_linkText, d.msgB_imageAlignment, "
    "d.msgB_imageWidth, d.msgB_imageHeight, d.msgB_online, d.msgB_pageSize, d.msgB_deleted, "
    "d.msgB_modified, case when exists (select 1 from TORVEX_MSGB_CATEGORIES_LIVE l "
    "where l.msgB_Id = d.msgB_Id) then 1 else 0 end as isLive, "
    "(select count(*) from TORVEX_MSGB_ITEMS_DESIGN i where i.msgB_Id = d.msgB_Id) as items, "
    "(select count(*) from TORVEX_MSGB_ITEMS_DESIGN i where i.msgB_Id = d.msgB_Id "
    "and (i.msgB_modified = 1 or i.msgB_deleted = 1)) as waiting "
    "from TORVEX_MSGB_CATEGORIES_DESIGN d where d.msgB_site = ? and d.msgB_lang = ? order by d.msgB_catId";
constexpr std::string_view selectCategory =
    "select msgB_Id, msgB_catId, msgB_catTitle, msgB_deleted from TORVEX_MSGB_CATEGORIES_DESIGN "
    "where msgB_Id = ? and msgB_site = ? and msgB_lang = ?";
constexpr std::string_view selectAbove =
    "select msgB_Id from TORVEX_MSGB_CATEGORIES_DESIGN "
    "where msgB_site = ? and msgB_lang = ? and msgB_catId = ? and msgB_deleted = 0";
constexpr std::string_view selectLastBelow =
    "select max(msgB_catId) as last from TORVEX_MSGB_CATEGORIES_DESIGN "
    "where msgB_site = ? and msgB_lang = ? and msgB_parent = ?";
constexpr std::string_view selectLive =
    "select msgB_online from TORVEX_MSGB_CATEGORIES_LIVE where msgB_Id = ?";
constexpr std::string_view insertCategory =
    "insert into TORVEX_MSGB_CATEGORIES_DESIGN (msgB_site, msgB_lang, msgB_catId, msgB_parent) "
    "values (?, ?, ?, ?)";
/// Those who add one wait for each other, so the last one is one's own.
constexpr std::string_view selectLast = "select max(msgB_Id) as msgB_Id from TORVEX_MSGB_CATEGORIES_DESIGN";
constexpr std::string_view updateCategory =
    "update TORVEX_MSGB_CATEGORIES_DESIGN set msgB_catTitle = ?, msgB_catDesc = ?, msgB_itemOrder = ?, "
    "msgB_archiveAfter = ?, msgB_archiveVisible = ?, msgB_linkText = ?, msgB_imageAlignment = ?, "
    "msgB_imageWidth = ?, msgB_imageHeight = ?, msgB_online = ?, msgB_pageSize = ?, msgB_modified = 1 "
    "where msgB_Id = ?";
constexpr std::string_view markCategory =
    "update TORVEX_MSGB_CATEGORIES_DESIGN set msgB_deleted = ? where msgB_Id = ?";

using Outcome = db::Outcome<std::string>;

struct CategoryFields {
    std::string parent;
    std::string title;
    std::string description;
    int itemOrder;
    int archiveAfter;
    bool isArchiveVisible;
    std::string linkText;
    int imageAlignment;
    int imageWidth;
    int imageHeight;
    bool isOn;
    int pageSize;
};

/// Its number, or why there is none.
struct Added {
    int id = 0;
    std::string_view fault;
};

/// Marked ones keep their places until they are gone, so that nothing new goes with them.
Added addCategory(db::Connection& own, const ModulePlace& place, const std::string& parent) {
    if (!isWebsite(own, place)) return {0, moduleStatus::noSuchPlace};
    if (!parent.empty() && !own.query(selectAbove, {place.site, place.lang, parent}).next())
        return {0, moduleStatus::noSuchPlace};
    std::string last;
    {
        auto rows = own.query(selectLastBelow, {place.site, place.lang, parent});
        if (rows.next()) last = rows.text("last");
    }
    const auto path = forumPlace::next(parent, last);
    if (!path) return {0, moduleStatus::noPlace};
    own.execute(insertCategory, {place.site, place.lang, *path, parent});
    auto rows = own.query(selectLast);
    rows.next();
    return {static_cast<int>(rows.number("msgB_Id")), {}};
}

bool isLiveOn(db::Connection& own, int category) {
    auto rows = own.query(selectLive, {category});
    return rows.next() && rows.number("msgB_online") == 1;
}

Outcome writeCategory(db::Connection& own, int category, const ModulePlace& place,
                      const CategoryFields& fields) {
    lockRegisters(own);
    if (category != 0 && !findBoardCategory(own, category, place)) return db::refuse(moduleStatus::gone);
    if (fields.title.empty()) return db::refuse(moduleStatus::nameMissing);
    if (!isOrderOrAlignment(fields.itemOrder) || !isOrderOrAlignment(fields.imageAlignment))
        return db::refuse(moduleStatus::noSuchChoice);
    const Added added = category != 0 ? Added{category, {}} : addCategory(own, place, fields.parent);
    if (!added.fault.empty()) return db::refuse(added.fault);
    own.execute(
        updateCategory,
        {fields.title, fields.description, fields.itemOrder, fields.archiveAfter,
         flagOf(fields.isArchiveVisible), fields.linkText, fields.imageAlignment, fields.imageWidth,
         fields.imageHeight, switchedOn(fields.isOn, isLiveOn(own, added.id)), fields.pageSize, added.id});
    return db::commit(std::to_string(added.id));
}

}  // namespace

std::optional<BoardCategoryKey> findBoardCategory(db::Connection& connection, int category,
                                                  const ModulePlace& place) {
    auto rows = connection.query(selectCategory, {category, place.site, place.lang});
    if (!rows.next()) return std::nullopt;
    return BoardCategoryKey{category, rows.text("msgB_catId"), rows.text("msgB_catTitle")};
}

int switchedOn(bool isOn, bool isLiveOn) {
    constexpr int off = 0;
    constexpr int on = 1;
    constexpr int onWithPublishing = 2;
    if (!isOn) return off;
    return isLiveOn ? on : onWithPublishing;
}

std::optional<std::string> markBoardCategory(db::Connection& own, int category, const ModulePlace& place,
                                             bool marked) {
    const auto found = findBoardCategory(own, category, place);
    if (!found) return std::nullopt;
    own.execute(markCategory, {flagOf(marked), category});
    return "Category \"" + found->title + '"';
}

Value registers::getCategories(const std::string& site, const std::string& lang) try {
    const ModulePlace place = placeFrom(site, lang);
    return db::gridOf(connection().query(selectCategories, {place.site, place.lang}));
} catch (...) {
    raiseFrom("getCategories !");
}

std::string registers::saveCategory(int category, const std::string& site, const std::string& lang,
                                    const std::string& parent, const std::string& title,
                                    const std::string& description, int itemOrder, int archiveAfter,
                                    bool archiveVisible, const std::string& linkText, int imageAlignment,
                                    int imageWidth, int imageHeight, bool online, int pageSize, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const CategoryFields fields{.parent = std::string(text::trim(parent)),
                                .title = cleanField(title, longestModuleName),
                                .description = cleanField(description, longestModuleText),
                                .itemOrder = itemOrder,
                                .archiveAfter = shortNumber(archiveAfter),
                                .isArchiveVisible = archiveVisible,
                                .linkText = cleanField(linkText, longestModuleName),
                                .imageAlignment = imageAlignment,
                                .imageWidth = shortNumber(imageWidth),
                                .imageHeight = shortNumber(imageHeight),
                                .isOn = online,
                                .pageSize = shortNumber(pageSize)};
    const auto outcome = db::tryInOwnTransaction(
        host_, "saveCategory of " + std::to_string(category), status::failed,
        [&](auto& own) { return writeCategory(own, category, placeFrom(site, lang), fields); });
    if (!outcome.isCommitted) return outcome.value;
    recordModule("saveCategory", advId, category == 0, false, "Category \"" + fields.title + '"');
    return outcome.value;
}

}  // namespace torvex
