#pragma once

#include <chrono>
#include <string_view>

#include "accounts/LoginAttempt.h"

namespace torvex {
struct HostContext;

// Lines of the operators' log about who comes to the doors and goes. Never a password; what was typed as a
// name stands last and cut, so that it can't pass for anything else that the line says.

void logFailedLogin(HostContext& host, LoginAttempt::Kind kind, std::string_view name,
                    std::string_view reason = "wrong name or password");
/// After a failure, when the next try has to wait.
void logLockOut(HostContext& host, LoginAttempt::Kind kind, std::string_view name, std::chrono::seconds wait);
/// A try that came before its time. The line is the same for all of an address: they cost nothing to make.
void logEarlyTry(HostContext& host);
void logLogout(HostContext& host, LoginAttempt::Kind kind, std::string_view name);

}  // namespace torvex
