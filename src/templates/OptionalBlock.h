#pragma once

#include <string>
#include <string_view>

#include "templates/HTMLTemplate.h"

namespace torvex {

/// What stands in a block that a template need not have; "" without it.
inline std::string optionalBlock(const HTMLTemplate& source, std::string_view name) {
    return source.blockExists(name) ? source.extractBlock(name) : std::string();
}

}  // namespace torvex
