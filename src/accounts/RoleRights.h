#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/EditRights.h"

namespace torvex {

// The rights that a role gives, as their rows are kept, and who may give them: nobody gives what she hasn't got.

/// What a role allows to be done to pages of one site and language.
struct EditGrant {
    std::string site;
    std::string lang;
    EditRights rights;
    std::string scope;  ///< nodes divided by commas, "" for the whole tree

    bool isNothing() const;
};

/// What a role opens of the administration menu; an empty site or language stands for all of them.
struct EntryGrant {
    int entry = 0;
    std::string site;
    std::string lang;
    bool view = false;
    bool edit = false;

    bool isNothing() const { return !view && !edit; }
};

/// Nothing when there is no such role.
std::optional<std::string> roleNameOf(db::Connection& connection, int roleId);

/// "01001" in the order of `editTasks`; nothing for another text.
std::optional<EditRights> editRightsFrom(std::string_view flags);

/// All of a role, by site and language; in one of them with `site` and `lang`.
std::vector<EditGrant> editGrantsOf(db::Connection& connection, int roleId);
std::vector<EditGrant> editGrantsOf(db::Connection& connection, int roleId, std::string_view site,
                                    std::string_view lang);
/// All of a role, by entry, site and language.
std::vector<EntryGrant> entryGrantsOf(db::Connection& connection, int roleId);
/// What the role has of an entry in exactly this place.
EntryGrant entryGrantOf(db::Connection& connection, int roleId, int entry, std::string_view site,
                        std::string_view lang);

/// In place of what the role had there; none where nothing is given. For a transaction.
void writeEditGrant(db::Connection& transaction, int roleId, const EditGrant& grant);
void writeEntryGrant(db::Connection& transaction, int roleId, const EntryGrant& grant);

/// Whether the actor has all that the grant gives, beyond what the role `had` there before.
bool mayGive(db::Connection& connection, const Actor& actor, const EditGrant& grant,
             const std::vector<EditGrant>& had);
bool mayGive(db::Connection& connection, const Actor& actor, const EntryGrant& grant, const EntryGrant& had);
/// Whether the actor has all that the role gives.
bool mayGiveRole(db::Connection& connection, const Actor& actor, int roleId);

}  // namespace torvex
