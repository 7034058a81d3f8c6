#include "authoring/OwnedRows.h"

#include <algorithm>
#include <fmt/format.h>

#include "accounts/Tables.h"
#include "delivery/Tables.h"
#include "media/Tables.h"
#include "modules/dynamicMenu/Tables.h"
#include "modules/forum/Tables.h"
#include "modules/mail/Tables.h"
#include "modules/mailForm/Tables.h"
#include "modules/messageBoard/Tables.h"
#include "modules/newsflash/Tables.h"
#include "platform/db/Connection.h"
#include "records/PageIdentity.h"
#include "records/Tables.h"
#include "replication/Tables.h"
#include "search/Tables.h"
#include "templates/Tables.h"

namespace torvex {

namespace {

using Statements = std::vector<std::string>;

constexpr std::string_view pagesOfBranch =
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)";

std::string deleteBy(std::string_view table, std::string_view column) {
    return fmt::format("delete from {} where {} = ?", table, column);
}

/// By a column that each table names, or doesn't.
Statements statementsBy(std::string_view OwnedTable::*column) {
    Statements statements;
    for (const OwnedTable& table : allTables()) {
        if ((table.*column).empty()) continue;
        statements.push_back(deleteBy(table.name, table.*column));
        statements.insert(statements.end(), table.orphans.begin(), table.orphans.end());
    }
    return statements;
}

void addDeletion(Statements& statements, const OwnedTable& table) {
    if (!table.node.empty())
        statements.push_back(
            fmt::format("delete from {0} where {1} >= ? and {1} < ?", table.name, table.node));
    if (!table.page.empty())
        statements.push_back(
            fmt::format("delete from {} where {} in {}", table.name, table.page, pagesOfBranch));
}

void addUndoneLinks(Statements& statements, const OwnedTable& table) {
    for (const std::string_view column : table.pagePointers) {
        statements.push_back(
            fmt::format("update {0} set {1} = -1 where {1} in {2}", table.name, column, pagesOfBranch));
    }
}

template <typename Key>
void runAll(db::Connection& transaction, const Statements& statements, const Key& key) {
    for (const std::string& statement : statements) {
        const bool isBound = statement.find('?') != std::string::npos;
        transaction.execute(statement, isBound ? db::Parameters{key} : db::Parameters());
    }
}

}  // namespace

std::vector<OwnedTable> allTables() {
    std::vector<OwnedTable> all;
    for (const auto& room :
         {installationTables(), recordTables(), replicationTables(), accountTables(), templateTables(),
          mediaTables(), deliveryTables(), searchTables(), messageBoardTables(), newsflashTables(),
          forumTables(), dynamicMenuTables(), mailFormTables(), mailTables()}) {
        all.insert(all.end(), room.begin(), room.end());
    }
    std::sort(all.begin(), all.end(),
              [](const OwnedTable& one, const OwnedTable& other) { return one.name < other.name; });
    return all;
}

std::vector<std::string> statementsForSite() {
    return statementsBy(&OwnedTable::site);
}

std::vector<std::string> statementsForLanguage() {
    return statementsBy(&OwnedTable::lang);
}

std::vector<std::string> statementsForLogin() {
    return statementsBy(&OwnedTable::login);
}

std::vector<std::string> statementsForBranch() {
    std::vector<OwnedTable> tables = allTables();
    std::stable_sort(tables.begin(), tables.end(),
                     [](const OwnedTable& one, const OwnedTable& other) { return one.turn < other.turn; });
    const auto pages = std::find_if(tables.begin(), tables.end(),
                                    [](const OwnedTable& table) { return table.turn == PageTurn::Pages; });
    Statements statements;
    std::for_each(tables.begin(), pages, [&](const OwnedTable& table) { addDeletion(statements, table); });
    for (const OwnedTable& table : tables) addUndoneLinks(statements, table);
    std::for_each(pages, tables.end(), [&](const OwnedTable& table) { addDeletion(statements, table); });
    return statements;
}

void removeRowsOfSite(db::Connection& transaction, std::string_view site) {
    static const Statements statements = statementsForSite();
    runAll(transaction, statements, site);
}

void removeRowsOfLanguage(db::Connection& transaction, std::string_view lang) {
    static const Statements statements = statementsForLanguage();
    runAll(transaction, statements, lang);
}

void removeRowsOfLogin(db::Connection& transaction, int loginId) {
    static const Statements statements = statementsForLogin();
    runAll(transaction, statements, loginId);
}

void removeRowsOfBranch(db::Connection& transaction, std::string_view nodeId) {
    static const Statements statements = statementsForBranch();
    const std::string end = endOfPrefix(nodeId);
    for (const std::string& statement : statements) transaction.execute(statement, {nodeId, end});
}

}  // namespace torvex
