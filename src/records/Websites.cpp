#include "records/Websites.h"

#include "platform/Text.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectCharset =
    "select b.charset_codepage, b.charset_label, b.charset_name from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id where a.lang = ?";

constexpr std::string_view selectTitle =
    "select title from TORVEX_SITES_LANGUAGES where site = ? and lang = ?";

}  // namespace

std::string charsetColumn(db::Connection& connection, std::string_view lang, std::string_view column) {
    auto rows = connection.query(selectCharset, {text::lowerTrim(lang)});
    return rows.next() ? std::string(text::trim(rows.text(column))) : std::string();
}

std::string websiteTitle(db::Connection& connection, std::string_view site, std::string_view lang) {
    auto rows = connection.query(selectTitle, {text::lowerTrim(site), text::lowerTrim(lang)});
    return rows.next() ? std::string(text::trim(rows.text("title"))) : std::string();
}

}  // namespace torvex
