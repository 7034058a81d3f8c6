// desk: what visitors search for, and what they don't find.

#include "desk/FirstRow.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HitCounter.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

namespace torvex {

namespace {

constexpr int mostWords = 100;

constexpr std::string_view selectAll =
    "select search_word as word, sum(searches) as searched, sum(withoutResult) as without "
    "from TORVEX_SEARCH_DAYS where site = ? and lang = ? and yyyymmdd >= ? and yyyymmdd <= ? "
    "group by search_word order by searched desc, word limit ? offset ?";
constexpr std::string_view selectEmpty =
    "select search_word as word, sum(searches) as searched, sum(withoutResult) as without "
    "from TORVEX_SEARCH_DAYS where site = ? and lang = ? and yyyymmdd >= ? and yyyymmdd <= ? "
    "group by search_word having sum(withoutResult) > 0 order by without desc, word limit ? offset ?";

}  // namespace

Value desk::getSearchedWords(const std::string& site, const std::string& lang, const std::string& from,
                             const std::string& to, const std::string& kind, double start) try {
    const auto first = firstRow(start);
    const bool isAll = text::equals(text::trim(kind), "all");
    if (!first || (!isAll && !text::equals(text::trim(kind), "empty"))) return {};
    host_.hits.flush();
    const std::string siteCode = text::lowerTrim(site);
    const std::string langCode = text::lowerTrim(lang);
    const std::string_view last = text::trim(to).empty() ? lastOfDays : text::trim(to);
    return db::gridOf(connection().query(isAll ? selectAll : selectEmpty,
                                         {siteCode, langCode, text::trim(from), last, mostWords, *first}));
} catch (...) {
    raiseFrom("getSearchedWords !");
}

}  // namespace torvex
