// cManager: the register of languages, and their character sets.

#include "administration/SiteDirectories.h"
#include "administration/SiteRegister.h"
#include "administration/SiteRemoval.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "installation/CommonCharset.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"
#include "records/SiteCodes.h"
#include "records/Websites.h"
#include "replication/SharedFiles.h"

namespace torvex {

namespace {

constexpr std::string_view selectNamesake = "select lang from TORVEX_LANGUAGES where name = ? or lang = ?";
constexpr std::string_view insertLanguage =
    "insert into TORVEX_LANGUAGES (lang, name, charset_id, lock) values (?, ?, ?, '')";
constexpr std::string_view updateNameAndCharset =
    "update TORVEX_LANGUAGES set name = ?, charset_id = ?, lock = '' where lang = ?";

constexpr std::string_view selectName = "select name from TORVEX_LANGUAGES where lang = ?";
constexpr std::string_view selectLanguage = "select lang from TORVEX_LANGUAGES where name = ?";
constexpr std::string_view selectCharsetId = "select charset_id from TORVEX_LANGUAGES where lang = ?";
constexpr std::string_view selectLanguagesByCode =
    "select lang, name, charset_name, charset_label, charset_codepage from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id order by lang";
constexpr std::string_view selectLanguagesByName =
    "select lang, name, charset_name, charset_label, charset_codepage from TORVEX_LANGUAGES a "
    "inner join TORVEX_CHARSETS b on b.charset_id = a.charset_id order by name, lang";
constexpr std::string_view selectSites = "select site from TORVEX_SITES order by site";

constexpr std::string_view selectCharsetsById =
    "select charset_id, charset_name, charset_label, charset_codepage from TORVEX_CHARSETS "
    "order by charset_id";
constexpr std::string_view selectCharsetsByName =
    "select charset_id, charset_name, charset_label, charset_codepage from TORVEX_CHARSETS "
    "order by charset_name, charset_id";
constexpr std::string_view selectCharsetsByLabel =
    "select charset_id, charset_name, charset_label, charset_codepage from TORVEX_CHARSETS "
    "order by charset_label, charset_id";
constexpr std::string_view selectCharsetsByCodepage =
    "select charset_id, charset_name, charset_label, charset_codepage from TORVEX_CHARSETS "
    "order by charset_codepage, charset_id";

std::string_view charsetsInOrder(int sortId) {
    switch (sortId) {
        case 2:
            return selectCharsetsByName;
        case 3:
            return selectCharsetsByLabel;
        case 4:
            return selectCharsetsByCodepage;
        default:
            return selectCharsetsById;
    }
}

struct Language {
    std::string code;
    std::string_view name;
    int charsetId;

