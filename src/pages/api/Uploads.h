#pragma once

#include <memory>
#include <vector>

#include "pages/PageRoute.h"
#include "pages/api/Api.h"
#include "pages/api/UploadSettings.h"

namespace torvex::api {

/// The addresses by which files come in pieces, after the protocol tus 1.0: /torvex/api/uploads and all below.
std::vector<PageRoute> uploadRoutes(const std::shared_ptr<Api>& api, const UploadSettings& settings);

}  // namespace torvex::api
