// registers: newsflashes, and the categories of the message board that feed them.

#include <fmt/format.h>

#include "authoring/StatusCodes.h"
#include "desk/BoardRecords.h"
#include "desk/ModuleStatus.h"
#include "desk/registers.h"
#include "modules/newsflash/NewsflashKeys.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::string_view selectNewsflashes =
    "select d.nf_Id, d.id, d.title, d.itemOrder, d.itemLength, d.numberOfItems, d.mode, d.templateId, "
    "t.tpl_name, d.imageAlignment, d.imageWidth, d.imageHeight, d.deleted, d.modified, "
    "case when exists (select 1 from TORVEX_NEWSFLASH_LIVE l where l.nf_Id = d.nf_Id) then 1 else 0 end "
    "as isLive from TORVEX_NEWSFLASH_DESIGN d "
    "left outer join TORVEX_TEMPLATES t on t.tpl_id = d.templateId "
    "where d.site = ? and d.lang = ? order by d.id, d.nf_Id";
/// Those that feed it in the design, and those that do so for visitors and won't any more.
constexpr std::string_view selectFeeding =
    "select f.nf_Id, f.msgB_Id, c.msgB_catTitle, 1 as inDesign, "
    "case when exists (select 1 from TORVEX_NEWSFLASH_CATEGORIES_LIVE l where l.nf_Id = f.nf_Id "
    "and l.msgB_Id = f.msgB_Id) then 1 else 0 end as isLive "
    "from TORVEX_NEWSFLASH_CATEGORIES_DESIGN f "
    "inner join TORVEX_NEWSFLASH_DESIGN d on d.nf_Id = f.nf_Id "
    "inner join TORVEX_MSGB_CATEGORIES_DESIGN c on c.msgB_Id = f.msgB_Id "
    "where d.site = ? and d.lang = ? "
    "union all "
    "select f.nf_Id, f.msgB_Id, c.msgB_catTitle, 0, 1 from TORVEX_NEWSFLASH_CATEGORIES_LIVE f "
    "inner join TORVEX_NEWSFLASH_DESIGN d on d.nf_Id = f.nf_Id "
    "inner join TORVEX_MSGB_CATEGORIES_DESIGN c on c.msgB_Id = f.msgB_Id "
    "where d.site = ? and d.lang = ? and not exists (select 1 from TORVEX_NEWSFLASH_CATEGORIES_DESIGN e "
    "where e.nf_Id = f.nf_Id and e.msgB_Id = f.msgB_Id) "
    "order by 1, 3, 2";
constexpr std::string_view selectNewsflash =
    "select title from TORVEX_NEWSFLASH_DESIGN where nf_Id = ? and site = ? and lang = ?";
constexpr std::string_view insertNewsflash = "insert into TORVEX_NEWSFLASH_DESIGN (site, lang) values (?, ?)";
/// Those who add one wait for each other, so the last one is one's own.
constexpr std::string_view selectLast = "select max(nf_Id) as nf_Id from TORVEX_NEWSFLASH_DESIGN";
constexpr std::string_view updateNewsflash =
    "update TORVEX_NEWSFLASH_DESIGN set id = ?, title = ?, itemOrder = ?, itemLength = ?, "
    "numberOfItems = ?, mode = ?, templateId = ?, imageAlignment = ?, imageWidth = ?, imageHeight = ?, "
    "deleted = ?, modified = 1 where nf_Id = ?";

constexpr std::string_view selectFeed =
    "select nf_Id from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_Id = ? and msgB_Id = ?";
constexpr std::string_view insertFeed =
    "insert into TORVEX_NEWSFLASH_CATEGORIES_DESIGN (nf_Id, msgB_Id) values (?, ?)";
constexpr std::string_view deleteFeed =
    "delete from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_Id = ? and msgB_Id = ?";
/// What a category feeds is renewed for visitors when the category is published, and only one that has changed is.
constexpr std::string_view noteChange =
    "update TORVEX_MSGB_CATEGORIES_DESIGN set msgB_modified = 1 where msgB_Id = ?";

using Outcome = db::Outcome<std::string>;

struct NewsflashFields {
    int number;
    std::string title;
    int itemOrder;
    int itemLength;
    int numberOfItems;
    std::string mode;
    int templateId;
    int imageAlignment;
    int imageWidth;
    int imageHeight;
    bool isMarked;
};

bool isThere(db::Connection& connection, int nfId, const ModulePlace& place) {
    return connection.query(selectNewsflash, {nfId, place.site, place.lang}).next();
}

bool areChoices(const NewsflashFields& fields) {
    return fields.number > 0 && shortNumber(fields.number) == fields.number &&
           isOrderOrAlignment(fields.itemOrder) && isOrderOrAlignment(fields.imageAlignment) &&
           (fields.mode == "M" || fields.mode == "A");
}

