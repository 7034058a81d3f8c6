#include "administration/SiteRemoval.h"

#include <array>
#include <fmt/format.h>
#include <span>

#include "administration/SiteRegister.h"
#include "authoring/StatusCodes.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"
#include "records/SiteCodes.h"

namespace torvex {

namespace {

constexpr std::string_view selectSiteName = "select name from TORVEX_SITES where site = ?";
constexpr std::string_view selectLanguageName = "select name from TORVEX_LANGUAGES where lang = ?";
constexpr std::string_view selectOthers =
    "select currentSite from TORVEX_LOGINS where sessionId <> '' and loginId <> ?";
constexpr std::string_view countPagesOfSite =
    "select count(*) as total from TORVEX_PAGES_DESIGN where site = ?";
constexpr std::string_view countPagesOfLanguage =
    "select count(*) as total from TORVEX_PAGES_DESIGN where lang = ?";
constexpr std::string_view countSites = "select count(*) as total from TORVEX_SITES";
constexpr std::string_view countLanguages = "select count(*) as total from TORVEX_LANGUAGES";

// What hangs on rows that are gone; in the order in which they go after those.
constexpr std::array forumOrphans{
    std::string_view("delete from TORVEX_FORUM_REACTIONS where reaction_forumId not in "
                     "(select forum_Id from TORVEX_FORUM_LIVE)"),
    std::string_view("delete from TORVEX_FORUM_TOPICS where topic_forumId not in "
                     "(select forum_Id from TORVEX_FORUM_LIVE)"),
};
constexpr std::array newsflashOrphans{
    std::string_view("delete from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where nf_id not in "
                     "(select nf_id from TORVEX_NEWSFLASH_DESIGN)"),
    std::string_view("delete from TORVEX_NEWSFLASH_CATEGORIES_LIVE where nf_id not in "
                     "(select nf_id from TORVEX_NEWSFLASH_LIVE)"),
    std::string_view("delete from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where msgB_id not in "
                     "(select msgB_id from TORVEX_MSGB_CATEGORIES_DESIGN)"),
    std::string_view("delete from TORVEX_NEWSFLASH_CATEGORIES_LIVE where msgB_id not in "
                     "(select msgB_id from TORVEX_MSGB_CATEGORIES_LIVE)"),
};

constexpr std::array siteBeforeForumOrphans{
    std::string_view("delete from TORVEX_ADVANCED_RIGHTS where site = ?"),
    std::string_view("delete from TORVEX_BASETEMPLATES where btpl_site = ?"),
    std::string_view("delete from TORVEX_DOCUMENTS where doc_site = ?"),
    std::string_view("delete from TORVEX_DOCUMENTS_FOLDERS where fld_site = ?"),
    std::string_view("delete from TORVEX_EDIT_RIGHTS where site = ?"),
    std::string_view("delete from TORVEX_FOLDERS_GROUPS where fld_site = ?"),
    std::string_view("delete from TORVEX_FORUM_DESIGN where forum_site = ?"),
    std::string_view("delete from TORVEX_FORUM_LIVE where forum_site = ?"),
};
constexpr std::array siteBeforeNewsflashOrphans{
    std::string_view("delete from TORVEX_IMAGES where img_site = ?"),
    std::string_view("delete from TORVEX_IMAGES_FOLDERS where fld_site = ?"),
    std::string_view("delete from TORVEX_METADATA where metadata_site = ?"),
    std::string_view("delete from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_site = ?"),
    std::string_view("delete from TORVEX_MSGB_CATEGORIES_LIVE where msgB_site = ?"),
    std::string_view("delete from TORVEX_MSGB_ITEMS_DESIGN where msgB_site = ?"),
    std::string_view("delete from TORVEX_MSGB_ITEMS_LIVE where msgB_site = ?"),
    std::string_view("delete from TORVEX_NEWSFLASH_DESIGN where site = ?"),
    std::string_view("delete from TORVEX_NEWSFLASH_LIVE where site = ?"),
};
constexpr std::array siteAtLast{
    std::string_view("delete from TORVEX_SITES where site = ?"),
    std::string_view("delete from TORVEX_SITES_LANGUAGES where site = ?"),
    std::string_view("delete from TORVEX_STYLESHEETS where ss_site = ?"),
    std::string_view("delete from TORVEX_TEMPLATES where tpl_site = ?"),
};

constexpr std::array languageBeforeForumOrphans{
    std::string_view("delete from TORVEX_ADVANCED_RIGHTS where lang = ?"),
    std::string_view("delete from TORVEX_BASETEMPLATES where btpl_lang = ?"),
    std::string_view("delete from TORVEX_EDIT_RIGHTS where lang = ?"),
    std::string_view("delete from TORVEX_FORUM_DESIGN where forum_lang = ?"),
    std::string_view("delete from TORVEX_FORUM_LIVE where forum_lang = ?"),
};
constexpr std::array languageBeforeNewsflashOrphans{
    std::string_view("delete from TORVEX_LANGUAGES where lang = ?"),
    std::string_view("delete from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_lang = ?"),
    std::string_view("delete from TORVEX_MSGB_CATEGORIES_LIVE where msgB_lang = ?"),
    std::string_view("delete from TORVEX_MSGB_ITEMS_DESIGN where msgB_lang = ?"),
    std::string_view("delete from TORVEX_MSGB_ITEMS_LIVE where msgB_lang = ?"),
    std::string_view("delete from TORVEX_NEWSFLASH_DESIGN where lang = ?"),
    std::string_view("delete from TORVEX_NEWSFLASH_LIVE where lang = ?"),
};
constexpr std::array languageAtLast{
    std::string_view("delete from TORVEX_SITES_LANGUAGES where lang = ?"),
    std::string_view("delete from TORVEX_STYLESHEETS where ss_lang = ?"),
    std::string_view("delete from TORVEX_TEMPLATES where tpl_lang = ?"),
};

void runFor(db::Connection& transaction, std::span<const std::string_view> statements,
            std::string_view code) {
    for (const std::string_view statement : statements) transaction.execute(statement, {code});
}

void runAll(db::Connection& transaction, std::span<const std::string_view> statements) {
    for (const std::string_view statement : statements) transaction.execute(statement);
}

double total(db::Rows rows) {
    return rows.next() ? rows.number("total") : 0;
}

std::string_view siteOfPlace(std::string_view place) {
    return text::first(place, 2);
}
std::string_view langOfPlace(std::string_view place) {
    return text::last(place, 2);
}

/// What differs between the two registers.
struct Kind {
    std::string_view word;
    std::string_view selectName;
    std::string_view (*partOfPlace)(std::string_view place);  ///< of where a login works
    std::string_view countPages;
    std::string_view countAll;
    std::span<const std::string_view> beforeForumOrphans;
    std::span<const std::string_view> beforeNewsflashOrphans;
    std::span<const std::string_view> atLast;
};
constexpr Kind siteKind{"site",
                        selectSiteName,
                        siteOfPlace,
                        countPagesOfSite,
                        countSites,
                        siteBeforeForumOrphans,
                        siteBeforeNewsflashOrphans,
                        siteAtLast};
constexpr Kind languageKind{"language",
                            selectLanguageName,
                            langOfPlace,
                            countPagesOfLanguage,
                            countLanguages,
                            languageBeforeForumOrphans,
                            languageBeforeNewsflashOrphans,
                            languageAtLast};

bool othersWorkIn(db::Connection& connection, const Kind& kind, std::string_view code, int ownLogin) {
    auto rows = connection.query(selectOthers, {ownLogin});
    while (rows.next()) {
        const std::string place = rows.text("currentSite");
        if (text::equals(kind.partOfPlace(place), code)) return true;
    }
    return false;
}

/// "" when nothing stands against it.
std::string_view refusalOf(db::Connection& connection, const Kind& kind, std::string_view code,
                           int ownLogin) {
    if (othersWorkIn(connection, kind, code, ownLogin)) return removal::inUse;
    if (total(connection.query(kind.countPages, {code})) > 0) return removal::hasPages;
    return total(connection.query(kind.countAll)) == 1 ? removal::isLast : std::string_view();
}

void removeRows(db::Connection& transaction, const Kind& kind, std::string_view code) {
    runFor(transaction, kind.beforeForumOrphans, code);
    runAll(transaction, forumOrphans);
    runFor(transaction, kind.beforeNewsflashOrphans, code);
    runAll(transaction, newsflashOrphans);
    runFor(transaction, kind.atLast, code);
}

Removal removeEntry(HostContext& host, const Kind& kind, const std::string& code, int ownLogin) {
    const auto refuse = [](std::string_view refusal) {
        return db::refuse(Removal{std::string(refusal), {}});
    };
    bool isRemoving = false;  // from then on a failure is a refusal
    const auto work = [&](db::Connection& own) {
        lockRegisters(own);
        if (const auto refusal = refusalOf(own, kind, code, ownLogin); !refusal.empty())
            return refuse(refusal);
        std::string name = firstText(own, kind.selectName, code);
        // Another one would only take folders that are none of the register's.
        if (!isCode(code)) return refuse(status::failed);
        isRemoving = true;
        removeRows(own, kind, code);
        return db::commit(Removal{{}, std::move(name)});
    };
    try {
        return db::inOwnTransaction(host, work).value;
    } catch (const std::exception& error) {
        if (!isRemoving) throw;
        warnOf(host.log, fmt::format("the {} \"{}\" was not removed", kind.word, code), error);
        return refuse(status::failed).value;
    }
}

}  // namespace

Removal removeSite(HostContext& host, const std::string& site, int ownLogin) {
    return removeEntry(host, siteKind, site, ownLogin);
}

Removal removeLanguage(HostContext& host, const std::string& lang, int ownLogin) {
    return removeEntry(host, languageKind, lang, ownLogin);
}

}  // namespace torvex
