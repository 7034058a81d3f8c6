#pragma once

#include <cstdint>
#include <dirent.h>
#include <functional>
#include <optional>
#include <string>
#include <sys/stat.h>

#include "platform/files/Descriptor.h"

namespace torvex {

class AtomicFile;

/// What the disk file system does with files that are open already. Failures throw `std::system_error`.
namespace files {

struct stat statusOf(const Descriptor& descriptor);

/// All bytes; nothing when it is no plain file.
std::optional<std::string> readWhole(const Descriptor& file);

/// At most `length` bytes from `offset` on, fewer where the file ends.
std::string readRange(const Descriptor& file, std::uint64_t offset, std::size_t length);

void copyBytes(const Descriptor& from, AtomicFile& to);

/// Calls `use` with each entry but "." and "..", in no order. `folder` is open for reading.
void forEachEntry(Descriptor folder, const std::function<void(const dirent&)>& use);

/// Removes what bears the name, and nothing behind a link. `flags` as `unlinkat` takes them. None there is no
/// error.
void removeEntry(int folder, const std::string& name, int flags = 0);

/// The same with all that is in it, when it is a folder.
void removeTree(int parent, const std::string& name);

/// Removes the temporary files of writers that are gone. `folder` is open for reading.
void removeLeftovers(Descriptor folder);

}  // namespace files
}  // namespace torvex