/// "" where nothing is.
std::string_view faultOf(db::Connection& own, int nfId, const ModulePlace& place,
                         const NewsflashFields& fields) {
    if (nfId != 0 && !isThere(own, nfId, place)) return moduleStatus::gone;
    if (nfId == 0 && !isWebsite(own, place)) return moduleStatus::noSuchPlace;
    if (fields.title.empty()) return moduleStatus::nameMissing;
    if (!areChoices(fields)) return moduleStatus::noSuchChoice;
    if (!isModuleTemplate(own, place, fields.templateId)) return moduleStatus::noSuchTemplate;
    switch (takenOfNewsflash(own, place.site, place.lang, nfId, fields.number, fields.title)) {
        case NewsflashTaken::Number:
            return moduleStatus::numberTaken;
        case NewsflashTaken::Title:
            return moduleStatus::titleTaken;
        case NewsflashTaken::Nothing:
            break;
    }
    return {};
}

int addNewsflash(db::Connection& own, const ModulePlace& place) {
    own.execute(insertNewsflash, {place.site, place.lang});
    auto rows = own.query(selectLast);
    rows.next();
    return static_cast<int>(rows.number("nf_Id"));
}

Outcome writeNewsflash(db::Connection& own, int nfId, const ModulePlace& place,
                       const NewsflashFields& fields) {
    lockRegisters(own);
    const std::string_view fault = faultOf(own, nfId, place, fields);
    if (!fault.empty()) return db::refuse(fault);
    const int id = nfId != 0 ? nfId : addNewsflash(own, place);
    own.execute(updateNewsflash, {fields.number, fields.title, fields.itemOrder, fields.itemLength,
                                  fields.numberOfItems, fields.mode, fields.templateId, fields.imageAlignment,
                                  fields.imageWidth, fields.imageHeight, flagOf(fields.isMarked), id});
    return db::commit(std::to_string(id));
}

struct Feed {
    int nfId;
    int category;
};

Outcome writeFeed(db::Connection& own, const Feed& feed, const ModulePlace& place, bool feeds) {
    lockRegisters(own);
    if (!isThere(own, feed.nfId, place)) return db::refuse(moduleStatus::gone);
    if (!findBoardCategory(own, feed.category, place)) return db::refuse(moduleStatus::noSuchPlace);
    const bool didFeed = own.query(selectFeed, {feed.nfId, feed.category}).next();
    if (didFeed != feeds) {
        own.execute(feeds ? insertFeed : deleteFeed, {feed.nfId, feed.category});
        own.execute(noteChange, {feed.category});
    }
    return db::commit(status::done);
}

}  // namespace

Value registers::getNewsflashes(const std::string& site, const std::string& lang) try {
    const ModulePlace place = placeFrom(site, lang);
    return db::gridOf(connection().query(selectNewsflashes, {place.site, place.lang}));
} catch (...) {
    raiseFrom("getNewsflashes !");
}

Value registers::getNewsflashCategories(const std::string& site, const std::string& lang) try {
    const ModulePlace place = placeFrom(site, lang);
    return db::gridOf(connection().query(selectFeeding, {place.site, place.lang, place.site, place.lang}));
} catch (...) {
    raiseFrom("getNewsflashCategories !");
}

std::string registers::saveNewsflash(int nfId, const std::string& site, const std::string& lang, int number,
                                     const std::string& title, int itemOrder, int itemLength,
                                     int numberOfItems, const std::string& mode, int templateId,
                                     int imageAlignment, int imageWidth, int imageHeight, bool marked,
                                     int advId) {
    constexpr int wholeText = -1;
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const NewsflashFields fields{.number = number,
                                 .title = cleanField(title, longestModuleName),
                                 .itemOrder = itemOrder,
                                 .itemLength = shortNumber(itemLength, wholeText),
                                 .numberOfItems = shortNumber(numberOfItems),
                                 .mode = text::upper(text::trim(mode)),
                                 .templateId = templateId,
                                 .imageAlignment = imageAlignment,
                                 .imageWidth = shortNumber(imageWidth),
                                 .imageHeight = shortNumber(imageHeight),
                                 .isMarked = marked};
    const auto outcome = db::tryInOwnTransaction(
        host_, "saveNewsflash of " + std::to_string(nfId), status::failed,
        [&](auto& own) { return writeNewsflash(own, nfId, placeFrom(site, lang), fields); });
    if (!outcome.isCommitted) return outcome.value;
    recordModule("saveNewsflash", advId, nfId == 0, marked, "Newsflash \"" + fields.title + '"');
    return outcome.value;
}

std::string registers::addCategory(int nfId, const std::string& site, const std::string& lang, int category,
                                   int advId) {
    return changeFeed("addCategory", nfId, placeFrom(site, lang), category, true, advId);
}

std::string registers::removeCategory(int nfId, const std::string& site, const std::string& lang,
                                      int category, int advId) {
    return changeFeed("removeCategory", nfId, placeFrom(site, lang), category, false, advId);
}

std::string registers::changeFeed(const std::string& operation, int nfId, const ModulePlace& place,
                                  int category, bool feeds, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string what =
        fmt::format("Category {} {} newsflash {}", category, feeds ? "feeds" : "no longer feeds", nfId);
    const auto outcome =
        db::tryInOwnTransaction(host_, operation + " (" + what + ")", status::failed, [&](auto& own) {
            return writeFeed(own, {nfId, category}, place, feeds);
        });
    if (outcome.isCommitted) recordChange(operation, advId, "save", what);
    return outcome.value;
}

}  // namespace torvex
