#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "installation/OwnedTable.h"

namespace torvex {
namespace db {
class Connection;
}

/// Every table of the schema, as its room lists it; by name.
std::vector<OwnedTable> allTables();

// What goes with something that goes, over all rooms: statements that bind what is named, in their order.
// Tables go in the order of their names, with orphans behind the table that they hung on.
std::vector<std::string> statementsForSite();      ///< "?": the site; orphans bind nothing
std::vector<std::string> statementsForLanguage();  ///< "?": the language; orphans bind nothing
std::vector<std::string> statementsForLogin();     ///< "?": the login's number
/// "?", "?": a range of nodes, that of a page and all below it. What hangs on the pages goes by its turn;
/// then pointers from what stays are undone; then the pages go.
std::vector<std::string> statementsForBranch();

// They run within a transaction of the caller.
void removeRowsOfSite(db::Connection& transaction, std::string_view site);
void removeRowsOfLanguage(db::Connection& transaction, std::string_view lang);
void removeRowsOfLogin(db::Connection& transaction, int loginId);
void removeRowsOfBranch(db::Connection& transaction, std::string_view nodeId);

}  // namespace torvex
