// cManager: the languages of the authoring interface, and its words.

#include <cmath>
#include <fmt/format.h>

#include "administration/InterfaceFiles.h"
#include "administration/RecordRemoval.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "installation/ScriptTimeouts.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/SiteCodes.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

/// Why a language stays, beside the codes that all records share.
namespace interface {
constexpr std::string_view isInUse = "-2";  ///< the caller works in it
constexpr std::string_view isTheDefault = "-3";
constexpr std::string_view othersAreThere = "-4";

constexpr int on = 1;
constexpr int off = 0;
constexpr int notMade = -1;  ///< it has no templates yet
}  // namespace interface

constexpr std::string_view selectList =
    "select lang_id as lang_ID, lang_name, lang_enabled, lang_default from TORVEX_INTERFACE_LANGUAGES "
    "order by lang_name, id";
constexpr std::string_view selectName = "select lang_name from TORVEX_INTERFACE_LANGUAGES where lang_id = ?";
constexpr std::string_view selectId =
    "select lang_id from TORVEX_INTERFACE_LANGUAGES where lang_name = ? order by id";
constexpr std::string_view selectLanguage =
    "select id, lang_id, lang_name, lang_default from TORVEX_INTERFACE_LANGUAGES where lang_id = ?";
constexpr std::string_view updateState =
    "update TORVEX_INTERFACE_LANGUAGES set lang_enabled = ? where lang_id = ?";
constexpr std::string_view deleteLanguageRow = "delete from TORVEX_INTERFACE_LANGUAGES where lang_id = ?";
constexpr std::string_view selectOthers =
    "select loginId from TORVEX_LOGINS where sessionId <> '' and loginId <> ?";

std::string firstText(db::Rows rows, std::string_view column) {
    return rows.next() ? rows.text(column) : std::string();
}

std::string templatesFolder(const HostContext& host) {
    return host.application.text(applicationKey::installPath) + "torvex/templates/";
}

struct Language {
    bool exists = false;
    int id = 0;
    std::string name;
    bool isDefault = false;
};

Language readLanguage(db::Connection& connection, std::string_view code) {
    auto rows = connection.query(selectLanguage, {code});
    if (!rows.next()) return {};
    return {true, static_cast<int>(rows.number("id")), rows.text("lang_name"),
            rows.number("lang_default") == 1};
}

}  // namespace

Value cManager::getInterfaceLanguages() try {
    return db::gridOf(connection().query(selectList), 1);
} catch (...) {
    raiseFrom("getInterfaceLanguages !");
}

std::string cManager::getInterfaceName(const std::string& langId) try {
    return firstText(connection().query(selectName, {langId}), "lang_name");
} catch (...) {
    raiseFrom("getInterfaceName !");
}

std::string cManager::getInterfaceId(const std::string& languageName) try {
    return firstText(connection().query(selectId, {languageName}), "lang_id");
} catch (...) {
    raiseFrom("getInterfaceId !");
}

std::string cManager::createInterface(const std::string& langId, int /*advId*/) {
    const LongScript longScript(host_);
    const std::string code = text::lowerTrim(langId);
    // What names no folder of its own would write over those of others.
    if (!isCode(code)) return std::string(status::failed);
    try {
        writeInterface(host_, translatedInterface(host_.files, connection(), templatesFolder(host_), code));
        return {};
    } catch (const std::exception& error) {
        warnOf(host_.log, "createInterface of " + code, error);
        return std::string(status::failed);
    }
}

std::string cManager::deleteInterface(const std::string& langId, int advId) {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string code = text::lowerTrim(langId);
    if (text::equals(host_.session.text(sessionKey::interfaceLanguage), code)) {
        return std::string(interface::isInUse);
    }
    const auto removed =
        db::tryInOwnTransaction(host_, "deleteInterface of " + code, status::failed,
                                [&](db::Connection& transaction) -> db::Outcome<std::string> {
                                    const Language language = readLanguage(transaction, code);
                                    if (!language.exists) return db::refuse(record::notThere);
                                    if (language.isDefault) return db::refuse(interface::isTheDefault);
                                    if (transaction.query(selectOthers, {author_.loginId}).next()) {
                                        return db::refuse(interface::othersAreThere);
                                    }
                                    transaction.execute(deleteLanguageRow, {code});
                                    clearVocabulary(transaction, language.id);
                                    return db::commit(language.name);
                                });
    if (!removed.isCommitted) return removed.value;
    if (isCode(code)) {
        followUp(host_.log, "deleteInterface of " + code,
                 [&] { deleteDirectory(templatesFolder(host_) + code); });
    }
    if (advId > 0) recordRemoval("deleteInterface", advId, "Interface language \"" + removed.value + '"');
    return {};
}

int cManager::setInterfaceOnOff(const std::string& langId, int state, int advId) try {
    const std::string code = text::lowerTrim(langId);
    const Language language = readLanguage(connection(), code);
    if (!language.exists) return state;
    const bool wanted = state == interface::on;
    if (!wanted && language.isDefault) return state;
    const bool isMade = isCode(code) && host_.files.folderExists(templatesFolder(host_) + code);
    const bool enabled = wanted && isMade;
    connection().execute(updateState, {enabled ? interface::on : interface::off, code});
    if (wanted && !isMade) return interface::notMade;
    if (advId > 0) {
        recordChange("setInterfaceOnOff", advId, enabled ? "enable" : "disable",
                     fmt::format("Interface language \"{}\" has been {}", language.name,
                                 enabled ? "enabled" : "disabled"));
    }
    return enabled ? interface::on : interface::off;
} catch (...) {
    raiseFrom("setInterfaceOnOff !");
}

std::string cManager::saveVocab(const std::string& langId, double labelId, const std::string& text,
                                int advId) {
    const std::string code(text::trim(langId));
    try {
        if (std::trunc(labelId) != labelId) throw Error("a label is a whole number");
        if (!saveVocabularyText(connection(), code, labelId, text)) return {};
    } catch (const std::exception& error) {
        warnOf(host_.log, "saveVocab of " + code, error);
        return std::string(status::failed);
    }
    if (advId > 0) {
        recordChange("saveVocab", advId, "edit",
                     fmt::format("Interface label {}, language {}, has been updated",
                                 text::fromNumber(labelId), text::upper(code)));
    }
    return {};
}

}  // namespace torvex
