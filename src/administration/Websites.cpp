// cManager: websites, which are the pairs of a site and a language.

#include "records/Websites.h"

#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view saveTitle =
    "insert into TORVEX_SITES_LANGUAGES (site, lang, title, lock) values (?, ?, ?, '') "
    "on conflict (site, lang) do update set title = excluded.title, lock = ''";

constexpr std::string_view selectPairs =
    "select a.site, a.name as siteName, b.lang, b.name as langName, c.title from TORVEX_SITES a "
    "cross join TORVEX_LANGUAGES b "
    "left outer join TORVEX_SITES_LANGUAGES c on c.site = a.site and c.lang = b.lang ";
constexpr std::string_view ofOneSite = "where a.site = ? ";
constexpr std::string_view bySite = "order by a.site, b.name, b.lang";
constexpr std::string_view bySiteName = "order by a.name, b.name, a.site, b.lang";

/// The last one is always empty: callers count on the number of columns.
constexpr std::size_t columns = 6;

Value trimmed(const db::Rows& rows, std::string_view column) {
    return std::string(text::trim(rows.text(column)));
}

}  // namespace

bool cManager::saveWebsiteTitle(const std::string& site, const std::string& lang, const std::string& title,
                                int advId) try {
    const std::string siteId = text::lowerTrim(site);
    const std::string langId = text::lowerTrim(lang);
    if (getSiteName(siteId).empty() || getLanguageName(langId).empty()) return false;
    connection().execute(saveTitle, {siteId, langId, text::trim(title)});
    if (advId > 0) {
        addAuditTrail("", std::to_string(advId), "save",
                      "Website title (" + siteId + "." + langId + ") has been updated");
    }
    return true;
} catch (...) {
    raiseFrom("saveWebsiteTitle !");
}

std::string cManager::getWebsiteTitle(const std::string& site, const std::string& lang) try {
    return websiteTitle(connection(), site, lang);
} catch (...) {
    raiseFrom("getWebsiteTitle !");
}

Value cManager::getWebsites(const std::string& site, int sortId) try {
    const std::string siteId = text::lowerTrim(site);
    std::string statement(selectPairs);
    if (!siteId.empty()) statement += ofOneSite;
    statement += sortId == 1 ? bySite : bySiteName;
    auto rows = siteId.empty() ? connection().query(statement) : connection().query(statement, {siteId});
    ResultGrid grid(columns);
    while (rows.next()) {
        grid.add({text::lowerTrim(rows.text("site")), text::lowerTrim(rows.text("lang")),
                  trimmed(rows, "siteName"), trimmed(rows, "langName"), trimmed(rows, "title")});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getWebsites !");
}

}  // namespace torvex
