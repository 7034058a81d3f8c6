#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace torvex {

/// How the files of the public folder are answered.
struct StaticFileOptions {
    std::size_t smallFile = 64 * 1024;
    std::size_t cacheBytes = 32 * 1024 * 1024;
    std::string cacheControl = "public, max-age=300";
    /// Folders that authors upload to, as in addresses ("/images/"). A document in them that could run script
    /// is answered in a sandbox: it shows, but runs nothing and is no part of this site.
    std::vector<std::string> uploads;
};

}  // namespace torvex
