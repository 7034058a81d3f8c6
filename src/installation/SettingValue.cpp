#include "installation/SettingValue.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 22> fixedValues{
    // Who it is
    sessionKey::authorLoginId, sessionKey::authorName, sessionKey::authorPassword, sessionKey::authorFullname,
    sessionKey::visitorName, sessionKey::visitorPassword,
    // How it is reached
    applicationKey::httpsOnly,
    // Where things lie
    applicationKey::databaseText, applicationKey::databaseUser, applicationKey::databasePassword,
    applicationKey::installPath, applicationKey::rootPath, applicationKey::imagesName,
    applicationKey::imagesPath, applicationKey::imagesUrl, applicationKey::documentsName,
    applicationKey::documentsPath, applicationKey::documentsUrl, applicationKey::contentTemplatesPath,
    applicationKey::adminTemplatesPath, applicationKey::baseTemplatesPath, applicationKey::stylesheetsPath};

constexpr std::array<std::string_view, 3> onHttps{applicationKey::websiteSsl, applicationKey::extranetSsl,
                                                  applicationKey::authoringSsl};

}  // namespace

std::optional<Value> settingValue(std::string_view dataType, std::string_view value) {
    const std::string_view type = text::trim(dataType);
    if (text::equals(type, "C")) return Value(value);
    if (text::equals(type, "B")) return Value(value == "1");
    if (text::equals(type, "N") && text::isNumeric(value)) return Value(text::toNumber(value));
    return std::nullopt;
}

bool isFixedValue(std::string_view parameter) {
    return std::ranges::any_of(fixedValues, [name = text::trim(parameter)](std::string_view fixed) {
        return text::equals(name, fixed);
    });
}

bool isHeldByFile(const ApplicationValues& application, std::string_view parameter) {
    return application.isTrue(applicationKey::httpsOnly) &&
           std::ranges::any_of(onHttps, [name = text::trim(parameter)](std::string_view held) {
               return text::equals(name, held);
           });
}

void holdByFile(ApplicationValues& application) {
    if (!application.isTrue(applicationKey::httpsOnly)) return;
    for (const std::string_view key : onHttps) application.set(key, true);
}

}  // namespace torvex
