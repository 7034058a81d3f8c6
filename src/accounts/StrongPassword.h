#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// A password in the form that keeps it secret even from who reads the database. It takes two columns: the
/// hash, and in place of the old stored form a mark that names this hash. The mark is random and tells
/// nothing about the password, so it may stand in a session: as long as it equals the row's, the password is
/// still the one that was given.
struct StrongForm {
    std::string mark;  ///< "strong:" and thirteen random letters and digits; no typed password encodes to it
    std::string hash;  ///< Argon2id, with its salt and its costs
};

/// Matches every mark with `like`.
inline constexpr std::string_view anyStrongMark = "strong:%";

/// Takes some 50 ms of one core and 32 MiB: what a guess costs too. Case and blanks around the password are
/// ignored, as in the old form, but all of its characters count. Throws `Error` when there is no memory for
/// it.
StrongForm makeStrongForm(std::string_view password);

/// Costs as much as making one. False also for a hash that is none, and when there is no memory to find out.
bool isPasswordOf(std::string_view hash, std::string_view password);

/// Whether a stored password is a mark.
bool isStrongMark(std::string_view stored);

}  // namespace torvex
