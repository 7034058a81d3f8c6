// registers: applications, which pages of their own kind stand for.

#include "accounts/Actor.h"
#include "authoring/StatusCodes.h"
#include "desk/DesignStatus.h"
#include "desk/RecordFields.h"
#include "desk/RecordLock.h"
#include "desk/registers.h"
#include "platform/HostContext.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/Existence.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::size_t longestAddress = 500;

constexpr std::string_view selectNamesake =
    "select app_id from TORVEX_APPLICATIONS where app_name = ? and app_id <> ? order by app_id";
constexpr std::string_view insertApplication =
    "insert into TORVEX_APPLICATIONS (app_name, app_description, app_href_public, app_href_admin, "
    "app_href_publish, app_param_public, app_param_admin, app_system, lock) "
    "values (?, ?, ?, ?, ?, '', '', 0, '')";
constexpr std::string_view updateApplication =
    "update TORVEX_APPLICATIONS set app_name = ?, app_description = ?, app_href_public = ?, "
    "app_href_admin = ?, app_href_publish = ?, lock = '' where app_id = ?";

using Outcome = db::Outcome<std::string>;

struct Texts {
    std::string name;
    std::string description;
    std::string forVisitors;
    std::string forAuthors;
    std::string publishes;
};

/// "0" when there is none.
std::string namesakeOf(db::Connection& own, const std::string& name, int appId) {
    auto rows = own.query(selectNamesake, {name, appId});
    return rows.next() ? rows.text("app_id") : "0";
}

Outcome change(db::Connection& own, const Actor& actor, int appId, const Texts& texts) {
    const RecordLock lock(own, actor, "application", appId);
    if (!lock.isHeld()) return db::refuse(designStatus::openElsewhere);
    own.execute(updateApplication,
                {texts.name, texts.description, texts.forVisitors, texts.forAuthors, texts.publishes, appId});
    return db::commit(std::to_string(appId));
}

Outcome add(db::Connection& own, const Texts& texts) {
    own.execute(insertApplication,
                {texts.name, texts.description, texts.forVisitors, texts.forAuthors, texts.publishes});
    return db::commit(namesakeOf(own, texts.name, 0));
}

Outcome write(db::Connection& own, const Actor& actor, int appId, const Texts& texts) {
    lockRegisters(own);
    if (appId != 0 && !applicationExists(own, appId)) return db::refuse(designStatus::gone);
    if (texts.name.empty()) return db::refuse(designStatus::nameMissing);
    if (namesakeOf(own, texts.name, appId) != "0") return db::refuse(designStatus::nameTaken);
    return appId == 0 ? add(own, texts) : change(own, actor, appId, texts);
}

}  // namespace

std::string registers::saveApplication(int appId, const std::string& name, const std::string& description,
                                       const std::string& urlPublic, const std::string& urlAdmin,
                                       const std::string& urlPublish, int advId) {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return std::string(status::notLoggedIn);
    const Texts texts{recordName(name), recordDescription(description), recordText(urlPublic, longestAddress),
                      recordText(urlAdmin, longestAddress), recordText(urlPublish, longestAddress)};
    const auto outcome =
        db::tryInOwnTransaction(host_, "saveApplication of " + std::to_string(appId), status::failed,
                                [&](auto& own) { return write(own, actor, appId, texts); });
    if (!outcome.isCommitted) return outcome.value;
    if (appId == 0) {
        recordChange("saveApplication", advId, "new", "New application \"" + texts.name + '"');
    } else {
        recordChange("saveApplication", advId, "save", "Application \"" + texts.name + "\" has been updated");
    }
    return outcome.value;
}

}  // namespace torvex
