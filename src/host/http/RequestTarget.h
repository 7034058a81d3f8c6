#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {

/// What a request asks for, taken from its first line.
struct RequestTarget {
    std::string path;            ///< decoded, begins with "/"
    std::string_view query;      ///< behind the "?", still encoded; a view of the target
    std::string_view authority;  ///< of a target in absolute form, else ""
};

/// Reads "/path?query" or "http://host/path?query". Nothing for anything else, for broken escapes in the
/// path, and for paths that hold control characters, backslashes or an escaped "/": they have no use but to
/// fool a check.
std::optional<RequestTarget> parseTarget(std::string_view target);

/// Whether a Host field (or an authority) is a name or address with an optional port. It is put into links,
/// so nothing else may pass.
bool isValidHost(std::string_view host);

/// Without the port.
std::string_view hostName(std::string_view host);

}  // namespace torvex
