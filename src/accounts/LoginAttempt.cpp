#include "accounts/LoginAttempt.h"

#include <algorithm>

#include "accounts/GuessThrottle.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// No name is longer; what is sent in place of one may be, and is kept for a while.
constexpr std::size_t longestName = 50;

std::string keyOf(LoginAttempt::Kind kind, std::string_view name) {
    const std::string plain = text::lowerTrim(text::first(text::trim(name), longestName));
    if (plain.empty()) return {};
    return (kind == LoginAttempt::Kind::Author ? "author " : "name ") + plain;
}

}  // namespace

LoginAttempt::LoginAttempt(GuessThrottle& throttle, Kind kind, std::string_view address,
                           std::string_view name)
    : throttle_(throttle), address_("address " + std::string(address)), name_(keyOf(kind, name)) {}

std::chrono::seconds LoginAttempt::wait() const {
    const auto ofName = name_.empty() ? std::chrono::seconds(0) : throttle_.wait(name_);
    return std::max(throttle_.wait(address_), ofName);
}

void LoginAttempt::failed() {
    throttle_.failed(address_);
    if (!name_.empty()) throttle_.failed(name_);
}

void LoginAttempt::succeeded() {
    if (!name_.empty()) throttle_.succeeded(name_);
}

}  // namespace torvex
