#pragma once

#include <map>
#include <set>

#include "platform/files/FileSystem.h"

namespace torvex::test {

/// A file system without a disk. "\" divides as "/" does. Folders come to be with the files in them.
class MemoryFileSystem final : public FileSystem {
  public:
    /// The files themselves, by path: tests fill and look at them.
    std::map<std::string, std::string> bytes;
    /// Folders that were made on purpose.
    std::set<std::string> madeFolders;
    /// The broken disk: while set, reading (writing) throws `Error` with this reason.
    std::string readFailure;
    std::string writeFailure;
    /// How many texts and files were read: a second reading of the same is often a fault.
    mutable int reads = 0;

    bool fileExists(const std::string& path) const override;
    bool folderExists(const std::string& path) const override;
    std::optional<std::string> readText(const std::string& path, TextFormat format) const override;
    std::optional<std::string> readBytes(const std::string& path) const override;
    std::optional<std::string> readRange(const std::string& path, std::uint64_t offset,
                                         std::size_t length) const override;
    std::optional<std::uint64_t> fileSize(const std::string& path) const override;
    void writeText(const std::string& path, std::string_view text, TextFormat format) override;
    void writeBytes(const std::string& path, std::string_view content) override;
    void createFolder(const std::string& path) override;
    void copyFile(const std::string& from, const std::string& to) override;
    void deleteFile(const std::string& path) override;
    void deleteFolder(const std::string& path) override;
    std::vector<std::string> files(const std::string& folder) const override;
    std::vector<std::string> subfolders(const std::string& folder) const override;

  private:
    std::vector<std::string> namesIn(const std::string& folder, bool folders) const;
};

}  // namespace torvex::test
