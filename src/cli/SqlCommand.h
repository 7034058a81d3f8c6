#pragma once

#include <optional>
#include <string>

#include "cli/Terminal.h"

namespace torvex::cli {

struct SqlOptions {
    std::optional<std::string> install;
    bool json = false;
    std::optional<std::string> statements;  ///< none: they are read from the terminal
};

/// Runs statements in one transaction on the installation's database and shows their rows. When one fails,
/// nothing is kept; the error names its number.
ExitCode sql(const SqlOptions& options, const Environment& environment, const Terminal& terminal);

}  // namespace torvex::cli
