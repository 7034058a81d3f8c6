// cManager: the locks of administrative records.

#include <cmath>
#include <limits>

#include "accounts/Actor.h"
#include "accounts/AdvancedRights.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"

namespace torvex {

namespace {

bool isConfiguration(std::string_view item) {
    return text::equals(text::trim(item), "config");
}

/// The entry of the administration menu that asks for the settings; 0, which is none, for anything else.
int entryOf(std::string_view itemId) {
    const double number = text::toNumber(itemId);
    const bool isEntry =
        number > 0 && number <= std::numeric_limits<int>::max() && std::trunc(number) == number;
    return isEntry ? static_cast<int>(number) : 0;
}

}  // namespace

bool cManager::lockItem(const std::string& item, const std::string& itemId) try {
    const LockSeeker seeker{host_.session.id(), author_.loginId};
    if (!isConfiguration(item)) return takeItem(connection(), item, itemId, seeker);
    return mayUseEntry(connection(), actor(), "edit", entryOf(itemId)) &&
           takeConfiguration(connection(), host_.application, seeker);
} catch (...) {
    raiseFrom("lockItem !");
}

void cManager::unlockItem(const std::string& item, const std::string& itemId) try {
    if (isConfiguration(item)) {
        releaseConfiguration(host_.application, host_.session.id());
    } else {
        releaseItem(connection(), item, itemId, host_.session.id());
    }
} catch (...) {
    raiseFrom("unlockItem !");
}

}  // namespace torvex
