#include "accounts/BegunFactor.h"

#include <memory>

#include "accounts/TimeCode.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Session.h"

namespace torvex {

namespace {

constexpr std::string_view key = "torvex_begun_second_factor";
constexpr std::int64_t longest = 600;

struct Begun final : SessionObject {
    Begun(FactorOwner whose, std::string made, std::int64_t moment)
        : owner(whose), secret(std::move(made)), at(moment) {}
    FactorOwner owner;
    std::string secret;
    std::int64_t at;
};

}  // namespace

std::string beginFactor(HostContext& host, FactorOwner owner) {
    std::string secret = newSecret();
    host.session.setObject(key, std::make_shared<Begun>(owner, secret, host.clock.unixSeconds()));
    return secret;
}

std::string begunSecret(const HostContext& host, FactorOwner owner) {
    const auto begun = std::dynamic_pointer_cast<const Begun>(host.session.object(key));
    const bool isUsable = begun && begun->owner == owner && host.clock.unixSeconds() - begun->at <= longest;
    return isUsable ? begun->secret : std::string();
}

void forgetBegun(HostContext& host) {
    host.session.setObject(key, nullptr);
}

}  // namespace torvex
