#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/VisitorFactor.h"

namespace torvex {
namespace db {
class Connection;
}

// The door of visitors: from a right password to a session that is logged in.

/// A login whose password was right.
struct VisitorLogin {
    VisitorIdentity visitor;
    std::string target;   ///< by which rule it leads on: what the session keeps of it
    std::string address;  ///< where it leads
};

/// Lets the visitor in, if she has no second factor to show first and doesn't have to set one up. Otherwise the session is
/// nobody's, or whosever it was, and has ten minutes and few tries to show one: false. The login is kept in the memory of
/// this session alone, and in place of another one.
bool admitVisitor(HostContext& host, db::Connection& connection, const VisitorLogin& login);

/// The login that waits for a second factor. Nothing when there is none, or it is too old.
std::optional<VisitorLogin> pendingVisitor(const HostContext& host);
void forgetPendingVisitor(HostContext& host);

enum class ShownCode {
    LetIn,
    Wrong,
    ProveAgain  ///< name and password are to be given anew
};

/// Lets the visitor who waits in by a code of her telephone or one on paper.
ShownCode showVisitorCode(HostContext& host, std::string_view typed);

/// Lets the visitor who waits in by the factor that she has just set up.
FactorChange enrolPendingVisitor(HostContext& host, std::string_view code, std::vector<std::string>& codes);

}  // namespace torvex
