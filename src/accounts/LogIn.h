#pragma once

#include <string>

#include "accounts/LoginHold.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

// The door of the authoring side: who comes through has the login in her session, with her settings and a new
// token. Each try leaves a line in the audit trail, a failed one in the operators' log as well. `author` is
// changed only when the answer is `LoggedIn`. Where a login has a second factor, the right password is answered by
// `NeedsCode`, which leaves no line; the session then has five minutes to show it.

/// By a name and a password, whose case doesn't count nor blanks around them. With `OtherHolder::Loses` no
/// session at another address keeps the login.
LoginCode logIn(HostContext& host, db::Connection& connection, const std::string& username,
                const std::string& password, OtherHolder other, Author& author);

/// Once more, by what the session's author proved when she logged in; the token stays.
LoginCode confirmLogin(HostContext& host, Author& author);

/// The second step: a code of the telephone or one on paper, of the login that the session has proved by its name and
/// password. `Unknown` when it hasn't, or too long ago. Where another holder was in the way, the code needn't be given
/// again with `OtherHolder::Loses`.
LoginCode showCode(HostContext& host, db::Connection& connection, const std::string& username,
                   const std::string& code, OtherHolder other);

/// A line in the trail: somebody asked for what only authors get.
void auditDenial(HostContext& host);

/// The address that the request came from, as the trail names it.
std::string callersAddress(const HostContext& host);

}  // namespace torvex
