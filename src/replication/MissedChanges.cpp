#include "replication/MissedChanges.h"

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::size_t longestReason = 500;

constexpr std::string_view selectAny =
    "select 1 as one from TORVEX_SERVERS_MISSED where serverName = ? limit 1";
constexpr std::string_view deletePath = "delete from TORVEX_SERVERS_MISSED where serverName = ? and path = ?";
constexpr std::string_view insertPath =
    "insert into TORVEX_SERVERS_MISSED (serverName, path, task, reason, moment) values (?, ?, ?, ?, ?)";
constexpr std::string_view deleteServer = "delete from TORVEX_SERVERS_MISSED where serverName = ?";

}  // namespace

db::Connection& MissedChanges::connection() {
    if (!connection_) connection_.emplace(db::openOwn(host_, db::Purpose::Everything));
    return **connection_;
}

bool MissedChanges::hasMissedAny() {
    if (!hasMissed_) hasMissed_ = connection().query(selectAny, {server_}).next();
    return *hasMissed_;
}

void MissedChanges::note(const std::string& path, std::string_view task, const std::string& reason) {
    followUp(host_.log, "what server \"" + server_ + "\" has missed", [&] {
        if (hasMissedAny()) connection().execute(deletePath, {server_, path});
        if (reason.empty()) return;
        connection().execute(insertPath,
                             {server_, path, task, text::first(reason, longestReason), host_.clock.now()});
        hasMissed_ = true;
    });
}

void forgetMissedChanges(db::Connection& connection, std::string_view server) {
    connection.execute(deleteServer, {server});
}

}  // namespace torvex
