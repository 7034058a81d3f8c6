#pragma once

#include <string>

#include "platform/text/Text.h"
#include "support/TestHost.h"

namespace torvex::test {

/// A header of the answer so far; "" when it has none.
inline std::string header(const TestHost& host, std::string_view name) {
    for (const auto& [key, value] : host.response.headers) {
        if (text::equals(key, name)) return value;
    }
    return {};
}

/// Where the answer sends the browser.
inline std::string location(const TestHost& host) {
    return header(host, "Location");
}

}  // namespace torvex::test
