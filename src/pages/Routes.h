#pragma once

#include <vector>

#include "pages/PageRoute.h"

namespace torvex {

/// Every address that the server answers by itself; all others are files.
std::vector<PageRoute> pageRoutes();

}  // namespace torvex
