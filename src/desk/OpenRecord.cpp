// registers: an administrative record on its way into an author's hands.

#include <array>
#include <optional>

#include "accounts/Actor.h"
#include "accounts/AdminEntries.h"
#include "accounts/AdvancedRights.h"
#include "desk/registers.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/ItemKinds.h"
#include "records/ItemLocks.h"

namespace torvex {

namespace {

/// Who may change which record. Site and language are columns of the record, "" where its entry has none.
struct Register {
    std::string_view item;
    int entry;
    std::string_view site = "''";
    std::string_view lang = "''";
};

constexpr std::array<Register, 15> knownRegisters{{
    {"application", adminEntry::applications},
    {"baseTemplate", adminEntry::baseTemplates, "btpl_site", "btpl_lang"},
    {"contentTemplate", adminEntry::templates, "tpl_site", "tpl_lang"},
    {"group", adminEntry::groups},
    {"htmlFeed", adminEntry::htmlFeeds, "feedSite", "feedLang"},
    {"interface", adminEntry::interfaceLanguages},
    {"language", adminEntry::languages},
    {"login", adminEntry::logins},
    {"metadata", adminEntry::metadata, "metaData_site"},
    {"role", adminEntry::roles},
    {"server", adminEntry::servers},
    {"site", adminEntry::sites},
    {"stylesheet", adminEntry::stylesheets, "ss_site", "ss_lang"},
    {"user", adminEntry::users},
    {"xmlFeed", adminEntry::xmlFeeds, "feedSite", "feedLang"},
}};

constexpr std::string_view selectLogin =
    "select loginId, name from TORVEX_LOGINS where sessionId = ? and loginId <> ?";

struct Place {
    std::string site;
    std::string lang;
    std::string holder;  ///< a session's id
};

std::string placeStatement(const Register& known, const ItemKind& kind) {
    std::string statement("select ");
    statement.append(known.site).append(" as site, ").append(known.lang).append(" as lang, lock from ");
    return statement.append(kind.table).append(" where ").append(kind.keyColumn).append(" = ?");
}

/// Nothing when there is no such record.
std::optional<Place> placeOf(db::Connection& connection, const Register& known, std::string_view id) {
    const auto item = findAdminItem(known.item, id);
    if (!item) return std::nullopt;
    auto rows = connection.query(placeStatement(known, item->kind), {item->key});
    if (!rows.next()) return std::nullopt;
    return Place{rows.text("site"), rows.text("lang"), rows.text("lock")};
}

const Register* registerOf(std::string_view item) {
    for (const Register& known : knownRegisters)
        if (text::equals(known.item, item)) return &known;
    return nullptr;
}

Value answer(std::string_view state, int loginId = 0, const std::string& name = {}) {
    ResultGrid grid(3);
    grid.add({std::string(state), loginId, name});
    return gridOrEmpty(std::move(grid));
}

Value heldBy(db::Connection& connection, std::string_view session, const Actor& actor) {
    auto rows = connection.query(selectLogin, {session, actor.loginId});
    if (!rows.next()) return answer("other");
    return answer("other", static_cast<int>(rows.number("loginId")), rows.text("name"));
}

Value openSettings(HostContext& host, db::Connection& connection, const Actor& actor) {
    if (!mayUseEntry(connection, actor, "edit", adminEntry::settings)) return answer("noRight");
    if (takeConfiguration(connection, host.application, {actor.sessionId, actor.loginId}))
        return answer("held", actor.loginId, actor.fullname);
    return heldBy(connection, host.application.text(applicationKey::configLock), actor);
}

Value openRecord(db::Connection& connection, const Actor& actor, std::string_view item, std::string_view id) {
    const Register* known = registerOf(item);
    if (!known) return answer("gone");
    const auto place = placeOf(connection, *known, id);
    // Who may not change such records isn't told which there are.
    if (!mayUseEntry(connection, actor, "edit", known->entry, place ? place->site : std::string(),
                     place ? place->lang : std::string()))
        return answer("noRight");
    if (!place) return answer("gone");
    if (takeItem(connection, item, id, {actor.sessionId, actor.loginId}))
        return answer("held", actor.loginId, actor.fullname);
    const auto now = placeOf(connection, *known, id);
    return now ? heldBy(connection, now->holder, actor) : answer("gone");
}

}  // namespace

Value registers::open(const std::string& item, const std::string& id) try {
    const Actor actor = actorOf(host_);
    if (!actor.isLoggedIn()) return answer("noRight");
    if (text::equals(text::trim(item), "config")) return openSettings(host_, connection(), actor);
    return openRecord(connection(), actor, text::trim(item), text::trim(id));
} catch (...) {
    raiseFrom("open !");
}

}  // namespace torvex
