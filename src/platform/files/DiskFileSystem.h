#pragma once

#include <span>
#include <sys/types.h>
#include <vector>

#include "platform/files/FileSystem.h"
#include "platform/files/RootFolder.h"

namespace torvex {

/// The files of the machine, beneath the folders it was made with and nowhere else. A path outside of them,
/// also by way of a symbolic link, counts as not there for reading and is refused for writing. Symbolic links
/// between places inside are followed; writing to one writes to what it points at. Case matters in names.
///
/// Writing is whole or not at all, and on the disk when it returns. Safe to share between threads.
class DiskFileSystem final : public FileSystem {
  public:
    /// Throws `Error` when one of the folders isn't there.
    explicit DiskFileSystem(const std::vector<std::string>& roots);
    explicit DiskFileSystem(std::vector<RootFolder> roots);

    bool fileExists(const std::string& path) const override;
    bool folderExists(const std::string& path) const override;
    std::optional<std::string> readText(const std::string& path, TextFormat format) const override;
    std::optional<std::string> readBytes(const std::string& path) const override;
    std::optional<std::string> readRange(const std::string& path, std::uint64_t offset,
                                         std::size_t length) const override;
    std::optional<std::uint64_t> fileSize(const std::string& path) const override;

    /// Refuses a text that isn't UTF-8, which couldn't be read again; as `Unicode` it is written with
    /// replacements.
    void writeText(const std::string& path, std::string_view text, TextFormat format) override;
    void writeBytes(const std::string& path, std::string_view bytes) override;
    void writeTexts(const std::vector<TextFile>& texts, TextFormat format) override;
    void removeLeftovers(const std::string& folder) override;

    void createFolder(const std::string& path) override;
    void copyFile(const std::string& from, const std::string& to) override;
    void deleteFile(const std::string& path) override;
    void moveFile(const std::string& from, const std::string& to) override;
    /// Links in it are removed, not followed.
    void deleteFolder(const std::string& path) override;

    /// Throw when there is no such folder.
    std::vector<std::string> files(const std::string& folder) const override;
    std::vector<std::string> subfolders(const std::string& folder) const override;

    /// The file open for reading, for callers that send it by themselves; none when there is no such file.
    Descriptor openFile(const std::string& path) const;

  private:
    struct Place {
        const RootFolder* root;
        std::string relative;
    };
    /// A name in an open folder: what can be changed safely.
    struct Entry {
        Descriptor folder;
        std::string name;
        std::optional<mode_t> mode;  ///< of what bears the name now
    };

    std::optional<Place> locate(std::string_view path) const;
    std::optional<std::string> followLinks(const std::string& path) const;
    Descriptor open(const std::string& path, int flags) const;
    void writeTogether(std::span<const TextFile> texts, TextFormat format) const;
    void refuseRoots(std::string_view verb, const std::string& path) const;
    Entry entryAt(std::string_view verb, const std::string& path) const;
    Entry entryToWrite(const std::string& path) const;
    std::vector<std::string> namesIn(const std::string& folder, bool folders) const;

    std::vector<RootFolder> roots_;
};

}  // namespace torvex
