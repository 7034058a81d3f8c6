#pragma once

#include <functional>

#include "platform/files/FileSystem.h"

namespace torvex {

/// Another file system, of which somebody is told what has changed: after each change, the path of the file,
/// or of the folder with a "/" behind it. Also when it failed, as some of it may be done. Telling must not
/// throw, and is to be quick: who changes files may hold a transaction. As safe to share as the other one and
/// `onChange` are.
class WatchedFileSystem final : public FileSystem {
  public:
    using OnChange = std::function<void(const std::string& path)>;

    WatchedFileSystem(FileSystem& files, OnChange onChange) : files_(files), onChange_(std::move(onChange)) {}

    bool fileExists(const std::string& path) const override { return files_.fileExists(path); }
    bool folderExists(const std::string& path) const override { return files_.folderExists(path); }
    std::optional<std::string> readText(const std::string& path, TextFormat format) const override {
        return files_.readText(path, format);
    }
    std::optional<std::string> readBytes(const std::string& path) const override {
        return files_.readBytes(path);
    }
    std::optional<std::string> readRange(const std::string& path, std::uint64_t offset,
                                         std::size_t length) const override {
        return files_.readRange(path, offset, length);
    }
    std::optional<std::uint64_t> fileSize(const std::string& path) const override {
        return files_.fileSize(path);
    }
    std::vector<std::string> files(const std::string& folder) const override { return files_.files(folder); }
    std::vector<std::string> subfolders(const std::string& folder) const override {
        return files_.subfolders(folder);
    }
    void removeLeftovers(const std::string& folder) override { files_.removeLeftovers(folder); }
    void createFolder(const std::string& path) override { files_.createFolder(path); }

    void writeText(const std::string& path, std::string_view text, TextFormat format) override;
    void writeBytes(const std::string& path, std::string_view bytes) override;
    void writeTexts(const std::vector<TextFile>& texts, TextFormat format) override;
    void copyFile(const std::string& from, const std::string& to) override;
    void deleteFile(const std::string& path) override;
    void moveFile(const std::string& from, const std::string& to) override;
    void deleteFolder(const std::string& path) override;

  private:
    FileSystem& files_;
    OnChange onChange_;
};

}  // namespace torvex
