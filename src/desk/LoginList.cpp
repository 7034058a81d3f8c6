// registers: the logins as their administrators look at them.

#include "accounts/ProgramTokens.h"
#include "accounts/StrongPassword.h"
#include "desk/StoredMoment.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::size_t loginColumns = 12;

/// A login may hold a role twice.
constexpr std::string_view selectLogins =
    "select l.loginId, l.username, l.name, l.job, l.date, l.time, l.sessionId, l.validFrom, l.validTo, "
    "l.kind, l.password, "
    "(select count(distinct a.roleId) from TORVEX_ROLES_LOGINS a where a.loginId = l.loginId) as roles, "
    "(select count(*) from TORVEX_SECOND_FACTORS f where f.loginId = l.loginId) as secondFactor "
    "from TORVEX_LOGINS l order by l.name, l.loginId";

int flag(bool is) {
    return is ? 1 : 0;
}

std::vector<Value> lineOf(const db::Rows& row) {
    const auto last = storedMoment(row.view("date"), row.text("time") + ":00");
    return {row.value("loginId"),
            row.text("username"),
            row.text("name"),
            row.text("job"),
            last ? Value(*last) : Value(),
            flag(!text::trim(row.view("sessionId")).empty()),
            row.text("validFrom"),
            row.text("validTo"),
            flag(text::equals(row.view("kind"), programKind)),
            flag(isStrongMark(row.view("password"))),
            row.value("roles"),
            row.value("secondFactor")};
}

}  // namespace

Value registers::getLogins() try {
    ResultGrid grid(loginColumns);
    auto rows = connection().query(selectLogins);
    while (rows.next()) grid.add(lineOf(rows));
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getLogins !");
}

}  // namespace torvex
