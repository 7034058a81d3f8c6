#include "modules/newsflash/newsflash.h"

#include "modules/newsflash/NewsflashKeys.h"
#include "modules/shared/ModuleMode.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view listDesign =
    "select nf_Id, id, title, modified, deleted from TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ? "
    "order by ";
constexpr std::string_view listLive =
    "select nf_Id, id, title, modified, deleted from TORVEX_NEWSFLASH_LIVE where site = ? and lang = ? "
    "order by ";
/// Scripts size their loops by a column more than there is.
constexpr std::size_t spareColumns = 1;

constexpr std::string_view numberTaken = "1";
constexpr std::string_view titleTaken = "2";

constexpr std::string_view selectCategory =
    "select nf_Id from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_Id = ? and msgB_Id = ?";
constexpr std::string_view insertCategory =
    "insert into TORVEX_NEWSFLASH_CATEGORIES_DESIGN (nf_Id, msgB_Id) values (?, ?)";

/// The live twin is made anew of what is left of the design; each for the website.
constexpr std::string_view publishStatements[] = {
    "delete from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_Id in (select nf_Id from "
    "TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ? and deleted = 1)",
    "delete from TORVEX_NEWSFLASH_CATEGORIES_LIVE where nf_Id in (select nf_Id from "
    "TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ? and deleted = 1)",
    "delete from TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ? and deleted = 1",
    "update TORVEX_NEWSFLASH_DESIGN set modified = 0 where site = ? and lang = ?",
    "delete from TORVEX_NEWSFLASH_LIVE where site = ? and lang = ?",
    "insert into TORVEX_NEWSFLASH_LIVE (nf_Id, id, title, site, lang, itemOrder, itemLength, numberOfItems, "
    "mode, templateId, imageAlignment, imageWidth, imageHeight, deleted, modified) select nf_Id, id, title, "
    "site, lang, itemOrder, itemLength, numberOfItems, mode, templateId, imageAlignment, imageWidth, "
    "imageHeight, deleted, modified from TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ?",
};

}  // namespace

bool newsflash::load(const std::string& site, const std::string& lang, int newsflashId,
                     const std::string& mode) try {
    box_ = {};
    const ModuleCall call = callInMode(host_, connection_.use(host_), text::trim(mode));
    return drawNewsflash(call, text::lowerTrim(site), text::lowerTrim(lang), newsflashId, box_);
} catch (...) {
    raiseFrom("Load (newsflash) !");
}

Value newsflash::getNewsflashList(const std::string& site, const std::string& lang, int order,
                                  const std::string& mode) try {
    std::string statement(twinOf(text::trim(mode)) == Twin::Design ? listDesign : listLive);
    statement += order == 0 ? "id" : "title";
    return db::gridOf(connection_.use(host_).query(statement, {text::trim(site), text::lowerTrim(lang)}),
                      spareColumns);
} catch (...) {
    raiseFrom("getNewsflashList !");
}

std::string newsflash::isNewsflash(const std::string& site, const std::string& lang, int nfId, int id,
                                   const std::string& title) try {
    switch (takenOfNewsflash(connection_.use(host_), site, lang, nfId, id, title)) {
        case NewsflashTaken::Number:
            return std::string(numberTaken);
        case NewsflashTaken::Title:
            return std::string(titleTaken);
        case NewsflashTaken::Nothing:
            break;
    }
    return {};
} catch (...) {
    raiseFrom("isNewsflash !");
}

void newsflash::addCategory(int nfId, int catId) try {
    db::Connection& connection = connection_.use(host_);
    if (!connection.query(selectCategory, {nfId, catId}).next())
        connection.execute(insertCategory, {nfId, catId});
} catch (...) {
    raiseFrom("addCategory (Newsflash) !");
}

void newsflash::publish(const std::string& site, const std::string& lang) try {
    db::inOwnTransaction(host_, [&](db::Connection& own) -> db::Outcome<bool> {
        for (const std::string_view statement : publishStatements) own.execute(statement, {site, lang});
        return db::commit(true);
    });
} catch (...) {
    raiseFrom("Publish (Newsflash module) !");
}

}  // namespace torvex
