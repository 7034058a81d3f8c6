#pragma once

#include <optional>
#include <string>

#include "cli/Terminal.h"

namespace torvex::cli {

struct SnapshotOptions {
    std::optional<std::string> install;
    bool all = false;
    std::string page;  ///< a number or a node; left empty with `all`
};

/// Renews the files that the full text catalogue reads: of one page, or of all, after which those of pages
/// that are gone are removed. Each is replaced as a whole, so that the catalogue never lacks one meanwhile.
/// Not all could be written: `ExitCode::Failed`, with a line for each.
ExitCode snapshot(const SnapshotOptions& options, const Environment& environment, const Terminal& terminal);

}  // namespace torvex::cli
