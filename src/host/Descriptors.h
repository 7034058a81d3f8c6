#pragma once

#include <cstddef>

namespace torvex {

/// How many descriptors this program may have open.
std::size_t descriptorLimit();

/// Raises the limit as far as the system lets this program.
void raiseDescriptorLimit();

/// How many of `wanted` connections there may be so that `descriptors` never run out: each has its socket
/// and, while it sends a large file, that file; workers have those of their database.
std::size_t connectionsWithin(std::size_t descriptors, std::size_t wanted, unsigned workers);

}  // namespace torvex
