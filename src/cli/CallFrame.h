#pragma once

#include <optional>
#include <string>

#include "cli/CallCommand.h"
#include "cli/Terminal.h"

namespace torvex::cli {

struct CallFrameOptions {
    std::optional<std::string> install;
    bool batch = false;  ///< requests come as lines of JSON from the terminal
    CallOptions one;     ///< what to call otherwise
};

struct ReferenceOptions {
    bool json = false;  ///< for programs
};

/// Calls an operation of a public class on the installation, beside a server that may run on it.
ExitCode call(const CallFrameOptions& options, const Environment& environment, const Terminal& terminal);

/// Prints the reference of all operations: a page, or for programs. Needs no installation.
ExitCode reference(const ReferenceOptions& options, const Terminal& terminal);

}  // namespace torvex::cli
