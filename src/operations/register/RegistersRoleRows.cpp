#include "accounts/AdminEntries.h"
#include "operations/register/RegistersRows.h"
#include "operations/register/RightsLabels.h"

namespace torvex::operations {

namespace {

/// What refusals say to people: see install/rows/08_words_rights.sql.
namespace label {
using namespace torvex::operations::label;
inline constexpr CodeLabel roleGone{5440, "gone"};
inline constexpr CodeLabel roleNameTaken{5441, "name-taken"};
inline constexpr CodeLabel roleNameMissing{5442, "name-missing"};
inline constexpr CodeLabel noSuchWebsite{5444, "no-such-website"};
inline constexpr CodeLabel pageOfScopeGone{5445, "no-such-page"};
inline constexpr CodeLabel noSuchEntry{5446, "no-such-entry"};
inline constexpr CodeLabel notGivenSo{5447, "no-such-right"};
inline constexpr CodeLabel moreThanOwn{5448, "more-than-own"};
inline constexpr CodeLabel loginOrRoleGone{5450, "gone"};
}  // namespace label

StatusCode openElsewhere() {
    return refusal(-4, "Another login has it open.", label::openElsewhere);
}
StatusCode moreThanOwn() {
    return refusal(-5, "That is more than the caller has.", label::moreThanOwn);
}
StatusCode lastAdministrator() {
    return refusal(-6, "Nobody but sa would be left to give rights.", label::lastAdministrator);
}

std::vector<Row<registers>> logins() {
    return {
        reads("getLogins", &registers::getLogins, {},
              "The logins by name, with what tells whether each is used and can be.",
              viewAccess(adminEntry::logins))
            .lists({{"loginId", Number},
                    {"username", Text},
                    {"name", Text},
                    {"job", Text},
                    {"lastLogin", Date},
                    {"isOnline", Number},
                    {"validFrom", Text},
                    {"validTo", Text},
                    {"isProgram", Number},
                    {"isStrong", Number},
                    {"roles", Number},
                    {"secondFactor", Number}}),
    };
}

std::vector<Row<registers>> lists() {
    const Right look = viewAccess(adminEntry::roles);
    return {
        reads("getRoles", &registers::getRoles, {},
              "The roles, how many logins have each, and whether it demands a second factor; by name.", look)
            .lists({{"roleId", Number},
                    {"roleName", Text},
                    {"roleDesc", Text},
                    {"logins", Number},
                    {"secondFactor", Number}}),
        reads("getRoleLogins", &registers::getRoleLogins, {argument("roleId")},
              "The logins, with 1 where they have the role; by name.", look)
            .lists({{"loginId", Number}, {"username", Text}, {"name", Text}, {"held", Number}}),
        reads("getEditRights", &registers::getEditRights, {argument("roleId")},
              "What a role may do to pages, by site and language.", look)
            .lists({{"site", Text},
                    {"lang", Text},
                    {"onOff", Number},
                    {"move", Number},
                    {"publish", Number},
                    {"approve", Number},
                    {"edit", Number},
                    {"scope", Text}}),
        reads("getAdvancedRights", &registers::getAdvancedRights, {argument("roleId")},
              "What a role may open of the administration menu; an empty site or language is all of them.",
              look)
            .lists({{"entry", Number}, {"site", Text}, {"lang", Text}, {"view", Number}, {"edit", Number}}),
        reads("weighEditRights", &registers::weighEditRights,
              {argument("roleId"), argument("site"), argument("lang"), argument("rights"),
               argument("scope", "")},
              "Whom a change of a role's edit rights would hit: to how many pages each login may do a task "
              "now, and afterwards.",
              look)
            .lists({{"loginId", Number},
                    {"name", Text},
                    {"task", Text},
                    {"now", Number},
                    {"afterwards", Number}}),
        reads("weighAdvancedRight", &registers::weighAdvancedRight,
              {argument("roleId"), argument("entry"), argument("site"), argument("lang"), argument("view"),
               argument("edit")},
              "Whom a change of a role's advanced right would hit: whether each login has the access there "
              "now, and afterwards.",
              look)
            .lists({{"loginId", Number},
                    {"name", Text},
                    {"access", Text},
                    {"now", Number},
                    {"afterwards", Number}}),
    };
}

std::vector<Row<registers>> changes() {
    return {
        writes("saveRole", &registers::saveRole,
               {argument("roleId"), argument("name"), argument("description"), argument("advId", 0)},
               "Names a role, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::roles))
            .codes({refusal(-1, "The role is gone.", label::roleGone),
                    refusal(-2, "Another role has this name.", label::roleNameTaken),
                    refusal(-3, "A name is missing.", label::roleNameMissing), openElsewhere(), notLoggedIn(),
                    failed()}),
        writes(
            "setEditRights", &registers::setEditRights,
            {argument("roleId"), argument("site"), argument("lang"), argument("rights"),
             argument("scope", ""), argument("advId", 0)},
            "Gives a role edit rights in a site and language in place of those that it had: five flags for "
            "onOff, move, publish, approve and edit, in the whole tree or at some nodes and below.",
            editAccess(adminEntry::roles))
            .codes({code(0, "It is saved."), refusal(-1, "The role is gone.", label::roleGone),
                    refusal(-2, "There is no such site or language.", label::noSuchWebsite),
                    refusal(-3, "The flags are none, or a page of the scope isn't there.",
                            label::pageOfScopeGone),
                    openElsewhere(), moreThanOwn(), notLoggedIn(), failed()}),
        writes(
            "setAdvancedRight", &registers::setAdvancedRight,
            {argument("roleId"), argument("entry"), argument("site"), argument("lang"), argument("view"),
             argument("edit"), argument("advId", 0)},
            "Lets a role view or edit an entry of the administration menu in one place, in place of what it "
            "had there; an empty site or language is all of them.",
            editAccess(adminEntry::roles))
            .codes({code(0, "It is saved."), refusal(-1, "The role is gone.", label::roleGone),
                    refusal(-2, "There is no such entry.", label::noSuchEntry),
                    refusal(-3, "The entry doesn't offer this, or not for such a place.", label::notGivenSo),
                    openElsewhere(), moreThanOwn(), lastAdministrator(), notLoggedIn(), failed()}),
        writes("setLoginRole", &registers::setLoginRole,
               {argument("loginId"), argument("roleId"), argument("has"), argument("advId", 0)},
               "Gives a login a role, or takes it away.", editAccess(adminEntry::logins))
            .codes({code(0, "It is saved."),
                    refusal(-1, "The login or the role is gone.", label::loginOrRoleGone), openElsewhere(),
                    moreThanOwn(), lastAdministrator(), notLoggedIn(), failed()}),
    };
}

}  // namespace

std::vector<Row<registers>> registersRoleRows() {
    return joined({logins(), lists(), changes()});
}

}  // namespace torvex::operations
