#include "records/ItemLocks.h"

#include <optional>
#include <string>

#include "platform/ApplicationWriting.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/ItemKinds.h"

namespace torvex {

namespace {

constexpr std::string_view selectOtherHolder =
    "select sessionId from TORVEX_LOGINS where sessionId = ? and loginId <> ?";
constexpr std::string_view releaseLanguageOfSite =
    "update TORVEX_SITES_LANGUAGES set lock = '' where site = ? and lang = ? and lock = ?";

constexpr std::string_view configurationLock = applicationKey::configLock;

/// Every attempt that fails is another session's success, so that this many in a row are no accident.
constexpr int mostAttempts = 100;

std::string join(std::initializer_list<std::string_view> parts) {
    std::string whole;
    for (const std::string_view part : parts) whole += part;
    return whole;
}

std::string selectLock(const ItemKind& kind) {
    return join({"select lock from ", kind.table, " where ", kind.keyColumn, " = ?"});
}
std::string replaceLock(const ItemKind& kind) {
    return join(
        {"update ", kind.table, " set lock = ? where ", kind.keyColumn, " = ? and coalesce(lock, '') = ?"});
}
std::string releaseLock(const ItemKind& kind) {
    return join({"update ", kind.table, " set lock = '' where ", kind.keyColumn, " = ? and lock = ?"});
}

/// Nothing when there is no such record.
std::optional<std::string> holderOf(db::Connection& connection, const AdminItem& item) {
    auto rows = connection.query(selectLock(item.kind), {item.key});
    if (!rows.next()) return std::nullopt;
    return rows.text("lock");
}

bool isKeptByOther(db::Connection& connection, std::string_view holder, const LockSeeker& seeker) {
    if (holder.empty() || text::equals(holder, seeker.sessionId)) return false;
    return connection.query(selectOtherHolder, {holder, seeker.loginId}).next();
}

/// False when the holder isn't the expected one any more.
bool replaceHolder(ApplicationValues& application, std::string_view expected, std::string_view next) {
    const ApplicationWriting lock(application);
    if (!text::equals(application.text(configurationLock), expected)) return false;
    application.set(configurationLock, next);
    return true;
}

}  // namespace

bool takeItem(db::Connection& connection, std::string_view item, std::string_view itemId,
              const LockSeeker& seeker) {
    const auto found = findAdminItem(item, itemId);
    if (!found) return false;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const auto holder = holderOf(connection, *found);
        if (!holder || isKeptByOther(connection, *holder, seeker)) return false;
        const auto written =
            connection.execute(replaceLock(found->kind), {seeker.sessionId, found->key, *holder});
        if (written > 0) return true;
    }
    throw db::DatabaseError("the lock is changed by others all the time");
}

std::string holderOfItem(db::Connection& connection, std::string_view item, std::string_view itemId) {
    const auto found = findAdminItem(item, itemId);
    return found ? holderOf(connection, *found).value_or("") : std::string();
}

void releaseItem(db::Connection& connection, std::string_view item, std::string_view itemId,
                 std::string_view sessionId) {
    const auto found = findAdminItem(item, itemId);
    if (!found) return;
    if (found->kind.word == "language") {
        const std::string_view id = text::trim(itemId);
        connection.execute(releaseLanguageOfSite, {text::first(id, 2), text::last(id, 2), sessionId});
    } else {
        connection.execute(releaseLock(found->kind), {found->key, sessionId});
    }
}

bool takeConfiguration(db::Connection& connection, ApplicationValues& application, const LockSeeker& seeker) {
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const std::string holder = application.text(configurationLock);
        if (isKeptByOther(connection, holder, seeker)) return false;
        if (replaceHolder(application, holder, seeker.sessionId)) return true;
    }
    throw db::DatabaseError("the lock is changed by others all the time");
}

void releaseConfiguration(ApplicationValues& application, std::string_view sessionId) {
    replaceHolder(application, sessionId, "");
}

}  // namespace torvex
