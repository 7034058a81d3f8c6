#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace torvex {

/// Media types by the suffix of a file's name, in lower case without its point.
using MediaTypes = std::map<std::string, std::string, std::less<>>;

/// How the files of the public folder are answered.
struct StaticFileOptions {
    std::size_t smallFile = 64 * 1024;
    std::size_t cacheBytes = 32 * 1024 * 1024;
    std::string cacheControl = "public, max-age=300";
    /// Folders that authors upload to, as in addresses ("/images/"). A document in them that could run script
    /// is answered in a sandbox: it shows, but runs nothing and is no part of this site.
    std::vector<std::string> uploads;
    /// Public besides those that are known.
    MediaTypes types{};
    /// Whether texts are sent smaller to whoever takes them so.
    bool encodes = false;
};

}  // namespace torvex
