#pragma once

#include <iosfwd>

#include "installation/Environment.h"

namespace torvex::cli {

/// What a command reads from and writes to: results go to `out`, everything else to `err`.
struct Terminal {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    bool errIsWatched = false;  ///< `err` is a screen, on which a line can be drawn again
};

/// What the program answers to its caller.
enum class ExitCode { Ok = 0, Failed = 1, WrongUsage = 2 };

}  // namespace torvex::cli
