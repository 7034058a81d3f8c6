#include "administration/SiteRemoval.h"

#include <fmt/format.h>

#include "administration/SiteRegister.h"
#include "authoring/OwnedRows.h"
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
    void (*removeRows)(db::Connection& transaction, std::string_view code);
};
constexpr Kind siteKind{"site", selectSiteName, siteOfPlace, countPagesOfSite, countSites, removeRowsOfSite};
constexpr Kind languageKind{"language",           selectLanguageName, langOfPlace,
                            countPagesOfLanguage, countLanguages,     removeRowsOfLanguage};

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
        // A code that is no folder's name would remove files that belong to nobody here.
        if (!isCode(code)) return refuse(status::failed);
        isRemoving = true;
        kind.removeRows(own, code);
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
