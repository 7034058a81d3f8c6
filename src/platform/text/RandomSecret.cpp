#include "platform/text/RandomSecret.h"

#include <array>
#include <sodium.h>

namespace torvex {

std::string randomSecret() {
    constexpr int letters = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
    std::array<unsigned char, 32> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    std::array<char, sodium_base64_ENCODED_LEN(bytes.size(), letters)> text{};
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), letters);
    return text.data();
}

}  // namespace torvex
