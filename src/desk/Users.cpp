// registers: the accounts of visitors.

#include <fmt/format.h>
#include <optional>

#include "accounts/Actor.h"
#include "accounts/SecondFactor.h"
#include "accounts/VisitorProof.h"
#include "authoring/StatusCodes.h"
#include "desk/FirstRow.h"
#include "desk/RecordFields.h"
#include "desk/RecordLock.h"
#include "desk/registers.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr int mostUsers = 500;
constexpr std::size_t factorColumns = 2;

namespace user {
using namespace recordStatus;
constexpr std::string_view noPassword = "-5";
constexpr std::string_view noSuchDay = "-6";
constexpr std::string_view done = "0";
constexpr std::string_view noFactor = "-3";
}  // namespace user

constexpr std::string_view selectColumns =
    "select u.userId, u.username, u.firstname, u.lastname, u.validFrom, u.validTo, "
    "(select count(distinct g.groupId) from TORVEX_GROUPS_USERS g where g.userId = u.userId) as userGroups "
    "from TORVEX_USERS u where ";
constexpr std::string_view withWord = "(u.username like ? or u.firstname like ? or u.lastname like ?) and ";
constexpr std::string_view ofGroup =
    "u.userId in (select m.userId from TORVEX_GROUPS_USERS m where m.groupId = ?) and ";
constexpr std::string_view inOrder = "1 = 1 order by u.username, u.userId limit ? offset ?";
constexpr std::string_view ofNumber = "u.userId = ?";

constexpr std::string_view selectUser =
    "select firstname, lastname, username from TORVEX_USERS where userId = ?";
constexpr std::string_view selectNamesake =
    "select userId from TORVEX_USERS where username = ? and userId <> ? order by userId desc";
constexpr std::string_view insertUser =
    "insert into TORVEX_USERS (username, password, firstname, lastname, validFrom, validTo, lock) "
    "values (?, '', ?, ?, ?, ?, '')";
constexpr std::string_view updateUser =
    "update TORVEX_USERS set username = ?, firstname = ?, lastname = ?, validFrom = ?, validTo = ?, lock = "
    "'' "
    "where userId = ?";
constexpr std::string_view selectGroup =
    "select name from TORVEX_USERGROUPS where groupId = ? and groupId > 1";
constexpr std::string_view deleteMembership =
    "delete from TORVEX_GROUPS_USERS where userId = ? and groupId = ?";
constexpr std::string_view insertMembership =
    "insert into TORVEX_GROUPS_USERS (userId, groupId) values (?, ?)";

using Outcome = db::Outcome<std::string>;

struct UserChange {
    std::string username;
    std::string_view password;
    std::string firstname;
    std::string lastname;
    std::string validFrom;
    std::string validTo;

    std::string shown() const {
        const std::string both = lastname + ' ' + firstname;
        return std::string(text::trim(both).empty() ? std::string_view(username) : text::trim(both));
    }
};

bool isDayOrNothing(const std::string& day) {
    return day.empty() || isDate8(day);
}

/// A pattern of `like` for what holds the word somewhere.
std::string holding(std::string_view word) {
    std::string pattern("%");
    for (const char c : word) {
        if (c == '%' || c == '_' || c == '\\') pattern += '\\';
        pattern += c;
    }
    return pattern + '%';
}

std::vector<std::string> patternsOf(std::string_view words) {
    constexpr std::size_t most = 10;
    std::vector<std::string> patterns;
    while (!(words = text::trim(words)).empty() && patterns.size() < most) {
        const std::size_t end = std::min(words.find(' '), words.size());
        patterns.push_back(holding(words.substr(0, end)));
        words.remove_prefix(end);
    }
    return patterns;
}

/// 0 when there is none.
double namesakeOf(db::Connection& connection, const std::string& username, double userId) {
    auto rows = connection.query(selectNamesake, {username, userId});
    return rows.next() ? rows.number("userId") : 0;
}

std::optional<std::string> nameOf(db::Connection& connection, double userId) {
    auto rows = connection.query(selectUser, {userId});
    if (!rows.next()) return std::nullopt;
    return UserChange{rows.text("username"), {}, rows.text("firstname"), rows.text("lastname"), {}, {}}
        .shown();
}

/// Why it can't be written; "" when it can.
std::string_view lackOf(db::Connection& own, double userId, const UserChange& change) {
    if (userId != 0 && !own.query(selectUser, {userId}).next()) return user::gone;
    if (change.username.empty()) return user::nameMissing;
    if (namesakeOf(own, change.username, userId) != 0) return user::nameTaken;
    if (userId == 0 && change.password.empty()) return user::noPassword;
    if (!isDayOrNothing(change.validFrom) || !isDayOrNothing(change.validTo)) return user::noSuchDay;
    return {};
}

