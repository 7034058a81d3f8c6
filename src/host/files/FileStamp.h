#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

struct stat;

namespace torvex {

/// What tells one version of a file from another.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  ///< nanoseconds
    std::int64_t changed = 0;   ///< nanoseconds; can't be set back, unlike `modified`

    static FileStamp of(const struct stat& status);
    /// Of what lies at a `normalPath`, be it a folder; nothing when nothing does.
    static std::optional<FileStamp> at(const std::string& path);
    /// False while another change could leave the stamp as it is, because the file system's clock has not
    /// moved on.
    bool isSettled() const;
    auto operator<=>(const FileStamp&) const = default;
};

}  // namespace torvex
