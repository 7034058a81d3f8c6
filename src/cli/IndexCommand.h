#pragma once

#include <optional>
#include <string>

#include "cli/Terminal.h"
#include "installation/Environment.h"

namespace torvex::cli {

struct IndexOptions {
    std::optional<std::string> install;
    bool all = false;
    bool check = false;
    std::optional<std::string> serve;  ///< "ADDRESS:PORT"
};

/// Compares the catalogue of the search with the files and takes in what differs, or all files anew; it can be
/// stopped and goes on with the next run. With `check` it only counts: `ExitCode::Failed` when something
/// differs. With `serve` it answers other servers until it is asked to end.
ExitCode index(const IndexOptions& options, const Environment& environment, const Terminal& terminal);

}  // namespace torvex::cli
