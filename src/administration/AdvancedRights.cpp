// cManager: what a login may open and change in the administration.

#include "accounts/AdvancedRights.h"

#include "accounts/Actor.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"

namespace torvex {

bool cManager::checkAdvRights(const std::string& flag, int advId, const std::string& site,
                              const std::string& lang, const std::string& username) try {
    // It is the caller's name that counts, whoever is asked for.
    if (isAdministrator(author_.username)) return true;
    return hasAdvancedRight(connection(), getLoginId(username), flag, advId, site, lang);
} catch (...) {
    raiseFrom("checkAdvRights  !");
}

}  // namespace torvex
