#include "administration/SiteRemoval.h"

#include <array>
#include <span>

#include "platform/Text.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

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

/// `cut` takes the site, or the language, out of where a login works.
template <typename Cut>
bool othersWorkIn(db::Connection& connection, std::string_view code, int ownLogin, Cut cut) {
    auto rows = connection.query(selectOthers, {ownLogin});
    while (rows.next()) {
        const std::string place = rows.text("currentSite");
        if (text::equals(cut(place), code)) return true;
    }
    return false;
}

}  // namespace

std::string refusalToRemoveSite(db::Connection& connection, std::string_view site, int ownLogin) {
    const auto siteOfPlace = [](std::string_view place) { return text::first(place, 2); };
    if (othersWorkIn(connection, site, ownLogin, siteOfPlace)) return std::string(removal::inUse);
    if (total(connection.query(countPagesOfSite, {site})) > 0) return std::string(removal::hasPages);
    if (total(connection.query(countSites)) == 1) return std::string(removal::isLast);
    return {};
}

std::string refusalToRemoveLanguage(db::Connection& connection, std::string_view lang, int ownLogin) {
    const auto langOfPlace = [](std::string_view place) { return text::last(place, 2); };
    if (othersWorkIn(connection, lang, ownLogin, langOfPlace)) return std::string(removal::inUse);
    if (total(connection.query(countPagesOfLanguage, {lang})) > 0) return std::string(removal::hasPages);
    if (total(connection.query(countLanguages)) == 1) return std::string(removal::isLast);
    return {};
}

void removeSiteRows(db::Connection& transaction, std::string_view site) {
    runFor(transaction, siteBeforeForumOrphans, site);
    runAll(transaction, forumOrphans);
    runFor(transaction, siteBeforeNewsflashOrphans, site);
    runAll(transaction, newsflashOrphans);
    runFor(transaction, siteAtLast, site);
}

void removeLanguageRows(db::Connection& transaction, std::string_view lang) {
    runFor(transaction, languageBeforeForumOrphans, lang);
    runAll(transaction, forumOrphans);
    runFor(transaction, languageBeforeNewsflashOrphans, lang);
    runAll(transaction, newsflashOrphans);
    runFor(transaction, languageAtLast, lang);
}

}  // namespace torvex
