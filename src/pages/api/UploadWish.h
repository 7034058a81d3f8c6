#pragma once

#include "installation/StaticFileOptions.h"
#include "media/UploadStore.h"
#include "pages/api/UploadMetadata.h"

namespace torvex::api {

/// The plan of an upload by what is told of it, without its login and its length. Throws
/// `operations::ArgumentError` for what is missing or can't be meant.
UploadPlan planOf(const UploadMetadata& metadata);

/// Whether files of this name are kept among images, or documents, and the browser's word for the type agrees:
/// both or neither must be a picture. `claimed` may be empty.
bool isKeptKind(MediaKind kind, const std::string& name, std::string_view claimed, const MediaTypes& more);

}  // namespace torvex::api
