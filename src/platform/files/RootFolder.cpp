#include "platform/files/RootFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>

#include "platform/Errors.h"

namespace torvex {

namespace {

constexpr std::uint64_t beneath = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;

int openAt2(int folder, const char* path, int flags, std::uint64_t resolve = beneath) {
    open_how how{};
    how.flags = static_cast<unsigned>(flags | O_CLOEXEC);
    how.resolve = resolve;
    return static_cast<int>(::syscall(SYS_openat2, folder, path, &how, sizeof how));
}

/// Old kernels don't have the call, and some sandboxes refuse it with an error that means something else for
/// others.
RootFolder::Lookup bestLookup() {
    const Descriptor probe(openAt2(AT_FDCWD, ".", O_PATH | O_DIRECTORY));
    return probe ? RootFolder::Lookup::Kernel : RootFolder::Lookup::Walk;
}

bool isLink(const Descriptor& descriptor) {
    struct stat status {};
    return ::fstat(descriptor.number(), &status) == 0 && S_ISLNK(status.st_mode);
}

Descriptor openPart(int folder, const std::string& name, int flags) {
    Descriptor opened(::openat(folder, name.c_str(), flags | O_NOFOLLOW | O_CLOEXEC));
    if (opened && (flags & O_PATH) != 0 && isLink(opened)) {
        errno = ELOOP;
        return {};
    }
    // A link in place of a folder is reported as no folder; the caller is to look where it leads.
    if (!opened && errno == ENOTDIR) {
        struct stat status {};
        const bool link =
            ::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode);
        errno = link ? ELOOP : ENOTDIR;
    }
    return opened;
}

}  // namespace

std::optional<std::string> normalPath(std::string_view path) {
    if (path.empty() || (path.front() != '/' && path.front() != '\\')) return std::nullopt;
    if (path.find('\0') != std::string_view::npos) return std::nullopt;
    std::string result;
    result.reserve(path.size());
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::string_view part = path.substr(0, path.find_first_of("/\\"));
        path.remove_prefix(part.size());
        if (part.empty() || part == ".") continue;
        if (part == "..") {
            result.erase(result.empty() ? 0 : result.rfind('/'));
        } else {
            result.append(1, '/').append(part);
        }
    }
    return result;
}

RootFolder::RootFolder(std::string_view path) : RootFolder(path, bestLookup()) {}

RootFolder::RootFolder(std::string_view path, Lookup lookup) : lookup_(lookup) {
    std::error_code failure;
    const std::string absolute = std::filesystem::absolute(std::filesystem::path(path), failure).string();
    path_ = normalPath(absolute).value_or("");
    folder_ = Descriptor(::open(absolute.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder_) {
        throw Error("Can't use the folder \"" + std::string(path) +
                    "\": " + std::generic_category().message(errno));
    }
    realPath_ = normalPath(std::filesystem::canonical(absolute).string()).value_or("");
}

std::optional<std::string> RootFolder::below(std::string_view folder, std::string_view path) {
    if (!path.starts_with(folder)) return std::nullopt;
    path.remove_prefix(folder.size());
    if (path.empty()) return ".";
    if (path.front() != '/') return std::nullopt;
    return std::string(path.substr(1));
}

Descriptor RootFolder::open(const std::string& relativePath, int flags) const {
    return lookup_ == Lookup::Kernel ? openByKernel(relativePath, flags, beneath)
                                     : openByWalk(relativePath, flags);
}

Descriptor RootFolder::openWithoutLinks(const std::string& relativePath, int flags) const {
    return lookup_ == Lookup::Kernel ? openByKernel(relativePath, flags, beneath | RESOLVE_NO_SYMLINKS)
                                     : openByWalk(relativePath, flags);
}

Descriptor RootFolder::openByKernel(const std::string& relativePath, int flags, std::uint64_t resolve) const {
    // The kernel gives up with EAGAIN when something is renamed while it follows a link that goes up.
    constexpr int tries = 8;
    int opened = -1;
    for (int i = 0; i < tries; ++i) {
        opened = openAt2(folder_.number(), relativePath.c_str(), flags, resolve);
        if (opened >= 0 || (errno != EAGAIN && errno != EINTR)) break;
    }
    return Descriptor(opened);
}

Descriptor RootFolder::openByWalk(std::string_view relativePath, int flags) const {
    Descriptor here;
    int folder = folder_.number();
    for (std::size_t divider = relativePath.find('/'); divider != std::string_view::npos;
         divider = relativePath.find('/')) {
        here = openPart(folder, std::string(relativePath.substr(0, divider)), O_PATH | O_DIRECTORY);
        if (!here) return here;
        folder = here.number();
        relativePath.remove_prefix(divider + 1);
    }
    return openPart(folder, std::string(relativePath), flags);
}

}  // namespace torvex
