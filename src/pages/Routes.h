#pragma once

#include <vector>

#include "pages/PageRoute.h"

namespace torvex {

class ApplicationValues;

/// Every address that the server answers by itself; all others are files.
std::vector<PageRoute> pageRoutes();

/// The media folders, as far as visitors' groups guard them. `application` must outlive the guards.
std::vector<FileGuard> mediaGuards(const ApplicationValues& application);

}  // namespace torvex
