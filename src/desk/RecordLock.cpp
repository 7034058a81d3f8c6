#include "desk/RoleLock.h"

#include "accounts/Actor.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"

namespace torvex {

namespace {

constexpr std::string_view selectRole = "select roleName from TORVEX_ROLES where roleId = ?";

}  // namespace

RoleLock::RoleLock(db::Connection& transaction, const Actor& actor, std::string_view item, int id)
    : transaction_(transaction), actor_(actor), item_(item), id_(std::to_string(id)) {
    wasOurs_ = text::equals(holderOfItem(transaction_, item_, id_), actor_.sessionId);
    isHeld_ = takeItem(transaction_, item_, id_, {actor_.sessionId, actor_.loginId});
}

void RoleLock::giveBack() {
    if (!wasOurs_) releaseItem(transaction_, item_, id_, actor_.sessionId);
}

std::optional<std::string> roleName(db::Connection& connection, int roleId) {
    auto rows = connection.query(selectRole, {roleId});
    if (!rows.next()) return std::nullopt;
    return rows.text("roleName");
}

}  // namespace torvex
