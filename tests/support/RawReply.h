#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex::test {

/// An answer as HTTP/1.1 writes it, whatever it came by.
struct RawReply {
    int status = 0;    ///< 0 when the connection ended without an answer
    std::string head;  ///< with the empty line
    std::string body;

    /// The value of the field, "" when it isn't there.
    std::string field(std::string_view name) const;
    /// The values of all fields of the name.
    std::vector<std::string> fields(std::string_view name) const;
    /// "name=value" of the session's cookie, "" when none is set.
    std::string sessionCookie() const;
};

}  // namespace torvex::test
