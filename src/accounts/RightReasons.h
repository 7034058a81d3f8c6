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

// What `mayEditPage` and `mayUseEntry` answer, told role by role: one reason for each role of the login, by
// name. Who is the administrator needs no reason and is not asked about.

std::vector<RightReason> whyEdit(db::Connection& connection, int loginId, EditTask task,
                                 std::string_view nodeId);

/// `flag` is "view", "edit", or "" for either. No reasons for what the entry doesn't offer.
std::vector<RightReason> whyEntry(db::Connection& connection, int loginId, std::string_view flag, int advId,
                                  std::string_view site, std::string_view lang);

}  // namespace torvex
