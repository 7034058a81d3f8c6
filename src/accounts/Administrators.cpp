#include "accounts/Administrators.h"

#include "accounts/Actor.h"
#include "accounts/AdminEntries.h"
#include "accounts/ProgramTokens.h"
#include "platform/DateTime.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectAdministrator =
    "select l.loginId from TORVEX_LOGINS l where l.username <> 'sa' and coalesce(l.kind, '') <> ? "
    "and (coalesce(l.validFrom, '') = '' or l.validFrom <= ?) "
    "and (coalesce(l.validTo, '') = '' or l.validTo >= ?) "
    "and exists (select b.advId from TORVEX_ROLES_LOGINS a inner join TORVEX_ADVANCED_RIGHTS b "
    "on b.roleId = a.roleId where a.loginId = l.loginId and b.advId = ? and b.site = '' and b.lang = '' "
    "and b.editAccess = 1) "
    "and exists (select b.advId from TORVEX_ROLES_LOGINS a inner join TORVEX_ADVANCED_RIGHTS b "
    "on b.roleId = a.roleId where a.loginId = l.loginId and b.advId = ? and b.site = '' and b.lang = '' "
    "and b.editAccess = 1)";

}  // namespace

bool someoneAdministers(db::Connection& connection, const DateTime& now) {
    const std::string today = date8(now);
    return connection
        .query(selectAdministrator, {programKind, today, today, adminEntry::logins, adminEntry::roles})
        .next();
}

bool tookLastAdministrator(db::Connection& transaction, const Actor& actor, bool before) {
    return before && !actor.isAdministrator() && !someoneAdministers(transaction, actor.now);
}

}  // namespace torvex
