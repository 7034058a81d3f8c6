#include "modules/newsflash/NewsflashKeys.h"

#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectSameNumber =
    "select nf_Id from TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ? and id = ? and nf_Id <> ?";
constexpr std::string_view selectSameTitle =
    "select nf_Id from TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ? and title = ? and nf_Id <> ?";

}  // namespace

NewsflashTaken takenOfNewsflash(db::Connection& connection, std::string_view site, std::string_view lang,
                                int nfId, int number, std::string_view title) {
    if (connection.query(selectSameNumber, {site, lang, number, nfId}).next()) return NewsflashTaken::Number;
    if (connection.query(selectSameTitle, {site, lang, title, nfId}).next()) return NewsflashTaken::Title;
    return NewsflashTaken::Nothing;
}

}  // namespace torvex
