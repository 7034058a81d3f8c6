#include "accounts/ProgramTokens.h"

#include <algorithm>

#include "accounts/AccessFilter.h"
#include "platform/db/Connection.h"
#include "platform/text/Hexadecimal.h"
#include "platform/text/RandomSecret.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"

namespace torvex {

namespace {

constexpr std::string_view prefix = "tvx_";
constexpr std::size_t longestName = 100;
constexpr std::size_t longestList = 4000;
/// A text that is longer is no token; it isn't even hashed.
constexpr std::size_t longestToken = 200;
constexpr std::size_t untilMinute = 16;  ///< of a moment's text

constexpr std::string_view selectKind = "select kind from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view insertToken =
    "insert into TORVEX_API_TOKENS (loginId, name, tokenHash, operations, addresses, lastDay) "
    "values (?, ?, ?, ?, ?, ?)";
constexpr std::string_view selectToken =
    "select t.tokenId, t.loginId, t.operations, t.addresses, t.lastDay, t.lastUse, l.username, l.name, "
    "l.kind, l.validFrom, l.validTo from TORVEX_API_TOKENS t, TORVEX_LOGINS l "
    "where t.tokenHash = ? and l.loginId = t.loginId";
constexpr std::string_view noteUse = "update TORVEX_API_TOKENS set lastUse = ? where tokenId = ?";

/// Of so many random bits a quick hash is as good as a slow one.
std::string hashOf(std::string_view text) {
    return sha256(text);
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool isName(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), isLetter);
}

bool isOperationName(std::string_view item) {
    const std::size_t dot = item.find('.');
    return dot != std::string_view::npos && isName(item.substr(0, dot)) && isName(item.substr(dot + 1));
}

/// Calls `test` with each item of a list until it says true.
template <typename Test>
bool anyItem(std::string_view list, Test&& test) {
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(','), list.size());
        if (test(text::trim(list.substr(0, end)))) return true;
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return false;
}

bool isReadsOnly(std::string_view operations) {
    return text::equals(text::trim(operations), readsOnly);
}

bool areOperations(std::string_view operations) {
    if (isReadsOnly(operations)) return true;
    const bool hasOther = anyItem(operations, [](std::string_view item) { return !isOperationName(item); });
    return !text::trim(operations).empty() && !hasOther;
}

bool mayBeUsed(const db::Rows& row, std::string_view address, const std::string& today) {
    return text::equals(text::trim(row.text("kind")), programKind) &&
           isWithin(today, "", text::trim(row.text("lastDay"))) &&
           isWithin(today, row.text("validFrom"), row.text("validTo")) &&
           passesExactAccessFilter(text::trim(row.text("addresses")), address);
}

/// Not more often: a program that reads should not make the database write.
bool isNotedInMinute(const Value& lastUse, const DateTime& now) {
    return lastUse.isDate() &&
           isoText(lastUse.date()).substr(0, untilMinute) == isoText(now).substr(0, untilMinute);
}

}  // namespace

std::string programSession(int loginId) {
    return "program " + std::to_string(loginId);
}

bool isProgram(db::Connection& connection, int loginId) {
    auto rows = connection.query(selectKind, {loginId});
    return rows.next() && text::equals(text::trim(rows.text("kind")), programKind);
}

bool isUsable(const TokenWish& wish) {
    return !text::trim(wish.name).empty() && text::length(wish.name) <= longestName &&
           wish.operations.size() <= longestList && wish.addresses.size() <= longestList &&
           areOperations(wish.operations) && (wish.lastDay.empty() || isDate8(wish.lastDay));
}

std::string makeToken(db::Connection& transaction, const TokenWish& wish) {
    const std::string made = std::string(prefix) + randomSecret();
    const std::string hash = hashOf(made);
    transaction.execute(insertToken, {wish.loginId, text::trim(wish.name), hash, text::trim(wish.operations),
                                      text::trim(wish.addresses), wish.lastDay});
    return made;
}

std::optional<ProgramToken> useToken(db::Connection& connection, std::string_view text,
                                     std::string_view address, const DateTime& now) {
    if (!text.starts_with(prefix) || text.size() > longestToken) return std::nullopt;
    const std::string hash = hashOf(text);
    ProgramToken token;
    bool isNoted = false;
    {
        auto rows = connection.query(selectToken, {hash});
        if (!rows.next() || !mayBeUsed(rows, address, date8(now))) return std::nullopt;
        token = {static_cast<int>(rows.number("tokenId")), static_cast<int>(rows.number("loginId")),
                 rows.text("username"), rows.text("name"), rows.text("operations")};
        isNoted = isNotedInMinute(rows.value("lastUse"), now);
    }
    if (!isNoted) connection.execute(noteUse, {now, token.tokenId});
    return token;
}

bool coversOperation(std::string_view operations, std::string_view className, std::string_view operation) {
    const std::string name = std::string(className) + '.' + std::string(operation);
    return anyItem(operations, [&](std::string_view item) { return text::equals(item, name); });
}

bool coversClass(std::string_view operations, std::string_view className) {
    const std::string start = std::string(className) + '.';
    return isReadsOnly(operations) ||
           anyItem(operations, [&](std::string_view item) { return text::startsWith(item, start); });
}

}  // namespace torvex
