#pragma once

#include <exception>
#include <fmt/format.h>
#include <string_view>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/text/Text.h"

namespace torvex {

/// Tells operators why an operation could only answer with its code for failures, or what of it is missing.
inline void warnOf(HostContext& host, std::string_view operation, std::string_view ident,
                   const std::exception& error) {
    host.log.warn(
        fmt::format("{} of page {}: {}", operation, ident, text::replaceAll(error.what(), "\r\n", " ")));
}

/// Runs what follows on a change and can't undo it any more: a failure is told and does no harm.
template <typename Work>
void followUp(HostContext& host, std::string_view operation, std::string_view ident, Work work) {
    try {
        work();
    } catch (const std::exception& error) {
        warnOf(host, operation, ident, error);
    }
}

}  // namespace torvex
