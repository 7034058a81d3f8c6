#include "accounts/LoginAttempt.h"

#include "platform/net/Peer.h"
#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex {

namespace {

/// No name is longer; what is sent in place of one may be, and is kept for a while.
constexpr std::size_t longestName = 50;

constexpr std::chrono::seconds whenAllPlacesAreTaken{2};

/// One spelling of all that the databases take for one name. The embedded one folds case; the other compares
/// small letters, which makes some more of them the same ("İ" and "i").
std::string spelledAlike(std::string_view name) {
    std::string result;
    for (std::size_t at = 0; at < name.size();) {
        const utf8::Unit unit = utf8::unitAt(name, at);
        if (unit.value >= utf8::brokenByte) {
            result += name[at];
        } else {
            const auto small = static_cast<std::uint32_t>(u_tolower(static_cast<UChar32>(unit.value)));
            std::array<std::uint8_t, U8_MAX_LENGTH> bytes{};
            std::size_t length = 0;
            U8_APPEND_UNSAFE(bytes.data(), length, utf8::folded(small));
            result.append(reinterpret_cast<const char*>(bytes.data()), length);
        }
        at += unit.length;
    }
    return result;
}

std::string keyOf(LoginAttempt::Kind kind, std::string_view name) {
    const std::string plain = spelledAlike(text::trim(text::first(text::trim(name), longestName)));
    if (plain.empty()) return {};
    return (kind == LoginAttempt::Kind::Author ? "author " : "visitor ") + plain;
}

}  // namespace

LoginAttempt::LoginAttempt(GuessThrottle& throttle, Kind kind, std::string_view address,
                           std::string_view name)
    : throttle_(throttle), guess_{keyOf(kind, name), networkOf(text::trim(address))} {}

LoginAttempt::~LoginAttempt() {
    if (hasPlace_) throttle_.leave();
}

std::chrono::seconds LoginAttempt::begin() {
    if (const auto wait = throttle_.wait(guess_); wait.count() > 0) return wait;
    hasPlace_ = throttle_.enter(guess_);
    return hasPlace_ ? throttle_.begin(guess_) : whenAllPlacesAreTaken;
}

std::chrono::seconds LoginAttempt::waitAfterwards() const {
    return throttle_.wait(guess_);
}

}  // namespace torvex
