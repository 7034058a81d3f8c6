#pragma once

#include <cstdint>
#include <optional>

#include "accounts/LoginHold.h"

namespace torvex {

/// A login whose password was right and whose second factor is still to be shown. It is kept in the memory of the
/// session alone, and for five minutes at most.
struct PendingLogin {
    Proof proof;
    OtherHolder other = OtherHolder::Keeps;
    int factorId = 0;  ///< the factor that was shown already: only the holder elsewhere is in the way
    std::int64_t begun = 0;
};

/// In place of another one.
void keepPending(HostContext& host, PendingLogin pending);
/// Nothing when there is none, or it is too old.
std::optional<PendingLogin> pendingLogin(const HostContext& host);
void forgetPending(HostContext& host);

}  // namespace torvex
