#include "accounts/LoginSettings.h"

#include <string>

#include "installation/SettingValue.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectSettings =
    "select parameter, value, dataType from TORVEX_SETUP where loginId = ? order by parameter";
constexpr std::string_view selectInterface =
    "select lang_id from TORVEX_INTERFACE_LANGUAGES where lang_id = ? and lang_enabled = 1";

}  // namespace

void takeOverSettings(HostContext& host, db::Connection& connection, int loginId) {
    std::string language;
    auto rows = connection.query(selectSettings, {loginId});
    while (rows.next()) {
        const std::string parameter(text::trim(rows.text("parameter")));
        const auto value = settingValue(rows.text("dataType"), rows.text("value"));
        if (!value || isFixedValue(parameter)) continue;
        if (text::equals(parameter, sessionKey::chosenInterface)) {
            language = value->toText();
        } else {
            host.session.set(parameter, *value);
        }
    }
    useInterface(host, connection, language);
}

void useInterface(HostContext& host, db::Connection& connection, std::string_view language) {
    auto rows = connection.query(selectInterface, {text::trim(language)});
    if (!rows.next()) return;
    const std::string code = text::lowerTrim(rows.text("lang_id"));
    host.session.set(sessionKey::chosenInterface, code);
    host.session.set(sessionKey::interfaceLanguage, code);
    host.session.set(sessionKey::adminTemplatesPath,
                     host.application.text(applicationKey::adminTemplatesPath) + code + "/");
}

}  // namespace torvex
