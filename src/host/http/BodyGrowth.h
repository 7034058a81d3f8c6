#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvex {

/// Gathers a body in a text that takes no more memory than it needs: what is only announced takes little, and
/// no more than was announced is ever taken for it.
class BodyGrowth {
  public:
    /// An announced length alone gets no more memory than this.
    static constexpr std::size_t reserved = 64 * 1024;

    /// `announced` bytes will come; 0 when nobody knows.
    void begin(std::string& body, std::size_t announced);
    void add(std::string& body, std::string_view bytes) const;

  private:
    std::size_t announced_ = 0;
};

}  // namespace torvex
