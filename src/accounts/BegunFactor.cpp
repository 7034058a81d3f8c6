#include "accounts/BegunFactor.h"

#include "accounts/BriefMemory.h"
#include "accounts/TimeCode.h"

namespace torvex {

namespace {

struct Begun {
    FactorOwner owner;
    std::string secret;
};
constexpr BriefMemory<Begun> begunFactors{"torvex_begun_second_factor", std::chrono::minutes(10)};

}  // namespace

std::string beginFactor(HostContext& host, FactorOwner owner) {
    std::string secret = newSecret();
    begunFactors.keep(host, {owner, secret});
    return secret;
}

std::string begunSecret(const HostContext& host, FactorOwner owner) {
    const auto begun = begunFactors.get(host);
    return begun && begun->owner == owner ? begun->secret : std::string();
}

void forgetBegun(HostContext& host) {
    begunFactors.forget(host);
}

}  // namespace torvex
