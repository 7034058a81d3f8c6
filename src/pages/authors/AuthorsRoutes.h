#pragma once

#include <memory>
#include <vector>

#include "pages/PageRoute.h"

namespace torvex {

class GuessThrottle;
namespace operations {
class Register;
}

/// The addresses below "/torvex/" in which authors work, but for those of programs. `classes` are the operations
/// that programs call as well; `throttle` counts wrong passwords over all addresses that take one; `interface` may
/// be null.
std::vector<PageRoute> authorsRoutes(std::shared_ptr<const operations::Register> classes,
                                     std::shared_ptr<GuessThrottle> throttle,
                                     std::shared_ptr<const BuiltInterface> interface);

}  // namespace torvex