    Language(std::string_view lang, std::string_view givenName, int charset)
        : code(text::lowerTrim(lang)), name(text::trim(givenName)), charsetId(charset) {}
    bool isComplete() const { return hasCodeLength(code) && !name.empty() && charsetId >= 1; }
};

/// False when the name or the code is taken.
db::Outcome<bool> insertWithFolders(HostContext& host, db::Connection& transaction, const Language& language,
                                    SharedFiles& files) {
    lockRegisters(transaction);
    if (transaction.query(selectNamesake, {language.name, language.code}).next()) return db::refuse(false);
    transaction.execute(insertLanguage, {language.code, language.name, language.charsetId});
    createSiteDirectories(host, transaction, files);
    return db::commit(true);
}

/// What fails has changed nothing.
bool make(HostContext& host, const Language& language) {
    SharedFiles files(host);
    try {
        const auto made = db::inOwnTransaction(host, [&](db::Connection& transaction) {
            return insertWithFolders(host, transaction, language, files);
        });
        if (!made.value) return false;
    } catch (...) {
        files.takeBack();
        throw;
    }
    files.replicate();
    return true;
}

/// A failure here is raised as "deleteLanguage"; one of the folders, later, as "addLanguage".
Removal removedEntry(HostContext& host, const std::string& code, int ownLogin) try {
    return removeLanguage(host, code, ownLogin);
} catch (...) {
    raiseFrom("deleteLanguage !");
}

}  // namespace

bool cManager::addLanguage(const std::string& langId, const std::string& langName, int charsetID,
                           int advId) try {
    const Language language(langId, langName, charsetID);
    if (!language.isComplete() || !isSafeCode(language.code) || !make(host_, language)) return false;
    storeCommonCharset(host_.application, commonCharset(connection()));
    if (advId > 0) {
        addAuditTrail("", std::to_string(advId), "new",
                      "New language \"" + std::string(language.name) + "\"");
    }
    return true;
} catch (...) {
    raiseFrom("addLanguage !");
}

bool cManager::updateLanguage(const std::string& lang, const std::string& name, int charsetID,
                              int advId) try {
    const Language language(lang, name, charsetID);
    if (!language.isComplete()) return false;
    const int before = getCharsetID(language.code);
    if (connection().execute(updateNameAndCharset, {language.name, charsetID, language.code}) == 0) {
        return false;
    }
    if (charsetID != before) storeCommonCharset(host_.application, commonCharset(connection()));
    if (advId > 0) {
        addAuditTrail("", std::to_string(advId), "save",
                      "Language \"" + std::string(language.name) + "\" has been updated");
    }
    return true;
} catch (...) {
    raiseFrom("updateLanguage !");
}

std::string cManager::deleteLanguage(const std::string& lang, int advId) {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string code = text::lowerTrim(lang);
    const Removal removed = removedEntry(host_, code, author_.loginId);
    if (!removed.refusal.empty()) return removed.refusal;
    try {
        deleteDirectory(searchDirectory(host_, code));
        for (const auto& site : safeCodes(connection(), selectSites)) {
            for (const auto& folder : websiteDirectories(host_, site, code)) deleteDirectory(folder);
        }
    } catch (...) {
        // Not this operation's name, but the line that operators know for this failure.
        raiseFrom("addLanguage !");
    }
    try {
        storeCommonCharset(host_.application, commonCharset(connection()));
        if (advId > 0) {
            addAuditTrail("", std::to_string(advId), "delete",
                          "Language \"" + removed.name + "\" has been removed");
        }
    } catch (...) {
        raiseFrom("deleteLanguage !");
    }
    return {};
}

std::string cManager::getLanguageName(const std::string& lang) try {
    return firstText(connection(), selectName, text::trim(lang));
} catch (...) {
    raiseFrom("getLanguageName !");
}

std::string cManager::getLanguageId(const std::string& languageName) try {
    return firstText(connection(), selectLanguage, text::trim(languageName));
} catch (...) {
    raiseFrom("getLanguageId !");
}

Value cManager::getLanguages(int sortId) try {
    return db::gridOf(connection().query(sortId == 1 ? selectLanguagesByCode : selectLanguagesByName), 1);
} catch (...) {
    raiseFrom("getLanguages !");
}

Value cManager::getCharsets(int sortId) try {
    return db::gridOf(connection().query(charsetsInOrder(sortId)), 1);
} catch (...) {
    raiseFrom("getCharsets !");
}

int cManager::getCharsetID(const std::string& lang) try {
    auto rows = connection().query(selectCharsetId, {text::trim(lang)});
    return rows.next() ? static_cast<int>(rows.number("charset_id")) : 0;
} catch (...) {
    raiseFrom("getCharsetID !");
}

std::string cManager::getCharsetName(const std::string& lang) try {
    return charsetColumn(connection(), lang, "charset_name");
} catch (...) {
    raiseFrom("getCharsetName !");
}

std::string cManager::getCharsetLabel(const std::string& lang) try {
    return charsetColumn(connection(), lang, "charset_label");
} catch (...) {
    raiseFrom("getCharsetLabel !");
}

std::string cManager::getCharsetCodepage(const std::string& lang) try {
    return charsetColumn(connection(), lang, "charset_codepage");
} catch (...) {
    raiseFrom("getCharsetCodepage !");
}

}  // namespace torvex
