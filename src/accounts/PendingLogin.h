#pragma once

#include "accounts/BriefMemory.h"
#include "accounts/LoginHold.h"

namespace torvex {

/// A login whose password was right and whose second factor is still to be shown.
struct PendingLogin {
    Proof proof;
    OtherHolder other = OtherHolder::Keeps;
    int factorId = 0;  ///< the factor that was shown already: only the holder elsewhere is in the way
};

inline constexpr BriefMemory<PendingLogin> pendingLogins{"torvex_pending_login", std::chrono::minutes(5)};

}  // namespace torvex
