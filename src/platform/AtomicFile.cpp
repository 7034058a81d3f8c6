#include "platform/AtomicFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <system_error>

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
    : folder_(folder), name_(std::move(name)), temporaryName_(makeTemporaryName()) {
    constexpr mode_t usualMode = 0666;
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    file_ = Descriptor(::openat(folder_, temporaryName_.c_str(), flags, usualMode));
    if (!file_) fail();
    // Only a nicety: the owner of the files may not be who runs the program.
    if (mode) ::fchmod(file_.number(), *mode);
}

AtomicFile::~AtomicFile() {
    if (!committed_ && file_) ::unlinkat(folder_, temporaryName_.c_str(), 0);
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
    if (::renameat(folder_, temporaryName_.c_str(), folder_, name_.c_str()) != 0) fail();
    committed_ = true;
    // Not every file system can do it for folders.
    if (::fsync(folder_) != 0 && errno != EINVAL) fail();
}

bool AtomicFile::isTemporary(std::string_view name) {
    return name.starts_with(temporaryPrefix) && name.ends_with(temporarySuffix);
}

}  // namespace torvex