Outcome writeUser(db::Connection& own, const Actor& actor, PasswordStore store, double userId,
                  const UserChange& change) {
    lockRegisters(own);
    if (const auto lack = lackOf(own, userId, change); !lack.empty()) return db::refuse(lack);
    if (userId == 0) {
        own.execute(insertUser,
                    {change.username, change.firstname, change.lastname, change.validFrom, change.validTo});
        userId = namesakeOf(own, change.username, 0);
    } else {
        const RecordLock lock(own, actor, "user", static_cast<int>(userId));
        if (!lock.isHeld()) return db::refuse(user::openElsewhere);
        own.execute(updateUser, {change.username, change.firstname, change.lastname, change.validFrom,
                                 change.validTo, userId});
    }
    if (!change.password.empty()) giveVisitorPassword(own, store, change.username, change.password);
    return db::commit(text::fromNumber(userId));
}

struct Membership {
    std::string user;
    std::string group;
};

Outcome writeMembership(db::Connection& own, const Actor& actor, double userId, int groupId, bool has,
                        Membership& told) {
    lockRegisters(own);
    const auto name = nameOf(own, userId);
    if (!name) return db::refuse(user::gone);
    {
        auto rows = own.query(selectGroup, {groupId});
        if (!rows.next()) return db::refuse(user::gone);
        told = {*name, rows.text("name")};
    }
    RecordLock lock(own, actor, "user", static_cast<int>(userId));
    if (!lock.isHeld()) return db::refuse(user::openElsewhere);
    own.execute(deleteMembership, {userId, groupId});
    if (has) own.execute(insertMembership, {userId, groupId});
    lock.giveBack();
    return db::commit(user::done);
}

Outcome resetFactor(db::Connection& own, double userId, std::string& told) {
    const auto name = nameOf(own, userId);
    if (!name) return db::refuse(user::gone);
    if (!dropSecondFactor(own, ofVisitor(static_cast<int>(userId)))) return db::refuse(user::noFactor);
    told = *name;
    return db::commit(std::string());
}

}  // namespace

Value registers::getUsers(const std::string& words, int groupId, double from) try {
    const auto first = firstRow(from);
    if (!first) return {};
    const auto patterns = patternsOf(words);
    std::string statement(selectColumns);
    std::vector<db::Parameter> values;
    for (const std::string& pattern : patterns) {
        statement += withWord;
        values.insert(values.end(), 3, std::string_view(pattern));
    }
    if (groupId > 0) {
        statement += ofGroup;
        values.emplace_back(groupId);
    }
    statement += inOrder;
    values.insert(values.end(), {mostUsers, *first});
    return db::gridOf(connection().query(statement, values));
} catch (...) {
    raiseFrom("getUsers !");
}

Value registers::getUser(double userId) try {
    return db::gridOf(connection().query(std::string(selectColumns).append(ofNumber), {userId}));
} catch (...) {
    raiseFrom("getUser !");
}

std::string registers::saveUser(double userId, const std::string& username, const std::string& password,
                                const std::string& firstname, const std::string& lastname,
                                const std::string& validFrom, const std::string& validTo, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const UserChange change{recordName(username),
                            text::trim(password),
                            recordName(firstname),
                            recordName(lastname),
                            std::string(text::trim(validFrom)),
                            std::string(text::trim(validTo))};
    const PasswordStore store = passwordStoreOf(host_);
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveUser of " + text::fromNumber(userId), status::failed,
                                [&](auto& own) { return writeUser(own, actor, store, userId, change); });
    if (!outcome.isCommitted) return outcome.value;
    const std::string told = "ntranet/extranet user \"" + change.shown() + '"';
    if (userId == 0) {
        recordChange("saveUser", advId, "new", "New i" + told);
    } else {
        recordChange("saveUser", advId, "save", "I" + told + " has been updated");
    }
    return outcome.value;
}

std::string registers::setUserGroup(double userId, int groupId, bool has, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    Membership told;
    const auto outcome = db::tryInOwnTransaction(
        host_, "setUserGroup of " + text::fromNumber(userId), status::failed,
        [&](auto& own) { return writeMembership(own, actor, userId, groupId, has, told); });
    if (outcome.isCommitted) {
        recordChange("setUserGroup", advId, "save",
                     fmt::format("Intranet/extranet user \"{}\" is {} the group \"{}\"", told.user,
                                 has ? "in" : "no longer in", told.group));
    }
    return outcome.value;
}

Value registers::getUserFactor(double userId) try {
    const auto state = factorStateOf(connection(), ofVisitor(static_cast<int>(userId)));
    ResultGrid grid(factorColumns);
    if (state) grid.add({state->since, state->codesLeft});
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getUserFactor !");
}

std::string registers::resetUserFactor(double userId, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    std::string told;
    const auto outcome =
        db::tryInOwnTransaction(host_, "resetUserFactor of " + text::fromNumber(userId), status::failed,
                                [&](auto& own) { return resetFactor(own, userId, told); });
    if (outcome.isCommitted)
        recordChange("resetUserFactor", advId, "delete",
                     "Second factor of intranet/extranet user \"" + told + "\" has been reset");
    return outcome.value;
}

}  // namespace torvex
