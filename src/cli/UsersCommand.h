#pragma once

#include <optional>
#include <string>

#include "cli/Terminal.h"

namespace torvex::cli {

struct ImportUsersOptions {
    std::optional<std::string> install;
    std::string file;     ///< "-" for standard input
    std::string charset;  ///< "" for Unicode
    bool dryRun = false;
};

struct ExportUsersOptions {
    std::optional<std::string> install;
    bool passwords = false;
};

/// Adds and changes visitors' accounts by a table. All of its lines are taken or none: those that can't be
/// are told, each by its number, and give `ExitCode::Failed`. A dry run says of each line what would happen.
ExitCode importUsers(const ImportUsersOptions& options, const Environment& environment,
                     const Terminal& terminal);

/// Writes all accounts as such a table.
ExitCode exportUsers(const ExportUsersOptions& options, const Environment& environment,
                     const Terminal& terminal);

}  // namespace torvex::cli
