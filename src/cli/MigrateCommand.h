#pragma once

#include <optional>
#include <string>

#include "cli/Terminal.h"

namespace torvex::cli {

struct MigrateOptions {
    std::optional<std::string> install;
};

/// Brings the database to the schema of this program, after a copy of it, and the words and files of the
/// authoring interface to what the program has.
ExitCode migrate(const MigrateOptions& options, const Environment& environment, const Terminal& terminal);

}  // namespace torvex::cli
