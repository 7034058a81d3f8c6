#pragma once

#include <variant>

namespace torvex {
class GuessThrottle;
}

namespace torvex::operations {

/// The owner of the installation, on its machine: may call everything.
struct CommandLine {};

/// Whoever reaches the server's address: passes the gate.
struct Network {
    GuessThrottle& throttle;  ///< shared by all requests
};

/// Where a call comes from.
using Origin = std::variant<CommandLine, Network>;

}  // namespace torvex::operations
