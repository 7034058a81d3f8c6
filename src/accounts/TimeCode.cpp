#include "accounts/TimeCode.h"

#include <array>
#include <fmt/format.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <sodium.h>
#include <vector>

#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";
constexpr unsigned bitsOfLetter = 5;
constexpr unsigned bitsOfByte = 8;
constexpr std::size_t secretBytes = 20;
constexpr std::int64_t secondsOfStep = 30;

constexpr std::size_t hashBytes = 20;
using Hash = std::array<unsigned char, hashBytes>;

Hash hmacSha1(std::string_view key, std::string_view message) {
    Hash hash{};
    unsigned length = 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(message.data());
    const auto* made = HMAC(EVP_sha1(), key.data(), static_cast<int>(key.size()), bytes, message.size(),
                            hash.data(), &length);
    if (!made || length != hash.size()) throw Error("no code can be made");
    return hash;
}

std::string bigEndian(std::int64_t number) {
    std::string bytes(sizeof number, '\0');
    auto rest = static_cast<std::uint64_t>(number);
    for (auto at = bytes.rbegin(); at != bytes.rend(); ++at, rest >>= bitsOfByte)
        *at = static_cast<char>(rest & 0xFFU);
    return bytes;
}

/// Four bytes of the hash, from where its last one says, without a sign.
std::uint32_t truncated(const Hash& hash) {
    const std::size_t from = hash.back() & 0x0FU;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) number = (number << bitsOfByte) | hash.at(from + i);
    return number & 0x7FFFFFFFU;
}

bool isSame(std::string_view a, std::string_view b) {
    return a.size() == b.size() && CRYPTO_memcmp(a.data(), b.data(), a.size()) == 0;
}

std::string base32(const std::vector<unsigned char>& bytes) {
    std::string text;
    unsigned held = 0;
    unsigned bits = 0;
    for (const unsigned char byte : bytes) {
        held = (held << bitsOfByte) | byte;
        for (bits += bitsOfByte; bits >= bitsOfLetter;) {
            bits -= bitsOfLetter;
            text += letters[(held >> bits) & 31U];
        }
    }
    if (bits > 0) text += letters[(held << (bitsOfLetter - bits)) & 31U];
    return text;
}

/// In the address of an application a blank is no "+".
std::string escaped(std::string_view text) {
    return text::replaceAll(text::urlEncode(text), "+", "%20");
}

}  // namespace

std::string randomBase32(std::size_t bytes) {
    std::vector<unsigned char> random(bytes);
    randombytes_buf(random.data(), random.size());
    return base32(random);
}

std::string newSecret() {
    return randomBase32(secretBytes);
}

std::optional<std::string> bytesOfBase32(std::string_view text) {
    std::string bytes;
    unsigned held = 0;
    unsigned bits = 0;
    for (const char c : text) {
        const std::size_t value = letters.find(c);
        if (value == std::string_view::npos) return std::nullopt;
        held = (held << bitsOfLetter) | static_cast<unsigned>(value);
        bits += bitsOfLetter;
        if (bits < bitsOfByte) continue;
        bits -= bitsOfByte;
        bytes += static_cast<char>((held >> bits) & 0xFFU);
    }
    return bytes;
}

std::int64_t stepAt(std::int64_t unixSeconds) {
    return unixSeconds / secondsOfStep;
}

std::string timeCode(std::string_view secret, std::int64_t step, int digits) {
    std::uint32_t range = 1;
    for (int i = 0; i < digits; ++i) range *= 10;
    return fmt::format("{:0{}}", truncated(hmacSha1(secret, bigEndian(step))) % range, digits);
}

std::optional<std::int64_t> typedStep(std::string_view secret, std::string_view typed, std::int64_t present,
                                      std::int64_t last) {
    std::optional<std::int64_t> found;
    for (std::int64_t step = present - 1; step <= present + 1; ++step) {
        const bool isTyped = isSame(timeCode(secret, step), typed);
        if (isTyped && step > last && !found) found = step;
    }
    return found;
}

std::string enrolmentAddress(std::string_view issuer, std::string_view account, std::string_view secret) {
    return fmt::format("otpauth://totp/{}:{}?secret={}&issuer={}&algorithm=SHA1&digits=6&period=30",
                       escaped(issuer), escaped(account), secret, escaped(issuer));
}

}  // namespace torvex
