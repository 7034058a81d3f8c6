#include "platform/text/Hexadecimal.h"

#include <array>
#include <sodium.h>
#include <vector>

namespace torvex {

std::string hexadecimal(std::span<const unsigned char> bytes) {
    std::string digits(bytes.size() * 2 + 1, '\0');
    sodium_bin2hex(digits.data(), digits.size(), bytes.data(), bytes.size());
    digits.pop_back();  // the NUL at the end
    return digits;
}

std::string sha256(std::string_view text) {
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(text.data()), text.size());
    return hexadecimal(hash);
}

std::string randomName(std::size_t bytes) {
    std::vector<unsigned char> drawn(bytes);
    randombytes_buf(drawn.data(), drawn.size());
    return hexadecimal(drawn);
}

}  // namespace torvex
