#include "platform/files/AtomicFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace torvex {

namespace {

constexpr std::string_view temporaryPrefix = ".torvex-";
constexpr std::string_view temporarySuffix = ".tmp";

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category());
}

/// Independent of the final name, which may be as long as a name can be.
std::string makeTemporaryName() {
    std::uint64_t number = 0;
    if (::getrandom(&number, sizeof number, 0) != sizeof number) fail();
    return fmt::format("{}{:016x}{}", temporaryPrefix, number, temporarySuffix);
}

}  // namespace

AtomicFile::AtomicFile(int folder, std::string name, std::optional<mode_t> mode)
    : folder_(folder), name_(std::move(name)) {
    constexpr mode_t usualMode = 0666;
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    do {
        temporaryName_ = makeTemporaryName();
        file_ = Descriptor(::openat(folder_, temporaryName_.c_str(), flags, usualMode));
        if (!file_) fail();
    } while (!isOurs());
    // Only a nicety: the owner of the files may not be who runs the program.
    if (mode) ::fchmod(file_.number(), *mode);
}

AtomicFile::~AtomicFile() {
    if (!committed_ && file_) ::unlinkat(folder_, temporaryName_.c_str(), 0);
}

/// The lock tells a file that is being written from one whose writer is gone; it goes with the process. In
/// the moment before it is taken, someone who tidies up may have taken the file for such a one.
bool AtomicFile::isOurs() const {
    struct stat status {};
    // Not every file system has locks; where there are none, nobody can tidy up either.
    if (::flock(file_.number(), LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
    if (::fstat(file_.number(), &status) != 0) fail();
    return status.st_nlink > 0;
}

void AtomicFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file_.number(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) fail();
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void AtomicFile::commit() {
    if (::fsync(file_.number()) != 0) fail();
    takeName();
    syncFolder();
}

void AtomicFile::syncFileSystem() const {
    if (::syncfs(file_.number()) != 0) fail();
}

void AtomicFile::takeName() {
    if (::renameat(folder_, temporaryName_.c_str(), folder_, name_.c_str()) != 0) fail();
    committed_ = true;
}

void AtomicFile::syncFolder() const {
    // Not every file system can do it for folders.
    if (::fsync(folder_) != 0 && errno != EINVAL) fail();
}

bool AtomicFile::isTemporary(std::string_view name) {
    return name.starts_with(temporaryPrefix) && name.ends_with(temporarySuffix);
}

void AtomicFile::removeLeftover(int folder, const std::string& temporaryName) {
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const Descriptor file(::openat(folder, temporaryName.c_str(), flags));
    if (!file || ::flock(file.number(), LOCK_EX | LOCK_NB) != 0) return;
    if (::unlinkat(folder, temporaryName.c_str(), 0) != 0 && errno != ENOENT) fail();
}

}  // namespace torvex
