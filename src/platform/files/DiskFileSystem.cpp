#include "platform/files/DiskFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>

#include "platform/Errors.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/FileBatch.h"
#include "platform/files/FileOperations.h"
#include "platform/text/Charset.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

[[noreturn]] void fail(std::string_view verb, const std::string& path, std::string_view reason) {
    // A path with a NUL in it is shown up to there.
    throw Error(fmt::format("Can't {} \"{}\": {}", verb, path.c_str(), reason));
}

[[noreturn]] void fail(std::string_view verb, const std::string& path, int errorNumber) {
    fail(verb, path, std::generic_category().message(errorNumber));
}

/// Runs what throws `std::system_error` and names the path in its stead.
template <typename Action>
void named(std::string_view verb, const std::string& path, Action action) {
    try {
        action();
    } catch (const std::system_error& error) {
        fail(verb, path, error.code().value());
    }
}

bool meansNotThere(int errorNumber) {
    switch (errorNumber) {
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG:
        case ENXIO:  // a socket
        case ELOOP:
        case EXDEV:
            return true;
        default:
            return false;
    }
}

/// What was opened, when it is of the kind that `isKind` tells; throws for other reasons than that it isn't
/// there.
template <typename IsKind>
Descriptor ofKind(Descriptor opened, const std::string& path, IsKind isKind) {
    if (!opened && !meansNotThere(errno)) fail("open", path, errno);
    if (opened) {
        named("open", path, [&] {
            if (!isKind(files::statusOf(opened).st_mode)) opened = Descriptor();
        });
    }
    return opened;
}

constexpr auto isFile = [](mode_t mode) { return S_ISREG(mode); };
constexpr auto isFolder = [](mode_t mode) { return S_ISDIR(mode); };

std::vector<RootFolder> opened(const std::vector<std::string>& paths) {
    std::vector<RootFolder> roots;
    for (const auto& path : paths) roots.emplace_back(path);
    return roots;
}

/// The text in the encoding of a file.
std::string bytesOf(const std::string& path, std::string_view text, TextFormat format) {
    if (format == TextFormat::Unicode) return charset::toUtf16File(text);
    if (!text::isValidUtf8(text)) fail("write", path, "the text isn't UTF-8");
    return std::string(text);
}

constexpr std::string_view outside = "it lies outside of the folders that may be used";

}  // namespace

DiskFileSystem::DiskFileSystem(const std::vector<std::string>& roots) : DiskFileSystem(opened(roots)) {}

DiskFileSystem::DiskFileSystem(std::vector<RootFolder> roots) : roots_(std::move(roots)) {}

std::optional<DiskFileSystem::Place> DiskFileSystem::locate(std::string_view path) const {
    const auto normal = normalPath(path);
    if (!normal) return std::nullopt;
    for (const auto& root : roots_) {
        if (auto relative = root.relative(*normal)) return Place{&root, std::move(*relative)};
    }
    return std::nullopt;
}

/// The path that a path ends up at when its links are followed, if that is inside.
std::optional<std::string> DiskFileSystem::followLinks(const std::string& path) const {
    const std::unique_ptr<char, decltype(&std::free)> real(
        ::realpath(normalPath(path).value_or("").c_str(), nullptr), &std::free);
    if (!real) return std::nullopt;
    for (const auto& root : roots_) {
        if (const auto relative = root.relativeOfReal(real.get())) return root.path() + "/" + *relative;
    }
    return std::nullopt;
}

Descriptor DiskFileSystem::open(const std::string& path, int flags) const {
    const auto place = locate(path);
    Descriptor result;
    errno = ENOENT;
    if (place) result = place->root->open(place->relative, flags);
    if (result || (errno != ELOOP && errno != EXDEV)) return result;
    // A link by an absolute path, or from one root to another: once more without any link, so that nobody can
    // turn the way aside meanwhile.
    const auto target = followLinks(path);
    const auto targetPlace = target ? locate(*target) : std::nullopt;
    errno = ENOENT;
    if (targetPlace) result = targetPlace->root->open(targetPlace->relative, flags);
    return result;
}

