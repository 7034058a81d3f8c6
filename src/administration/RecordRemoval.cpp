#include "administration/RecordRemoval.h"

#include <algorithm>

#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"

namespace torvex {

void deleteRows(db::Connection& transaction, std::span<const std::string_view> statements, double key) {
    for (const std::string_view statement : statements) transaction.execute(statement, {key});
}

bool findsAny(db::Connection& transaction, std::span<const std::string_view> statements, double key) {
    return std::ranges::any_of(
        statements, [&](std::string_view statement) { return transaction.query(statement, {key}).next(); });
}

std::string cManager::removeRecord(std::string_view operation, double id, int advId,
                                   const RecordRemoval& removal) {
    const auto removed = db::tryInOwnTransaction(
        host_, std::string(operation) + " of " + text::fromNumber(id), status::failed, removal);
    if (!removed.isCommitted) return removed.value;
    if (advId > 0) recordRemoval(operation, advId, removed.value);
    return {};
}

void cManager::recordChange(std::string_view operation, int advId, const std::string& action,
                            const std::string& description) {
    followUp(host_.log, std::string(operation) + " (" + description + ")",
             [&] { addAuditTrail("", std::to_string(advId), action, description); });
}

void cManager::recordRemoval(std::string_view operation, int advId, const std::string& what) {
    recordChange(operation, advId, "delete", what + " has been removed");
}

LockSeeker cManager::lockSeeker() const {
    return {host_.session.id(), author_.loginId};
}

}  // namespace torvex
