#include "accounts/AdminEntries.h"
#include "operations/register/DeskRows.h"

namespace torvex::operations {

namespace {

/// Everybody may ask about herself.
Right oneselfOrRoles() {
    Right right = oneselfOrEditAccess("loginId", adminEntry::roles);
    right.detail = "view";
    return right;
}

}  // namespace

std::vector<Row<desk>> deskRightsRows() {
    const std::vector<Column> columns{{"state", Text},  {"roleId", Number}, {"role", Text},
                                      {"places", Text}, {"rights", Text},   {"titles", Text}};
    return {
        reads(
            "why", &desk::why, {argument("loginId"), argument("action"), argument("pageIdent")},
            "Why a login may do \"onoff\", \"move\", \"publish\", \"approve\" or \"edit\" to a page, or may "
            "not: \"yes\" or \"no\", then what decides it, role by role, then what she would need.",
            oneselfOrRoles())
            .lists(columns),
        reads(
            "whyEntry", &desk::whyEntry,
            {argument("loginId"), argument("flag"), argument("advId"), argument("site", ""),
             argument("lang", "")},
            "The same for \"view\" or \"edit\" access to an entry of the administration menu; an empty flag "
            "asks for either.",
            oneselfOrRoles())
            .lists(columns),
    };
}

}  // namespace torvex::operations
