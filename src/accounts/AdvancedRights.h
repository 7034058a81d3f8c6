#pragma once

#include <string_view>

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

// Rights to open ("view") and to change ("edit") the entries of the administration menu; "" asks for either.
// They are given by role, for all sites and languages or for one; there is no denying, the first row that
// gives one counts. An entry that isn't by site, or not by language, is opened only by rows for all of them.

/// Of the two, what the flag asks for.
bool hasAsked(std::string_view flag, bool view, bool edit);

/// How an entry of the administration menu is opened.
struct EntryOffer {
    struct Place {
        std::string_view site;
        std::string_view lang;
    };

    bool isThere = false;
    int level = 0;  ///< 0 for the installation, 1 by site, 2 by site and language
    bool view = false;
    bool edit = false;

    /// Whether it can be given what the flag asks for.
    bool has(std::string_view flag) const { return isThere && hasAsked(flag, view, edit); }
    /// What of a place counts for it.
    Place placeIn(std::string_view site, std::string_view lang) const;
};
EntryOffer offerOf(db::Connection& connection, int advId);

/// Whether a row gives it to the login. False for what the entry doesn't offer, and when there is no such
/// entry. Blanks around `site` and `lang` don't count; neither does `lang`, nor `site`, for an entry that
/// isn't by them.
bool hasAdvancedRight(db::Connection& connection, int loginId, std::string_view flag, int advId,
                      std::string_view site, std::string_view lang);

/// The same for an actor, who as administrator has every right. A failure has the line of the operation that
/// answers this to callers outside ("checkAdvRights  !").
bool mayUseEntry(db::Connection& connection, const Actor& actor, std::string_view flag, int advId,
                 std::string_view site = {}, std::string_view lang = {});

}  // namespace torvex
