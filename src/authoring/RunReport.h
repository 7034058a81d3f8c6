#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"

namespace torvex {

/// What operators know a run of an operation by: "publishPage of page 12".
inline std::string runOn(std::string_view operation, std::string_view ident) {
    return std::string(operation).append(" of page ").append(ident);
}

/// Runs what follows on a change of a page and can't undo it any more.
template <typename Work>
void followUp(HostContext& host, std::string_view operation, std::string_view ident, Work&& work) {
    followUp(host.log, runOn(operation, ident), std::forward<Work>(work));
}

}  // namespace torvex
