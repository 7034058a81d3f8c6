#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

// What is in the registers. Codes and numbers as they are given; a code of another length than two characters
// is none.
bool siteExists(db::Connection& connection, std::string_view site);
bool languageExists(db::Connection& connection, std::string_view lang);
bool applicationExists(db::Connection& connection, int appId);
bool baseTemplateExists(db::Connection& connection, int baseTemplateId);
bool stylesheetExists(db::Connection& connection, int stylesheetId);
bool templateExists(db::Connection& connection, int templateId);

}  // namespace torvex
