#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files/FileSystem.h"
#include "replication/Replication.h"

namespace torvex {

/// The files of the installation as all servers are to have them. A change is made here at once; the other
/// servers follow when `replicate` is called, which may take long and so doesn't belong into a transaction.
/// Failures here are `Error` with the line of the operation that does the same for callers outside.
class SharedFiles {
  public:
    explicit SharedFiles(HostContext& host) : host_(host), replication_(host) {}

    /// False when the path names nothing. The folder's parent must be there; a folder that is there already
    /// is left alone.
    bool createFolder(std::string_view dir);
    /// False when the path names nothing. With all that is in it; none there is no error.
    bool deleteFolder(std::string_view dir);
    /// The name may hold wild cards; none there is no error.
    void deleteFile(std::string_view path);
    /// Copies a file over another, if there is one to copy.
    void copyFile(std::string_view source, std::string_view target);
    /// Gives a file another name, over what bears it, if there is one to move.
    void moveFile(const std::string& source, const std::string& target);

    /// Writes files over those that are there. When it throws, any of them may be written.
    void writeTexts(const std::vector<TextFile>& texts, TextFormat format);

    /// Removes the folders that were made here, for an operation that is taken back.
    void takeBack();
    /// Never fails for what a server does.
    void replicate() { replication_.run(); }

  private:
    void addFile(const std::string& file, FileChange change);
    void addFolder(const std::string& folder, FolderChange change);

    HostContext& host_;
    Replication replication_;
    std::vector<std::string> madeFolders_;
};

}  // namespace torvex
