#include "platform/net/HostNames.h"

#include <algorithm>

#include "platform/net/Network.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::size_t longestName = 253;

/// As names are compared: in lower case, and without the point that may end a full name.
std::string plain(std::string_view name) {
    if (name.ends_with('.')) name.remove_suffix(1);
    return text::lower(name);
}

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_';
}

}  // namespace

HostNames::HostNames(const std::vector<std::string>& names) : isForAll_(names.empty()) {
    for (const std::string& name : names) {
        if (name.starts_with('*')) {
            endings_.push_back(plain(std::string_view(name).substr(1)));
        } else {
            names_.insert(plain(name));
        }
    }
}

bool HostNames::has(std::string_view name) const {
    const std::string asked = plain(name);
    if (names_.contains(asked)) return true;
    return std::any_of(endings_.begin(), endings_.end(), [&asked](const std::string& ending) {
        return asked.size() > ending.size() && asked.ends_with(ending);
    });
}

bool HostNames::isName(std::string_view text) {
    if (text.starts_with('[') && text.ends_with(']')) {
        const std::string_view address = text.substr(1, text.size() - 2);
        return address.find(':') != std::string_view::npos && parseAddress(address);
    }
    if (text.starts_with("*.")) text.remove_prefix(2);
    return !text.empty() && text.size() <= longestName && text.front() != '.' &&
           std::all_of(text.begin(), text.end(), isNameCharacter);
}

}  // namespace torvex
