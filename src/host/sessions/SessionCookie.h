#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// The cookie that a visitor's session is known by. Over https its name begins with "__Host-": browsers take
/// such a one from this very host over https alone, so that neither a neighbour's host nor somebody on the
/// line can plant it.
class SessionCookie {
  public:
    enum class Schemes { Each, HttpsAlone };

    /// With `HttpsAlone`, a session never comes over from http; else one that began there goes on when the
    /// visitor is sent to a secure address to log in.
    explicit SessionCookie(Schemes schemes) : schemes_(schemes) {}

    /// The token in a Cookie field, "" for none.
    std::string_view token(std::string_view cookieField, bool isSecure) const;
    /// The value of a Set-Cookie field.
    static std::string field(std::string_view token, bool isSecure);

  private:
    Schemes schemes_;
};

}  // namespace torvex
