#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {

class BuiltInterface;

/// The files by which the interface begins, as addresses: one script, what it imports at once, its styles.
struct EntryFiles {
    std::string script;
    std::vector<std::string> imports;
    std::vector<std::string> styles;
};

/// Reads them from the list that the build made. Throws `Error` when the list isn't there or isn't one.
EntryFiles entryFilesOf(const BuiltInterface& interface);

}  // namespace torvex
