#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files/Descriptor.h"

namespace torvex {

/// An absolute path with "/" between its parts, without ".", "..", doubled and trailing dividers; "\" divides
/// too. The top is "". Nothing when the path isn't absolute or holds a NUL.
std::optional<std::string> normalPath(std::string_view path);

/// A folder beneath which files are opened, and outside of which none are: neither by ".." nor through a
/// symbolic link. It holds the folder itself, so that a folder moved away and replaced goes unnoticed until
/// it is made anew. Safe to share between threads.
class RootFolder {
  public:
    /// How the rule is kept: by the kernel, or, where it can't, by walking down part by part past no link at
    /// all.
    enum class Lookup { Kernel, Walk };

    /// Throws `Error` when there is no such folder.
    explicit RootFolder(std::string_view path);
    RootFolder(std::string_view path, Lookup lookup);

    const std::string& path() const { return path_; }
    /// Where a `normalPath` lies below this folder: "." for the folder itself, nothing when it is outside.
    std::optional<std::string> relative(std::string_view path) const { return below(path_, path); }
    /// The same for a path without links, as `realpath` gives it.
    std::optional<std::string> relativeOfReal(std::string_view path) const { return below(realPath_, path); }

    /// Opens with the flags of `open(2)` for reading; on failure the reason is in `errno`. A link that this
    /// can't follow safely fails with ELOOP or EXDEV, also when it leads to somewhere inside: see
    /// `DiskFileSystem`.
    Descriptor open(const std::string& relativePath, int flags) const;
    /// The same past no symbolic link at all: what is opened lies where the path says. A link fails with
    /// ELOOP.
    Descriptor openWithoutLinks(const std::string& relativePath, int flags) const;

  private:
    static std::optional<std::string> below(std::string_view folder, std::string_view path);
    Descriptor openByKernel(const std::string& relativePath, int flags, std::uint64_t resolve) const;
    Descriptor openByWalk(std::string_view relativePath, int flags) const;

    std::string path_;
    std::string realPath_;
    Descriptor folder_;
    Lookup lookup_;
};

}  // namespace torvex
