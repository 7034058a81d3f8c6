#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "operations/calls/Batch.h"

namespace torvex::cli {

/// One operation as the command line names it: `CLASS.OPERATION name=value ...`.
struct CallOptions {
    std::string target;                  ///< "CLASS.OPERATION"
    std::vector<std::string> arguments;  ///< "name=value"
    std::string login;                   ///< the author who calls; "" for none
    bool json = false;                   ///< the answer as a line of a batch
};

/// Runs it in a request of its own and prints the result: as text, a grid as a table. What the operation
/// wrote to the response is printed too. Returns the exit code: 0, or 1 with the error on `err`.
int runCall(operations::BatchEngine& engine, const CallOptions& options, std::ostream& out,
            std::ostream& err);

}  // namespace torvex::cli
