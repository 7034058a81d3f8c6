#pragma once

#include <string>
#include <string_view>

#include "accounts/Author.h"
#include "accounts/Proof.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// How a login ended; the numbers are what callers outside know.
enum class LoginCode {
    LoggedIn = 0,
    Unknown = 1,
    AddressRefused = 2,
    HeldElsewhere = 3,
    NeedsCode = 4,  ///< the password is right, and the login has a second factor that is still to be shown
    WrongCode = 5
};

/// What becomes of a session at another address that has the login.
enum class OtherHolder {
    Keeps,  ///< the newcomer is refused
    Loses   ///< it finds itself logged out
};

/// What is shown of a login's second factor.
struct SecondProof {
    std::string code{};      ///< as typed; "" for none
    int factorId = 0;        ///< the one that was shown before; then also the one that the code is of
    bool isOfPaper = false;  ///< whether the code was one of those on paper
};

/// Makes the request's session the holder of the login that the proof is for, if today lies within the
/// login's dates, its second factor is shown if it has one, and no session at another address keeps it; "sa" may
/// be held from anywhere. Frees what else the session held. Of two sessions at once only one passes. Fills
/// `author` when it succeeds and changes nothing when it doesn't, but that a right code is spent also when the
/// login is held elsewhere: `second` then says of which factor it was. Uses a connection of its own.
LoginCode takeLogin(HostContext& host, const Proof& proof, SecondProof& second, std::string_view address,
                    OtherHolder other, Author& author);

/// The writing half of it, without questions: for the row whose right was found before. To be run in a
/// transaction.
void holdRow(db::Connection& connection, HostContext& host, int loginId, std::string_view address);

/// Tells the session whose login it holds.
void storeAuthor(HostContext& host, const Author& author);

}  // namespace torvex
