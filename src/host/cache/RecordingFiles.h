#pragma once

#include <functional>

#include "platform/files/FileSystem.h"

namespace torvex {

/// Another file system, of which somebody is told what is read of it before it is read, and that something is about to
/// be written. As safe to share as those two are.
class RecordingFiles : public FileSystem {
  public:
    using OnRead = std::function<void(const std::string& path)>;
    using OnWrite = std::function<void()>;

    RecordingFiles(FileSystem& real, OnRead onRead, OnWrite onWrite)
        : real_(real), onRead_(std::move(onRead)), onWrite_(std::move(onWrite)) {}

    bool fileExists(const std::string& path) const override { return read(path).fileExists(path); }
    bool folderExists(const std::string& path) const override { return read(path).folderExists(path); }
    std::optional<std::string> readText(const std::string& path, TextFormat format) const override {
        return read(path).readText(path, format);
    }
    std::optional<std::string> readBytes(const std::string& path) const override {
        return read(path).readBytes(path);
    }
    std::optional<std::string> readRange(const std::string& path, std::uint64_t offset,
                                         std::size_t length) const override {
        return read(path).readRange(path, offset, length);
    }
    std::optional<std::uint64_t> fileSize(const std::string& path) const override {
        return read(path).fileSize(path);
    }
    std::vector<std::string> files(const std::string& folder) const override {
        return read(folder).files(folder);
    }
    std::vector<std::string> subfolders(const std::string& folder) const override {
        return read(folder).subfolders(folder);
    }

    void writeText(const std::string& path, std::string_view text, TextFormat format) override {
        written().writeText(path, text, format);
    }
    void writeBytes(const std::string& path, std::string_view bytes) override {
        written().writeBytes(path, bytes);
    }
    void writeTexts(const std::vector<TextFile>& texts, TextFormat format) override {
        written().writeTexts(texts, format);
    }
    void removeLeftovers(const std::string& folder) override { written().removeLeftovers(folder); }
    void createFolder(const std::string& path) override { written().createFolder(path); }
    void copyFile(const std::string& from, const std::string& to) override { written().copyFile(from, to); }
    void deleteFile(const std::string& path) override { written().deleteFile(path); }
    void moveFile(const std::string& from, const std::string& to) override { written().moveFile(from, to); }
    void deleteFolder(const std::string& path) override { written().deleteFolder(path); }

  private:
    FileSystem& read(const std::string& path) const {
        onRead_(path);
        return real_;
    }
    FileSystem& written() {
        onWrite_();
        return real_;
    }

    FileSystem& real_;
    OnRead onRead_;
    OnWrite onWrite_;
};

}  // namespace torvex
