#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "cli/CallFrame.h"
#include "cli/IndexCommand.h"
#include "cli/InitCommand.h"
#include "cli/MigrateCommand.h"
#include "cli/ServeCommand.h"
#include "cli/SnapshotCommand.h"
#include "cli/SqlCommand.h"
#include "cli/UsersCommand.h"

namespace torvex::cli {

/// A text that was asked for in place of a command: help or the version.
struct ShowText {
    std::string text;
};

/// What a command line asks for.
using Command =
    std::variant<InitOptions, ServeOptions, SqlOptions, MigrateOptions, CallFrameOptions, SnapshotOptions,
                 IndexOptions, ImportUsersOptions, ExportUsersOptions, ReferenceOptions, ShowText>;

/// Reads the arguments of the program. Throws `UsageError` for a command line that makes no sense.
Command parseCommandLine(int count, const char* const* arguments);

/// Runs the program: reads the command line, carries it out, and tells errors on the terminal.
ExitCode runProgram(int count, const char* const* arguments, const Environment& environment,
                    const Terminal& terminal);

}  // namespace torvex::cli
