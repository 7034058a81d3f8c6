#include "installation/FirstRows.h"

#include <array>
#include <fmt/format.h>
#include <unicode/uloc.h>
#include <unicode/unistr.h>

#include "platform/Days.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// Login 1 is the system administrator; its settings are those that new logins start with.
constexpr std::string_view insertAdministrator =
    "insert into TORVEX_LOGINS (loginId, username, password, name, job, email, emailNotification, validFrom, "
    "validTo, sessionId, currentSite, siteLock, ipAddress, date, time, lock) "
    "values (1, 'sa', '', 'System administrator', '', '', 0, '', '', '', '', '', '', '', '', '')";

std::string sqlText(std::string_view text) {
    return text::replaceAll(text, "'", "''");
}

std::string sqlMoment(const DateTime& moment) {
    return text::replaceAll(isoText(moment), "T", " ");
}

/// The language's name in itself, "Deutsch"; a code that means nothing is its own name.
std::string languageName(const std::string& lang) {
    std::array<char16_t, 100> name{};
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = uloc_getDisplayLanguage(lang.c_str(), lang.c_str(), name.data(),
                                                        static_cast<std::int32_t>(name.size()), &status);
    if (U_FAILURE(status) || length <= 0) return lang;
    std::string result;
    icu::UnicodeString(name.data(), length).toUTF8String(result);
    return result;
}

constexpr int daysOfTheDemo = 30;

std::string lineOfValues(int distance, std::chrono::sys_days day) {
    return fmt::format("({}, '{}', {})", distance, date8(momentOf(day)),
                       std::chrono::weekday(day).iso_encoding());
}

}  // namespace

Words wordsForHtml(const NewWebsite& site) {
    return {{"site", site.site}, {"lang", site.lang}, {"title", text::htmlEncode(site.title)}};
}

Words wordsForRows(const NewWebsite& site, const Clock& clock) {
    return {{"site", site.site},
            {"lang", site.lang},
            {"langName", sqlText(languageName(site.lang))},
            {"title", sqlText(site.title)},
            {"titleHtml", sqlText(text::htmlEncode(site.title))},
            {"now", sqlMoment(clock.now())}};
}

Words wordsForDemo(const Clock& clock) {
    const auto today = dayOf(clock.now());
    std::string lines;
    for (int distance = 1; distance <= daysOfTheDemo; ++distance) {
        if (distance > 1) lines += ",\n    ";
        lines += lineOfValues(distance, today - std::chrono::days(distance));
    }
    return {{"days", std::move(lines)}};
}

void insertFixedRows(db::Connection& connection) {
    insertRows(connection, "rows/");
    connection.execute(insertAdministrator);
}

void insertRows(db::Connection& connection, std::string_view prefix, const Words& words) {
    for (const InstallFile& file : installFiles(prefix)) {
        connection.executeScript(words.empty() ? std::string(file.bytes()) : withWords(file.bytes(), words));
    }
}

}  // namespace torvex
