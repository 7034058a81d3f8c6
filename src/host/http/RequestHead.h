#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "host/http/Ascii.h"
#include "platform/net/Method.h"

namespace torvex {

/// The header of one request, as views of the bytes that whoever read it holds: valid until that is reset.
struct RequestHead {
    Method method = Method::Unknown;
    std::string_view methodText;
    std::string_view target;
    int version = 11;  ///< 10, 11 or 20
    std::vector<std::pair<std::string_view, std::string_view>> fields;
    bool keepAlive = false;
    bool hasBody = false;
    std::optional<std::uint64_t> contentLength;

    /// The first value of the field, "" when it isn't there.
    std::string_view field(std::string_view name) const {
        for (const auto& [key, value] : fields)
            if (ascii::equals(key, name)) return value;
        return {};
    }
    /// Whether it says of itself that it brings a longer body, or any where none is taken.
    bool hasMoreThan(std::uint64_t limit) const {
        return contentLength.value_or(0) > limit || (limit == 0 && hasBody);
    }
    std::string_view protocol() const {
        if (version == 20) return "HTTP/2.0";
        return version == 10 ? "HTTP/1.0" : "HTTP/1.1";
    }
    std::size_t count(std::string_view name) const {
        std::size_t found = 0;
        for (const auto& [key, value] : fields)
            if (ascii::equals(key, name)) ++found;
        return found;
    }
};

}  // namespace torvex
