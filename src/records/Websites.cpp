#include "records/Websites.h"

#include <algorithm>
#include <array>

#include "platform/db/Connection.h"
#include "platform/db/ScopeMemory.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectCharset =
    "select b.charset_codepage, b.charset_label, b.charset_name from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id where a.lang = ?";

constexpr std::string_view selectTitle =
    "select title from TORVEX_SITES_LANGUAGES where site = ? and lang = ?";

constexpr std::array<std::string_view, 3> charsetColumns{"charset_codepage", "charset_label", "charset_name"};
/// Divides values in the memory of a request; no text of the database contains it.
constexpr char divider = '\0';

/// The columns of a language's charset, each with the divider behind it; "" for a language that isn't known.
/// A page asks for several of them.
std::string charsetRow(db::Connection& connection, const std::string& language) {
    return db::remembered(connection, selectCharset, language, [&] {
        std::string row;
        auto rows = connection.query(selectCharset, {language});
        if (!rows.next()) return row;
        for (const auto column : charsetColumns) row.append(text::trim(rows.text(column))).append(1, divider);
        return row;
    });
}

}  // namespace

std::string charsetColumn(db::Connection& connection, std::string_view lang, std::string_view column) {
    const std::string row = charsetRow(connection, text::lowerTrim(lang));
    std::string_view rest = row;
    for (const std::string_view name : charsetColumns) {
        const std::size_t end = std::min(rest.find(divider), rest.size());
        if (text::equals(name, column)) return std::string(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return {};
}

std::string websiteTitle(db::Connection& connection, std::string_view site, std::string_view lang) {
    auto rows = connection.query(selectTitle, {text::lowerTrim(site), text::lowerTrim(lang)});
    return rows.next() ? std::string(text::trim(rows.text("title"))) : std::string();
}

}  // namespace torvex
