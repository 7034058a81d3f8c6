#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace torvex {

/// Puts numbers and texts into a row of bytes that `Unpacking` reads again in the same order. For programs of
/// one build.
class Packing {
  public:
    Packing& number(std::uint64_t value);  ///< small ones take fewer bytes
    Packing& text(std::string_view value);
    std::string take() { return std::move(bytes_); }

  private:
    std::string bytes_;
};

/// Reads them; throws `Error` for bytes that end too soon.
class Unpacking {
  public:
    explicit Unpacking(std::string_view bytes) : rest_(bytes) {}

    std::uint64_t number();
    /// Valid as long as the bytes.
    std::string_view text();
    /// All that wasn't read yet.
    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

}  // namespace torvex
