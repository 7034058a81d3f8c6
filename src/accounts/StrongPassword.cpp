#include "accounts/StrongPassword.h"

#include <array>
#include <sodium.h>

#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

// A login is rare and may take a moment. Less memory would make guessing on graphics cards cheap; more, and
// all workers at once couldn't get it on a small server.
constexpr unsigned long long passes = 3;
constexpr std::size_t memoryBytes = std::size_t{32} << 20;

/// The old form has digits alone.
constexpr std::string_view markPrefix = "strong:";
constexpr std::string_view markLetters = "abcdefghijklmnopqrstuvwxyz234567";
constexpr int randomLetters = 13;

void needSodium() {
    if (sodium_init() < 0) throw Error("the system gives no random numbers");
}

/// Whoever could log in with what they typed by the old form can go on doing so.
std::string normalised(std::string_view password) {
    return text::upper(text::trim(password));
}

std::string newMark() {
    std::string mark(markPrefix);
    for (int i = 0; i < randomLetters; ++i) {
        mark += markLetters[randombytes_uniform(static_cast<std::uint32_t>(markLetters.size()))];
    }
    return mark;
}

}  // namespace

StrongForm makeStrongForm(std::string_view password) {
    needSodium();
    const std::string text = normalised(password);
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    if (crypto_pwhash_str_alg(hash.data(), text.data(), text.size(), passes, memoryBytes,
                              crypto_pwhash_ALG_ARGON2ID13) != 0) {
        throw Error("there is no memory to keep a password");
    }
    return {newMark(), hash.data()};
}

bool isPasswordOf(std::string_view hash, std::string_view password) {
    needSodium();
    const std::string text = normalised(password);
    return crypto_pwhash_str_verify(std::string(hash).c_str(), text.data(), text.size()) == 0;
}

bool isStrongMark(std::string_view stored) {
    return stored.starts_with(markPrefix);
}

}  // namespace torvex
