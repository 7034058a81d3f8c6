#include "accounts/Website.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "platform/db/Connection.h"
#include "platform/db/ValueList.h"

namespace torvex {

namespace {

constexpr std::string_view selectLock =
    "select loginId from TORVEX_LOGINS where sessionId <> '' and siteLock = ?";
constexpr std::string_view selectPlace = "select currentSite from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view updatePlace = "update TORVEX_LOGINS set currentSite = ? where loginId = ?";

constexpr std::string_view selectOthers =
    "select loginId from TORVEX_LOGINS where sessionId <> '' and loginId <> ? and currentSite = ?";
constexpr std::string_view updateLock = "update TORVEX_LOGINS set siteLock = ? where loginId = ?";

constexpr std::string_view leaveAsLogin =
    "update TORVEX_LOGINS set currentSite = '', siteLock = '' where loginId = ?";
constexpr std::string_view leaveAsSessions =
    "update TORVEX_LOGINS set currentSite = '', siteLock = '' where sessionId <> '' and sessionId";

bool isLocked(db::Connection& connection, std::string_view website) {
    return connection.query(selectLock, {website}).next();
}

std::string placeOf(db::Connection& connection, int loginId) {
    auto rows = connection.query(selectPlace, {loginId});
    return rows.next() ? rows.text("currentSite") : std::string();
}

bool hasOthers(db::Connection& connection, int loginId, std::string_view website) {
    return connection.query(selectOthers, {loginId, website}).next();
}

}  // namespace

bool enterWebsite(db::Connection& connection, int loginId, std::string_view website) {
    if (isLocked(connection, website)) return false;
    const std::string before = placeOf(connection, loginId);
    connection.execute(updatePlace, {website, loginId});
    if (!isLocked(connection, website)) return true;
    connection.execute(updatePlace, {before, loginId});
    return false;
}

void leaveWebsite(db::Connection& connection, int loginId) {
    connection.execute(leaveAsLogin, {loginId});
}

void leaveWebsites(db::Connection& connection, std::span<const std::string> sessionIds) {
    const std::string statement = db::withList(leaveAsSessions);
    std::vector<db::Parameter> list;
    for (std::size_t from = 0; from < sessionIds.size(); from += db::listLength) {
        const auto part = sessionIds.subspan(from, std::min(db::listLength, sessionIds.size() - from));
        list.clear();
        for (const std::string& id : part) list.emplace_back(std::string_view(id));
        list.resize(db::listLength, std::string_view());
        connection.execute(statement, list);
    }
}

// By way of the other constructor, so that the destructor runs when taking it fails half-way.
WebsiteLock::WebsiteLock(db::Connection& connection, int loginId, std::string_view website)
    : WebsiteLock(connection, loginId) {
    take(website);
}

void WebsiteLock::take(std::string_view website) {
    // Who will be refused anyway doesn't shut the door on others for a moment.
    if (hasOthers(connection_, loginId_, website)) return;
    connection_.execute(updateLock, {website, loginId_});
    held_ = true;
    if (hasOthers(connection_, loginId_, website)) release();
}

WebsiteLock::~WebsiteLock() {
    try {
        if (held_) release();
    } catch (const std::exception&) {
        // The next login, or the next start, empties it.
    }
}

void WebsiteLock::release() {
    connection_.execute(updateLock, {std::string_view(), loginId_});
    held_ = false;
}

}  // namespace torvex
