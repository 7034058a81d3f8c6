#include "platform/net/MailAddress.h"

#include <algorithm>

namespace torvex {

namespace {

constexpr std::size_t mostLetters = 254;
constexpr std::size_t mostOfName = 64;
constexpr std::size_t mostOfLabel = 63;

bool isLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isNameCharacter(char c) {
    constexpr std::string_view others = "!#$%&'*+-/=?^_`{|}~";
    return isLetterOrDigit(c) || others.find(c) != std::string_view::npos;
}

/// Parts divided by points, none of them empty, each of which passes.
template <typename Check>
bool isDotted(std::string_view text, std::size_t leastParts, Check check) {
    std::size_t parts = 0;
    for (;;) {
        const std::size_t end = std::min(text.find('.'), text.size());
        const std::string_view part = text.substr(0, end);
        if (part.empty() || !check(part)) return false;
        ++parts;
        if (end == text.size()) return parts >= leastParts;
        text.remove_prefix(end + 1);
    }
}

bool isName(std::string_view name) {
    return name.size() <= mostOfName && isDotted(name, 1, [](std::string_view part) {
               return std::all_of(part.begin(), part.end(), isNameCharacter);
           });
}

bool isHost(std::string_view host) {
    return isDotted(host, 2, [](std::string_view part) {
        return part.size() <= mostOfLabel && part.front() != '-' && part.back() != '-' &&
               std::all_of(part.begin(), part.end(), [](char c) { return isLetterOrDigit(c) || c == '-'; });
    });
}

}  // namespace

bool isMailAddress(std::string_view text) {
    const std::size_t at = text.find('@');
    return at != std::string_view::npos && text.size() <= mostLetters && isName(text.substr(0, at)) &&
           isHost(text.substr(at + 1));
}

std::vector<std::string> mailAddressesIn(std::string_view list) {
    constexpr std::string_view dividers = ",; \t\r\n";
    std::vector<std::string> addresses;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of(dividers), list.size());
        const std::string_view one = list.substr(0, end);
        if (isMailAddress(one)) addresses.emplace_back(one);
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return addresses;
}

}  // namespace torvex
