#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace torvex::catalogue {

/// Whether a name of a format is one of these, as they are written.
template <std::size_t Count>
bool isOneOf(std::string_view name, const std::string_view (&names)[Count]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

}  // namespace torvex::catalogue
