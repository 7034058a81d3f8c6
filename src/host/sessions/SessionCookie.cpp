#include "host/sessions/SessionCookie.h"

#include "host/http/RequestConversion.h"

namespace torvex {

namespace {

constexpr std::string_view plainName = "torvex_session";
constexpr std::string_view secureName = "__Host-torvex_session";

}  // namespace

std::string_view SessionCookie::token(std::string_view cookieField, bool isSecure) const {
    if (cookieField.empty()) return {};
    if (!isSecure) return cookie(cookieField, plainName);
    const std::string_view secure = cookie(cookieField, secureName);
    return secure.empty() && schemes_ == Schemes::Each ? cookie(cookieField, plainName) : secure;
}

std::string SessionCookie::field(std::string_view token, bool isSecure) {
    std::string field(isSecure ? secureName : plainName);
    field.append("=").append(token).append("; Path=/; HttpOnly; SameSite=Lax");
    if (isSecure) field += "; Secure";
    return field;
}

}  // namespace torvex
