// registers: the other servers, and what of the installation they have missed.

#include "accounts/Actor.h"
#include "authoring/StatusCodes.h"
#include "desk/RecordFields.h"
#include "desk/RecordLock.h"
#include "desk/desk.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"
#include "replication/MissedChanges.h"
#include "replication/Replication.h"

namespace torvex {

namespace {

constexpr std::size_t longestAddress = 50;
constexpr int mostMissed = 500;

constexpr std::string_view selectServer = "select serverName from TORVEX_SERVERS where serverId = ?";
constexpr std::string_view selectNamesake =
    "select serverId from TORVEX_SERVERS where serverName = ? and serverId <> ?";
constexpr std::string_view insertServer =
    "insert into TORVEX_SERVERS (serverName, serverDescription, serverIP, lock) values (?, ?, ?, '')";
constexpr std::string_view updateServer =
    "update TORVEX_SERVERS set serverName = ?, serverDescription = ?, serverIP = ?, lock = '' "
    "where serverId = ?";
constexpr std::string_view selectMissed =
    "select serverName, path, task, reason, moment from TORVEX_SERVERS_MISSED "
    "order by serverName, missedId desc limit ?";

using Outcome = db::Outcome<std::string>;

struct ServerTexts {
    std::string name;
    std::string description;
    std::string address;
};

/// "0" when there is none.
std::string namesakeOf(db::Connection& connection, const std::string& name, int serverId) {
    auto rows = connection.query(selectNamesake, {name, serverId});
    return rows.next() ? rows.text("serverId") : "0";
}

Outcome changeServer(db::Connection& own, const Actor& actor, int serverId, const ServerTexts& texts) {
    const RecordLock lock(own, actor, "server", serverId);
    if (!lock.isHeld()) return db::refuse(recordStatus::openElsewhere);
    own.execute(updateServer, {texts.name, texts.description, texts.address, serverId});
    return db::commit(std::to_string(serverId));
}

Outcome addServer(db::Connection& own, const ServerTexts& texts) {
    own.execute(insertServer, {texts.name, texts.description, texts.address});
    return db::commit(namesakeOf(own, texts.name, 0));
}

Outcome writeServer(db::Connection& own, const Actor& actor, int serverId, const ServerTexts& texts) {
    lockRegisters(own);
    if (serverId != 0 && !own.query(selectServer, {serverId}).next()) return db::refuse(recordStatus::gone);
    if (!isServerName(texts.name)) return db::refuse(recordStatus::nameMissing);
    if (namesakeOf(own, texts.name, serverId) != "0") return db::refuse(recordStatus::nameTaken);
    return serverId == 0 ? addServer(own, texts) : changeServer(own, actor, serverId, texts);
}

}  // namespace

std::string registers::saveServer(int serverId, const std::string& name, const std::string& description,
                                  const std::string& address, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const ServerTexts texts{recordName(name), recordDescription(description),
                            recordText(address, longestAddress)};
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveServer of " + std::to_string(serverId), status::failed,
                                [&](auto& own) { return writeServer(own, actor, serverId, texts); });
    if (!outcome.isCommitted) return outcome.value;
    if (serverId == 0) {
        recordChange("saveServer", advId, "new", "New load balancing server \"" + texts.name + '"');
    } else {
        recordChange("saveServer", advId, "save",
                     "Load balancing server \"" + texts.name + "\" has been updated");
    }
    return outcome.value;
}

std::string registers::forgetMissed(int serverId, int advId) try {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    auto rows = connection().query(selectServer, {serverId});
    if (!rows.next()) return std::string(recordStatus::gone);
    const std::string name(text::trim(rows.text("serverName")));
    forgetMissedChanges(connection(), name);
    recordChange("forgetMissed", advId, "edit",
                 "Load balancing server \"" + name + "\" has been brought up to date");
    return "0";
} catch (...) {
    raiseFrom("forgetMissed !");
}

Value desk::getReplication() try {
    return db::gridOf(connection().query(selectMissed, {mostMissed}));
} catch (...) {
    raiseFrom("getReplication !");
}

}  // namespace torvex
