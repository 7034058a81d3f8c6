#include "modules/forum/FormToken.h"

#include <algorithm>
#include <charconv>
#include <sodium.h>

#include "platform/Days.h"
#include "platform/Errors.h"
#include "platform/text/Hexadecimal.h"

namespace torvex {

namespace {

constexpr std::size_t nameBytes = 12;
constexpr std::size_t nameLength = nameBytes * 2;
constexpr std::size_t timeLength = 12;
constexpr std::size_t contentLength = nameLength + timeLength;

static_assert(crypto_auth_KEYBYTES == 32);

/// Since long before this program, by the calendar.
std::chrono::seconds secondsOf(const DateTime& moment) {
    return secondOf(moment).time_since_epoch();
}

std::string timeText(const DateTime& moment) {
    std::string digits = std::to_string(secondsOf(moment).count());
    return std::string(timeLength - std::min(timeLength, digits.size()), '0') + digits;
}

bool isEqual(std::string_view a, std::string_view b) {
    return a.size() == b.size() && sodium_memcmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace

FormTokens::FormTokens() {
    if (sodium_init() < 0) throw Error("the system gives no random numbers");
    crypto_auth_keygen(secret_.data());
}

std::string FormTokens::sign(std::string_view content, std::string_view purpose) const {
    const std::string whole = std::string(content) + '/' + std::string(purpose);
    std::array<unsigned char, crypto_auth_BYTES> proof{};
    crypto_auth(proof.data(), reinterpret_cast<const unsigned char*>(whole.data()), whole.size(),
                secret_.data());
    return hexadecimal(proof);
}

std::string FormTokens::make(std::string_view purpose, const DateTime& now) const {
    const std::string content = randomName(nameBytes) + timeText(now);
    return content + sign(content, purpose);
}

TokenState FormTokens::check(std::string_view token, std::string_view purpose, const DateTime& now) const {
    if (token.size() <= contentLength) return TokenState::Foreign;
    const std::string_view content = token.substr(0, contentLength);
    if (!isEqual(token.substr(contentLength), sign(content, purpose))) return TokenState::Foreign;
    long long made = 0;
    const std::string_view digits = content.substr(nameLength);
    std::from_chars(digits.data(), digits.data() + digits.size(), made);
    const std::chrono::seconds age = secondsOf(now) - std::chrono::seconds(made);
    if (age > mostAge) return TokenState::TooOld;
    return age < leastAge ? TokenState::TooYoung : TokenState::Good;
}

std::string_view FormTokens::nameIn(std::string_view token) {
    return token.substr(0, nameLength);
}

}  // namespace torvex
