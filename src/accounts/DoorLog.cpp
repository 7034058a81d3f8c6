#include "accounts/DoorLog.h"

#include <fmt/format.h>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/Request.h"
#include "platform/text/LogText.h"

namespace torvex {

namespace {

std::string address(const HostContext& host) {
    const std::string address = host.request.serverVariable("remote_addr");
    return address.empty() ? "this machine" : forLog(address);  // of a command there is none
}

std::string person(LoginAttempt::Kind kind, std::string_view name) {
    return fmt::format("{} \"{}\"", kind == LoginAttempt::Kind::Author ? "author" : "visitor", forLog(name));
}

}  // namespace

void logFailedLogin(HostContext& host, LoginAttempt::Kind kind, std::string_view name,
                    std::string_view reason) {
    host.log.warn(fmt::format("failed login from {} ({}): {}", address(host), reason, person(kind, name)));
}

void logLockOut(HostContext& host, LoginAttempt::Kind kind, std::string_view name,
                std::chrono::seconds wait) {
    host.log.warn(fmt::format("locked out for {} s after failed logins from {}: {}", wait.count(),
                              address(host), person(kind, name)));
}

void logEarlyTry(HostContext& host) {
    host.log.warn(fmt::format("a login from {} has to wait: too many attempts", address(host)));
}

void logLogout(HostContext& host, LoginAttempt::Kind kind, std::string_view name) {
    host.log.note(fmt::format("logout from {}: {}", address(host), person(kind, name)));
}

}  // namespace torvex
