#pragma once

#include <cstdint>
#include <string>

#include "installation/StaticFileOptions.h"

namespace torvex::api {

/// Where files go that authors upload, and which are taken.
struct UploadSettings {
    std::string folder;  ///< of those on their way; nobody reads from it outside. "" takes none
    std::uint64_t mostBytes = 0;
    MediaTypes types{};  ///< besides those that are known
};

}  // namespace torvex::api
