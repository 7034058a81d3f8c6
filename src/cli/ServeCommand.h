#pragma once

#include <optional>
#include <string>

#include "cli/Terminal.h"

namespace torvex::cli {

struct ServeOptions {
    std::optional<std::string> install;
    std::optional<std::string> listen;  ///< "ADDRESS:PORT"; none: as the settings say
};

/// Serves the installation until the program is asked to end. Logs to the terminal's `err`.
ExitCode serve(const ServeOptions& options, const Environment& environment);

}  // namespace torvex::cli
