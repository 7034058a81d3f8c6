// cManager: the settings of the installation and of its logins.

#include "authoring/cManager.h"
#include "installation/SettingValue.h"
#include "platform/ApplicationWriting.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/ShortInteger.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::size_t longestValue = 2000;
/// In place of a login's number: the installation.
constexpr int everybody = 0;

constexpr std::string_view updateSetting =
    "update TORVEX_SETUP set value = ? where parameter = ? and loginId = ?";
constexpr std::string_view insertSetting =
    "insert into TORVEX_SETUP (parameter, value, dataType, loginId) values (?, ?, ?, ?)";

struct Setting {
    std::string parameter;
    std::string value;
    std::string type;

    Setting(std::string_view name, std::string_view given, std::string_view dataType)
        : parameter(text::trim(name)),
          value(text::trim(text::first(given, longestValue))),
          type(text::upper(text::trim(dataType))) {}
};

/// What the value is while the system runs; nothing for a type that isn't one of the three.
std::optional<Value> liveValue(const Setting& setting) {
    if (setting.type != "N") return settingValue(setting.type, setting.value);
    const auto number =
        text::isNumeric(setting.value) ? shortInteger(text::toNumber(setting.value)) : std::optional<int>();
    if (!number) throw Error(setting.parameter + " is a whole number from -32768 to 32767");
    return Value(*number);
}

void store(HostContext& host, int loginId, const Setting& setting) {
    db::inOwnTransaction(host, [&](db::Connection& own) {
        lockRegisters(own);
        const auto updated = own.execute(updateSetting, {setting.value, setting.parameter, loginId});
        if (updated == 0) {
            own.execute(insertSetting, {setting.parameter, setting.value, setting.type, loginId});
        }
        return db::commit(updated);
    });
}

void apply(HostContext& host, int loginId, const std::string& parameter, const Value& value) {
    if (loginId != everybody) return host.session.set(parameter, value);
    if (isHeldByFile(host.application, parameter)) return;
    const ApplicationWriting writing(host.application);
    host.application.set(parameter, value);
}

}  // namespace

void cManager::updateParam(int loginId, const std::string& parameter, const std::string& value,
                           const std::string& dataType) try {
    const Setting setting(parameter, value, dataType);
    if (isFixedValue(setting.parameter)) throw Error(setting.parameter + " can't be set");
    const auto live = liveValue(setting);
    store(host_, loginId, setting);
    // Behind the row, so that a row that can't be written changes nothing.
    if (live) apply(host_, loginId, setting.parameter, *live);
} catch (...) {
    raiseFrom("updateParam !");
}

}  // namespace torvex
