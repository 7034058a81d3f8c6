#include "accounts/AdvancedRights.h"

#include "accounts/Actor.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectOffer =
    "select advLevel, advView, advEdit from TORVEX_ADVANCED where advId = ?";

constexpr std::string_view selectAccess =
    "select b.viewAccess, b.editAccess from TORVEX_ROLES_LOGINS a "
    "inner join TORVEX_ADVANCED_RIGHTS b on b.roleId = a.roleId "
    "where a.loginId = ? and b.advId = ? and (b.site = '' or b.site = ?) and (b.lang = '' or b.lang = ?)";

}  // namespace

bool hasAsked(std::string_view flag, bool view, bool edit) {
    if (flag.empty()) return view || edit;
    return (view && text::equals(flag, "view")) || (edit && text::equals(flag, "edit"));
}

EntryOffer::Place EntryOffer::placeIn(std::string_view site, std::string_view lang) const {
    return {level >= 1 ? text::trim(site) : std::string_view(),
            level >= 2 ? text::trim(lang) : std::string_view()};
}

EntryOffer offerOf(db::Connection& connection, int advId) {
    auto rows = connection.query(selectOffer, {advId});
    if (!rows.next()) return {};
    return {true, static_cast<int>(rows.number("advLevel")), rows.number("advView") == 1,
            rows.number("advEdit") == 1};
}

bool hasAdvancedRight(db::Connection& connection, int loginId, std::string_view flag, int advId,
                      std::string_view site, std::string_view lang) {
    const std::string_view asked = text::trim(flag);
    const EntryOffer offer = offerOf(connection, advId);
    if (!offer.has(asked)) return false;
    const auto wanted = offer.placeIn(site, lang);
    auto rows = connection.query(selectAccess, {loginId, advId, wanted.site, wanted.lang});
    while (rows.next()) {
        if (hasAsked(asked, rows.number("viewAccess") == 1, rows.number("editAccess") == 1)) return true;
    }
    return false;
}

bool mayUseEntry(db::Connection& connection, const Actor& actor, std::string_view flag, int advId,
                 std::string_view site, std::string_view lang) try {
    return actor.isAdministrator() || hasAdvancedRight(connection, actor.loginId, flag, advId, site, lang);
} catch (...) {
    raiseFrom("checkAdvRights  !");
}

}  // namespace torvex