Descriptor DiskFileSystem::openFile(const std::string& path) const {
    // Opening a pipe for reading would wait for somebody to write into it.
    return ofKind(open(path, O_RDONLY | O_NONBLOCK), path, isFile);
}

bool DiskFileSystem::fileExists(const std::string& path) const {
    return static_cast<bool>(ofKind(open(path, O_PATH), path, isFile));
}

bool DiskFileSystem::folderExists(const std::string& path) const {
    return static_cast<bool>(ofKind(open(path, O_PATH), path, isFolder));
}

std::optional<std::uint64_t> DiskFileSystem::fileSize(const std::string& path) const {
    const Descriptor file = ofKind(open(path, O_PATH), path, isFile);
    if (!file) return std::nullopt;
    return static_cast<std::uint64_t>(files::statusOf(file).st_size);
}

std::optional<std::string> DiskFileSystem::readBytes(const std::string& path) const {
    const Descriptor file = open(path, O_RDONLY | O_NONBLOCK);
    if (!file && meansNotThere(errno)) return std::nullopt;
    if (!file) fail("open", path, errno);
    std::optional<std::string> bytes;
    named("read", path, [&] { bytes = files::readWhole(file); });
    return bytes;
}

std::optional<std::string> DiskFileSystem::readRange(const std::string& path, std::uint64_t offset,
                                                     std::size_t length) const {
    const Descriptor file = openFile(path);
    if (!file) return std::nullopt;
    std::optional<std::string> bytes;
    named("read", path, [&] { bytes = files::readRange(file, offset, length); });
    return bytes;
}

std::optional<std::string> DiskFileSystem::readText(const std::string& path, TextFormat format) const {
    auto bytes = readBytes(path);
    if (!bytes) return bytes;
    try {
        return charset::decodeFile(*bytes, format == TextFormat::Unicode);
    } catch (const Error& error) {
        fail("read", path, error.what());
    }
}

void DiskFileSystem::writeText(const std::string& path, std::string_view text, TextFormat format) {
    writeBytes(path, bytesOf(path, text, format));
}

void DiskFileSystem::writeTexts(const std::vector<TextFile>& texts, TextFormat format) {
    constexpr std::size_t together = 64;  // each holds two descriptors
    const std::span all(texts);
    for (std::size_t begin = 0; begin < all.size(); begin += together) {
        writeTogether(all.subspan(begin, std::min(together, all.size() - begin)), format);
    }
}

void DiskFileSystem::writeTogether(std::span<const TextFile> texts, TextFormat format) const {
    FileBatch batch;
    for (const TextFile& written : texts) {
        const std::string bytes = bytesOf(written.path, written.text, format);
        Entry entry = entryToWrite(written.path);
        named("write", written.path,
              [&] { batch.add(std::move(entry.folder), entry.name, entry.mode, bytes); });
    }
    named("write", texts.front().path, [&] { batch.commit(); });
}

void DiskFileSystem::writeBytes(const std::string& path, std::string_view bytes) {
    Entry entry = entryToWrite(path);
    named("write", path, [&] {
        AtomicFile file(entry.folder.number(), entry.name, entry.mode);
        file.write(bytes);
        file.commit();
    });
}

void DiskFileSystem::removeLeftovers(const std::string& folder) {
    Descriptor listed = open(folder, O_RDONLY | O_DIRECTORY);
    if (!listed && meansNotThere(errno)) return;
    if (!listed) fail("list", folder, errno);
    named("tidy", folder, [&] { files::removeLeftovers(std::move(listed)); });
}

void DiskFileSystem::copyFile(const std::string& from, const std::string& to) {
    const Descriptor source = openFile(from);
    if (!source) fail("copy", from, "there is no such file");
    Entry entry = entryToWrite(to);
    named("write", to, [&] {
        AtomicFile file(entry.folder.number(), entry.name, entry.mode);
        files::copyBytes(source, file);
        file.commit();
    });
}

