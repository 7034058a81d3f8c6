#pragma once

#include <memory>
#include <vector>

#include "pages/PageRoute.h"

namespace torvex {

class GuessThrottle;

/// The addresses below "/torvex/" in which authors work, but for those of programs. `throttle` counts wrong
/// passwords over all addresses that take one; `interface` may be null.
std::vector<PageRoute> authorsRoutes(std::shared_ptr<GuessThrottle> throttle,
                                     std::shared_ptr<const BuiltInterface> interface);

}  // namespace torvex
