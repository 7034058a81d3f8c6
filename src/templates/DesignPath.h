#pragma once

#include <string>
#include <string_view>

namespace torvex {
class ApplicationValues;

/// The path of a file of the design. `folderKey` is the application value that holds its register's folder
/// (applicationKey::contentTemplatesPath and the like), in which each website has a folder of its own.
std::string designPath(const ApplicationValues& application, std::string_view folderKey,
                       std::string_view site, std::string_view lang, std::string_view file);

}  // namespace torvex
