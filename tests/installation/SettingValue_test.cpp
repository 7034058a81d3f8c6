#include "installation/SettingValue.h"

#include <gtest/gtest.h>

namespace torvex {
namespace {

TEST(SettingValue, IsWhatItsTypeSays) {
    EXPECT_EQ(settingValue("N", "12"), Value(12));
    EXPECT_EQ(settingValue(" c ", " 12 "), Value(" 12 "));
    EXPECT_EQ(settingValue("b", "1"), Value(true));
    for (const auto* no : {"0", "", "true", " 1"}) EXPECT_EQ(settingValue("B", no), Value(false)) << no;
}

TEST(SettingValue, IsNothingForABadNumberOrType) {
    for (const auto* bad : {"", "x", "1e3"}) EXPECT_EQ(settingValue("N", bad), std::nullopt) << bad;
    for (const auto* type : {"", "X", "CC"}) EXPECT_EQ(settingValue(type, "1"), std::nullopt) << type;
}

TEST(SettingValue, IdentitiesAndPlacesAreFixed) {
    for (const auto* name : {"torvex_username", "TORVEX_LOGINID", " torvex_odbc ", "torvex_install_path",
                             "torvex_https_only", "tvx_password", "torvex_adminTemplates_dir"}) {
        EXPECT_TRUE(isFixedValue(name)) << name;
    }
    for (const auto* name : {"", "torvex_ssl", "torvex_interface_language", "torvex_username2"}) {
        EXPECT_FALSE(isFixedValue(name)) << name;
    }
}

}  // namespace
}  // namespace torvex
