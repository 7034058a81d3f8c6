#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "accounts/Proof.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

// Passwords of visitors. A row holds the password itself, or, once it is kept strongly, a mark in its place
// and a hash beside it. What the row holds is what a session keeps and all questions compare: the mark lets a
// session in, but nobody who types it.

/// What a visitor who wants to log in has shown to know.
struct VisitorProof {
    double userId = 0;
    std::string stored;                 ///< what the row holds, if need be in the visitor's spelling
    std::optional<StrongForm> renewal;  ///< takes its place if the login succeeds
};

/// Checks a typed password; nothing if there is no such account or the password is wrong. With the strong
/// store each call takes the same time, whatever it finds.
std::optional<VisitorProof> proofOfVisitor(db::Connection& connection, PasswordStore store,
                                           const std::string& username, const std::string& password);

/// Puts the renewal into the row, on a connection of its own. Gives what the row holds then, which may be
/// what another login of the same account has just put there.
std::string renewVisitor(HostContext& host, const VisitorProof& proof, const std::string& username,
                         const std::string& password);

/// The mark that stands for a typed password; nothing when the account doesn't keep this one strongly. Costs
/// a hash when the account has one.
std::optional<std::string> markFor(db::Connection& connection, const std::string& username,
                                   const std::string& password);

/// Gives an account a password, in the form that the store wants.
void giveVisitorPassword(db::Connection& connection, PasswordStore store, std::string_view username,
                         std::string_view password);

/// Whether a visitor's row is one whose hash is to be asked.
bool isKeptStrongly(std::string_view password, std::string_view hash);

}  // namespace torvex
