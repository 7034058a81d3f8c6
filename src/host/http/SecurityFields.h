#pragma once

#include <array>
#include <string>
#include <string_view>

namespace torvex {

struct ServerOptions;

/// The header fields that every answer carries, made once.
class SecurityFields {
  public:
    enum class Kind { Page, PublicFile };

    explicit SecurityFields(const ServerOptions& options);

    /// "Name: value\r\n" for each.
    std::string_view of(Kind kind, bool isTls) const {
        return texts_[(kind == Kind::PublicFile ? 2U : 0U) + (isTls ? 1U : 0U)];
    }

    /// Whether a field of this name, in any case, is among those that some answers carry.
    static bool has(std::string_view name);

  private:
    std::array<std::string, 4> texts_;
};

}  // namespace torvex
