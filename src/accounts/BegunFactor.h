#pragma once

#include <string>

#include "accounts/SecondFactor.h"

namespace torvex {
struct HostContext;

// A secret that was told, and that no code has confirmed yet: it stands in the memory of the session alone, for ten
// minutes, so that a row is a factor that counts, and nothing has to be cleared away.

/// A new one, in place of another.
std::string beginFactor(HostContext& host, FactorOwner owner);
/// "" when none was begun for the owner, or too long ago.
std::string begunSecret(const HostContext& host, FactorOwner owner);
void forgetBegun(HostContext& host);

}  // namespace torvex
