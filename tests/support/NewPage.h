#pragma once

#include <string>

#include "authoring/cManager.h"

namespace torvex::test {

/// Fills the record so that it can be saved as a new page.
inline void fillNewPage(cManager& record, const std::string& title, const std::string& type, int orderId) {
    record.setPgTitle(title);
    record.setPgType(type);
    record.setPgOrderId(orderId);
    record.setPgTemplateId(0);
    record.setPgBaseTemplateId(0);
    record.setPgStylesheetId(0);
    record.setPgNavigation("A");
    record.setPgBreadcrumb("1");
    record.setPgDynMenu("0");
    record.setPgLoginPage(-1);
}

}  // namespace torvex::test