void DiskFileSystem::moveFile(const std::string& from, const std::string& to) {
    if (!fileExists(from)) fail("move", from, "there is no such file");
    const Entry source = entryAt("move", from);
    const Entry target = entryToWrite(to);
    if (::renameat(source.folder.number(), source.name.c_str(), target.folder.number(),
                   target.name.c_str()) != 0) {
        fail("move", from, errno);
    }
}

void DiskFileSystem::createFolder(const std::string& path) {
    if (folderExists(path)) return;
    constexpr mode_t usualMode = 0777;
    const Entry entry = entryAt("create", path);
    if (::mkdirat(entry.folder.number(), entry.name.c_str(), usualMode) == 0) return;
    const int reason = errno;
    if (reason != EEXIST || !folderExists(path)) fail("create", path, reason);
}

void DiskFileSystem::deleteFile(const std::string& path) {
    if (!fileExists(path)) fail("delete", path, "there is no such file");
    const Entry entry = entryAt("delete", path);
    named("delete", path, [&] { files::removeEntry(entry.folder.number(), entry.name); });
}

void DiskFileSystem::deleteFolder(const std::string& path) {
    if (!folderExists(path)) fail("delete", path, "there is no such folder");
    const Entry entry = entryAt("delete", path);
    named("delete", path, [&] { files::removeTree(entry.folder.number(), entry.name); });
}

/// The roots themselves are given from outside and neither made nor removed here.
void DiskFileSystem::refuseRoots(std::string_view verb, const std::string& path) const {
    const auto normal = normalPath(path);
    for (const auto& root : roots_) {
        if (normal == root.path()) fail(verb, path, "the files of the system lie in it");
    }
}

DiskFileSystem::Entry DiskFileSystem::entryAt(std::string_view verb, const std::string& path) const {
    if (!locate(path)) fail(verb, path, outside);
    refuseRoots(verb, path);
    const std::string normal = *normalPath(path);
    const std::size_t divider = normal.rfind('/');
    Entry entry{open(normal.substr(0, std::max<std::size_t>(divider, 1)), O_RDONLY | O_DIRECTORY),
                normal.substr(divider + 1),
                {}};
    if (!entry.folder) fail(verb, path, "its folder: " + std::generic_category().message(errno));
    return entry;
}

DiskFileSystem::Entry DiskFileSystem::entryToWrite(const std::string& path) const {
    Entry entry = entryAt("write", path);
    struct stat status {};
    const auto look = [&] {
        return ::fstatat(entry.folder.number(), entry.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    };
    bool there = look();
    if (there && S_ISLNK(status.st_mode)) {
        const auto target = followLinks(path);
        if (!target) fail("write", path, outside);
        entry = entryAt("write", *target);
        there = look();
    }
    constexpr mode_t permissions = 07777;
    if (there) entry.mode = status.st_mode & permissions;
    return entry;
}

std::vector<std::string> DiskFileSystem::namesIn(const std::string& folder, bool folders) const {
    Descriptor listed = open(folder, O_RDONLY | O_DIRECTORY);
    if (!listed) fail("list", folder, errno);
    std::vector<std::string> names;
    const auto isWanted = [&](const dirent& entry) {
        if (AtomicFile::isTemporary(entry.d_name)) return false;
        if (entry.d_type == DT_REG) return !folders;
        if (entry.d_type == DT_DIR) return folders;
        const std::string path = folder + "/" + entry.d_name;
        return folders ? folderExists(path) : fileExists(path);
    };
    named("list", folder, [&] {
        files::forEachEntry(std::move(listed), [&](const dirent& entry) {
            if (isWanted(entry)) names.emplace_back(entry.d_name);
        });
    });
    return names;
}

std::vector<std::string> DiskFileSystem::files(const std::string& folder) const {
    return namesIn(folder, false);
}

std::vector<std::string> DiskFileSystem::subfolders(const std::string& folder) const {
    return namesIn(folder, true);
}

}  // namespace torvex
