#pragma once

#include <array>
#include <chrono>
#include <string>
#include <string_view>

#include "platform/DateTime.h"

namespace torvex {

/// What a token says of the form that it came with.
enum class TokenState {
    Good,
    Foreign,  ///< it isn't from this server, or from before its start, or of another form
    TooOld,
    TooYoung  ///< nobody types so quickly
};

/// Tokens of forms: they tell that this server has shown the form for that purpose, and when, and give each
/// showing a name of its own. Nothing is kept of them. Safe to share between threads.
class FormTokens {
  public:
    /// People need longer to read a form and to answer; programs don't wait.
    static constexpr std::chrono::seconds leastAge{3};
    static constexpr std::chrono::hours mostAge{24};

    /// With a secret of its own: tokens die with the object.
    FormTokens();

    /// `purpose` names what is posted by the form, as "4/12/3".
    std::string make(std::string_view purpose, const DateTime& now) const;
    TokenState check(std::string_view token, std::string_view purpose, const DateTime& now) const;
    /// The name of the showing, in the token of a form. The same for each sending of it.
    static std::string_view nameIn(std::string_view token);

  private:
    std::string sign(std::string_view content, std::string_view purpose) const;

    std::array<unsigned char, 32> secret_{};
};

}  // namespace torvex
