#include "records/Websites.h"

#include "platform/Errors.h"
#include "platform/Text.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::size_t codeLength = 2;

constexpr std::string_view selectSite = "select site from TORVEX_SITES where site = ?";
constexpr std::string_view selectLanguage = "select lang from TORVEX_LANGUAGES where lang = ?";

constexpr std::string_view selectCharset =
    "select b.charset_codepage, b.charset_label, b.charset_name from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id where a.lang = ?";

constexpr std::string_view selectTitle =
    "select title from TORVEX_SITES_LANGUAGES where site = ? and lang = ?";

}  // namespace

bool isSiteCode(db::Connection& connection, std::string_view site) try {
    return text::length(site) == codeLength && connection.query(selectSite, {site}).next();
} catch (...) {
    raiseFrom("isSite !");
}

bool isLanguageCode(db::Connection& connection, std::string_view lang) try {
    return text::length(lang) == codeLength && connection.query(selectLanguage, {lang}).next();
} catch (...) {
    raiseFrom("isLang !");
}

std::string charsetColumn(db::Connection& connection, std::string_view lang, std::string_view column) {
    auto rows = connection.query(selectCharset, {text::lowerTrim(lang)});
    return rows.next() ? std::string(text::trim(rows.text(column))) : std::string();
}

std::string websiteTitle(db::Connection& connection, std::string_view site, std::string_view lang) {
    auto rows = connection.query(selectTitle, {text::lowerTrim(site), text::lowerTrim(lang)});
    return rows.next() ? std::string(text::trim(rows.text("title"))) : std::string();
}

}  // namespace torvex
