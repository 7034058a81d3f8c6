#include "desk/RecordLock.h"

#include "accounts/Actor.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"

namespace torvex {

RecordLock::RecordLock(db::Connection& transaction, const Actor& actor, std::string_view item, int id)
    : transaction_(transaction), actor_(actor), item_(item), id_(std::to_string(id)) {
    wasOurs_ = text::equals(holderOfItem(transaction_, item_, id_), actor_.sessionId);
    isHeld_ = takeItem(transaction_, item_, id_, {actor_.sessionId, actor_.loginId});
}

void RecordLock::giveBack() {
    if (!wasOurs_) releaseItem(transaction_, item_, id_, actor_.sessionId);
}

}  // namespace torvex
