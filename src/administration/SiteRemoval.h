#pragma once

#include <string>
#include <string_view>

namespace torvex {
struct HostContext;

/// Why a site or a language stays, beside the codes that all operations share.
namespace removal {
inline constexpr std::string_view inUse = "-2";     ///< another login works in it
inline constexpr std::string_view hasPages = "-3";  ///< in the design
inline constexpr std::string_view isLast = "-4";
}  // namespace removal

/// What became of a removal.
struct Removal {
    std::string refusal;  ///< the code; "" when it went
    std::string name;     ///< of what went
};

/// Deletes a site, or a language, with all rows that belong to it and those that belonged to rows that go, in
/// one transaction; or refuses, and then nothing has changed. The login `ownLogin` may work in it. A failure
/// of the deletion is a refusal too, and is told to operators.
Removal removeSite(HostContext& host, const std::string& site, int ownLogin);
Removal removeLanguage(HostContext& host, const std::string& lang, int ownLogin);

}  // namespace torvex
