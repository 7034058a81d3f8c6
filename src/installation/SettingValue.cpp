#include "installation/SettingValue.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/Keys.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 21> fixedValues{
    // Who it is
    sessionKey::authorLoginId, sessionKey::authorName, sessionKey::authorPassword, sessionKey::authorFullname,
    sessionKey::visitorName, sessionKey::visitorPassword,
    // Where things lie
    applicationKey::databaseText, applicationKey::databaseUser, applicationKey::databasePassword,
    applicationKey::installPath, applicationKey::rootPath, applicationKey::imagesName,
    applicationKey::imagesPath, applicationKey::imagesUrl, applicationKey::documentsName,
    applicationKey::documentsPath, applicationKey::documentsUrl, applicationKey::contentTemplatesPath,
    applicationKey::adminTemplatesPath, applicationKey::baseTemplatesPath, applicationKey::stylesheetsPath};

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

}  // namespace torvex
