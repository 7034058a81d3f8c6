#include "platform/files/FileOperations.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/files/AtomicFile.h"

namespace torvex::files {

namespace {

std::size_t readSome(int file, char* to, std::size_t size) {
    for (;;) {
        const ssize_t count = ::read(file, to, size);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) throw std::system_error(errno, std::generic_category());
    }
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

}  // namespace

struct stat statusOf(const Descriptor& descriptor) {
    struct stat status {};
    if (::fstat(descriptor.number(), &status) != 0) throw std::system_error(errno, std::generic_category());
    return status;
}

std::optional<std::string> readWhole(const Descriptor& file) {
    const struct stat status = statusOf(file);
    if (!S_ISREG(status.st_mode)) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const std::size_t count = readSome(file.number(), bytes.data() + size, bytes.size() - size);
        if (count == 0) break;
        size += count;
    }
    bytes.resize(size);
    return bytes;
}

std::string readRange(const Descriptor& file, std::uint64_t offset, std::size_t length) {
    std::string bytes(length, '\0');
    std::size_t size = 0;
    while (size < length) {
        const ssize_t count =
            ::pread(file.number(), bytes.data() + size, length - size, static_cast<off_t>(offset + size));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw std::system_error(errno, std::generic_category());
        if (count == 0) break;
        size += static_cast<std::size_t>(count);
    }
    bytes.resize(size);
    return bytes;
}

void copyBytes(const Descriptor& from, AtomicFile& to) {
    constexpr std::size_t pieceSize = 256 * 1024;
    std::string piece(pieceSize, '\0');
    for (;;) {
        const std::size_t count = readSome(from.number(), piece.data(), piece.size());
        if (count == 0) return;
        to.write(std::string_view(piece).substr(0, count));
    }
}

void forEachEntry(Descriptor folder, const std::function<void(const dirent&)>& use) {
    const std::unique_ptr<DIR, CloseFolder> reading(::fdopendir(folder.number()));
    if (!reading) throw std::system_error(errno, std::generic_category());
    folder.release();
    for (errno = 0; const dirent* entry = ::readdir(reading.get()); errno = 0) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") use(*entry);
    }
    if (errno != 0) throw std::system_error(errno, std::generic_category());
}

void removeEntry(int folder, const std::string& name, int flags) {
    if (::unlinkat(folder, name.c_str(), flags) != 0 && errno != ENOENT) {
        throw std::system_error(errno, std::generic_category());
    }
}

void removeTree(int parent, const std::string& name) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    Descriptor folder(::openat(parent, name.c_str(), flags));
    if (!folder && (errno == ENOTDIR || errno == ELOOP)) return removeEntry(parent, name);
    if (!folder) throw std::system_error(errno, std::generic_category());
    std::vector<std::string> names;
    const int number = folder.number();
    Descriptor listed(::fcntl(number, F_DUPFD_CLOEXEC, 0));
    forEachEntry(std::move(listed), [&](const dirent& entry) { names.emplace_back(entry.d_name); });
    for (const auto& entry : names) removeTree(number, entry);
    removeEntry(parent, name, AT_REMOVEDIR);
}

void removeLeftovers(Descriptor folder) {
    const Descriptor kept(::fcntl(folder.number(), F_DUPFD_CLOEXEC, 0));
    if (!kept) throw std::system_error(errno, std::generic_category());
    forEachEntry(std::move(folder), [&](const dirent& entry) {
        if (AtomicFile::isTemporary(entry.d_name)) AtomicFile::removeLeftover(kept.number(), entry.d_name);
    });
}

}  // namespace torvex::files
