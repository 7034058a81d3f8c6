#include "host/http/RequestTarget.h"

#include "host/http/Ascii.h"

namespace torvex {

namespace {

constexpr std::size_t npos = std::string_view::npos;

bool isAllowedInPath(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte != 0x7f && c != '\\';
}

/// Nothing for a broken escape, and for one that stands for a character that may not be there.
std::optional<char> readEscape(std::string_view path, std::size_t at) {
    if (at + 2 >= path.size()) return std::nullopt;
    const int high = ascii::hexValue(path[at + 1]);
    const int low = ascii::hexValue(path[at + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    const char c = static_cast<char>(high * 16 + low);
    if (c == '/' || !isAllowedInPath(c)) return std::nullopt;
    return c;
}

std::optional<std::string> decodePath(std::string_view path) {
    std::string decoded;
    decoded.reserve(path.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        char c = path[i];
        if (c == '%') {
            const std::optional<char> escaped = readEscape(path, i);
            if (!escaped) return std::nullopt;
            c = *escaped;
            i += 2;
        } else if (!isAllowedInPath(c) || c == '#') {
            return std::nullopt;
        }
        decoded += c;
    }
    return decoded;
}

/// Cuts scheme and authority off a target in absolute form; false when it is in no form that is served.
bool takeAuthority(std::string_view& target, std::string_view& authority) {
    if (target.starts_with('/')) return true;
    const std::size_t scheme = target.find("://");
    if (scheme == npos) return false;
    const std::string_view name = target.substr(0, scheme);
    if (!ascii::equals(name, "http") && !ascii::equals(name, "https")) return false;
    target.remove_prefix(scheme + 3);
    authority = target.substr(0, target.find_first_of("/?"));
    target.remove_prefix(authority.size());
    return isValidHost(authority);
}

bool isPort(std::string_view text) {
    return text.size() <= 5 && std::all_of(text.begin(), text.end(), ascii::isDigit);
}

bool isNameCharacter(char c) {
    return (ascii::lower(c) >= 'a' && ascii::lower(c) <= 'z') || ascii::isDigit(c) || c == '-' || c == '.' ||
           c == '_';
}

bool isAddress6Character(char c) {
    return ascii::hexValue(c) >= 0 || c == ':' || c == '.';
}

}  // namespace

std::optional<RequestTarget> parseTarget(std::string_view target) {
    RequestTarget result;
    if (!takeAuthority(target, result.authority)) return std::nullopt;
    const std::size_t question = target.find('?');
    if (question != npos) result.query = target.substr(question + 1);
    const std::string_view path = target.substr(0, question);
    std::optional<std::string> decoded = decodePath(path.empty() ? "/" : path);
    if (!decoded) return std::nullopt;
    result.path = std::move(*decoded);
    return result;
}

std::string_view hostName(std::string_view host) {
    if (host.starts_with('[')) return host.substr(0, host.find(']') + 1);
    return host.substr(0, host.find(':'));
}

bool isValidHost(std::string_view host) {
    const std::string_view name = hostName(host);
    const std::string_view rest = host.substr(name.size());
    if (name.empty() || name.size() > 255) return false;
    if (!rest.empty() && (rest.front() != ':' || !isPort(rest.substr(1)))) return false;
    if (!name.starts_with('[')) return std::all_of(name.begin(), name.end(), isNameCharacter);
    const std::string_view address = name.substr(1, name.size() - 2);
    return name.size() > 2 && name.ends_with(']') &&
           std::all_of(address.begin(), address.end(), isAddress6Character);
}

}  // namespace torvex
