#pragma once

#include <functional>
#include <optional>
#include <string>

namespace torvex {

/// The value of a variable of the environment, nothing when it isn't set.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;

}  // namespace torvex
