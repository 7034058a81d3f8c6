#pragma once

#include <memory>
#include <vector>

#include "pages/PageRoute.h"
#include "pages/api/UploadSettings.h"

namespace torvex {

class ApplicationValues;

/// Every address that the server answers by itself; all others are files.
/// `interface` is that of authors; without one they are told that there is none.
std::vector<PageRoute> pageRoutes(std::shared_ptr<const BuiltInterface> interface = nullptr,
                                  const api::UploadSettings& uploads = {});

/// The media folders, as far as visitors' groups guard them. `application` must outlive the guards.
std::vector<FileGuard> mediaGuards(const ApplicationValues& application);

}  // namespace torvex
