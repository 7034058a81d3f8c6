#include "installation/SettingValue.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 21> fixedValues{
    // Who it is
    "torvex_loginId", "torvex_username", "torvex_password", "torvex_fullname", "tvx_username", "tvx_password",
    // Where things lie
    "torvex_odbc", "torvex_odbc_user", "torvex_odbc_password", "torvex_install_path", "torvex_root_path",
    "torvex_imgDir", "torvex_image_dir", "torvex_image_url", "torvex_docDir", "torvex_doc_dir",
    "torvex_doc_url", "torvex_contentTemplates_dir", "torvex_adminTemplates_dir", "torvex_baseTemplates_dir",
    "torvex_stylesheets_dir"};

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
