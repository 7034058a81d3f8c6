#include "support/MemoryFileSystem.h"

#include <algorithm>

#include "platform/Errors.h"
#include "platform/text/Charset.h"

namespace torvex::test {

namespace {

std::string plain(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    while (path.size() > 1 && path.back() == '/') path.pop_back();
    return path;
}

void failFor(const std::string& reason, const std::string& path) {
    if (!reason.empty()) throw Error(path + ": " + reason);
}

}  // namespace

bool MemoryFileSystem::fileExists(const std::string& path) const {
    return bytes.contains(plain(path));
}

bool MemoryFileSystem::folderExists(const std::string& path) const {
    const std::string folder = plain(path);
    if (folder == "/" || madeFolders.contains(folder)) return true;
    const auto isIn = [&](const std::string& other) { return other.starts_with(folder + "/"); };
    return std::any_of(madeFolders.begin(), madeFolders.end(), isIn) ||
           std::any_of(bytes.begin(), bytes.end(), [&](const auto& file) { return isIn(file.first); });
}

std::optional<std::string> MemoryFileSystem::readText(const std::string& path, TextFormat format) const {
    const auto content = readBytes(path);
    if (!content) return std::nullopt;
    return charset::decodeFile(*content, format == TextFormat::Unicode);
}

std::optional<std::string> MemoryFileSystem::readBytes(const std::string& path) const {
    failFor(readFailure, path);
    ++reads;
    const auto file = bytes.find(plain(path));
    if (file == bytes.end()) return std::nullopt;
    return file->second;
}

std::optional<std::string> MemoryFileSystem::readRange(const std::string& path, std::uint64_t offset,
                                                       std::size_t length) const {
    const auto content = readBytes(path);
    if (!content) return std::nullopt;
    return offset < content->size() ? content->substr(static_cast<std::size_t>(offset), length)
                                    : std::string();
}

std::optional<std::uint64_t> MemoryFileSystem::fileSize(const std::string& path) const {
    const auto file = bytes.find(plain(path));
    if (file == bytes.end()) return std::nullopt;
    return file->second.size();
}

void MemoryFileSystem::writeText(const std::string& path, std::string_view text, TextFormat format) {
    writeBytes(path, format == TextFormat::Unicode ? charset::toUtf16File(text) : std::string(text));
}

void MemoryFileSystem::writeBytes(const std::string& path, std::string_view content) {
    failFor(writeFailure, path);
    bytes[plain(path)] = content;
}

void MemoryFileSystem::createFolder(const std::string& path) {
    failFor(writeFailure, path);
    madeFolders.insert(plain(path));
}

void MemoryFileSystem::copyFile(const std::string& from, const std::string& to) {
    const auto content = readBytes(from);
    if (!content) throw Error(from + ": there is no such file");
    writeBytes(to, *content);
}

void MemoryFileSystem::deleteFile(const std::string& path) {
    failFor(writeFailure, path);
    if (bytes.erase(plain(path)) == 0) throw Error(path + ": there is no such file");
}

void MemoryFileSystem::deleteFolder(const std::string& path) {
    failFor(writeFailure, path);
    if (!folderExists(path)) throw Error(path + ": there is no such folder");
    const std::string folder = plain(path);
    const auto goes = [&](const std::string& other) {
        return other == folder || other.starts_with(folder + "/");
    };
    std::erase_if(bytes, [&](const auto& file) { return goes(file.first); });
    std::erase_if(madeFolders, goes);
}

std::vector<std::string> MemoryFileSystem::namesIn(const std::string& folder, bool folders) const {
    if (!folderExists(folder)) throw Error(folder + ": there is no such folder");
    const std::string prefix = plain(folder) == "/" ? "/" : plain(folder) + "/";
    std::set<std::string> names;
    const auto add = [&](const std::string& path, bool pathIsFolder) {
        if (!path.starts_with(prefix)) return;
        const std::size_t divider = path.find('/', prefix.size());
        const bool isFolder = pathIsFolder || divider != std::string::npos;
        if (isFolder == folders) names.insert(path.substr(prefix.size(), divider - prefix.size()));
    };
    for (const auto& file : bytes) add(file.first, false);
    for (const auto& made : madeFolders) add(made, true);
    return {names.begin(), names.end()};
}

std::vector<std::string> MemoryFileSystem::files(const std::string& folder) const {
    return namesIn(folder, false);
}

std::vector<std::string> MemoryFileSystem::subfolders(const std::string& folder) const {
    return namesIn(folder, true);
}

}  // namespace torvex::test
