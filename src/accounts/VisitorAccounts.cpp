#include "accounts/VisitorAccounts.h"

#include <map>

#include "accounts/VisitorProof.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectPage =
    "select userId, username, password, passwordHash, firstname, lastname, validFrom, validTo "
    "from TORVEX_USERS "
    "where username > ? or (username = ? and userId > ?) order by username, userId limit 500";
constexpr std::string_view selectUser =
    "select userId, username, password, passwordHash, firstname, lastname, validFrom, validTo "
    "from TORVEX_USERS where username = ? order by userId";
constexpr std::string_view countUsers =
    "select count(*) as users from TORVEX_USERS where username is not null and username <> ''";

/// A null leaves what is there.
constexpr std::string_view updateUser =
    "update TORVEX_USERS set password = coalesce(?, password), "
    "passwordHash = coalesce(?, passwordHash), firstname = coalesce(?, firstname), "
    "lastname = coalesce(?, lastname), validFrom = coalesce(?, validFrom), validTo = coalesce(?, validTo) "
    "where userId = ?";
constexpr std::string_view insertUser =
    "insert into TORVEX_USERS (username, password, firstname, lastname, validFrom, validTo) "
    "values (?, ?, ?, ?, ?, ?)";
constexpr std::string_view deleteGroups = "delete from TORVEX_GROUPS_USERS where userId = ?";
constexpr std::string_view insertGroup = "insert into TORVEX_GROUPS_USERS (groupId, userId) values (?, ?)";

VisitorAccount accountIn(const db::Rows& rows) {
    VisitorAccount account;
    account.userId = rows.number("userId");
    account.username = rows.text("username");
    account.password = rows.text("password");
    const std::string hash = rows.text("passwordHash");
    if (isKeptStrongly(account.password, hash)) account.passwordHash = hash;
    account.firstname = rows.text("firstname");
    account.lastname = rows.text("lastname");
    account.validFrom = rows.text("validFrom");
    account.validTo = rows.text("validTo");
    return account;
}

/// Of many accounts at once.
void readGroups(db::Connection& connection, std::vector<VisitorAccount>& accounts) {
    std::string places;
    std::vector<db::Parameter> ids;
    std::map<double, VisitorAccount*> byId;
    for (VisitorAccount& account : accounts) {
        places += places.empty() ? "?" : ", ?";
        ids.emplace_back(account.userId);
        byId.emplace(account.userId, &account);
    }
    auto rows = connection.query(
        "select userId, groupId from TORVEX_GROUPS_USERS where userId in (" + places + ")", ids);
    while (rows.next())
        byId.at(rows.number("userId"))->groups.insert(static_cast<int>(rows.number("groupId")));
}

/// Some accounts behind one, so that no connection is held through a long visit.
std::vector<VisitorAccount> nextAccounts(db::Connection& connection, const VisitorAccount& last) {
    std::vector<VisitorAccount> accounts;
    auto rows = connection.query(selectPage, {last.username, last.username, last.userId});
    while (rows.next()) accounts.push_back(accountIn(rows));
    return accounts;
}

db::Parameter given(const std::optional<std::string>& value) {
    if (!value) return nullptr;
    return std::string_view(*value);
}

double insertAccount(db::Connection& transaction, const VisitorChange& change) {
    transaction.execute(insertUser,
                        {change.username, change.password.value_or(""), change.firstname.value_or(""),
                         change.lastname.value_or(""), given(change.validFrom), given(change.validTo)});
    const auto made = findVisitor(transaction, change.username);
    return made ? made->userId : 0;
}

}  // namespace

void visitVisitors(db::Connection& connection, const std::function<void(const VisitorAccount&)>& visit) {
    VisitorAccount last;
    for (auto accounts = nextAccounts(connection, last); !accounts.empty();
         accounts = nextAccounts(connection, last)) {
        readGroups(connection, accounts);
        for (const VisitorAccount& account : accounts) visit(account);
        last = accounts.back();
    }
}

std::size_t countVisitors(db::Connection& connection) {
    auto rows = connection.query(countUsers);
    return rows.next() ? static_cast<std::size_t>(rows.number("users")) : 0;
}

std::optional<VisitorAccount> findVisitor(db::Connection& connection, std::string_view username) {
    auto rows = connection.query(selectUser, {username});
    if (!rows.next()) return std::nullopt;
    std::vector<VisitorAccount> found{accountIn(rows)};
    readGroups(connection, found);
    return found.front();
}

std::vector<std::string> differences(const std::optional<VisitorAccount>& account,
                                     const VisitorChange& change) {
    const VisitorAccount before = account.value_or(VisitorAccount());
    std::vector<std::string> names;
    const auto compare = [&](const char* name, const auto& value, const auto& held) {
        if (value && *value != held) names.emplace_back(name);
    };
    compare("password", change.password, before.password);
    compare("firstname", change.firstname, before.firstname);
    compare("lastname", change.lastname, before.lastname);
    compare("validFrom", change.validFrom, before.validFrom);
    compare("validTo", change.validTo, before.validTo);
    compare("groups", change.groups, before.groups);
    return names;
}

void leaveOutSamePassword(const VisitorAccount& account, VisitorChange& change) {
    if (account.passwordHash.empty() || !change.password) return;
    if (isPasswordOf(account.passwordHash, *change.password)) change.password.reset();
}

void saveVisitor(db::Connection& transaction, const std::optional<VisitorAccount>& account,
                 const VisitorChange& change) {
    const double userId = account ? account->userId : insertAccount(transaction, change);
    if (account) {
        // A hash that is left over would be asked if the new password looked like a mark.
        const db::Parameter noHash = change.password ? db::Parameter(std::string_view("")) : nullptr;
        transaction.execute(updateUser,
                            {given(change.password), noHash, given(change.firstname), given(change.lastname),
                             given(change.validFrom), given(change.validTo), userId});
    }
    if (!change.groups) return;
    transaction.execute(deleteGroups, {userId});
    for (const int groupId : *change.groups) transaction.execute(insertGroup, {groupId, userId});
}

}  // namespace torvex
