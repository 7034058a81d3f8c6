#include "pages/api/Circumstances.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

#include "operations/register/CodeLabels.h"
#include "pages/authors/HeldLogin.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"
#include "records/PageIdentity.h"

namespace torvex::api {

namespace {

using operations::GivenValues;
using operations::Operation;
using operations::StatusCode;

constexpr std::string_view selectHolder =
    "select b.name, a.lockingDate from TORVEX_PAGES_DESIGN a, TORVEX_LOGINS b "
    "where a.pageId = ? and a.lockStatus = 1 and b.loginId = a.lockedBy";
constexpr std::string_view selectNameBySession = "select name from TORVEX_LOGINS where sessionId = ?";
constexpr std::string_view selectTitle = "select title from TORVEX_PAGES_DESIGN where nodeId = ?";

/// Which record the first argument of an operation names.
struct Record {
    std::string_view operation;
    std::string_view item;
};
constexpr std::array<Record, 15> records{{{"deleteLogin", "login"},
                                          {"setLoginRole", "login"},
                                          {"saveRole", "role"},
                                          {"setEditRights", "role"},
                                          {"setAdvancedRight", "role"},
                                          {"deleteRole", "role"},
                                          {"deleteGroup", "group"},
                                          {"deleteUser", "user"},
                                          {"deleteServer", "server"},
                                          {"deleteHTMLfeed", "htmlFeed"},
                                          {"deleteXMLfeed", "xmlFeed"},
                                          {"delApplication", "application"},
                                          {"delTemplate", "contentTemplate"},
                                          {"delBaseTemplate", "baseTemplate"},
                                          {"delStylesheet", "stylesheet"}}};

std::string valueOf(const GivenValues& values, const std::string& name) {
    const auto found = std::find_if(values.begin(), values.end(),
                                    [&](const auto& one) { return text::equals(one.first, name); });
    return found == values.end() ? std::string() : found->second.toText();
}

/// The pages that the right of the operation is about.
std::vector<PageIdentity> pagesOf(db::Connection& connection, const Operation& operation,
                                  const GivenValues& arguments) {
    std::vector<PageIdentity> pages;
    for (const std::string& argument : {operation.right.page, operation.right.otherPage}) {
        if (argument.empty()) continue;
        PageIdentity page = identify(connection, valueOf(arguments, argument));
        if (page.isValid()) pages.push_back(std::move(page));
    }
    return pages;
}

std::string momentText(const Value& moment, const DateTime& now) {
    if (!moment.isDate()) return {};
    const DateTime& at = moment.date();
    const std::string clock = fmt::format("{}:{:02}", at.hour, at.minute);
    if (at.year == now.year && at.month == now.month && at.day == now.day) return clock;
    return fmt::format("{:04}-{:02}-{:02} {}", at.year, at.month, at.day, clock);
}

void addHolder(HostContext& host, db::Connection& connection, const PageIdentity& page,
               Circumstances& found) {
    if (!found.holder.empty()) return;
    auto rows = connection.query(selectHolder, {page.pageId});
    if (!rows.next()) return;
    found.holder = text::trim(rows.text("name"));
    found.since = momentText(rows.value("lockingDate"), host.clock.now());
}

void addParent(db::Connection& connection, const PageIdentity& page, Circumstances& found) {
    if (page.nodeId.size() <= PageIdentity::rootLength) return;
    const std::string parent = page.nodeId.substr(0, page.nodeId.size() - PageIdentity::levelLength);
    auto rows = connection.query(selectTitle, {parent});
    if (rows.next()) found.parent = text::trim(rows.text("title"));
}

void addHolderOfRecord(db::Connection& connection, const Operation& operation, const GivenValues& arguments,
                       Circumstances& found) {
    const auto record = std::find_if(records.begin(), records.end(),
                                     [&](const Record& one) { return one.operation == operation.name; });
    if (record == records.end()) return;
    const std::string id = valueOf(arguments, operation.arguments.front().name);
    const std::string session = holderOfItem(connection, record->item, id);
    if (session.empty()) return;
    auto rows = connection.query(selectNameBySession, {session});
    if (rows.next()) found.holder = text::trim(rows.text("name"));
}

/// Told to nobody but who knows the password.
void addPlaceOfLogin(db::Connection& connection, const DateTime& now, const std::string& username,
                     Circumstances& found) {
    auto [address, since] = holderOf(connection, username, now);
    found.address = std::move(address);
    found.since = std::move(since);
}

bool isOf(const StatusCode& code, const operations::CodeLabel& label) {
    return code.label.kind == label.kind;
}

}  // namespace

Circumstances circumstancesOf(HostContext& host, const Operation& operation, const StatusCode& code,
                              const GivenValues& arguments) {
    namespace label = operations::label;
    Circumstances found;
    const bool isHeld = isOf(code, label::lockedByOther);
    const bool hasParent = isOf(code, label::parentNotLive);
    const bool isOpen = isOf(code, label::openElsewhere) || isOf(code, label::goneOrOpen);
    const bool isLoginHeld = isOf(code, label::heldElsewhere);
    if (!isHeld && !hasParent && !isOpen && !isLoginHeld) return found;
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    if (isOpen) addHolderOfRecord(*connection, operation, arguments, found);
    if (isLoginHeld) addPlaceOfLogin(*connection, host.clock.now(), valueOf(arguments, "username"), found);
    for (const PageIdentity& page : pagesOf(*connection, operation, arguments)) {
        if (isHeld) addHolder(host, *connection, page, found);
        if (hasParent) addParent(*connection, page, found);
    }
    return found;
}

}  // namespace torvex::api
