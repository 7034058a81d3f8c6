#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace torvex {

/// One file of the folder `install/`, as the program carries it. The layout is that of the table in the
/// program.
class InstallFile {
  public:
    /// Its path below the folder, "schema/content/0001_foundation.sql".
    std::string_view name() const { return name_; }
    std::string_view bytes() const { return {bytes_, size_}; }

  private:
    const char* name_;
    const char* bytes_;
    std::uint64_t size_;
};

/// All of them, ordered by name, as long as the program runs.
std::span<const InstallFile> installFiles();

/// Those whose names begin with `prefix`, in the same order.
std::span<const InstallFile> installFiles(std::string_view prefix);

/// The bytes of one. Throws `Error` when there is none of that name.
std::string_view installFile(std::string_view name);

}  // namespace torvex
