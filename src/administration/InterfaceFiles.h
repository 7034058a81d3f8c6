#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files/FileSystem.h"

namespace torvex {
namespace db {
class Connection;
}
struct HostContext;

/// A language's folder of templates, as it is to be.
struct InterfaceFiles {
    std::vector<std::string> folders;  ///< a folder before those in it
    std::vector<TextFile> files;
};

/// The master templates with their labels in a language, in English where it has no word. `templates` is the
/// folder of all languages' folders; the masters lie in "gen" in it and one folder deep at most. Throws when
/// one can't be read.
InterfaceFiles translatedInterface(const FileSystem& files, db::Connection& connection,
                                   const std::string& templates, std::string_view language);

/// Writes such a folder here and on the other servers, its files in Unicode, over those that are there. When
/// it throws, none has changed but those that the disk lost between two names.
void writeInterface(HostContext& host, const InterfaceFiles& interface);

}  // namespace torvex
