#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "search/catalogue/Entry.h"

namespace torvex {
class ApplicationValues;
}

namespace torvex::catalogue {

/// Which files a catalogue holds: the copies of pages below "search/html" and the documents of all sites. Their
/// paths lie below the installation and are divided by "/". Hidden files and what writers leave in the making
/// are none of them; links aren't followed. Safe to share between threads.
class Holdings {
  public:
    /// `documents` is the name of their folder.
    Holdings(std::string_view installPath, std::string_view documents);
    static Holdings of(const ApplicationValues& application);

    const std::string& root() const { return root_; }  ///< ends in "/"
    std::string absolute(std::string_view path) const { return root_ + std::string(path); }

    /// The path of a file, or of a folder when it ends in "/"; none when it can't be held.
    std::optional<std::string> pathOf(std::string_view absolute) const;
    bool folderExists(std::string_view path) const;
    /// None when there is no plain file.
    std::optional<FileStamp> stampOf(std::string_view path) const;

    /// All that are there, a folder that can't be read aside.
    void visit(const std::function<void(const std::string& path, const FileStamp&)>& visitor) const;

  private:
    std::string root_;
    std::vector<std::string> folders_;  ///< each ends in "/"
};

}  // namespace torvex::catalogue
