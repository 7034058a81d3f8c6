#pragma once

#include <string_view>

#include "platform/net/Method.h"

namespace torvex {

/// What a request's method is, by its name, in which case counts.
Method methodOf(std::string_view name);

}  // namespace torvex
