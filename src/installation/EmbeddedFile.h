#pragma once

#include <cstdint>
#include <string_view>

namespace torvex {

/// One file of a folder of the sources, as the program carries it. The layout is that of the tables in the
/// program, which are ordered by name.
class EmbeddedFile {
  public:
    /// Its path below the folder, "schema/content/0001_foundation.sql".
    std::string_view name() const { return name_; }
    std::string_view bytes() const { return {bytes_, size_}; }

  private:
    const char* name_;
    const char* bytes_;
    std::uint64_t size_;
};

}  // namespace torvex
