#include "accounts/CommonPasswords.h"

#include <string>

#include "installation/InstallFiles.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

// The form of the list: see scripts/common_passwords.py.
constexpr std::size_t blockSize = 512;
constexpr char noneInCommon = 'A';

/// What a password counts as, in the small letters of the list. Capitals come first, as two letters may have
/// one capital.
std::string normalised(std::string_view password) {
    return text::lower(text::upper(text::trim(password)));
}

std::string_view firstOf(std::string_view block) {
    return block.substr(1, block.find('\n') - 1);
}

/// The only block in which a text may stand: the last one that doesn't begin behind it.
std::string_view blockFor(std::string_view list, std::string_view wanted) {
    std::size_t low = 0;
    std::size_t high = list.size() / blockSize;
    while (high - low > 1) {
        const std::size_t middle = low + (high - low) / 2;
        const bool isBehind = wanted < firstOf(list.substr(middle * blockSize, blockSize));
        (isBehind ? high : low) = middle;
    }
    return list.substr(low * blockSize, blockSize);
}

bool has(std::string_view block, std::string_view wanted) {
    std::string entry;
    while (!block.empty() && block.front() != '\n') {
        const std::size_t end = block.find('\n');
        entry.resize(static_cast<std::size_t>(block.front() - noneInCommon));
        entry += block.substr(1, end - 1);
        if (entry == wanted) return true;
        block.remove_prefix(end + 1);
    }
    return false;
}

}  // namespace

bool isCommonPassword(std::string_view password) {
    const std::string wanted = normalised(password);
    return has(blockFor(installFile("passwords/common.txt"), wanted), wanted);
}

}  // namespace torvex
