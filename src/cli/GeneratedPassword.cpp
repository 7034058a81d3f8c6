#include "cli/GeneratedPassword.h"

#include <sodium.h>
#include <string_view>

#include "platform/Errors.h"

namespace torvex::cli {

namespace {

constexpr std::string_view letters = "abcdefghjkmnpqrstuvwxyz23456789";
constexpr int groups = 4;
constexpr int groupLength = 4;

}  // namespace

std::string generatePassword() {
    if (sodium_init() < 0) throw Error("no random numbers: the system's source can't be read");
    std::string password;
    for (int i = 0; i < groups * groupLength; ++i) {
        if (i > 0 && i % groupLength == 0) password += '-';
        password += letters[randombytes_uniform(static_cast<std::uint32_t>(letters.size()))];
    }
    return password;
}

}  // namespace torvex::cli
