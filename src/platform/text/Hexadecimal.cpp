#include "platform/text/Hexadecimal.h"

#include <sodium.h>
#include <vector>

namespace torvex {

std::string hexadecimal(std::span<const unsigned char> bytes) {
    std::string digits(bytes.size() * 2 + 1, '\0');
    sodium_bin2hex(digits.data(), digits.size(), bytes.data(), bytes.size());
    digits.pop_back();  // the NUL at the end
    return digits;
}

std::string randomName(std::size_t bytes) {
    std::vector<unsigned char> drawn(bytes);
    randombytes_buf(drawn.data(), drawn.size());
    return hexadecimal(drawn);
}

}  // namespace torvex
