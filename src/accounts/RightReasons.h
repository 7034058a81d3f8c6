#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "accounts/EditRights.h"

namespace torvex {

/// What a role of a login has to do with a question about rights.
struct RightReason {
    /// "gives" what is asked for; "outside": gives it in this tree, under other nodes; "elsewhere": gives it in
    /// other sites and languages; "otherRights": gives something else here; "nothing" of all this.
    std::string_view kind = "nothing";
    int roleId = 0;
    std::string role;
    /// Where it gives it: nodes divided by commas, for menu entries sites and languages as "bg.en", "bg",
    /// ".de", or "" for everywhere.
    std::string places = {};
    std::string rights = {};  ///< of "otherRights", divided by commas
};

struct RightAnswer {
    bool isGiven = false;
    std::vector<RightReason> reasons;  ///< one for each role of the login, by name
};

// Why a login may do something by its roles, or may not: the answer is that of `editRightsOf` and of
// `hasAdvancedRight`, told role by role. Who is the administrator needs no reason and is not asked about.

RightAnswer whyEdit(db::Connection& connection, int loginId, EditTask task, std::string_view nodeId);

/// `flag` is "view", "edit", or "" for either.
RightAnswer whyEntry(db::Connection& connection, int loginId, std::string_view flag, int advId,
                     std::string_view site, std::string_view lang);

/// How an entry of the administration menu is opened.
struct EntryOffer {
    bool isThere = false;
    int level = 0;
    bool view = false;
    bool edit = false;

    /// Whether it can be given what the flag asks for.
    bool has(std::string_view flag) const;
};
EntryOffer offerOf(db::Connection& connection, int advId);

}  // namespace torvex
