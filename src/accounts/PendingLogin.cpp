#include "accounts/PendingLogin.h"

#include <memory>

#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Session.h"

namespace torvex {

namespace {

constexpr std::string_view key = "torvex_pending_login";
constexpr std::int64_t longest = 300;

struct KeptPending final : SessionObject {
    explicit KeptPending(PendingLogin login) : pending(std::move(login)) {}
    PendingLogin pending;
};

}  // namespace

void keepPending(HostContext& host, PendingLogin pending) {
    if (pending.begun == 0) pending.begun = host.clock.unixSeconds();
    host.session.setObject(key, std::make_shared<KeptPending>(std::move(pending)));
}

std::optional<PendingLogin> pendingLogin(const HostContext& host) {
    const auto kept = std::dynamic_pointer_cast<const KeptPending>(host.session.object(key));
    if (!kept || host.clock.unixSeconds() - kept->pending.begun > longest) return std::nullopt;
    return kept->pending;
}

void forgetPending(HostContext& host) {
    host.session.setObject(key, nullptr);
}

}  // namespace torvex
