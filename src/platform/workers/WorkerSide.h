#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "platform/workers/WorkerLimits.h"

/// The other side of a `WorkerProcess`: what the helper itself does.
namespace torvex::workerSide {

/// Confines this process, then answers requests until the other side goes or the process has worked long
/// enough. The exit code of the process.
int serve(const WorkerLimits& limits, std::size_t longestRequest,
          const std::function<std::string(std::string_view request)>& answer);

/// Sends an answer that is made already, and ends the process: for when nothing more can be allocated.
/// `withLength` comes from the function of that name.
[[noreturn]] void sendAndEnd(const std::string& withLength);
std::string withLength(std::string_view message);

}  // namespace torvex::workerSide
