#include "support/RawReply.h"

#include <algorithm>

#include "host/http/Ascii.h"

namespace torvex::test {

std::vector<std::string> RawReply::fields(std::string_view name) const {
    std::vector<std::string> values;
    std::string_view rest = head;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find("\r\n"), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 2, rest.size()));
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos && ascii::equals(line.substr(0, colon), name))
            values.emplace_back(ascii::trimmed(line.substr(colon + 1)));
    }
    return values;
}

std::string RawReply::field(std::string_view name) const {
    const std::vector<std::string> values = fields(name);
    return values.empty() ? std::string() : values.front();
}

std::string RawReply::sessionCookie() const {
    for (const std::string& cookie : fields("Set-Cookie"))
        if (cookie.starts_with("torvex_session=") || cookie.starts_with("__Host-torvex_session="))
            return cookie.substr(0, cookie.find(';'));
    return {};
}

}  // namespace torvex::test
