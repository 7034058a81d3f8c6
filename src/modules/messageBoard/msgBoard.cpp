#include "modules/messageBoard/msgBoard.h"

#include "modules/messageBoard/Board.h"
#include "modules/messageBoard/BoardPublishing.h"
#include "modules/shared/ModuleMode.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view listDesign =
    "select msgB_catId, msgB_catTitle, msgB_deleted from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_site = ? "
    "and msgB_lang = ? order by msgB_catId";
constexpr std::string_view listLive =
    "select msgB_catId, msgB_catTitle from TORVEX_MSGB_CATEGORIES_LIVE where msgB_site = ? and msgB_lang = ? "
    "order by msgB_catId";
/// Scripts size their loops by a column more than there is.
constexpr std::size_t spareColumns = 1;

constexpr std::string_view failed = "-99";

}  // namespace

std::string msgBoard::load(const std::string& site, const std::string& lang, const std::string& mode,
                           const std::string& catRoot, const std::string& subCat, bool archive, int pageTo,
                           const std::string& html) try {
    return drawBoard({.call = callInMode(host_, connection_.use(host_), mode),
                      .site = text::lower(site),
                      .lang = text::lower(lang),
                      .root = catRoot,
                      .category = subCat.empty() ? catRoot : subCat,
                      .showsArchive = archive,
                      .page = pageTo},
                     html);
} catch (...) {
    raiseFrom("load (Message Board) !");
}

Value msgBoard::getCategoryList(const std::string& site, const std::string& lang,
                                const std::string& mode) try {
    const bool isDesign = text::equals(text::first(mode, 1), "D");
    return db::gridOf(connection_.use(host_).query(isDesign ? listDesign : listLive,
                                                   {text::lowerTrim(site), text::lowerTrim(lang)}),
                      spareColumns);
} catch (...) {
    raiseFrom("getCategoryList (Message Board) !");
}

std::string msgBoard::publish(const std::string& site, const std::string& lang, const std::string& catId,
                              bool includeSubcat, bool includeItems) {
    const BoardBranch branch{text::lowerTrim(site), text::lowerTrim(lang), text::lowerTrim(catId),
                             includeSubcat};
    const auto work = [&](db::Connection& own) -> db::Outcome<std::string> {
        return publishBoard(own, branch, includeItems);
    };
    return db::tryInOwnTransaction(host_, "publish of the message board", failed, work).value;
}

}  // namespace torvex
