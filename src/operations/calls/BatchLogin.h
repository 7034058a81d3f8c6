#pragma once

#include <string>

namespace torvex {
struct HostContext;
}

namespace torvex::operations {

/// Makes the request's session the holder of a login, as it stands after the author gave the right password:
/// the session has the login's keys, the login's row has the session's id, and other logins that the session
/// held are free. Leaves no line in the audit trail. Throws `Error`, with nothing changed, when there is no
/// such username.
void holdLogin(HostContext& host, const std::string& username);

}  // namespace torvex::operations
