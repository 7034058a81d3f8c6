#pragma once

#include <initializer_list>
#include <string>

#include "support/SiteTest.h"

namespace torvex::test {

/// A row of TORVEX_EDIT_RIGHTS in which these columns are 1.
inline Columns editRightsRow(int roleId, const std::string& site, const std::string& lang,
                             std::initializer_list<const char*> tasks, const Value& scope) {
    Columns columns{{"roleId", roleId}, {"site", site}, {"lang", lang}, {"scope", scope}};
    for (const auto* task : tasks) columns.emplace_back(task, 1);
    return columns;
}

/// A row of TORVEX_ADVANCED_RIGHTS.
inline Columns advancedRightRow(int roleId, int advId, const std::string& site, const std::string& lang,
                                bool view, bool edit) {
    return {{"roleId", roleId},
            {"advId", advId},
            {"site", site},
            {"lang", lang},
            {"viewAccess", view ? 1 : 0},
            {"editAccess", edit ? 1 : 0}};
}

}  // namespace torvex::test
