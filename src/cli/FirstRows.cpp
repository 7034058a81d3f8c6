#include "cli/FirstRows.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <unicode/uloc.h>
#include <unicode/unistr.h>

#include "cli/UsageError.h"
#include "platform/DateTime.h"
#include "platform/Text.h"
#include "platform/db/Connection.h"
#include "records/StoredPassword.h"

namespace torvex::cli {

namespace {

constexpr std::size_t longestTitle = 100;

/// Login 1 is the system administrator; its settings are those that new logins start with.
constexpr std::string_view insertAdministrator =
    "insert into TORVEX_LOGINS (loginId, username, password, name, job, email, emailNotification, validFrom, "
    "validTo, sessionId, currentSite, siteLock, ipAddress, date, time, lock) "
    "values (1, 'sa', ?, 'System administrator', '', '', 0, '', '', '', '', '', '', '', '', '')";

bool isCode(std::string_view code) {
    const auto fits = [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'); };
    return code.size() == 2 && std::all_of(code.begin(), code.end(), fits);
}

void checkCode(std::string_view option, std::string_view code) {
    if (isCode(code)) return;
    throw UsageError(
        fmt::format("{} \"{}\": a code is two small letters or digits, such as \"en\"", option, code));
}

bool hasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
}

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

}  // namespace

void checkStarterSite(const StarterSite& site) {
    checkCode("--site", site.site);
    checkCode("--lang", site.lang);
    if (text::trim(site.title).empty() || text::length(site.title) > longestTitle ||
        !text::isValidUtf8(site.title) || hasControlCharacter(site.title)) {
        throw UsageError(fmt::format("--title: a title is a text of 1 to {} characters", longestTitle));
    }
}

Words wordsForHtml(const StarterSite& site) {
    return {{"site", site.site}, {"lang", site.lang}, {"title", text::htmlEncode(site.title)}};
}

Words wordsForRows(const StarterSite& site, const Clock& clock) {
    return {{"site", site.site},
            {"lang", site.lang},
            {"langName", sqlText(languageName(site.lang))},
            {"title", sqlText(site.title)},
            {"titleHtml", sqlText(text::htmlEncode(site.title))},
            {"now", sqlMoment(clock.now())}};
}

void insertFixedRows(db::Connection& connection, std::string_view adminPassword) {
    insertRows(connection, "rows/");
    const std::string stored = encodePassword(adminPassword);
    connection.execute(insertAdministrator, {std::string_view(stored)});
}

void insertRows(db::Connection& connection, std::string_view prefix, const Words& words) {
    for (const InstallFile& file : installFiles(prefix)) {
        connection.executeScript(words.empty() ? std::string(file.bytes()) : withWords(file.bytes(), words));
    }
}

}  // namespace torvex::cli
