#pragma once

#include <string>
#include <string_view>

namespace torvex {

class FileSystem;

/// File names with "*" for any characters and "?" for one. Case matters, as it does in names.
bool hasWildCard(std::string_view name);
/// An ending ".*" also stands for no ending: "*.*" is every name.
bool matchesWildCard(std::string_view name, std::string_view pattern);

/// Deletes the files, not the folders, of a folder whose names match; none is no error. `folder` must be
/// there.
void deleteMatchingFiles(FileSystem& files, const std::string& folder, std::string_view pattern);

}  // namespace torvex
