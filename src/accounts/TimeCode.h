#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Codes that a telephone shows (RFC 6238): six digits, made anew every thirty seconds from a secret that it shares with
// the server, by HMAC-SHA1, which is what all such applications know. Secrets are texts of base32.

namespace torvex {

/// 160 random bits, in capital letters.
std::string newSecret();
/// So many random bytes of the system, in capital letters of base32.
std::string randomBase32(std::size_t bytes);
/// Nothing for a text that is none.
std::optional<std::string> bytesOfBase32(std::string_view text);

/// The number of the thirty seconds that a moment lies in.
std::int64_t stepAt(std::int64_t unixSeconds);

/// The code of a step, of so many digits, for the bytes of a secret.
std::string timeCode(std::string_view secret, std::int64_t step, int digits = 6);

/// The step whose code was typed: the present one or a neighbour of it, since clocks differ and people are slow, that
/// comes after `last`. Takes as long for a wrong code as for a right one.
std::optional<std::int64_t> typedStep(std::string_view secret, std::string_view typed, std::int64_t present,
                                      std::int64_t last);

/// What an application reads to show the codes, mostly out of a picture: "otpauth://totp/...".
std::string enrolmentAddress(std::string_view issuer, std::string_view account, std::string_view secret);

}  // namespace torvex
