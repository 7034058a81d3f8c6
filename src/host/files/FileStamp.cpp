#include "host/files/FileStamp.h"

#include <ctime>
#include <sys/stat.h>

namespace torvex {

namespace {

std::int64_t nanoseconds(const timespec& moment) {
    return static_cast<std::int64_t>(moment.tv_sec) * 1'000'000'000 + moment.tv_nsec;
}

}  // namespace

FileStamp FileStamp::of(const struct stat& status) {
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size),
            nanoseconds(status.st_mtim), nanoseconds(status.st_ctim)};
}

bool FileStamp::isSettled() const {
    // Two seconds is the coarsest clock of any file system in use.
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now) - changed > 2'000'000'000;
}

std::optional<FileStamp> FileStamp::at(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return of(status);
}

}  // namespace torvex
